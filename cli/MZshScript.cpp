#include "cli/MZshScript.h"

#include "cli/MArgumentKind.h"
#include "cli/MCompletionScript.h"

#include <algorithm>

namespace {

using MCompletionScript::Joined;
using MCompletionScript::Quoted;

constexpr const char* Begin = R"(#compdef varden
# Completion of varden in zsh. Made from the program's own tables.

)";

constexpr const char* End = R"(
if [[ $funcstack[1] == _varden ]]; then
    _varden "$@"
else
    compdef _varden varden
fi
)";

/// A text as a part of an argument's description, in which brackets and colons have a meaning.
std::string Plain(const std::string& p_strText) {
    std::string strPlain;
    for (const char cLetter : p_strText) {
        if (cLetter == '[' || cLetter == ']' || cLetter == ':') {
            strPlain += '\\';
        }
        strPlain += cLetter;
    }
    return strPlain;
}

/// What the function is called that offers the words of a kind; a "=" would make it an assignment.
std::string FunctionName(std::string p_strKind) {
    std::ranges::replace(p_strKind, '=', '_');
    return "_varden_" + p_strKind;
}

/// A function that offers the words of a kind.
std::string KindFunction(const std::string& p_strKind) {
    const MArgumentKind::Row& objKind = MArgumentKind::Get(p_strKind);
    std::vector<std::string> strWords;
    std::vector<std::string> strBeginnings;
    for (const std::string& strWord : objKind.m_strWords) {
        (strWord.ends_with(':') || strWord.ends_with('=') ? strBeginnings : strWords)
            .push_back(Quoted(strWord));
    }
    std::string strFunction = FunctionName(p_strKind) + "() {\n";
    if (!strWords.empty()) {
        strFunction += "    compadd -- " + Joined(strWords) + "\n";
    }
    if (!strBeginnings.empty()) {
        strFunction += "    compadd -S '' -- " + Joined(strBeginnings) + "\n";
    }
    return strFunction + (objKind.m_bFiles ? "    _files\n" : "") + "}\n\n";
}

std::string OptionLine(const CWordTable::Option& p_objOption, const std::string& p_strName) {
    std::string strLine = p_strName + "[" + Plain(p_objOption.m_strMeaning) + "]";
    if (!p_objOption.m_strKind.empty()) {
        strLine += ":" + p_objOption.m_strKind + ":" + FunctionName(p_objOption.m_strKind);
    }
    return " \\\n        " + Quoted(strLine);
}

std::string OptionLines(const CWordTable::Command& p_objCommand) {
    std::string strLines;
    for (const CWordTable::Option& objOption : p_objCommand.m_objOptions) {
        for (const std::string& strName : objOption.m_strNames) {
            strLines += OptionLine(objOption, strName);
        }
    }
    return strLines;
}

std::string CommandFunction(const CWordTable::Command& p_objCommand) {
    std::string strLines = OptionLines(p_objCommand);
    for (std::size_t i = 0; i < p_objCommand.m_objArguments.size(); ++i) {
        const CWordTable::Argument& objArgument = p_objCommand.m_objArguments[i];
        strLines += " \\\n        " +
                    Quoted((objArgument.m_bMany ? "*" : std::to_string(i + 1)) + ":" +
                           objArgument.m_strName + ":" + FunctionName(objArgument.m_strKind));
    }
    return "_varden_command_" + p_objCommand.m_strName + "() {\n    _arguments -s" + strLines +
           "\n}\n\n";
}

}  // namespace

namespace MZshScript {

std::string Make(const CWordTable& p_objWords) {
    std::string strScript = Begin;
    for (const std::string& strKind : p_objWords.Kinds()) {
        strScript += KindFunction(strKind);
    }
    std::string strList;
    std::string strCases;
    for (const CWordTable::Command& objCommand : p_objWords.m_objCommands) {
        strScript += CommandFunction(objCommand);
        strList +=
            "        " + Quoted(Plain(objCommand.m_strName) + ":" + objCommand.m_strSummary) + "\n";
        strCases += "            " + objCommand.m_strName + ") _varden_command_" +
                    objCommand.m_strName + " ;;\n";
    }
    return strScript + "_varden() {\n    local state\n    local -a commands=(\n" + strList +
           "    )\n    _arguments -C -s" + OptionLines(p_objWords.m_objProgram) +
           " \\\n        '1:COMMAND:->command' \\\n        '*::ARGUMENT:->argument'\n"
           "    case $state in\n        command) _describe 'command' commands ;;\n"
           "        argument) case $words[1] in\n" +
           strCases + "        esac ;;\n    esac\n}\n" + End;
}

}  // namespace MZshScript
