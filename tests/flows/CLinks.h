#pragma once

#include "flows/CMaintenanceFlow.h"
#include "flows/CReadWriteFlow.h"
#include "flows/CSessionView.h"
#include "flows/MHandler.h"
#include "link/CPrinterSession.h"
#include "tests/fakes/CFakeClock.h"
#include "tests/fakes/CFakeEventLoop.h"
#include "tests/fakes/CFakeExchangeView.h"
#include "tests/fakes/CFakeMessageBox.h"
#include "tests/fakes/CFakeSerialPort.h"
#include "tests/fakes/CFakeSettingsPage.h"
#include "tests/fakes/CFakeTcpClient.h"
#include "tests/fakes/CFakeUsbLibrary.h"
#include "tests/fakes/CScriptedPrinter.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

/// The flows on a session of which every link is there, and behind each a printer that behaves.
/// The interface is the LAN.
class CLinks {
public:
    using Texts = std::vector<std::string>;

    CLinks() {
        m_objInterface.SetActiveInterface(CInterface::LanInterface);
        m_objPort.m_fnAnswer = CScriptedPrinter::Behave;
        m_objLibrary.m_fnSent = [this](const std::string& p_strCommand) {
            m_objLibrary.m_strAnswers.clear();  // the library drops what is old before it sends
            const std::string strAnswer = *CScriptedPrinter::Behave(p_strCommand);
            m_objLibrary.m_strAnswers.push_back(strAnswer.starts_with("{") ? "\x02 " + strAnswer
                                                                           : strAnswer);
        };
    }

    /// Makes p_iInterface the interface and opens its link.
    void Use(std::int16_t p_iInterface) {
        m_objInterface.SetActiveInterface(p_iInterface);
        ASSERT_TRUE(m_objSession.Links().OpenLink(p_iInterface));
        m_objView.m_bEnabled.clear();
    }

    /// What the setup dialog's SET does with the links, as a handler.
    void SetUpLinks() {
        MHandler::Run(m_objSession.Waiter(), [this] {
            for (const std::int16_t iInterface :
                 {CInterface::SerialInterface, CInterface::LanInterface,
                  CInterface::UsbInterface}) {
                m_objSession.Links().CloseLink(iInterface);
            }
            m_objSession.Links().OpenLink(m_objInterface.GetActiveInterface());
        });
    }

    /// A handler that stands for so long, as one with a dialog does, and has nothing to send.
    void StandFor(std::int64_t p_iMilliseconds) {
        MHandler::Run(m_objSession.Waiter(), [&] { m_objEventLoop.Idle(p_iMilliseconds); });
    }

    /// All that has gone out over the interface, in one text.
    [[nodiscard]] std::string Sent() const {
        switch (m_objInterface.GetActiveInterface()) {
        case CInterface::SerialInterface:
            return m_objPort.Sent();
        case CInterface::UsbInterface:
            return Joined(m_objLibrary.m_strSent);
        default:
            return Joined(m_objSocket.m_strSent);
        }
    }

    void ForgetSent() {
        m_objSocket.m_strSent.clear();
        m_objPort.m_strWrites.clear();
        m_objLibrary.m_strSent.clear();
    }

    static std::string Joined(const Texts& p_strTexts) {
        std::string strJoined;
        for (const std::string& strText : p_strTexts) {
            strJoined += strText;
        }
        return strJoined;
    }

    void ExpectSendError() {
        m_objMessageBox.Expect("'LAN' Send Error !!", MessageIcon::Exclamation);
    }
    void ExpectTimeOut() {
        m_objMessageBox.Expect("Device Time Out !!", MessageIcon::Critical, "Failure");
    }
    void ExpectButtonsEnabled() {
        EXPECT_TRUE(m_objView.AreControlsEnabled());
        EXPECT_FALSE(m_objSession.Busy().IsBusy());
    }

    CFakeClock m_objClock;
    CFakeEventLoop m_objEventLoop{m_objClock};
    CFakeMessageBox m_objMessageBox;
    CFakeTcpClient m_objSocket{m_objEventLoop};
    CScriptedPrinter m_objPrinter{m_objEventLoop, m_objSocket};
    CFakeSerialPort m_objPort{m_objEventLoop};
    CFakeUsbLibrary m_objLibrary{m_objEventLoop};
    CFakeExchangeView m_objView;
    CSessionView m_objEvents{m_objView, m_objMessageBox};
    CItemManager m_objItemManager;
    CInterface m_objInterface;
    CPrinterSession m_objSession{
        m_objItemManager, m_objInterface, m_objEvents,
        CPrinterPlatform{m_objEventLoop, m_objClock, m_objSocket, m_objPort, m_objLibrary}};
    CFakeSettingsPage m_objParameterPage;
    CFakeSettingsPage m_objLanPage;
    CReadWriteFlow m_objFlow{m_objItemManager, m_objSession, m_objMessageBox, m_objParameterPage,
                             m_objLanPage};
    CMaintenanceFlow m_objMaintenance{m_objSession};
};
