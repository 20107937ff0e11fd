#pragma once

#include "link/CPrinterSession.h"
#include "tests/fakes/CFakeClock.h"
#include "tests/fakes/CFakeEventLoop.h"
#include "tests/fakes/CFakeSerialPort.h"
#include "tests/fakes/CFakeSessionEvents.h"
#include "tests/fakes/CFakeTcpClient.h"
#include "tests/fakes/CFakeUsbLibrary.h"
#include "tests/fakes/CScriptedPrinter.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

/// A session of which every link is there, and behind each a printer that answers by script.
class CSessionEventsFixture : public ::testing::Test {
protected:
    explicit CSessionEventsFixture(const CExchangeManners& p_objManners = {})
        : m_objSession(
              m_objItemManager, m_objInterface, m_objEvents,
              CPrinterPlatform{m_objEventLoop, m_objClock, m_objSocket, m_objPort, m_objLibrary},
              p_objManners) {
        Answer(CScriptedPrinter::Behave);
    }

    /// Every command is answered so, on each link as it does there.
    void Answer(const CScriptedPrinter::Script& p_fnAnswer) {
        m_objPort.m_fnAnswer = p_fnAnswer;
        m_objPrinter.m_fnAnswer = p_fnAnswer;
        m_objLibrary.m_fnSent = [this, p_fnAnswer](const std::string& p_strCommand) {
            if (const auto strAnswer = p_fnAnswer(p_strCommand)) {
                m_objLibrary.m_strAnswers.push_back(Framed(*strAnswer));
            }
        };
    }

    static std::string Framed(const std::string& p_strAnswer) {
        return p_strAnswer.starts_with("{") ? "\x02 " + p_strAnswer : p_strAnswer;
    }

    /// Makes p_iInterface the interface and opens its link, unless it is USB.
    void Use(std::int16_t p_iInterface) {
        m_objInterface.SetActiveInterface(p_iInterface);
        if (p_iInterface != CInterface::UsbInterface) {
            ASSERT_TRUE(m_objSession.Links().OpenLink(p_iInterface));
        }
        m_objEvents.m_strLines.clear();
    }

    /// These bytes come by themselves, so many milliseconds from now.
    void Arrive(std::int64_t p_iMilliseconds, const std::string& p_strBytes) {
        m_objEventLoop.After(p_iMilliseconds, [this, p_strBytes] {
            switch (m_objInterface.GetActiveInterface()) {
            case CInterface::SerialInterface:
                m_objPort.Arrive(p_strBytes);
                break;
            case CInterface::LanInterface:
                m_objSocket.Arrive(p_strBytes);
                break;
            default:
                m_objLibrary.m_strAnswers.push_back(Framed(p_strBytes));
                break;
            }
        });
    }

    CCommandExchange& Exchange() { return m_objSession.Exchange(); }

    CFakeClock m_objClock;
    CFakeEventLoop m_objEventLoop{m_objClock};
    CFakeTcpClient m_objSocket{m_objEventLoop};
    CScriptedPrinter m_objPrinter{m_objEventLoop, m_objSocket};
    CFakeSerialPort m_objPort{m_objEventLoop};
    CFakeUsbLibrary m_objLibrary{m_objEventLoop};
    CFakeSessionEvents m_objEvents;
    CItemManager m_objItemManager;
    CInterface m_objInterface;
    CPrinterSession m_objSession;
};
