#include "tests/ui/recorder/CSettingsTexts.h"

#include <algorithm>
#include <array>
#include <functional>
#include <optional>
#include <span>
#include <sstream>

namespace {

using std::string_view;

constexpr string_view NameBegin = "<s";
constexpr string_view FieldLine = "end: ";
constexpr std::size_t ShortestRest = 6;
constexpr std::size_t FewestFields = 3;

/// Where a run begins and ends.
struct Run {
    std::size_t m_iBegin;
    std::size_t m_iEnd;
};

/// How long the one of p_strBeginnings is with which p_strText begins; 0 when none is.
std::size_t Beginning(string_view p_strText, std::span<const string_view> p_strBeginnings) {
    for (const string_view strBeginning : p_strBeginnings) {
        if (p_strText.starts_with(strBeginning)) {
            return strBeginning.size();
        }
    }
    return 0;
}

/// The fields behind a head at p_iPlace, or the length of an answer that USB is asked for.
std::optional<Run> RunBehindHead(string_view p_strText, std::size_t p_iPlace) {
    constexpr std::array<string_view, 7> strHeads{"{Z2;1,", "{Z2;2,", "{0", "{1", "{2", "{3", "{4"};
    constexpr std::array<string_view, 1> strReceives{"USB receives "};
    const string_view strRest = p_strText.substr(p_iPlace);
    if (const std::size_t iHead = Beginning(strRest, strHeads)) {
        const std::size_t iEnd = p_strText.find_first_of("|<;{\n", p_iPlace + iHead);
        return Run{p_iPlace + iHead, std::min(iEnd, p_strText.size())};
    }
    if (const std::size_t iHead = Beginning(strRest, strReceives)) {
        const bool bStatus = strRest.substr(iHead).starts_with("13 ");
        const std::size_t iEnd = p_strText.find(' ', p_iPlace + iHead);
        return bStatus ? std::nullopt : std::optional(Run{p_iPlace + iHead, iEnd});
    }
    return std::nullopt;
}

/// The rest of a command or an answer that a line at p_iPlace goes on with.
std::optional<Run> RestInLine(string_view p_strText, std::size_t p_iPlace) {
    constexpr std::array<string_view, 6> strWays{"COM sends ", "COM gets ",  "LAN sends ",
                                                 "LAN gets ",  "USB sends ", "USB gets "};
    const std::size_t iWay = Beginning(p_strText.substr(p_iPlace), strWays);
    const std::size_t iBegin = p_iPlace + iWay;
    const std::size_t iEnd =
        std::min(p_strText.find_first_not_of("0123456789ABCDEF+-,", iBegin), p_strText.size());
    const bool bStatus = p_strText.substr(iEnd).starts_with('<');
    if (iWay == 0 || bStatus || iEnd - iBegin < ShortestRest) {
        return std::nullopt;
    }
    return Run{iBegin, iEnd};
}

/// What the fields show in the end, a line each from p_iPlace on, when there are more than a few.
std::optional<Run> FieldsInLines(string_view p_strText, std::size_t p_iPlace) {
    constexpr std::array<string_view, 3> strFields{"end: cmb", "end: Se", "end: txt"};
    std::size_t iEnd = p_iPlace;
    std::size_t iLines = 0;
    while (Beginning(p_strText.substr(iEnd), strFields) != 0) {
        iEnd = std::min(p_strText.find('\n', iEnd), p_strText.size() - 1) + 1;
        ++iLines;
    }
    if (iLines < FewestFields) {
        return std::nullopt;
    }
    return Run{p_iPlace + FieldLine.size(), iEnd - 1};
}

/// Calls p_fnBetween with what stands between runs of settings, and p_fnRun with each of those.
void Walk(string_view p_strText, const std::function<void(string_view)>& p_fnBetween,
          const std::function<void(string_view)>& p_fnRun) {
    std::size_t iDone = 0;
    for (std::size_t i = 0; i < p_strText.size(); ++i) {
        std::optional<Run> objRun = RunBehindHead(p_strText, i);
        if (!objRun && (i == 0 || p_strText[i - 1] == '\n')) {
            objRun = FieldsInLines(p_strText, i);
            objRun = objRun ? objRun : RestInLine(p_strText, i);
        }
        if (objRun && objRun->m_iEnd > objRun->m_iBegin) {
            p_fnBetween(p_strText.substr(iDone, objRun->m_iBegin - iDone));
            p_fnRun(p_strText.substr(objRun->m_iBegin, objRun->m_iEnd - objRun->m_iBegin));
            iDone = objRun->m_iEnd;
            i = iDone - 1;
        }
    }
    p_fnBetween(p_strText.substr(iDone));
}

bool BeginsEntry(const std::string& p_strLine) {
    const std::size_t iDigits = p_strLine.find_first_not_of("0123456789", 1);
    return p_strLine.starts_with('s') && iDigits > 1 && iDigits != std::string::npos &&
           p_strLine.substr(iDigits).starts_with(" \"");
}

}  // namespace

CSettingsTexts::CSettingsTexts(const std::string& p_strTable) {
    std::istringstream objStream(p_strTable);
    std::vector<std::string> strEntries;
    for (std::string strLine; std::getline(objStream, strLine);) {
        if (BeginsEntry(strLine)) {
            strEntries.push_back(strLine.substr(strLine.find('"') + 1));
        } else if (!strEntries.empty()) {
            strEntries.back() += "\n" + strLine;
        }
    }
    for (std::string& strEntry : strEntries) {
        strEntry.pop_back();  // the quote
        Add(strEntry);
    }
}

void CSettingsTexts::Learn(const std::string& p_strRecording) {
    Walk(
        p_strRecording, [](string_view) {},
        [this](string_view p_strRun) { Add(std::string(p_strRun)); });
}

std::string CSettingsTexts::Short(const std::string& p_strRecording) const {
    std::string strShort;
    Walk(
        p_strRecording, [&](string_view p_strText) { strShort += p_strText; },
        [&](string_view p_strRun) {
            const auto objFound = m_iPositions.find(p_strRun);
            strShort += objFound == m_iPositions.end()
                            ? std::string(p_strRun)
                            : std::string(NameBegin) + std::to_string(objFound->second) + ">";
        });
    return strShort;
}

std::string CSettingsTexts::Long(const std::string& p_strRecording) const {
    std::string strLong;
    std::size_t iDone = 0;
    std::size_t iName = 0;
    while ((iName = p_strRecording.find(NameBegin, iDone)) != std::string::npos) {
        const std::size_t iDigits = iName + NameBegin.size();
        const std::size_t iEnd = p_strRecording.find('>', iDigits);
        const std::string strNumber = p_strRecording.substr(iDigits, iEnd - iDigits);
        strLong += p_strRecording.substr(iDone, iName - iDone);
        strLong += m_strTexts.at(std::stoul(strNumber) - 1);
        iDone = iEnd + 1;
    }
    return strLong + p_strRecording.substr(iDone);
}

std::string CSettingsTexts::Table() const {
    std::string strTable;
    for (std::size_t i = 0; i < m_strTexts.size(); ++i) {
        strTable += "s" + std::to_string(i + 1) + " \"" + m_strTexts[i] + "\"\n";
    }
    return strTable;
}

void CSettingsTexts::Add(const std::string& p_strText) {
    if (m_iPositions.try_emplace(p_strText, m_strTexts.size() + 1).second) {
        m_strTexts.push_back(p_strText);
    }
}
