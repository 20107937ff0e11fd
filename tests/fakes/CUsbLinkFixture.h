#pragma once

#include "link/CUsbLink.h"
#include "simulator/CSession.h"
#include "tests/fakes/CFakeUsbLibrary.h"
#include "tests/fakes/CLinkFixture.h"

/// The parts of a printer session with USB as the active interface, and behind the library the
/// simulator's printer.
class CUsbLinkFixture : public CLinkFixture {
protected:
    CUsbLinkFixture() {
        m_objInterface.SetActiveInterface(CInterface::UsbInterface);
        m_objLinks.SetLink(CInterface::UsbInterface, m_objUsbLink);
        m_objLibrary.m_fnSent = [this](const std::string& p_strCommand) { Behave(p_strCommand); };
    }

    /// Answers as the simulator's printer does, at once.
    void Behave(const std::string& p_strCommand) {
        for (const CWireStep& objStep : m_objWire.Received(MWire::ToBytes(p_strCommand))) {
            m_objLibrary.m_strAnswers.push_back(objStep.m_strBytes);
        }
    }

    /// Answers every command with these bytes.
    void AnswerWith(const std::string& p_strAnswer) {
        m_objLibrary.m_fnSent = [this, p_strAnswer](const std::string&) {
            m_objLibrary.m_strAnswers.push_back(p_strAnswer);
        };
    }

    void KeepSilent() { m_objLibrary.m_fnSent = nullptr; }

    class CNoLog : public ISimulatorLog {
        void Line(std::size_t /*p_iConnection*/, std::string_view /*p_strLine*/) override {}
    };

    CFakeUsbLibrary m_objLibrary{m_objEventLoop};
    CUsbLink m_objUsbLink{m_objLibrary, m_objRouter, m_objState, m_objWaiter, m_objEvents};
    CNoLog m_objLog;
    CPrinter m_objUsbPrinter;
    CSession m_objWire{1, m_objUsbPrinter, {}, m_objLog, CSession::Wire::Usb};
};
