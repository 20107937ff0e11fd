#include "cli/CProgram.h"

#include "cli/CHelpFormatter.h"
#include "cli/MCommandTable.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <exception>

namespace {

const std::string JsonOption = "--json";
constexpr const char* JsonText = "Prints one JSON object, also when something goes wrong.";
constexpr const char* HelpText = "Shows this text.";
constexpr const char* Footer = R"(Exit codes:
  0    done, also when there was nothing to do
  1    failed
  2    the command line, a value or a file is wrong
  3    not reachable
  4    what was compared differs, or would be changed
  5    a person is needed: a printer is neither as it was nor as wanted, or
       nobody knows
  130  interrupted by Ctrl-C

varden COMMAND --help tells more of a command, man varden of all.)";

/// Whether JSON is asked for; also of a command line that cannot be understood otherwise.
bool AsksForJson(const std::vector<std::string>& p_strArguments) {
    const auto objEnd = std::ranges::find(p_strArguments, "--");
    // With a value behind it, which it does not take, it is meant all the same.
    return std::any_of(p_strArguments.begin(), objEnd, [](const std::string& p_strArgument) {
        return p_strArgument == JsonOption || p_strArgument.starts_with(JsonOption + "=");
    });
}

/// The words of the parser as the rest of a sentence.
std::string Cause(const CLI::ParseError& p_objError) {
    std::string strCause = p_objError.what();
    strCause.erase(strCause.find_last_not_of(". \n") + 1);
    return strCause;
}

CCommandError Misused(const CLI::App& p_objTables, const std::vector<std::string>& p_strArguments,
                      const CLI::ParseError& p_objError) {
    const auto objChosen = p_objTables.get_subcommands();
    if (!objChosen.empty()) {
        const std::string strCommand = CProgram::Name + (" " + objChosen.front()->get_name());
        return {MExitCode::Wrong,
                {"This is no command line of " + strCommand,
                 Cause(p_objError),
                 {},
                 strCommand + " --help shows how it is used"}};
    }
    const auto objWord = std::ranges::find_if(p_strArguments, [&](const std::string& p_strWord) {
        return p_objTables.get_option_no_throw(p_strWord) == nullptr;
    });
    const char* const strHint = "varden --help lists the commands";
    if (objWord == p_strArguments.end()) {
        return {MExitCode::Wrong, {"The command is missing", {}, {}, strHint}};
    }
    const std::string strKind = objWord->starts_with('-') ? "option" : "command";
    return {MExitCode::Wrong,
            {"There is no " + strKind + " \"" + *objWord + "\"", {}, {}, strHint}};
}

}  // namespace

CProgram::CProgram(const CEnvironment& p_objEnvironment)
    : m_objTables(std::make_unique<CLI::App>(
          "Reads and changes the settings of Varden label printers from a command line.", Name)) {
    m_objTables->formatter(std::make_shared<CHelpFormatter>());
    m_objTables->set_help_flag("-h,--help", HelpText);
    m_objTables->set_version_flag("--version", VARDEN_VERSION, "Shows the program's version.");
    m_objTables->add_flag(JsonOption, m_bJson, JsonText)->disable_flag_override();
    m_objTables->require_subcommand(1);
    m_objTables->footer(Footer);
    for (const MCommandTable::Row& objRow : MCommandTable::All()) {
        AddCommand(objRow.m_strName, objRow.m_strSummary, objRow.m_fnMake(p_objEnvironment));
    }
}

CProgram::~CProgram() = default;

void CProgram::AddCommand(std::string_view p_strName, std::string_view p_strSummary,
                          std::unique_ptr<ICommand> p_objCommand) {
    CLI::App& objTable =
        *m_objTables->add_subcommand(std::string(p_strName), std::string(p_strSummary));
    objTable.set_help_flag("-h,--help", HelpText);
    objTable.add_flag(JsonOption, m_bJson, JsonText)->disable_flag_override();
    p_objCommand->Describe(objTable);
    m_objCommands.push_back(std::move(p_objCommand));
}

MExitCode::Code CProgram::Run(const std::vector<std::string>& p_strArguments,
                              COutput& p_objOutput) {
    if (AsksForJson(p_strArguments)) {
        p_objOutput.ChooseJson();
    }
    MExitCode::Code iCode = MExitCode::Failed;
    try {
        iCode = Do(p_strArguments, p_objOutput);
    } catch (const CCommandError& objError) {
        p_objOutput.Fail(objError);
        iCode = objError.Code();
    } catch (const std::exception& objError) {
        p_objOutput.Json() = nlohmann::ordered_json::object();
        p_objOutput.Fail({MExitCode::Failed, {"Unexpected failure", objError.what(), {}, {}}});
    }
    if (!p_objOutput.Finish()) {
        p_objOutput.Note("Standard output does not take what is to be printed");
        return MExitCode::Failed;
    }
    return iCode;
}

MExitCode::Code CProgram::Do(const std::vector<std::string>& p_strArguments, COutput& p_objOutput) {
    try {
        Parse(p_strArguments);
    } catch (const CLI::CallForHelp&) {
        p_objOutput.Json()["help"] = m_objTables->help();
        p_objOutput.Print(m_objTables->help());
        return MExitCode::Done;
    } catch (const CLI::CallForVersion&) {
        p_objOutput.Json()["version"] = VARDEN_VERSION;
        p_objOutput.Say(std::string(Name) + " " + VARDEN_VERSION);
        return MExitCode::Done;
    } catch (const CLI::ParseError& objError) {
        throw Misused(*m_objTables, p_strArguments, objError);
    }
    const CLI::App* const objChosen = m_objTables->get_subcommands().front();
    const auto objTables = m_objTables->get_subcommands({});
    const auto iCommand = std::ranges::find(objTables, objChosen) - objTables.begin();
    return m_objCommands[static_cast<std::size_t>(iCommand)]->Run(p_objOutput);
}

void CProgram::Parse(const std::vector<std::string>& p_strArguments) {
    // The parser takes them from the end.
    std::vector<std::string> strReversed(p_strArguments.rbegin(), p_strArguments.rend());
    m_objTables->parse(std::move(strReversed));
}
