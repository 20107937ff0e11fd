#include "simulator/CCommandReader.h"

#include "protocol/MCommand.h"
#include "simulator/MCommandKind.h"

#include <utility>

void CCommandReader::Feed(std::span<const std::uint8_t> p_objBytes, const Sink& p_objSink) {
    for (const std::uint8_t iByte : p_objBytes) {
        Take(static_cast<char>(iByte), p_objSink);
    }
    TellLeftOut(p_objSink);
}

void CCommandReader::Take(char p_c, const Sink& p_objSink) {
    if (p_c == '{' && !InFreeText()) {
        LeaveOut(std::exchange(m_strCommand, "{"));
        return;
    }
    if (m_strCommand.empty()) {
        LeaveOut(std::string(1, p_c));
        return;
    }
    m_strCommand += p_c;
    if (m_strCommand.ends_with(MCommand::CommandEnd)) {
        TellLeftOut(p_objSink);
        const std::string strCommand = std::exchange(m_strCommand, std::string());
        p_objSink({true, strCommand, strCommand.size()});
    } else if (m_strCommand.size() >= LongestCommand) {
        LeaveOut(std::exchange(m_strCommand, std::string()));
    }
}

void CCommandReader::LeaveOut(const std::string& p_strBytes) {
    m_iLeftOut += p_strBytes.size();
    m_strLeftOut += p_strBytes.substr(0, LongestShown - m_strLeftOut.size());
}

void CCommandReader::TellLeftOut(const Sink& p_objSink) {
    if (m_iLeftOut == 0) {
        return;
    }
    const Found objFound{false, std::exchange(m_strLeftOut, std::string()),
                         std::exchange(m_iLeftOut, std::size_t{0})};
    p_objSink(objFound);
}

bool CCommandReader::InFreeText() const {
    constexpr std::size_t iTextEnd = 55;  // where the DHCP command's closing bytes stand
    return m_strCommand.starts_with(MCommandKind::Head(MCommandKind::Kind::SetDhcp)) &&
           m_strCommand.size() < iTextEnd;
}
