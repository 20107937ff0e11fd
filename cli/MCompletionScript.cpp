#include "cli/MCompletionScript.h"

#include "cli/MBashScript.h"
#include "cli/MFishScript.h"
#include "cli/MZshScript.h"

#include <algorithm>
#include <array>
#include <stdexcept>

namespace {

struct Row {
    std::string_view m_strShell;
    std::string (*m_fnMake)(const CWordTable&);
};

constexpr std::array Rows{
    Row{"bash", &MBashScript::Make},
    Row{"zsh", &MZshScript::Make},
    Row{"fish", &MFishScript::Make},
};

}  // namespace

namespace MCompletionScript {

std::vector<std::string> Shells() {
    std::vector<std::string> strShells;
    strShells.reserve(Rows.size());
    for (const Row& objRow : Rows) {
        strShells.emplace_back(objRow.m_strShell);
    }
    return strShells;
}

std::string Script(std::string_view p_strShell, const CWordTable& p_objWords) {
    const auto* const objFound = std::ranges::find(Rows, p_strShell, &Row::m_strShell);
    if (objFound == Rows.end()) {
        throw std::logic_error("no shell is called " + std::string(p_strShell));
    }
    return objFound->m_fnMake(p_objWords);
}

std::string Quoted(std::string_view p_strText) {
    std::string strQuoted = "'";
    for (const char cLetter : p_strText) {
        strQuoted += cLetter == '\'' ? "\u2019" : std::string(1, cLetter);
    }
    return strQuoted + "'";
}

std::string Joined(const std::vector<std::string>& p_strTexts, std::string_view p_strBetween) {
    std::string strJoined;
    for (const std::string& strText : p_strTexts) {
        strJoined += (strJoined.empty() ? "" : std::string(p_strBetween)) + strText;
    }
    return strJoined;
}

}  // namespace MCompletionScript
