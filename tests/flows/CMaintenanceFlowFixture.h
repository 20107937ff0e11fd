#pragma once

#include "flows/CMaintenanceFlow.h"
#include "flows/CReadWriteFlow.h"
#include "link/CComLink.h"
#include "tests/fakes/CFakeSerialPort.h"
#include "tests/fakes/CFakeSettingsPage.h"
#include "tests/fakes/CLinkFixture.h"
#include "tests/fakes/CUsbLinkDouble.h"

#include <gtest/gtest.h>

#include <algorithm>

/// The maintenance functions over the LAN (active, not open), the serial port and a double of USB.
class CMaintenanceFlowFixture : public CLinkFixture {
protected:
    CMaintenanceFlowFixture() {
        m_objLinks.SetLink(CInterface::SerialInterface, m_objComLink);
        m_objNoUsbLink.m_bSends = false;
        m_objLinks.SetLink(CInterface::UsbInterface, m_objNoUsbLink);
    }

    /// Opens the LAN link and forgets what the buttons have been told meanwhile.
    void ConnectQuietly() {
        Connect();
        m_objView.m_bEnabled.clear();
    }

    /// Makes the serial port the interface and opens it.
    void OpenComQuietly() {
        m_objInterface.SetActiveInterface(CInterface::SerialInterface);
        ASSERT_TRUE(m_objComLink.Open());
    }

    /// Makes the double the USB link and USB the interface.
    void UseUsb() {
        m_objLinks.SetLink(CInterface::UsbInterface, m_objUsbLink);
        m_objInterface.SetActiveInterface(CInterface::UsbInterface);
    }

    void ExpectTimeOut() {
        m_objMessageBox.Expect("Device Time Out !!", MessageIcon::Critical, "Failure");
    }

    void ExpectSendError() {
        m_objMessageBox.Expect("'LAN' Send Error !!", MessageIcon::Exclamation,
                               "Varden Setting Tool");
    }

    /// Enabled at the end, and from the first "disabled" to the last word never before.
    void ExpectButtonsHeldToTheEnd() {
        EXPECT_EQ(std::count(m_objView.m_bEnabled.begin(), m_objView.m_bEnabled.end(), true), 1);
        ExpectButtonsEnabled();
    }

    void ExpectButtonsEnabled() {
        ASSERT_FALSE(m_objView.m_bEnabled.empty());
        EXPECT_TRUE(m_objView.m_bEnabled.back());
        EXPECT_FALSE(m_objBusy.IsBusy());
    }

    CFakeSerialPort m_objPort{m_objEventLoop};
    CComLink m_objComLink{m_objPort,  m_objInterface, m_objRouter,
                          m_objState, m_objEvents,    m_objWaiter};
    CUsbLinkDouble m_objUsbLink{m_objClock};
    CUsbLinkDouble m_objNoUsbLink{m_objClock};  ///< sends nothing and says nothing
    CMaintenanceFlow m_objFlow{m_objSession};
    CFakeSettingsPage m_objPage;
    CReadWriteFlow m_objReadWriteFlow{m_objItemManager, m_objSession, m_objMessageBox, m_objPage,
                                      m_objPage};
};
