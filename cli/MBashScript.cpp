#include "cli/MBashScript.h"

#include "cli/MArgumentKind.h"
#include "cli/MCompletionScript.h"

namespace {

using MCompletionScript::Joined;
using MCompletionScript::Quoted;

constexpr const char* Begin = R"(# Completion of varden in bash. Made from the program's own tables.

# Offers files and words for the word that is being written.
_varden_offer() {
    local files=$1 word=${COMP_WORDS[COMP_CWORD]} name=''
    # Bash takes a "=" for a word of its own: "mode=parameter" is three. Offered is what is behind.
    if [[ $word == '=' ]]; then
        name=${COMP_WORDS[COMP_CWORD - 1]}= word=''
    elif [[ ${COMP_WORDS[COMP_CWORD - 1]} == '=' ]]; then
        name=${COMP_WORDS[COMP_CWORD - 2]}=
    fi
    mapfile -t COMPREPLY < <(compgen -W "$2" -- "$name$word")
    COMPREPLY=("${COMPREPLY[@]#"$name"}")
    if [[ $files == files ]]; then
        compopt -o filenames 2>/dev/null
        mapfile -t -O "${#COMPREPLY[@]}" COMPREPLY < <(compgen -f -- "$word")
    fi
    [[ ${#COMPREPLY[@]} -ne 1 || ${COMPREPLY[0]} != *[:=] ]] || compopt -o nospace 2>/dev/null
}

_varden() {
    local i word before=${COMP_WORDS[COMP_CWORD - 1]} command='' count=0 values=''
    COMPREPLY=()
    # A ":" is one, too: "lan:host" is three. Behind one nothing is known.
    [[ $before != : ]] || return
    # The command, and how many of its arguments stand in front of the word.
    for ((i = 1; i < COMP_CWORD; i++)); do
        word=${COMP_WORDS[i]}
        if [[ $word == [:=] ]]; then
            i=$((i + 1))
        elif [[ $word == -* ]]; then
            [[ " $values " != *" $word "* ]] || i=$((i + 1))
        elif [[ -z $command ]]; then
            command=$word
            case $command in
)";

constexpr const char* Middle = R"(            esac
        else
            count=$((count + 1))
        fi
    done
)";

constexpr const char* End = R"(}
complete -F _varden varden
)";

/// What offers the words of a kind.
std::string Offer(const std::string& p_strKind) {
    const MArgumentKind::Row& objKind = MArgumentKind::Get(p_strKind);
    return std::string("_varden_offer ") + (objKind.m_bFiles ? "files " : "words ") +
           Quoted(Joined(objKind.m_strWords));
}

std::string OptionWords(const CWordTable::Command& p_objCommand) {
    std::vector<std::string> strWords;
    for (const CWordTable::Option& objOption : p_objCommand.m_objOptions) {
        strWords.insert(strWords.end(), objOption.m_strNames.begin(), objOption.m_strNames.end());
    }
    return Joined(strWords);
}

/// The options of a command that have a value.
std::string ValueLine(const CWordTable::Command& p_objCommand) {
    std::vector<std::string> strWords;
    for (const CWordTable::Option& objOption : p_objCommand.m_objOptions) {
        if (!objOption.m_strKind.empty()) {
            strWords.push_back(Joined(objOption.m_strNames));
        }
    }
    return strWords.empty() ? ""
                            : "            " + p_objCommand.m_strName +
                                  ") values=" + Quoted(Joined(strWords)) + " ;;\n";
}

std::string Case(const std::string& p_strPattern, const std::string& p_strDo) {
    return "    " + p_strPattern + ")\n        " + p_strDo + "\n        return ;;\n";
}

/// The values of a command's options.
std::string ValueCases(const CWordTable::Command& p_objCommand) {
    std::string strCases;
    for (const CWordTable::Option& objOption : p_objCommand.m_objOptions) {
        for (const std::string& strName : objOption.m_strNames) {
            if (!objOption.m_strKind.empty()) {
                strCases +=
                    Case(p_objCommand.m_strName + "," + strName, Offer(objOption.m_strKind));
            }
        }
    }
    return strCases;
}

/// A command's options and arguments.
std::string WordCases(const CWordTable::Command& p_objCommand) {
    const std::string strBegin = p_objCommand.m_strName + ",";
    std::string strCases =
        Case(strBegin + "*,-*", "_varden_offer words " + Quoted(OptionWords(p_objCommand)));
    std::size_t iCount = 0;
    for (const CWordTable::Argument& objArgument : p_objCommand.m_objArguments) {
        std::string strPattern = strBegin;
        strPattern += objArgument.m_bMany ? "*" : std::to_string(iCount++);
        strCases += Case(strPattern + ",*", Offer(objArgument.m_strKind));
    }
    return strCases;
}

}  // namespace

namespace MBashScript {

std::string Make(const CWordTable& p_objWords) {
    std::vector<std::string> strCommands;
    std::string strValueLines;
    std::string strValueCases;
    std::string strWordCases;
    for (const CWordTable::Command& objCommand : p_objWords.m_objCommands) {
        strCommands.push_back(objCommand.m_strName);
        strValueLines += ValueLine(objCommand);
        strValueCases += ValueCases(objCommand);
        strWordCases += WordCases(objCommand);
    }
    const std::string strProgram = Joined(strCommands) + " " + OptionWords(p_objWords.m_objProgram);
    return Begin + strValueLines + Middle + "    case $command,$before in\n" + strValueCases +
           "    esac\n    case $command,$count,${COMP_WORDS[COMP_CWORD]} in\n" +
           Case(",*", "_varden_offer words " + Quoted(strProgram)) + strWordCases + "    esac\n" +
           End;
}

}  // namespace MBashScript
