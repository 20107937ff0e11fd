#include "tests/fakes/CSessionFixture.h"

#include "flows/MHandler.h"

#include <gtest/gtest.h>

#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Texts = std::vector<std::string>;
using Told = std::vector<bool>;

class CPrinterSessionTest : public CSessionFixture {};

TEST_F(CPrinterSessionTest, KnowsALinkForEachInterface) {
    CPrinterLinks& objLinks = m_objSession.Links();
    EXPECT_NE(dynamic_cast<CComLink*>(objLinks.Find(CInterface::SerialInterface)), nullptr);
    EXPECT_NE(dynamic_cast<CLanLink*>(objLinks.Find(CInterface::LanInterface)), nullptr);
    EXPECT_NE(dynamic_cast<CUsbLink*>(objLinks.Find(CInterface::UsbInterface)), nullptr);
}

TEST_F(CPrinterSessionTest, OpensNothingByItself) {
    EXPECT_EQ(m_objSocket.m_iConnects, 0);
    EXPECT_EQ(m_objEventLoop.Yields(), 0);
    EXPECT_EQ(m_objView.m_bEnabled, Told{});
}

TEST_F(CPrinterSessionTest, LetsTheSocketGoAtItsEnd) {
    CFakeTcpClient objSocket(m_objEventLoop);
    {
        const CPrinterSession objSession(
            m_objItemManager, m_objInterface, m_objEvents,
            {m_objEventLoop, m_objClock, objSocket, m_objSerialPort, m_objUsbLibrary});
        EXPECT_TRUE(objSocket.HasEvents());
    }
    EXPECT_FALSE(objSocket.HasEvents());
}

TEST_F(CPrinterSessionTest, ReadsAGroupOfThePrinter) {
    ConnectQuietly();
    EXPECT_TRUE(Exchange().ReadGroup(3));
    EXPECT_EQ(m_objSocket.m_strSent, Texts{"{Z5;3|}"});
    EXPECT_EQ(MWire::StoredFields(m_objItemManager, 3), MWire::Fields(3));
}

TEST_F(CPrinterSessionTest, TheRouterTakesAHeadCheck) {
    ConnectQuietly();
    m_objSession.Router().ExpectHeadCheck();
    EXPECT_TRUE(Exchange().SendMaintenance("{HD001,A|}"));
    EXPECT_EQ(m_objView.m_strHeadChecks, Texts{"ON LINE"});
    EXPECT_EQ(m_objView.m_strStatuses, Texts{});
}

TEST_F(CPrinterSessionTest, UnaskedAnswersAreTakenAtAnyTime) {
    ConnectQuietly();
    m_objSocket.Arrive(MWire::Status("11"));
    m_objEventLoop.Idle(1000);
    m_objSocket.Arrive(MWire::Settings(1) + MWire::Status("13"));
    EXPECT_EQ(m_objView.m_strStatuses, (Texts{"Paper JAM", "Paper Error"}));
    EXPECT_TRUE(m_objView.AreControlsEnabled());
    EXPECT_TRUE(Exchange().ReadGroup(1));
}

TEST_F(CPrinterSessionTest, AFailureInAnUnaskedAnswerIsDropped) {
    ConnectQuietly();
    m_objView.m_fnShowStatus = [](const std::string&) { throw std::runtime_error("no label"); };
    EXPECT_NO_THROW(m_objSocket.Arrive(MWire::Status("11")));
    m_objView.m_fnShowStatus = nullptr;
    bool bDone = false;
    MHandler::Run(m_objSession.Waiter(), [&] { bDone = Exchange().RequestStatus().m_bDone; });
    EXPECT_TRUE(bDone);
    EXPECT_EQ(m_objView.m_strStatuses, (Texts{"", "ON LINE"}));
}

TEST_F(CPrinterSessionTest, AFailureInAnAnswerEndsTheHandlerThatRuns) {
    ConnectQuietly();
    m_objView.m_fnShowStatus = [](const std::string& p_strText) {
        if (p_strText == "ON LINE") {
            throw std::runtime_error("no label");
        }
    };
    bool bReached = false;
    MHandler::Run(m_objSession.Waiter(), [&] {
        Exchange().RequestStatus();
        bReached = true;
    });
    EXPECT_FALSE(bReached);
    EXPECT_TRUE(m_objView.AreControlsEnabled());
    EXPECT_FALSE(m_objSession.Busy().IsBusy());
}

TEST_F(CPrinterSessionTest, AFloodOfRandomBytesIsHarmlessWhileAReadWaits) {
    ConnectQuietly();
    std::mt19937 objRandom(7);  // the same bytes each time
    std::uniform_int_distribution<int> objByte(0, 255);
    std::string strFlood(1 << 20, '\0');
    for (char& cByte : strFlood) {
        cByte = static_cast<char>(objByte(objRandom));
    }
    m_objEventLoop.AtNextYield([&] { m_objSocket.Arrive(strFlood); });
    m_objPrinter.m_iDelay = 1000;
    EXPECT_NO_THROW(Exchange().ReadGroup(2));
    m_objPrinter.m_iDelay = 20;
    EXPECT_TRUE(Exchange().ReadGroup(4));
    EXPECT_EQ(MWire::StoredFields(m_objItemManager, 4), MWire::Fields(4));
    EXPECT_TRUE(m_objView.AreControlsEnabled());
}

}  // namespace
