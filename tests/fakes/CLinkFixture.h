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

/// The parts of a printer session one by one, with the links' flags in sight and a double on every
/// side. The LAN is the active interface, no link is open and the printer behaves.
class CLinkFixture : public ::testing::Test {
protected:
    CLinkFixture() { m_objInterface.SetActiveInterface(CInterface::LanInterface); }

    /// Opens the LAN link.
    void Connect() { ASSERT_TRUE(m_objLanLink.Open()); }

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
    CLinkState& m_objState = m_objSession.State();
    CBusy& m_objBusy = m_objSession.Busy();
    CWaiter& m_objWaiter = m_objSession.Waiter();
    CAnswerRouter& m_objRouter = m_objSession.Router();
    CPrinterLinks& m_objLinks = m_objSession.Links();
    ILink& m_objLanLink = *m_objLinks.Find(CInterface::LanInterface);
    CCommandExchange& m_objExchange = m_objSession.Exchange();
};
