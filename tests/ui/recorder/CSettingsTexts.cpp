#include "tests/ui/recorder/CSettingsTexts.h"

#include <algorithm>
#include <array>
#include <functional>
#include <optional>
#include <sstream>

namespace {

constexpr std::string_view BehindFields = "|<;{\n";
constexpr std::size_t ShortestRest = 6;

/// Where the fields behind a head at p_iPlace begin.
std::optional<std::size_t> FieldsBehind(std::string_view p_strText, std::size_t p_iPlace) {
    constexpr std::array<std::string_view, 7> strHeads{"{Z2;1,", "{Z2;2,", "{0", "{1",
                                                       "{2",     "{3",     "{4"};
    for (const std::string_view strHead : strHeads) {
        if (p_strText.substr(p_iPlace).starts_with(strHead)) {
            return p_iPlace + strHead.size();
        }
    }
    return std::nullopt;
}

/// Where the rest of a command or an answer begins, which a line at p_iPlace goes on with.
std::optional<std::size_t> RestIn(std::string_view p_strText, std::size_t p_iPlace) {
    constexpr std::array<std::string_view, 6> strWays{"COM sends ", "COM gets ",  "LAN sends ",
                                                      "LAN gets ",  "USB sends ", "USB gets "};
    for (const std::string_view strWay : strWays) {
        if (p_strText.substr(p_iPlace).starts_with(strWay)) {
            const std::string_view strRest = p_strText.substr(p_iPlace + strWay.size());
            const std::size_t iEnd =
                std::min(strRest.find_first_not_of("0123456789ABCDEF+-"), strRest.size());
            const bool bStatus = strRest.substr(iEnd).starts_with('<');
            if (iEnd >= ShortestRest && !bStatus) {
                return p_iPlace + strWay.size();
            }
        }
    }
    return std::nullopt;
}

/// Calls p_fnBetween with what stands between runs of fields, and p_fnRun with each of those.
void Walk(std::string_view p_strText, const std::function<void(std::string_view)>& p_fnBetween,
          const std::function<void(std::string_view)>& p_fnRun) {
    std::size_t iDone = 0;
    for (std::size_t i = 0; i < p_strText.size(); ++i) {
        const bool bLineBegins = i == 0 || p_strText[i - 1] == '\n';
        const auto iBegin = p_strText[i] == '{' ? FieldsBehind(p_strText, i)
                            : bLineBegins       ? RestIn(p_strText, i)
                                                : std::nullopt;
        if (!iBegin) {
            continue;
        }
        const std::size_t iEnd =
            std::min(p_strText.find_first_of(BehindFields, *iBegin), p_strText.size());
        if (iEnd > *iBegin) {
            p_fnBetween(p_strText.substr(iDone, *iBegin - iDone));
            p_fnRun(p_strText.substr(*iBegin, iEnd - *iBegin));
            iDone = iEnd;
        }
        i = iEnd - 1;
    }
    p_fnBetween(p_strText.substr(iDone));
}

std::string Name(std::size_t p_iPosition) {
    return "s" + std::to_string(p_iPosition);
}

}  // namespace

CSettingsTexts::CSettingsTexts(const std::string& p_strTable) {
    std::istringstream objStream(p_strTable);
    for (std::string strLine; std::getline(objStream, strLine);) {
        const std::size_t iQuote = strLine.find('"');
        Add(strLine.substr(iQuote + 1, strLine.size() - iQuote - 2));
    }
}

void CSettingsTexts::Learn(const std::string& p_strRecording) {
    Walk(
        p_strRecording, [](std::string_view) {},
        [this](std::string_view p_strRun) { Add(std::string(p_strRun)); });
}

std::string CSettingsTexts::Short(const std::string& p_strRecording) const {
    std::string strShort;
    Walk(
        p_strRecording, [&](std::string_view p_strText) { strShort += p_strText; },
        [&](std::string_view p_strRun) {
            const auto objFound = m_iPositions.find(p_strRun);
            strShort += objFound == m_iPositions.end() ? std::string(p_strRun)
                                                       : "<" + Name(objFound->second) + ">";
        });
    return strShort;
}

std::string CSettingsTexts::Table() const {
    std::string strTable;
    for (std::size_t i = 0; i < m_strTexts.size(); ++i) {
        strTable += Name(i + 1) + " \"" + m_strTexts[i] + "\"\n";
    }
    return strTable;
}

void CSettingsTexts::Add(const std::string& p_strText) {
    if (m_iPositions.try_emplace(p_strText, m_strTexts.size() + 1).second) {
        m_strTexts.push_back(p_strText);
    }
}
