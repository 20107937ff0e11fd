#pragma once

#include "jobs/CLinkedPrinter.h"
#include "model/MSettingText.h"
#include "simulator/CPrinter.h"
#include "tests/fakes/CFakeClock.h"
#include "tests/fakes/CFakeEventLoop.h"
#include "tests/fakes/CFakeSerialPort.h"
#include "tests/fakes/CFakeSessionEvents.h"
#include "tests/fakes/CFakeTcpClient.h"
#include "tests/fakes/CFakeUsbLibrary.h"
#include "tests/fakes/CScriptedPrinter.h"
#include "tests/fakes/MWire.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

/// A printer to be asked over a link, with a double on every side: it answers each command as
/// m_fnAnswer says, in the form of a network, and as the simulator's printer does at first.
class CJobFixture : public ::testing::Test {
protected:
    using Kind = CFailure::Kind;
    using Script = CScriptedPrinter::Script;
    using Rows = std::vector<const MSettings::Row*>;

    CJobFixture() {
        m_objScripted.m_fnAnswer = [this](const std::string& p_strCommand) {
            return Take(p_strCommand);
        };
        m_objSerialPort.m_fnAnswer = m_objScripted.m_fnAnswer;
        m_objUsbLibrary.m_fnSent = [this](const std::string& p_strCommand) {
            if (const auto strAnswer = Take(p_strCommand)) {
                m_objUsbLibrary.m_strAnswers.push_back(OnUsb(*strAnswer));
            }
        };
    }

    /// An answer as USB brings it.
    static std::string OnUsb(const std::string& p_strAnswer) {
        return p_strAnswer.starts_with('{') ? "\x02"
                                              "0" +
                                                  p_strAnswer
                                            : p_strAnswer;
    }

    CLinkedPrinter Printer(std::int16_t p_iInterface) {
        return CLinkedPrinter(
            {m_objLoop,
             {m_objLoop, m_objClock, m_objSocket, m_objSerialPort, m_objUsbLibrary},
             m_objEvents},
            p_iInterface, m_strDevice, m_objLimits);
    }

    static Rows All() {
        Rows objRows;
        for (const MSettings::Row& objRow : MSettings::All()) {
            objRows.push_back(&objRow);
        }
        return objRows;
    }

    static Rows Named(const std::vector<std::string>& p_strNames) {
        Rows objRows;
        for (const std::string& strName : p_strNames) {
            objRows.push_back(&MSettings::Get(strName));
        }
        return objRows;
    }

    /// Whether a link is as it was before.
    [[nodiscard]] bool IsAllClosed() const {
        return !m_objSocket.IsConnected() && !m_objSerialPort.IsOpen() &&
               !m_objUsbLibrary.IsOpen() && !m_objSocket.HasEvents() &&
               !m_objSerialPort.HasEvents();
    }

    CFakeClock m_objClock;
    CFakeEventLoop m_objEventLoop{m_objClock};
    CDeadlineLoop m_objLoop{m_objEventLoop, m_objClock};
    CFakeTcpClient m_objSocket{m_objEventLoop};
    CScriptedPrinter m_objScripted{m_objEventLoop, m_objSocket};
    CFakeSerialPort m_objSerialPort{m_objEventLoop};
    CFakeUsbLibrary m_objUsbLibrary{m_objEventLoop};
    CFakeSessionEvents m_objEvents;
    CPrinter m_objSimulated;
    Script m_fnAnswer = [this](const std::string& p_strCommand) {
        return m_objSimulated.Handle(p_strCommand).m_strAnswer;
    };
    CPrinterLimits m_objLimits;
    std::string m_strDevice;
    std::vector<std::string> m_strCommands;     // all that have come
    std::vector<std::int64_t> m_iCommandTimes;  // when each came

private:
    std::optional<std::string> Take(const std::string& p_strCommand) {
        m_strCommands.push_back(p_strCommand);
        m_iCommandTimes.push_back(m_objClock.Elapsed());
        return m_fnAnswer(p_strCommand);
    }
};
