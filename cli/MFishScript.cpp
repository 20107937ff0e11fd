#include "cli/MFishScript.h"

#include "cli/MArgumentKind.h"
#include "cli/MCompletionScript.h"

namespace {

using MCompletionScript::Joined;
using MCompletionScript::Quoted;

constexpr const char* Begin = R"(# Completion of varden in fish. Made from the program's own tables.

# Whether the command is the first argument (an empty one: whether there is none yet), and as many of
# its own arguments stand in front of the word as the second and third allow: at least, at most.
function __varden_at
    set -l command ''
    set -l count 0
    set -l skip no
    for word in (commandline -opc)[2..]
        if test $skip = yes
            set skip no
        else if string match -q -- '-*' $word
            contains -- "$command,$word" $__varden_values; and set skip yes
        else if test -z "$command"
            set command $word
        else
            set count (math $count + 1)
        end
    end
    test "$command" = "$argv[1]"; or return 1
    test (count $argv) -lt 2; and return 0
    test $count -ge $argv[2]; or return 1
    test (count $argv) -lt 3; or test $count -le $argv[3]
end

complete -c varden -f
)";

/// The words and the files of a kind, as options of "complete".
std::string Words(const std::string& p_strKind) {
    const MArgumentKind::Row& objKind = MArgumentKind::Get(p_strKind);
    std::string strWords = objKind.m_bFiles ? " -F" : " -f";
    return objKind.m_strWords.empty() ? strWords
                                      : strWords + " -a " + Quoted(Joined(objKind.m_strWords));
}

std::string Line(const std::string& p_strAt, const std::string& p_strRest) {
    return "complete -c varden -n " + Quoted("__varden_at " + p_strAt) + p_strRest + "\n";
}

std::string OptionLines(const CWordTable::Command& p_objCommand) {
    std::string strLines;
    for (const CWordTable::Option& objOption : p_objCommand.m_objOptions) {
        std::string strRest;
        for (const std::string& strName : objOption.m_strNames) {
            strRest +=
                strName.starts_with("--") ? " -l " + strName.substr(2) : " -s " + strName.substr(1);
        }
        if (!objOption.m_strKind.empty()) {
            strRest += " -r" + Words(objOption.m_strKind);
        }
        strLines += Line(p_objCommand.m_strName, strRest + " -d " + Quoted(objOption.m_strMeaning));
    }
    return strLines;
}

/// How many arguments stand in front of the one of that position.
std::string Count(std::size_t p_iPosition, bool p_bMany) {
    const std::string strCount = std::to_string(p_iPosition);
    return p_bMany ? strCount : strCount + " " + strCount;
}

std::string CommandLines(const CWordTable::Command& p_objCommand) {
    std::string strLines =
        Line("", " -a " + p_objCommand.m_strName + " -d " + Quoted(p_objCommand.m_strSummary)) +
        OptionLines(p_objCommand);
    for (std::size_t i = 0; i < p_objCommand.m_objArguments.size(); ++i) {
        const CWordTable::Argument& objArgument = p_objCommand.m_objArguments[i];
        strLines += Line(p_objCommand.m_strName + " " + Count(i, objArgument.m_bMany),
                         Words(objArgument.m_strKind) + " -d " + Quoted(objArgument.m_strName));
    }
    return strLines;
}

/// The options of a command that have a value, as the function looks for them.
void AddValues(const CWordTable::Command& p_objCommand, std::vector<std::string>& p_strValues) {
    for (const CWordTable::Option& objOption : p_objCommand.m_objOptions) {
        if (objOption.m_strKind.empty()) {
            continue;
        }
        for (const std::string& strName : objOption.m_strNames) {
            p_strValues.push_back(Quoted(p_objCommand.m_strName + "," + strName));
        }
    }
}

}  // namespace

namespace MFishScript {

std::string Make(const CWordTable& p_objWords) {
    std::vector<std::string> strValues;
    std::string strLines = OptionLines(p_objWords.m_objProgram);
    for (const CWordTable::Command& objCommand : p_objWords.m_objCommands) {
        strLines += CommandLines(objCommand);
        AddValues(objCommand, strValues);
    }
    return Begin + ("set -g __varden_values " + Joined(strValues)) + "\n" + strLines;
}

}  // namespace MFishScript
