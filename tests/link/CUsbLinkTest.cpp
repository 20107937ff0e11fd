#include "flows/MFailureBox.h"
#include "tests/fakes/CUsbLinkFixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

using Texts = std::vector<std::string>;

constexpr const char* OpenError = "'USB' Open Error !!";
constexpr const char* SendTimeOut = "Device Time Out !!";
constexpr const char* NoAnswer = "Please confirm the connection of USB.";

class CUsbLinkTest : public CUsbLinkFixture {
protected:
    /// One exchange in a handler's turn; what it hands back is in the members.
    bool Exchange(std::int16_t p_iLength = 13) {
        const CWaiter::Turn objTurn(m_objWaiter);
        m_strError.clear();
        CFailure objFailure;
        const bool bSent = m_objUsbLink.Exchange(MWire::ToBytes("{WS|}"), m_objBuffer, objFailure,
                                                 m_iCount, p_iLength);
        m_strError = MFailureBox::HandlerText(objFailure);
        return bSent;
    }

    Bytes m_objBuffer{9, 9, 9};
    std::string m_strError;
    std::int16_t m_iCount = -7;
};

// Opening and closing.

TEST_F(CUsbLinkTest, OpensWithTwoYields) {
    EXPECT_TRUE(m_objUsbLink.Open());
    EXPECT_EQ(m_objLibrary.m_strCalls, Texts{"open"});
    EXPECT_EQ(m_objEventLoop.Yields(), 2);
}

TEST_F(CUsbLinkTest, AnyResultThatIsNotNegativeIsOpen) {
    m_objLibrary.m_iOpenResults = {5};
    EXPECT_TRUE(m_objUsbLink.Open());
}

TEST_F(CUsbLinkTest, AFailureToOpenShowsItsBoxAndCloses) {
    for (const std::int32_t iResult : {-1, -2, -3, -9}) {
        SCOPED_TRACE(iResult);
        m_objLibrary.m_strCalls.clear();
        m_objLibrary.m_iOpenResults = {iResult};
        m_objMessageBox.Expect(OpenError, MessageIcon::Critical);
        EXPECT_FALSE(m_objUsbLink.Open());
        EXPECT_EQ(m_objLibrary.m_strCalls, (Texts{"open", "close"}));
    }
    EXPECT_EQ(m_objEventLoop.Yields(), 0);
}

TEST_F(CUsbLinkTest, ClosingTheProgramWhileItOpensClosesThePrinter) {
    for (const std::int64_t iYield : {1, 2}) {
        SCOPED_TRACE(iYield);
        CFakeEventLoop objEventLoop(m_objClock);
        CWaiter objWaiter(objEventLoop, m_objClock);
        CUsbLink objLink(m_objLibrary, m_objRouter, m_objState, objWaiter, m_objEvents);
        objEventLoop.AtYield(iYield, [&] { objEventLoop.RequestClose(); });
        EXPECT_FALSE(objLink.Open());
        EXPECT_EQ(objEventLoop.Yields(), iYield);
        EXPECT_FALSE(m_objLibrary.IsOpen());
    }
}

TEST_F(CUsbLinkTest, DoesNotOpenOnceTheProgramCloses) {
    m_objEventLoop.RequestClose();
    EXPECT_FALSE(m_objUsbLink.Open());
    EXPECT_TRUE(m_objLibrary.m_strCalls.empty());
}

TEST_F(CUsbLinkTest, ClosesAsOftenAsYouLike) {
    EXPECT_TRUE(m_objUsbLink.Close());
    EXPECT_TRUE(m_objUsbLink.Open());
    EXPECT_TRUE(m_objUsbLink.Close());
    EXPECT_TRUE(m_objUsbLink.Close());
    EXPECT_FALSE(m_objLibrary.IsOpen());
}

// One exchange.

TEST_F(CUsbLinkTest, OpensAndClosesAroundEveryTransfer) {
    EXPECT_TRUE(Exchange());
    EXPECT_EQ(m_objLibrary.m_strCalls,
              (Texts{"open", "open", "send {WS|}", "close", "open", "rcv 13", "close"}));
    EXPECT_EQ(m_strError, "");
    EXPECT_EQ(m_iCount, 13);
    EXPECT_EQ(m_objBuffer, MWire::ToBytes(MWire::Status("00")));
    EXPECT_EQ(m_objState.m_iReplyReceived, 1);
    EXPECT_EQ(m_objMessageBox.BeepCount(), 0);
    EXPECT_EQ(m_objEventLoop.Yields(), 5);
}

TEST_F(CUsbLinkTest, ResizesTheBufferAndClearsTheReplyFlag) {
    KeepSilent();
    m_objState.m_iReplyReceived = 1;
    m_objEventLoop.AtNextYield([this] { EXPECT_EQ(m_objState.m_iReplyReceived, 0); });
    EXPECT_TRUE(Exchange(50));
    EXPECT_EQ(m_objBuffer, Bytes(50, 0));
    EXPECT_EQ(m_iCount, 0);
    EXPECT_EQ(m_objLibrary.m_strCalls[5], "rcv 50");
}

TEST_F(CUsbLinkTest, AShortAnswerLeavesZerosBehindIt) {
    AnswerWith("\x03zz");
    EXPECT_TRUE(Exchange(6));
    EXPECT_EQ(m_objBuffer, (Bytes{3, 'z', 'z', 0, 0, 0}));
    EXPECT_EQ(m_iCount, 3);
}

TEST_F(CUsbLinkTest, OneByteIsAnAnswer) {
    AnswerWith("\x03");
    EXPECT_TRUE(Exchange());
    EXPECT_EQ(m_strError, "");
    EXPECT_EQ(m_iCount, 1);
    EXPECT_EQ(m_objState.m_iReplyReceived, 1);
    EXPECT_EQ(m_objMessageBox.BeepCount(), 0);
}

TEST_F(CUsbLinkTest, AnAnswerIsOutstandingOnceTheCommandGoesOut) {
    std::int16_t iWhileSending = 0;
    m_objLibrary.m_fnSent = [&](const std::string&) {
        iWhileSending = m_objState.m_iPendingAnswers;
        m_objLibrary.m_strAnswers.push_back(MWire::Status("00"));
    };
    m_objLibrary.m_iOpenResults = {IUsbLibrary::NotReady};
    EXPECT_FALSE(Exchange());
    EXPECT_EQ(m_objState.m_iPendingAnswers, 0);
    EXPECT_TRUE(Exchange());
    EXPECT_EQ(iWhileSending, 1);
    EXPECT_EQ(m_objState.m_iPendingAnswers, 1);
}

TEST_F(CUsbLinkTest, APrinterThatCannotBeHadIsToldInWordsAndGetsNothing) {
    const std::vector<std::pair<std::int32_t, std::string>> arrCases{
        {-3, "USB DeviceID mismatch error"},
        {-2, "USB DeviceID receive error"},
        {-1, "USB Device not ready !!"},
    };
    for (const auto& [iResult, strText] : arrCases) {
        SCOPED_TRACE(iResult);
        m_objLibrary.m_iOpenResults = {iResult};
        EXPECT_FALSE(Exchange());
        EXPECT_EQ(m_strError, strText);
        EXPECT_EQ(m_objBuffer, Bytes(13, 0));
    }
    EXPECT_TRUE(m_objLibrary.m_strSent.empty());
    EXPECT_EQ(m_objEventLoop.Yields(), 0);
}

TEST_F(CUsbLinkTest, AnOpeningThatFailsWithoutWordsIsTriedAgainForTheSend) {
    m_objLibrary.m_iOpenResults = {-9};
    EXPECT_TRUE(Exchange());
    EXPECT_EQ(m_strError, "");
    EXPECT_EQ(m_objLibrary.m_strSent, Texts{"{WS|}"});

    m_objLibrary.m_strSent.clear();
    m_objLibrary.m_iOpenResults = {-9, -9};
    m_objMessageBox.Expect(OpenError, MessageIcon::Critical);
    EXPECT_FALSE(Exchange());
    EXPECT_EQ(m_strError, "");
    EXPECT_TRUE(m_objLibrary.m_strSent.empty());
}

TEST_F(CUsbLinkTest, AnEventThatFailsInAnyYieldLeavesThePrinterClosed) {
    for (const std::int64_t iYield : {1, 2, 3, 4, 5}) {
        SCOPED_TRACE(iYield);
        m_objEventLoop.AtYield(m_objEventLoop.Yields() + iYield, [this] {
            try {
                throw std::runtime_error("an event has failed");
            } catch (...) {
                m_objWaiter.StoreFault();
            }
        });
        m_objLibrary.m_strAnswers.clear();
        EXPECT_THROW(Exchange(), std::runtime_error);
        EXPECT_FALSE(m_objLibrary.IsOpen());
    }
}

TEST_F(CUsbLinkTest, APrinterThatGoesBeforeTheSendShowsItsBox) {
    m_objLibrary.m_iOpenResults = {0, -1};
    m_objMessageBox.Expect(OpenError, MessageIcon::Critical);
    EXPECT_FALSE(Exchange());
    EXPECT_EQ(m_strError, "");
    EXPECT_EQ(m_objLibrary.m_strCalls, (Texts{"open", "open", "close"}));
}

TEST_F(CUsbLinkTest, ASendThatFailsShowsItsBoxAndReceivesNothing) {
    m_objLibrary.m_iSendResult = -1;
    m_objMessageBox.Expect(SendTimeOut, MessageIcon::Critical);
    EXPECT_FALSE(Exchange());
    EXPECT_EQ(m_strError, "");
    EXPECT_EQ(m_objLibrary.m_strCalls, (Texts{"open", "open", "send {WS|}", "close"}));
}

TEST_F(CUsbLinkTest, WithoutAnAnswerItBeepsAndSaysSoOnceTheClockHasMoved) {
    KeepSilent();
    EXPECT_TRUE(Exchange());
    EXPECT_EQ(m_strError, NoAnswer);
    EXPECT_EQ(m_iCount, 0);
    EXPECT_EQ(m_objState.m_iReplyReceived, 0);
    EXPECT_EQ(m_objMessageBox.BeepCount(), 1);
    EXPECT_EQ(m_objLibrary.m_strCalls,
              (Texts{"open", "open", "send {WS|}", "close", "open", "rcv 13", "close"}));
}

TEST_F(CUsbLinkTest, AFailureToReceiveIsNoAnswer) {
    KeepSilent();
    m_objLibrary.m_iNoAnswer = -1;
    EXPECT_TRUE(Exchange());
    EXPECT_EQ(m_strError, NoAnswer);
    EXPECT_EQ(m_iCount, 0);
}

TEST_F(CUsbLinkTest, AnAnswerNearTheEndOfTheReceiveIsInTime) {
    KeepSilent();
    m_objEventLoop.After(900, [this] { m_objLibrary.m_strAnswers.push_back(MWire::Status("00")); });
    EXPECT_TRUE(Exchange());
    EXPECT_EQ(m_strError, "");
    EXPECT_EQ(m_iCount, 13);
    EXPECT_EQ(m_objMessageBox.BeepCount(), 0);
}

TEST_F(CUsbLinkTest, PollsAgainWhileTheClockStandsStill) {
    KeepSilent();
    m_objLibrary.m_bWaits = false;
    for (std::int64_t iYield = 1; iYield <= 10; ++iYield) {
        m_objEventLoop.AtYield(iYield, [this] { m_objClock.SetTimeOfDay(36'000); });
    }
    EXPECT_TRUE(Exchange());
    EXPECT_EQ(m_strError, NoAnswer);
    // Two yields to send, three for each receive: yields 5 and 8 end with the clock as it was.
    EXPECT_EQ(std::ranges::count(m_objLibrary.m_strCalls, "rcv 13"), 3);
}

TEST_F(CUsbLinkTest, OverMidnightItPollsUntilTheAnswerComes) {
    KeepSilent();
    m_objClock.SetTimeOfDay(86'399.9);
    m_objEventLoop.After(30'000,
                         [this] { m_objLibrary.m_strAnswers.push_back(MWire::Status("00")); });
    EXPECT_TRUE(Exchange());
    EXPECT_EQ(m_strError, "");
    EXPECT_EQ(m_iCount, 13);
    EXPECT_GE(m_objClock.Elapsed(), 30'000);
}

TEST_F(CUsbLinkTest, OverMidnightClosingEndsIt) {
    KeepSilent();
    m_objClock.SetTimeOfDay(86'399.9);
    m_objEventLoop.After(30'000, [this] { m_objEventLoop.RequestClose(); });
    EXPECT_FALSE(Exchange());
    EXPECT_EQ(m_strError, "");
    EXPECT_EQ(m_objMessageBox.BeepCount(), 0);
}

TEST_F(CUsbLinkTest, APrinterThatGoesBeforeTheAnswerShowsItsBoxAndIsToldOf) {
    m_objLibrary.m_iOpenResults = {0, 0, -1};
    m_objMessageBox.Expect(OpenError, MessageIcon::Critical);
    EXPECT_TRUE(Exchange());
    EXPECT_EQ(m_strError, NoAnswer);
    EXPECT_EQ(m_iCount, 0);
    EXPECT_EQ(m_objLibrary.m_strCalls,
              (Texts{"open", "open", "send {WS|}", "close", "open", "close"}));
}

TEST_F(CUsbLinkTest, AnEventThatUsesTheBufferMeanwhileKeepsIt) {
    KeepSilent();
    m_objEventLoop.After(100, [this] {
        const CWaiter::Turn objLater(m_objWaiter);
        m_objBuffer.assign(3, 7);
        m_objBuffer.shrink_to_fit();
    });
    EXPECT_FALSE(Exchange());
    EXPECT_EQ(m_objBuffer, Bytes(3, 7));
    EXPECT_EQ(m_objMessageBox.BeepCount(), 0);
}

TEST_F(CUsbLinkTest, ClosingInAnyYieldSendsNothingMoreAndShowsNoBox) {
    // In the first two nothing or the command has gone out, the third is before the receive,
    // the last two are in it and behind it.
    const std::vector<std::pair<std::int64_t, Texts>> arrCases{
        {1, {"open", "close"}},
        {2, {"open", "open", "send {WS|}", "close"}},
        {3, {"open", "open", "send {WS|}", "close"}},
        {4, {"open", "open", "send {WS|}", "close", "open", "rcv 13", "close"}},
        {50, {"open", "open", "send {WS|}", "close", "open", "rcv 13", "close"}},
        {105, {"open", "open", "send {WS|}", "close", "open", "rcv 13", "close"}},
    };
    KeepSilent();
    for (const auto& [iYield, strCalls] : arrCases) {
        SCOPED_TRACE(iYield);
        CFakeEventLoop objEventLoop(m_objClock);
        CFakeUsbLibrary objLibrary(objEventLoop);
        CWaiter objWaiter(objEventLoop, m_objClock);
        CUsbLink objLink(objLibrary, m_objRouter, m_objState, objWaiter, m_objEvents);
        objEventLoop.AtYield(iYield, [&objEventLoop] { objEventLoop.RequestClose(); });
        CFailure objFailure;
        EXPECT_FALSE(objLink.Exchange({1}, m_objBuffer, objFailure, m_iCount, 13));
        EXPECT_LE(objEventLoop.Yields(), iYield + 1);
        EXPECT_TRUE(objFailure.IsNone());
        Texts strExpected = strCalls;
        std::ranges::replace(strExpected, std::string("send {WS|}"), std::string("send \x01"));
        EXPECT_EQ(objLibrary.m_strCalls, strExpected);
    }
    EXPECT_EQ(m_objMessageBox.BeepCount(), 0);
}

/// The program closes while the library is at work.
class CClosingUsbLibrary : public CFakeUsbLibrary {
public:
    enum class In : std::uint8_t { Opening, Sending };

    CClosingUsbLibrary(CFakeEventLoop& p_objEventLoop, In p_iIn)
        : CFakeUsbLibrary(p_objEventLoop)
        , m_objLoop(p_objEventLoop)
        , m_iIn(p_iIn) {}

    std::int32_t Dll_openUSB() override {
        if (m_iIn == In::Opening) {
            m_objLoop.RequestClose();
            return NoDeviceId;
        }
        return CFakeUsbLibrary::Dll_openUSB();
    }

    std::int32_t Dll_sendUSB(std::span<const std::uint8_t> /*p_objBytes*/) override {
        m_objLoop.RequestClose();
        return Failed;
    }

private:
    CFakeEventLoop& m_objLoop;
    In m_iIn;
};

TEST_F(CUsbLinkTest, WhatEndsBecauseTheProgramClosesSaysNothing) {
    using In = CClosingUsbLibrary::In;
    for (const In iIn : {In::Opening, In::Sending}) {
        SCOPED_TRACE(iIn == In::Opening ? "opening" : "sending");
        CFakeEventLoop objEventLoop(m_objClock);
        CWaiter objWaiter(objEventLoop, m_objClock);
        CClosingUsbLibrary objLibrary(objEventLoop, iIn);
        CUsbLink objLink(objLibrary, m_objRouter, m_objState, objWaiter, m_objEvents);
        CFailure objFailure;
        EXPECT_FALSE(objLink.Exchange({1}, m_objBuffer, objFailure, m_iCount, 13));
        EXPECT_TRUE(objFailure.IsNone());
        EXPECT_FALSE(objLibrary.IsOpen());
    }
}

TEST_F(CUsbLinkTest, FewerThanNoBytesAreNone) {
    AnswerWith(MWire::Status("00"));
    EXPECT_TRUE(Exchange(-1));
    EXPECT_TRUE(m_objBuffer.empty());
}

TEST_F(CUsbLinkTest, NothingIsCountedOfWhatDidNotOpen) {
    m_objLibrary.m_iOpenResults = {IUsbLibrary::NotReady};
    m_iCount = 77;
    EXPECT_FALSE(Exchange());
    EXPECT_EQ(m_iCount, 0);
}

TEST_F(CUsbLinkTest, NothingIsHandedOutOfAnAnswerThatIsAnothers) {
    m_objRouter.SetAnswerSelector(MAnswer::Parameter);
    AnswerWith("\x02 " + MWire::Settings(MAnswer::Adjustment));
    Exchange(50);
    EXPECT_EQ(m_objBuffer, Bytes(50, 0));
    EXPECT_EQ(m_iCount, 0);
}

}  // namespace
