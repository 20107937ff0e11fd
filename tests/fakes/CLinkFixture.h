#pragma once

#include "link/CAnswerRouter.h"
#include "link/CBusy.h"
#include "link/CCommandExchange.h"
#include "link/CLanLink.h"
#include "link/CPrinterLinks.h"
#include "link/CWaiter.h"
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
    CLinkFixture() {
        m_objInterface.SetActiveInterface(CInterface::LanInterface);
        m_objLinks.SetLink(CInterface::LanInterface, m_objLanLink);
    }

    /// Opens the LAN link.
    void Connect() { ASSERT_TRUE(m_objLanLink.Open()); }

    CFakeClock m_objClock;
    CFakeEventLoop m_objEventLoop{m_objClock};
    CFakeMessageBox m_objMessageBox;
    CFakeTcpClient m_objSocket{m_objEventLoop};
    CScriptedPrinter m_objPrinter{m_objEventLoop, m_objSocket};
    CFakeExchangeView m_objView;
    CItemManager m_objItemManager;
    CInterface m_objInterface;
    CLinkState m_objState;
    CBusy m_objBusy{m_objView};
    CWaiter m_objWaiter{m_objEventLoop, m_objClock};
    CAnswerRouter m_objRouter{m_objItemManager, m_objState, m_objView};
    CLanLink m_objLanLink{m_objSocket, m_objInterface, m_objRouter,    m_objState,
                          m_objBusy,   m_objWaiter,    m_objMessageBox};
    CPrinterLinks m_objLinks;
    CCommandExchange m_objExchange{m_objInterface, m_objLinks,  m_objRouter, m_objState,
                                   m_objBusy,      m_objWaiter, m_objView,   m_objMessageBox};
};
