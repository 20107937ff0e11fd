#include "simulator/usb/CUsbWire.h"

#include <algorithm>

CUsbWire::CUsbWire(CPrinter& p_objPrinter, const CFaultSettings& p_objFaults,
                   ISimulatorLog& p_objLog)
    : m_objPrinter(p_objPrinter)
    , m_objSession(1, p_objPrinter, p_objFaults, p_objLog, CSession::Wire::Usb) {
    Schedule(m_objSession.Connected());
}

std::size_t CUsbWire::Write(std::span<const std::uint8_t> p_objBytes) {
    const std::size_t iTaken = std::min(p_objBytes.size(), m_objPrinter.MostTaken());
    Schedule(m_objSession.Received(p_objBytes));
    if (!IsOn()) {
        m_objSteps.clear();
        m_strDue.clear();
    }
    return iTaken;
}

bool CUsbWire::HasAnswer() {
    Advance();
    return !m_strDue.empty();
}

std::string CUsbWire::Read(std::size_t p_iMost) {
    std::string strRead = m_strDue.substr(0, p_iMost);
    m_strDue.erase(0, strRead.size());
    return strRead;
}

void CUsbWire::Drop() {
    m_strDue.clear();
}

bool CUsbWire::IsClosed() {
    Advance();
    return m_bClosed && m_strDue.empty();
}

void CUsbWire::Advance() {
    while (m_strDue.empty() && !m_objSteps.empty() && Clock::now() >= m_iStepDue) {
        const CWireStep objStep = m_objSteps.front();
        m_objSteps.pop_front();
        m_objSession.Sent(objStep);
        m_strDue = objStep.m_strBytes;
        m_bClosed = m_bClosed || objStep.m_bClose;
        if (!m_objSteps.empty()) {
            m_iStepDue = Clock::now() + m_objSteps.front().m_iDelay;
        }
    }
}

void CUsbWire::Schedule(const std::vector<CWireStep>& p_objSteps) {
    if (m_objSteps.empty() && !p_objSteps.empty()) {
        m_iStepDue = Clock::now() + p_objSteps.front().m_iDelay;
    }
    m_objSteps.insert(m_objSteps.end(), p_objSteps.begin(), p_objSteps.end());
}
