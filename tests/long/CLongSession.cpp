#include "tests/long/CLongSession.h"

CLongSession::CLongSession(double p_dHaste, const std::string& p_strDevices)
    : m_objClock(p_dHaste)
    , m_objLoop(p_dHaste)
    , m_objSerialPort(m_objLineState, p_strDevices)
    , m_objSession(m_objItems, m_objInterface, m_objEvents,
                   {m_objLoop, m_objClock, m_objTcpClient, m_objSerialPort, m_objUsbLibrary})
    , m_objFlow(m_objItems, m_objSession, m_objBoxes, m_objPage, m_objPage) {
    m_objInterface.m_objIpAddress1->SetValue(127);
    m_objInterface.m_objIpAddress2->SetValue(0);
    m_objInterface.m_objIpAddress3->SetValue(0);
    m_objInterface.m_objIpAddress4->SetValue(1);
}

bool CLongSession::Open(const std::string& p_strPlace) {
    std::int16_t iInterface = CInterface::UsbInterface;
    if (const auto iColon = p_strPlace.find(':'); iColon != std::string::npos) {
        iInterface = CInterface::LanInterface;
        m_objInterface.m_objSocketPort->SetValue(std::stoi(p_strPlace.substr(iColon + 1)));
    } else if (p_strPlace.starts_with("com")) {
        iInterface = CInterface::SerialInterface;
        m_objInterface.m_objComPortIndex->SetValue(std::stoi(p_strPlace.substr(3)) - 1);
    }
    m_objInterface.SetActiveInterface(iInterface);
    return m_objSession.Links().OpenLink(iInterface);
}

void CLongSession::Close() {
    m_objSession.Links().CloseLink(m_objInterface.GetActiveInterface());
}

bool CLongSession::AskStatus() {
    const COutcome objOutcome = m_objSession.Exchange().RequestStatus();
    // On a serial line nobody waits for it: it comes while other things happen.
    for (int i = 0; i < 50 && m_objSession.State().m_iStatusReceived == 0 && objOutcome.m_bSent &&
                    m_objInterface.GetActiveInterface() == CInterface::SerialInterface;
         ++i) {
        m_objLoop.Yield();
    }
    return m_objSession.State().m_iStatusReceived == 1;
}

bool CLongSession::Read() {
    m_objPage.m_iLast = CPageNote::Kind::Unsendable;
    m_objFlow.Read();
    return m_objPage.m_iLast == CPageNote::Kind::Read;
}

bool CLongSession::Set() {
    m_objPage.m_iLast = CPageNote::Kind::Unsendable;
    m_objFlow.Set();
    return m_objPage.m_iLast == CPageNote::Kind::Sent;
}
