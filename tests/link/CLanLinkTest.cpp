#include "flows/MFailureBox.h"
#include "model/CConversionError.h"
#include "tests/fakes/CLinkFixture.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Told = std::vector<bool>;
using Remote = CFakeTcpClient::Remote;
using ConnectResult = CFakeTcpClient::ConnectResult;

constexpr const char* OpenError = "'LAN' Open Error !!";
constexpr const char* SendError = "'LAN' Send Error !!";

class CLanLinkTest : public CLinkFixture {
protected:
    /// One exchange in a handler's turn. m_strError is what it says.
    bool Exchange(const std::string& p_strCommand = "{WS|}") {
        const CWaiter::Turn objTurn(m_objWaiter);
        m_strError.clear();
        CFailure objFailure;
        const bool bSent = m_objLanLink.Exchange(MWire::ToBytes(p_strCommand), m_objBuffer,
                                                 objFailure, m_iReceivedCount, ReceiveLength);
        m_strError = MFailureBox::HandlerText(objFailure);
        return bSent;
    }

    static SocketError Refused() {
        SocketError objError;
        objError.m_iNumber = 111;
        objError.m_strDescription = "Connection refused";
        return objError;
    }

    static constexpr std::int16_t ReceiveLength = 13;

    std::string m_strError;
    Bytes m_objBuffer;
    std::int16_t m_iReceivedCount = 0;
};

// Opening.

TEST_F(CLanLinkTest, OpensWithTheButtonsDisabledMeanwhile) {
    m_objEventLoop.AtNextYield([this] { EXPECT_FALSE(m_objView.AreControlsEnabled()); });
    EXPECT_TRUE(m_objLanLink.Open());
    EXPECT_EQ(m_objState.m_iConnected, 1);
    EXPECT_EQ(m_objSocket.m_iConnects, 1);
    EXPECT_EQ(m_objView.m_bEnabled, (Told{false, true}));
}

TEST_F(CLanLinkTest, ConnectsToTheAddressAndPortOfTheInterface) {
    m_objInterface.m_objIpAddress1->SetValue(127);
    m_objInterface.m_objIpAddress2->SetValue(0);
    m_objInterface.m_objIpAddress3->SetValue("010");
    m_objInterface.m_objIpAddress4->SetValue(1);
    m_objInterface.m_objSocketPort->SetValue(80);
    Connect();
    EXPECT_EQ(m_objSocket.m_objRemotes, (std::vector<Remote>{{"127.0.10.1", 80}}));
}

TEST_F(CLanLinkTest, ConnectsToTheDefaultsOtherwise) {
    Connect();
    EXPECT_EQ(m_objSocket.m_objRemotes, (std::vector<Remote>{{"192.168.10.20", 8000}}));
}

TEST_F(CLanLinkTest, OpeningClearsTheFlags) {
    m_objState = {1, 1, -1, 1, 1};
    m_objSocket.m_iConnectResult = ConnectResult::Never;
    m_objEventLoop.AtNextYield([this] {
        EXPECT_EQ(m_objState.m_iConnected, 0);
        EXPECT_EQ(m_objState.m_iSendComplete, 0);
        EXPECT_EQ(m_objState.m_iLinkError, 0);
        EXPECT_EQ(m_objState.m_iReplyReceived, 0);
        EXPECT_EQ(m_objState.m_iStatusReceived, 0);
        m_objEventLoop.RequestClose();
    });
    EXPECT_FALSE(m_objLanLink.Open());
}

TEST_F(CLanLinkTest, APrinterThatClosesRightBehindItsConnectEndsTheOpening) {
    // One yield holds both where a box stands in it.
    m_objSocket.m_iConnectResult = ConnectResult::Never;
    m_objEventLoop.AtYield(1, [this] {
        m_objSocket.ConnectNow();
        m_objSocket.PeerCloses();
    });
    m_objEventLoop.AtYield(3, [this] { m_objEventLoop.RequestClose(); });
    EXPECT_TRUE(m_objLanLink.Open());
    EXPECT_EQ(m_objEventLoop.Yields(), 1);
    EXPECT_EQ(m_objState.m_iConnected, 0);
    EXPECT_TRUE(m_objView.AreControlsEnabled());
    EXPECT_FALSE(Exchange());
    EXPECT_EQ(m_strError, SendError);
}

// What it waits for wakes it: to look at the clock again and again would be for nothing.
TEST_F(CLanLinkTest, TheWaitForAConnectionSleeps) {
    double dAsked = 0;
    m_objEventLoop.AtNextYield([&] { dAsked = m_objEventLoop.Asked(); });
    EXPECT_TRUE(m_objLanLink.Open());
    EXPECT_DOUBLE_EQ(dAsked, 1);
}

TEST_F(CLanLinkTest, TheWaitForASendSleepsNoLongerThanItMayLast) {
    Connect();
    m_objSocket.m_bCompletesSends = false;
    const std::int64_t iBefore = m_objClock.Elapsed();
    int iLooks = 0;
    for (int i = 100; i < 2000; i += 100) {
        m_objEventLoop.After(i, [&] {
            const auto iWaited = static_cast<double>(m_objClock.Elapsed() - iBefore);
            EXPECT_NEAR(m_objEventLoop.Asked() + iWaited / 1000, 2, 0.05);
            ++iLooks;
        });
    }
    EXPECT_FALSE(Exchange());
    EXPECT_EQ(iLooks, 19);
}

TEST_F(CLanLinkTest, AnEarlierConnectionDoesNotStandForTheNext) {
    Connect();
    m_objSocket.m_iConnectResult = ConnectResult::Never;
    m_objEventLoop.After(1000, [this] { m_objEventLoop.RequestClose(); });
    EXPECT_FALSE(m_objLanLink.Open());
}

TEST_F(CLanLinkTest, AFailureToConnectIsDescribedThenReported) {
    m_objSocket.m_iConnectResult = ConnectResult::Fails;
    m_objSocket.m_objConnectError = Refused();
    m_objMessageBox.Expect("Number=111  Connection refused\r\nScode=0\r\nSource=\r\nHelpFile=\r\n"
                           "HelpContext=0\r\nCancelDisplay=False");
    m_objMessageBox.Expect(OpenError, MessageIcon::Critical);
    m_objMessageBox.WhileShown(
        [this](const auto& /*p_objBox*/) { EXPECT_FALSE(m_objView.AreControlsEnabled()); });
    EXPECT_FALSE(m_objLanLink.Open());
    EXPECT_EQ(m_objState.m_iLinkError, -1);
    EXPECT_EQ(m_objState.m_iConnected, 0);
    EXPECT_EQ(m_objView.m_bEnabled, (Told{false, true}));
    EXPECT_FALSE(m_objSocket.IsConnected());
}

TEST_F(CLanLinkTest, EveryPartOfAnErrorHasItsLine) {
    m_objMessageBox.Expect("Number=-7  why\r\nScode=-2146828218\r\nSource=who\r\nHelpFile=a.hlp\r\n"
                           "HelpContext=42\r\nCancelDisplay=True");
    m_objSocket.Break({-7, "why", -2146828218, "who", "a.hlp", 42, true});
}

TEST_F(CLanLinkTest, AnErrorClosesTheSocketAroundItsBoxAndSetsTheRemoteAgain) {
    Connect();
    const int iCloses = m_objSocket.m_iCloses;
    m_objInterface.m_objSocketPort->SetValue(9100);
    m_objMessageBox.Expect("Number=0  \r\nScode=0\r\nSource=\r\nHelpFile=\r\nHelpContext=0\r\n"
                           "CancelDisplay=False");
    m_objMessageBox.WhileShown([&](const auto& /*p_objBox*/) {
        EXPECT_EQ(m_objSocket.m_iCloses, iCloses + 1);
        EXPECT_EQ(m_objState.m_iLinkError, 0) << "the flag comes last";
    });
    m_objSocket.Break({});
    EXPECT_EQ(m_objSocket.m_iCloses, iCloses + 2);
    EXPECT_EQ(m_objSocket.m_objRemotes.back(), (Remote{"192.168.10.20", 9100}));
    EXPECT_EQ(m_objState.m_iConnected, 0);
    EXPECT_EQ(m_objState.m_iLinkError, -1);
    EXPECT_TRUE(m_objView.AreControlsEnabled());
}

TEST_F(CLanLinkTest, AnErrorEndsTheBusyStateBeforeItSetsItsFlag) {
    Connect();
    m_objBusy.BeginBusy();
    m_objView.m_bEnabled.clear();
    m_objMessageBox.Expect("Number=0  \r\nScode=0\r\nSource=\r\nHelpFile=\r\nHelpContext=0\r\n"
                           "CancelDisplay=False");
    m_objMessageBox.WhileShown(
        [this](const auto& /*p_objBox*/) { EXPECT_TRUE(m_objBusy.IsBusy()); });
    m_objView.m_fnSetControlsEnabled = [this](bool /*p_bEnabled*/) {
        EXPECT_EQ(m_objState.m_iLinkError, 0);
    };
    m_objSocket.Break({});
    EXPECT_EQ(m_objView.m_bEnabled, Told{true});
    EXPECT_FALSE(m_objBusy.IsBusy());
    EXPECT_EQ(m_objState.m_iLinkError, -1);
}

TEST_F(CLanLinkTest, AnErrorWithNoWayToSetTheRemoteStillSetsItsFlag) {
    Connect();
    m_objInterface.m_objSocketPort->SetValue("no number");
    m_objMessageBox.Expect("Number=0  \r\nScode=0\r\nSource=\r\nHelpFile=\r\nHelpContext=0\r\n"
                           "CancelDisplay=False");
    EXPECT_NO_THROW(m_objSocket.Break({}));
    EXPECT_EQ(m_objState.m_iLinkError, -1);
    EXPECT_TRUE(m_objView.AreControlsEnabled());
}

TEST_F(CLanLinkTest, WhatFailsInsideAnErrorReachesTheHandlerThatWaits) {
    Connect();
    const CWaiter::Turn objTurn(m_objWaiter);
    m_objInterface.m_objSocketPort->SetValue("no number");
    m_objMessageBox.Expect("Number=0  \r\nScode=0\r\nSource=\r\nHelpFile=\r\nHelpContext=0\r\n"
                           "CancelDisplay=False");
    m_objEventLoop.AtNextYield([this] { m_objSocket.Break({}); });
    EXPECT_THROW(m_objWaiter.Yield(), CConversionError);
    EXPECT_EQ(m_objState.m_iLinkError, -1);
    EXPECT_TRUE(m_objWaiter.Yield()) << "once";
}

TEST_F(CLanLinkTest, AnAddressThatIsNoNumberConnectsNowhere) {
    m_objInterface.m_objIpAddress2->SetValue("abc");
    EXPECT_ANY_THROW(m_objLanLink.Open());
    EXPECT_EQ(m_objSocket.m_iConnects, 0);
    EXPECT_TRUE(m_objView.AreControlsEnabled());
}

TEST_F(CLanLinkTest, OnlyClosingEndsAnEndlessConnect) {
    constexpr std::int64_t iHour = 3'600'000;
    m_objSocket.m_iConnectResult = ConnectResult::Never;
    m_objEventLoop.After(iHour, [this] { m_objEventLoop.RequestClose(); });
    EXPECT_FALSE(m_objLanLink.Open());
    EXPECT_EQ(m_objClock.Elapsed(), iHour);
    EXPECT_EQ(m_objSocket.m_iCloses, 1);
    EXPECT_EQ(m_objView.m_bEnabled, (Told{false, true}));
}

TEST_F(CLanLinkTest, DoesNotConnectWhenTheProgramCloses) {
    m_objEventLoop.RequestClose();
    EXPECT_FALSE(m_objLanLink.Open());
    EXPECT_EQ(m_objSocket.m_iConnects, 0);
}

TEST_F(CLanLinkTest, CanBeOpenedAgain) {
    m_objSocket.m_iConnectResult = ConnectResult::Fails;
    m_objMessageBox.Expect("Number=0  \r\nScode=0\r\nSource=\r\nHelpFile=\r\nHelpContext=0\r\n"
                           "CancelDisplay=False");
    m_objMessageBox.Expect(OpenError, MessageIcon::Critical);
    EXPECT_FALSE(m_objLanLink.Open());
    m_objSocket.m_iConnectResult = ConnectResult::Connects;
    EXPECT_TRUE(m_objLanLink.Open());
    EXPECT_TRUE(m_objLanLink.Open());
    EXPECT_EQ(m_objState.m_iLinkError, 0);
    EXPECT_TRUE(Exchange());
}

TEST_F(CLanLinkTest, ClosesAsOftenAsYouLike) {
    Connect();
    EXPECT_TRUE(m_objLanLink.Close());
    EXPECT_TRUE(m_objLanLink.Close());
    EXPECT_EQ(m_objState.m_iConnected, 0);
    EXPECT_FALSE(m_objSocket.IsConnected());
}

TEST_F(CLanLinkTest, TakesTheSocketsEventsForItsLifetime) {
    EXPECT_TRUE(m_objSocket.HasEvents());
    {
        const CLanLink objOther(m_objSocket, m_objInterface, m_objRouter, m_objState, m_objBusy,
                                m_objWaiter, m_objEvents);
        EXPECT_TRUE(m_objSocket.HasEvents());
    }
    EXPECT_FALSE(m_objSocket.HasEvents());
}

// Sending.

TEST_F(CLanLinkTest, SendsTheBytesAsTheyAre) {
    Connect();
    const std::string strCommand("\x00{\xFF\x80|}\r\n", 8);
    EXPECT_TRUE(Exchange(strCommand));
    EXPECT_EQ(m_objSocket.m_strSent, std::vector<std::string>{strCommand});
    EXPECT_EQ(m_strError, "");
    EXPECT_EQ(m_objState.m_iSendComplete, 1);
}

TEST_F(CLanLinkTest, EmptiesAndResizesTheReceiveBuffer) {
    Connect();
    m_objBuffer.assign(500, 7);
    EXPECT_TRUE(Exchange());
    EXPECT_EQ(m_objBuffer, Bytes(ReceiveLength, 0));
}

TEST_F(CLanLinkTest, SendsNothingAtOnceWhileNotConnected) {
    EXPECT_FALSE(Exchange());
    EXPECT_EQ(m_strError, SendError);
    EXPECT_EQ(m_objClock.Elapsed(), 0);
    EXPECT_TRUE(m_objSocket.m_strSent.empty());
}

TEST_F(CLanLinkTest, SendsNothingAfterTheOtherSideHasClosed) {
    Connect();
    m_objSocket.PeerCloses();
    EXPECT_EQ(m_objState.m_iConnected, 0);
    EXPECT_EQ(m_objState.m_iLinkError, 0);
    const std::int64_t iBefore = m_objClock.Elapsed();
    EXPECT_FALSE(Exchange());
    EXPECT_EQ(m_strError, SendError);
    EXPECT_EQ(m_objClock.Elapsed(), iBefore);
}

TEST_F(CLanLinkTest, ASocketThatTakesNothingIsAnErrorAtOnce) {
    Connect();
    m_objSocket.m_bRefusesSends = true;
    const std::int64_t iBefore = m_objClock.Elapsed();
    EXPECT_FALSE(Exchange());
    EXPECT_EQ(m_strError, SendError);
    EXPECT_EQ(m_objClock.Elapsed(), iBefore);
}

TEST_F(CLanLinkTest, ASendThatDoesNotEndIsAnErrorJustAfterTwoSeconds) {
    Connect();
    m_objSocket.m_bCompletesSends = false;
    const std::int64_t iBefore = m_objClock.Elapsed();
    EXPECT_FALSE(Exchange());
    EXPECT_EQ(m_strError, SendError);
    EXPECT_EQ(m_objClock.Elapsed() - iBefore, 2000 + CFakeEventLoop::StepMilliseconds);
}

TEST_F(CLanLinkTest, WhatWasNotSentInTwoSecondsIsThrownAway) {
    Connect();
    m_objSocket.m_bCompletesSends = false;
    const int iCloses = m_objSocket.m_iCloses;
    m_objEventLoop.After(2000, [&] { EXPECT_TRUE(m_objSocket.IsConnected()) << "not before"; });
    EXPECT_FALSE(Exchange("{Z4;1|}"));
    EXPECT_EQ(m_objSocket.m_iCloses, iCloses + 1);
    EXPECT_FALSE(m_objSocket.IsConnected());
    EXPECT_EQ(m_objState.m_iConnected, 0);
    EXPECT_EQ(m_objState.m_iLinkError, 0) << "no error event";

    const std::int64_t iBefore = m_objClock.Elapsed();
    EXPECT_FALSE(Exchange());
    EXPECT_EQ(m_strError, SendError);
    EXPECT_EQ(m_objClock.Elapsed(), iBefore) << "not connected any more";
    m_objSocket.m_bCompletesSends = true;
    Connect();
    EXPECT_TRUE(Exchange());
}

TEST_F(CLanLinkTest, AConnectionThatWasMadeWhileASendWaitedStays) {
    Connect();
    m_objSocket.m_bCompletesSends = false;
    m_objEventLoop.After(500, [this] {
        EXPECT_TRUE(m_objLanLink.Open());
        m_objEventLoop.Idle(3000);
    });
    EXPECT_FALSE(Exchange());
    EXPECT_EQ(m_strError, SendError);
    EXPECT_EQ(m_objState.m_iConnected, 1);
    EXPECT_TRUE(m_objSocket.IsConnected());
}

TEST_F(CLanLinkTest, ASendMayTakeTwoSeconds) {
    Connect();
    m_objSocket.m_bCompletesSends = false;
    m_objEventLoop.After(2000, [this] { m_objSocket.CompleteSend(); });
    EXPECT_TRUE(Exchange());
    EXPECT_EQ(m_strError, "");
}

TEST_F(CLanLinkTest, ASecondSendWaitsForItsOwnEnd) {
    Connect();
    EXPECT_TRUE(Exchange());
    m_objSocket.m_bCompletesSends = false;
    EXPECT_FALSE(Exchange());
    EXPECT_EQ(m_strError, SendError);
}

TEST_F(CLanLinkTest, AnErrorWhileSendingEndsTheWait) {
    Connect();
    m_objSocket.m_bCompletesSends = false;
    m_objMessageBox.Expect("Number=111  Connection refused\r\nScode=0\r\nSource=\r\nHelpFile=\r\n"
                           "HelpContext=0\r\nCancelDisplay=False");
    m_objEventLoop.AtNextYield([this] { m_objSocket.Break(Refused()); });
    const std::int64_t iBefore = m_objClock.Elapsed();
    EXPECT_FALSE(Exchange());
    EXPECT_EQ(m_strError, SendError);
    EXPECT_EQ(m_objClock.Elapsed() - iBefore, CFakeEventLoop::StepMilliseconds);
}

TEST_F(CLanLinkTest, TheOtherSidesClosingWhileSendingRunsIntoTheLimit) {
    Connect();
    m_objSocket.m_bCompletesSends = false;
    m_objEventLoop.AtNextYield([this] { m_objSocket.PeerCloses(); });
    const std::int64_t iBefore = m_objClock.Elapsed();
    EXPECT_FALSE(Exchange());
    EXPECT_EQ(m_strError, SendError);
    EXPECT_GT(m_objClock.Elapsed() - iBefore, 2000);
}

TEST_F(CLanLinkTest, OverMidnightOnlyTheSendsEndEndsTheWait) {
    Connect();
    m_objSocket.m_bCompletesSends = false;
    m_objClock.SetTimeOfDay(86399);
    m_objEventLoop.After(600'000, [this] { m_objSocket.CompleteSend(); });
    EXPECT_TRUE(Exchange());
    EXPECT_EQ(m_strError, "");
}

TEST_F(CLanLinkTest, OverMidnightClosingEndsTheWait) {
    Connect();
    m_objSocket.m_bCompletesSends = false;
    m_objClock.SetTimeOfDay(86399);
    m_objEventLoop.After(600'000, [this] { m_objEventLoop.RequestClose(); });
    EXPECT_FALSE(Exchange());
    EXPECT_EQ(m_strError, "");
}

TEST_F(CLanLinkTest, ClosingWhileSendingLeavesNoError) {
    Connect();
    m_objSocket.m_bCompletesSends = false;
    m_objEventLoop.AtNextYield([this] { m_objEventLoop.RequestClose(); });
    EXPECT_FALSE(Exchange());
    EXPECT_EQ(m_strError, "");
}

TEST_F(CLanLinkTest, ThrowsAwayWhatLiesInTheSocketBeforeItSends) {
    Connect();
    m_objRouter.SetAnswerSelector(1);
    m_objSocket.Leave(std::string(3 * CFakeTcpClient::BlockBytes, '{'));
    m_objEventLoop.After(100, [this] { m_objSocket.Arrive(MWire::Settings(1)); });
    EXPECT_TRUE(Exchange("{Z5;1|}"));
    m_objEventLoop.Idle(200);
    EXPECT_EQ(MWire::StoredFields(m_objItemManager, 1), MWire::Fields(1));
}

// Events that nobody waits for.

TEST_F(CLanLinkTest, AnAnswerIsRoutedAndEnablesTheButtons) {
    Connect();
    m_objView.m_bEnabled.clear();
    m_objSocket.Arrive(MWire::Status("00"));
    EXPECT_EQ(m_objView.m_strStatuses, std::vector<std::string>{"ON LINE"});
    EXPECT_EQ(m_objView.m_bEnabled, Told{true});
}

TEST_F(CLanLinkTest, AViewThatFailsWithNoHandlerRunningIsDropped) {
    Connect();
    m_objView.m_fnShowStatus = [](const std::string&) { throw std::runtime_error("no label"); };
    EXPECT_NO_THROW(m_objSocket.Arrive(MWire::Status("00")));
    EXPECT_TRUE(m_objView.AreControlsEnabled());
    const CWaiter::Turn objTurn(m_objWaiter);
    EXPECT_TRUE(m_objWaiter.Yield());
}

TEST_F(CLanLinkTest, AViewThatFailsReachesTheHandlerThatWaits) {
    Connect();
    const CWaiter::Turn objTurn(m_objWaiter);
    m_objView.m_fnShowStatus = [](const std::string&) { throw std::runtime_error("no label"); };
    m_objEventLoop.AtNextYield([this] { m_objSocket.Arrive(MWire::Status("00")); });
    EXPECT_THROW(m_objWaiter.Yield(), std::runtime_error);
}

TEST_F(CLanLinkTest, MuchDataInManyBlocksIsTakenWhole) {
    Connect();
    m_objRouter.SetAnswerSelector(0);
    m_objSocket.Arrive(std::string((1 << 20) + 7, '~') + MWire::Settings(0));
    EXPECT_EQ(MWire::StoredFields(m_objItemManager, 0), MWire::Fields(0));
}

}  // namespace
