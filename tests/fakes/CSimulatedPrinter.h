#pragma once

#include "simulator/CPrinter.h"
#include "simulator/CSession.h"
#include "tests/fakes/CFakeTcpClient.h"
#include "tests/fakes/MWire.h"

#include <string>
#include <string_view>
#include <vector>

/// The simulator's printer at the other end of a CFakeTcpClient: its rules and faults, the fake
/// clock's time.
class CSimulatedPrinter : private ISimulatorLog {
public:
    CSimulatedPrinter(CFakeEventLoop& p_objEventLoop, CFakeTcpClient& p_objSocket,
                      const CFaultSettings& p_objFaults = {})
        : m_objEventLoop(p_objEventLoop)
        , m_objSocket(p_objSocket)
        , m_objSession(1, m_objPrinter, p_objFaults, *this) {
        m_objSocket.m_fnSent = [this](const std::string& p_strCommand) {
            CarryOut(m_objSession.Received(MWire::ToBytes(p_strCommand)));
        };
    }
    CSimulatedPrinter(const CSimulatedPrinter&) = delete;
    CSimulatedPrinter& operator=(const CSimulatedPrinter&) = delete;
    ~CSimulatedPrinter() override { m_objSocket.m_fnSent = nullptr; }

    [[nodiscard]] const CItemManager& Items() const { return m_objPrinter.Items(); }

    /// How many commands have been refused.
    [[nodiscard]] std::size_t Refused() const {
        std::size_t iRefused = 0;
        for (int iKind = 0; iKind < static_cast<int>(MCommandKind::KindCount); ++iKind) {
            iRefused += m_objPrinter.Commands(static_cast<MCommandKind::Kind>(iKind)).m_iRefused;
        }
        return iRefused;
    }

private:
    void Line(std::size_t /*p_iConnection*/, std::string_view /*p_strLine*/) override {}

    void CarryOut(const std::vector<CWireStep>& p_objSteps) {
        std::int64_t iDelay = CFakeEventLoop::StepMilliseconds;
        for (const CWireStep& objStep : p_objSteps) {
            iDelay += objStep.m_iDelay.count();
            m_objEventLoop.After(iDelay, [this, objStep] {
                if (m_objSocket.IsConnected()) {
                    m_objSocket.Arrive(objStep.m_strBytes);
                }
                if (m_objSocket.IsConnected() && objStep.m_bClose) {
                    m_objSocket.PeerCloses();
                }
            });
        }
    }

    CFakeEventLoop& m_objEventLoop;
    CFakeTcpClient& m_objSocket;
    CPrinter m_objPrinter;
    CSession m_objSession;
};
