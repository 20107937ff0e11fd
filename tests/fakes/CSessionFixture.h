#pragma once

#include "flows/CSessionView.h"
#include "link/CPrinterSession.h"
#include "tests/fakes/CAbsentSerialPort.h"
#include "tests/fakes/CAbsentUsbLibrary.h"
#include "tests/fakes/CFakeClock.h"
#include "tests/fakes/CFakeEventLoop.h"
#include "tests/fakes/CFakeExchangeView.h"
#include "tests/fakes/CFakeMessageBox.h"
#include "tests/fakes/CFakeTcpClient.h"
#include "tests/fakes/CScriptedPrinter.h"

#include <gtest/gtest.h>

/// A printer session with a double on every side. The LAN is the active interface, no link is open
/// and the printer behaves.
class CSessionFixture : public ::testing::Test {
protected:
    CSessionFixture() { m_objInterface.SetActiveInterface(CInterface::LanInterface); }

    /// Opens the LAN link.
    void Connect() { ASSERT_TRUE(m_objSession.Links().OpenLink(CInterface::LanInterface)); }

    /// The same, and forgets what the buttons have been told meanwhile.
    void ConnectQuietly() {
        Connect();
        m_objView.m_bEnabled.clear();
    }

    CCommandExchange& Exchange() { return m_objSession.Exchange(); }

    CFakeClock m_objClock;
    CFakeEventLoop m_objEventLoop{m_objClock};
    CFakeMessageBox m_objMessageBox;
    CFakeTcpClient m_objSocket{m_objEventLoop};
    CScriptedPrinter m_objPrinter{m_objEventLoop, m_objSocket};
    CAbsentSerialPort m_objSerialPort;
    CAbsentUsbLibrary m_objUsbLibrary;
    CFakeExchangeView m_objView;
    CSessionView m_objEvents{m_objView, m_objMessageBox};
    CItemManager m_objItemManager;
    CInterface m_objInterface;
    CPrinterSession m_objSession{m_objItemManager, m_objInterface, m_objEvents,
                                 CPrinterPlatform{m_objEventLoop, m_objClock, m_objSocket,
                                                  m_objSerialPort, m_objUsbLibrary}};
};
