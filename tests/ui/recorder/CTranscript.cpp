#include "tests/ui/recorder/CTranscript.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <utility>

namespace {

constexpr std::int64_t HalfSecond = 500;
constexpr const char* CommandEnd = "|}";
constexpr char FirstPrintable = ' ';
constexpr char LastPrintable = '~';

/// On a serial line bytes go both ways at a time.
bool RunTogether(const std::string& p_strWay, const std::string& p_strOther) {
    constexpr const char* strSerial = "COM";
    return p_strWay.starts_with(strSerial) && p_strOther.starts_with(strSerial);
}

std::string Join(const std::vector<std::string>& p_strTexts) {
    std::string strJoined;
    for (const std::string& strText : p_strTexts) {
        strJoined += " " + strText;
    }
    return strJoined;
}

}  // namespace

CTranscript::CTranscript(const CFakeClock& p_objClock, std::vector<std::string> p_strButtons)
    : m_objClock(p_objClock)
    , m_strAllButtons(std::move(p_strButtons)) {}

void CTranscript::Look() {
    if (m_bLooking || !m_fnWatch) {
        return;
    }
    m_bLooking = true;
    m_fnWatch();
    m_bLooking = false;
}

void CTranscript::Add(const std::string& p_strLine) {
    Touch();
    Flush();
    m_strLines.push_back(p_strLine);
}

void CTranscript::Bytes(const std::string& p_strWay, std::string_view p_strBytes) {
    Touch();
    if (!m_objRuns.empty() && m_objRuns.back().m_strWay != p_strWay &&
        !RunTogether(m_objRuns.back().m_strWay, p_strWay)) {
        Flush();
    }
    auto objRun = std::ranges::find(m_objRuns, p_strWay, &Run::m_strWay);
    if (objRun == m_objRuns.end()) {
        objRun = m_objRuns.insert(objRun, {p_strWay, {}, {}});
    }
    objRun->m_strBytes += p_strBytes;
    if (p_strWay.ends_with("sends") && objRun->m_strBytes.ends_with(CommandEnd)) {
        Write(*objRun);
        m_objRuns.erase(objRun);
    }
}

void CTranscript::Switched(const std::string& p_strButton, bool p_bEnabled) {
    Touch();
    const std::string strWay = p_bEnabled ? "buttons on:" : "buttons off:";
    if (m_objRuns.empty() || m_objRuns.front().m_strWay != strWay) {
        Flush();
        m_objRuns.push_back({strWay, {}, {}});
    }
    m_objRuns.front().m_strButtons.push_back(p_strButton);
}

std::vector<std::string> CTranscript::Take() {
    Look();
    Flush();
    m_iLast = m_objClock.Elapsed();
    return std::exchange(m_strLines, {});
}

void CTranscript::Restore(std::vector<std::string> p_strLines) {
    Take();
    m_strLines = std::move(p_strLines);
}

void CTranscript::Touch() {
    Look();
    const std::int64_t iPassed = m_objClock.Elapsed() - m_iLast;
    m_iLast = m_objClock.Elapsed();
    if (const std::int64_t iHalves = (iPassed + HalfSecond / 2) / HalfSecond) {
        Flush();
        m_strLines.push_back("-- " + std::to_string(iHalves / 2) +
                             (iHalves % 2 != 0 ? ".5 s" : ".0 s"));
    }
}

void CTranscript::Flush() {
    for (const Run& objRun : std::exchange(m_objRuns, {})) {
        Write(objRun);
    }
}

void CTranscript::Write(const Run& p_objRun) {
    if (p_objRun.m_strButtons.empty()) {
        m_strLines.push_back(p_objRun.m_strWay + " " + Printable(p_objRun.m_strBytes));
    } else {
        m_strLines.push_back(p_objRun.m_strWay + Describe(p_objRun.m_strButtons));
    }
}

std::string CTranscript::Describe(const std::vector<std::string>& p_strButtons) const {
    std::vector<std::string> strRest = m_strAllButtons;
    std::erase_if(strRest, [&](const std::string& p_strButton) {
        return std::ranges::find(p_strButtons, p_strButton) != p_strButtons.end();
    });
    std::vector<std::string> strOrdered = m_strAllButtons;
    std::erase_if(strOrdered, [&](const std::string& p_strButton) {
        return std::ranges::find(strRest, p_strButton) != strRest.end();
    });
    if (strOrdered != p_strButtons || strRest.size() >= p_strButtons.size()) {
        return Join(p_strButtons);
    }
    return strRest.empty() ? " all" : " all but" + Join(strRest);
}

std::string CTranscript::Printable(std::string_view p_strBytes) {
    std::string strPrintable;
    for (const char cByte : p_strBytes) {
        if (cByte >= FirstPrintable && cByte <= LastPrintable && cByte != '<') {
            strPrintable += cByte;
            continue;
        }
        std::array<char, 5> arrHex{};
        std::snprintf(arrHex.data(), arrHex.size(), "<%02X>", static_cast<unsigned char>(cByte));
        strPrintable += arrHex.data();
    }
    return strPrintable;
}
