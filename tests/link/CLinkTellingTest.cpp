#include "tests/link/CSessionEventsFixture.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

// What a link tells besides its states: why it is not to be had, that it has gone by itself, and
// how long it waits; and how an opening is stopped.

namespace {

using Texts = std::vector<std::string>;
using Seconds = std::vector<std::int16_t>;

constexpr std::int16_t Com = CInterface::SerialInterface;
constexpr std::int16_t Lan = CInterface::LanInterface;
constexpr std::int16_t Usb = CInterface::UsbInterface;

class CLinkTellingTest : public CSessionEventsFixture {
protected:
    COutcome AskStatus() { return Exchange().Request("{WS|}", 13, AwaitedAnswer::Any); }
};

TEST_F(CLinkTellingTest, APortThatDoesNotOpenTellsWhyAndWhoMay) {
    m_objPort.m_iOpenResult = EACCES;
    m_objPort.m_objRefusal = {"/dev/ttyUSB0", "dialout", true};
    m_objSession.Links().OpenLink(Com);
    ASSERT_EQ(m_objEvents.m_objFailures.size(), 1U);
    const CFailure& objFailure = m_objEvents.m_objFailures.front();
    EXPECT_EQ(objFailure.m_iReason, EACCES);
    EXPECT_EQ(objFailure.m_objRefusal.m_strFile, "/dev/ttyUSB0");
    EXPECT_EQ(objFailure.m_objRefusal.m_strGroup, "dialout");
    EXPECT_TRUE(objFailure.m_objRefusal.m_bMember);
}

TEST_F(CLinkTellingTest, APrinterOnUsbThatIsNotReadyTellsWhy) {
    m_objInterface.SetActiveInterface(Usb);
    m_objLibrary.m_iNotReadyNumber = EBUSY;
    // At once, when it is to send, and when it is to receive.
    for (const std::size_t iGood : {0U, 1U, 2U}) {
        m_objLibrary.m_iOpenResults.assign(iGood, IUsbLibrary::Opened);
        m_objLibrary.m_iOpenResults.push_back(IUsbLibrary::NotReady);
        m_objEvents.m_objFailures.clear();
        AskStatus();
        ASSERT_FALSE(m_objEvents.m_objFailures.empty()) << iGood;
        EXPECT_EQ(m_objEvents.m_objFailures.front().m_iReason, EBUSY) << iGood;
    }
    m_objLibrary.m_iOpenResults = {IUsbLibrary::Mismatch};
    AskStatus();
    EXPECT_EQ(m_objEvents.m_objFailures.back().m_iReason, 0) << "of an earlier opening";
    m_objLibrary.m_iSendResult = IUsbLibrary::Failed;
    AskStatus();
    EXPECT_EQ(m_objEvents.m_objFailures.back().m_iReason, 0) << "likewise";
}

TEST_F(CLinkTellingTest, APortThatGoesAwayIsAStateAndNoFailure) {
    Use(Com);
    m_objPort.GoAway();
    EXPECT_EQ(m_objEvents.m_strLines, Texts{"link 0 failed COM1 9600,E,8,1: SerialLost"});
}

TEST_F(CLinkTellingTest, WhatFailsOnAConnectionThatWasReplacedIsNotTheStateOfTheNewOne) {
    Use(Com);
    m_objEventLoop.AtNextYield([this] { m_objSession.Links().OpenLink(Com); });
    AskStatus();
    EXPECT_EQ(m_objEvents.Lines("link"), Texts{"link 0 open COM1 9600,E,8,1"});
    EXPECT_EQ(m_objEvents.Lines("failure"), Texts{"failure SerialNotSent"});
}

TEST_F(CLinkTellingTest, AnErrorOfAnEarlierConnectionIsNotThatOfTheNext) {
    m_objSocket.m_iConnectResult = CFakeTcpClient::ConnectResult::Fails;
    m_objSocket.m_objConnectError.m_iNumber = 111;
    EXPECT_FALSE(m_objSession.Links().OpenLink(Lan));
    ASSERT_FALSE(m_objEvents.m_objFailures.empty());
    EXPECT_EQ(m_objEvents.m_objFailures.back().m_objSocket.m_iNumber, 111);
    m_objSocket.m_iConnectResult = CFakeTcpClient::ConnectResult::Connects;
    Use(Lan);
    m_objSocket.m_bRefusesSends = true;
    AskStatus();
    EXPECT_EQ(m_objEvents.m_objFailures.back().m_iKind, CFailure::Kind::LanNotSent);
    EXPECT_EQ(m_objEvents.m_objFailures.back().m_objSocket.m_iNumber, 0);
}

TEST_F(CLinkTellingTest, APortThatTakesNothingHasFailed) {
    Use(Com);
    m_objPort.m_bRefusesOutput = true;
    AskStatus();
    EXPECT_EQ(m_objEvents.Lines("link"), Texts{"link 0 failed COM1 9600,E,8,1: SerialNotSent"});
}

TEST_F(CLinkTellingTest, APortThatTakesBytesAgainIsOpenAndThatIsToldOnce) {
    Use(Com);
    m_objPort.m_bRefusesOutput = true;
    AskStatus();
    m_objPort.m_bRefusesOutput = false;
    AskStatus();
    AskStatus();
    EXPECT_EQ(m_objEvents.Lines("link"), (Texts{"link 0 failed COM1 9600,E,8,1: SerialNotSent",
                                                "link 0 open COM1 9600,E,8,1"}));
}

TEST_F(CLinkTellingTest, APortThatGoesAwayBehindAFailureStaysGone) {
    Use(Com);
    m_objPort.m_bRefusesOutput = true;
    AskStatus();
    m_objPort.m_bRefusesOutput = false;
    m_objPort.m_bRaisesSendEvents = false;
    m_objEventLoop.AtYield(m_objEventLoop.Yields() + 5, [this] { m_objPort.GoAway(); });
    AskStatus();
    EXPECT_EQ(m_objEvents.Lines("link").back(), "link 0 failed COM1 9600,E,8,1: SerialLost");
}

// How long it waits.

TEST_F(CLinkTellingTest, EachSecondOfAWaitIsToldAndItsEndBeforeTheFailure) {
    Use(Lan);
    Answer(CScriptedPrinter::KeepSilent);
    AskStatus();
    EXPECT_EQ(m_objEvents.m_iWaiting, (Seconds{1, 2, 3, 4, 5, 0}));
}

TEST_F(CLinkTellingTest, AnAnswerEndsTheTelling) {
    Use(Lan);
    m_objPrinter.m_iDelay = 2500;
    AskStatus();
    EXPECT_EQ(m_objEvents.m_iWaiting, (Seconds{1, 2, 0}));
}

TEST_F(CLinkTellingTest, AWaitOfLessThanASecondIsNotTold) {
    Use(Lan);
    m_objPrinter.m_iDelay = 900;
    AskStatus();
    EXPECT_EQ(m_objEvents.m_iWaiting, Seconds{});
}

TEST_F(CLinkTellingTest, AWaitOverMidnightTellsNoSecondsThatAreNone) {
    Use(Lan);
    m_objClock.SetTimeOfDay(24 * 60 * 60 - 1.5);
    m_objPrinter.m_iDelay = 4000;
    AskStatus();
    EXPECT_EQ(m_objEvents.m_iWaiting, (Seconds{1, 0}));
}

// Stopping an opening.

class CStopOpeningTest : public CLinkTellingTest {
protected:
    void StopAfter(std::int64_t p_iMilliseconds) {
        m_objEventLoop.After(p_iMilliseconds, [this] {
            m_iStopped = m_objEventLoop.Elapsed();
            m_objSession.Links().StopOpening();
        });
    }

    std::int64_t m_iStopped = 0;
};

TEST_F(CStopOpeningTest, EndsTheWaitAtOnceWithoutAFailure) {
    m_objSocket.m_iConnectResult = CFakeTcpClient::ConnectResult::Never;
    StopAfter(1000);
    EXPECT_FALSE(m_objSession.Links().OpenLink(Lan));
    EXPECT_GE(m_iStopped, 1000);
    EXPECT_EQ(m_objEventLoop.Elapsed(), m_iStopped);
    EXPECT_EQ(m_objEvents.m_strLines, (Texts{"busy", "link 1 opening 192.168.10.20:8000",
                                             "link 1 closed 192.168.10.20:8000", "idle"}));
    EXPECT_FALSE(m_objSocket.IsConnected());
}

TEST_F(CStopOpeningTest, AnErrorOfTheSameMomentIsNotTold) {
    m_objSocket.m_iConnectResult = CFakeTcpClient::ConnectResult::Fails;
    m_objEventLoop.AtNextYield([this] { m_objSession.Links().StopOpening(); });
    EXPECT_FALSE(m_objSession.Links().OpenLink(Lan));
    EXPECT_EQ(m_objEvents.Lines("failure"), Texts{});
    EXPECT_EQ(m_objEvents.Lines("link").back(), "link 1 closed 192.168.10.20:8000");
}

TEST_F(CStopOpeningTest, AConnectionThatStandsByThenIsClosed) {
    m_objSocket.m_iConnectResult = CFakeTcpClient::ConnectResult::Never;
    m_objEventLoop.After(500, [this] {
        m_objSocket.ConnectNow();
        m_objSession.Links().StopOpening();
    });
    EXPECT_FALSE(m_objSession.Links().OpenLink(Lan));
    EXPECT_FALSE(m_objSocket.IsConnected());
}

TEST_F(CStopOpeningTest, DoesNothingToWhatDoesNotOpen) {
    m_objSession.Links().StopOpening();
    for (const std::int16_t iInterface : {Lan, Com, Usb}) {
        Use(iInterface);
        m_objSession.Links().StopOpening();
        EXPECT_TRUE(AskStatus()) << iInterface;
    }
}

TEST_F(CStopOpeningTest, TheNextOpeningIsANewOne) {
    m_objSocket.m_iConnectResult = CFakeTcpClient::ConnectResult::Never;
    StopAfter(100);
    EXPECT_FALSE(m_objSession.Links().OpenLink(Lan));
    m_objSocket.m_iConnectResult = CFakeTcpClient::ConnectResult::Connects;
    EXPECT_TRUE(m_objSession.Links().OpenLink(Lan));
}

/// A view that fails when it is told a state.
class CFailingEvents : public CFakeSessionEvents {
public:
    bool m_bFails = false;

    void OnLinkStatus(const CLinkStatus& p_objStatus) override {
        if (m_bFails) {
            throw std::runtime_error("no line");
        }
        CFakeSessionEvents::OnLinkStatus(p_objStatus);
    }
};

class CFailingViewTest : public CLinkTellingTest {
protected:
    /// What goes wrong inside the event gets to the turn that waits, and nowhere else.
    void ExpectThrown(std::int16_t p_iInterface, const std::function<void()>& p_fnEvent) {
        ASSERT_TRUE(m_objOwn.Links().OpenLink(p_iInterface));
        m_objFailing.m_bFails = true;
        const CWaiter::Turn objTurn(m_objOwn.Waiter());
        EXPECT_NO_THROW(p_fnEvent());
        EXPECT_THROW(m_objOwn.Waiter().Yield(), std::runtime_error);
        m_objFailing.m_bFails = false;
    }

    CFailingEvents m_objFailing;
    CPrinterSession m_objOwn{
        m_objItemManager, m_objInterface, m_objFailing,
        CPrinterPlatform{m_objEventLoop, m_objClock, m_objSocket, m_objPort, m_objLibrary}};
};

TEST_F(CFailingViewTest, APortThatGoesAwayHandsItToWhoeverWaits) {
    ExpectThrown(Com, [this] { m_objPort.GoAway(); });
}

TEST_F(CFailingViewTest, APrinterThatClosesHandsItToWhoeverWaits) {
    ExpectThrown(Lan, [this] { m_objSocket.PeerCloses(); });
}

}  // namespace
