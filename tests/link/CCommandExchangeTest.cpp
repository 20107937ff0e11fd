#include "flows/CSessionView.h"
#include "flows/MFailureBox.h"
#include "link/CPrinterSession.h"
#include "tests/fakes/CAbsentSerialPort.h"
#include "tests/fakes/CAbsentUsbLibrary.h"
#include "tests/fakes/CLinkFixture.h"

#include "protocol/MCommand.h"

#include <gtest/gtest.h>

#include <optional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Told = std::vector<bool>;
using Texts = std::vector<std::string>;

constexpr std::int64_t Step = CFakeEventLoop::StepMilliseconds;
constexpr std::int64_t ReplyMilliseconds = 1000 * CExchangeManners{}.m_iReplySeconds;

/// One of the exchange's own operations, and what it waits for once its bytes are out.
struct Operation {
    const char* m_strName;
    const char* m_strCommand;
    std::int16_t m_iReadGroup;  // of the answer; -1 for a status
    bool (*m_fnRun)(CCommandExchange& p_objExchange);
};

void PrintTo(const Operation& p_objCase, std::ostream* p_objStream) {
    *p_objStream << p_objCase.m_strName;
}

// clang-format off
const Operation Operations[] = {
    {"Request", "{Z4;1|}", -1, [](CCommandExchange& p_objExchange) {
        return p_objExchange.Request("{Z4;1|}", 13, AwaitedAnswer::Any).m_bDone; }},
    {"RequestStatus", "{WS|}", -1, [](CCommandExchange& p_objExchange) {
        return p_objExchange.RequestStatus().m_bDone; }},
    {"SendMaintenance", "{HD001,A|}", -1, [](CCommandExchange& p_objExchange) {
        return p_objExchange.SendMaintenance(MCommand::HeadCheck).m_bDone; }},
    {"ReadAdjustment", "{Z5;0|}", 0, [](CCommandExchange& p_objExchange) {
        return p_objExchange.ReadGroup(0).m_bDone; }},
    {"ReadParameter", "{Z5;1|}", 1, [](CCommandExchange& p_objExchange) {
        return p_objExchange.ReadGroup(1).m_bDone; }},
    {"ReadSensor", "{Z5;2|}", 2, [](CCommandExchange& p_objExchange) {
        return p_objExchange.ReadGroup(2).m_bDone; }},
    {"ReadLan", "{Z5;3|}", 3, [](CCommandExchange& p_objExchange) {
        return p_objExchange.ReadGroup(3).m_bDone; }},
    {"ReadExpansion", "{Z5;4|}", 4, [](CCommandExchange& p_objExchange) {
        return p_objExchange.ReadGroup(4).m_bDone; }},
};
// clang-format on

class CCommandExchangeTest : public CLinkFixture {
protected:
    CCommandExchangeTest() { m_objTurn.emplace(m_objWaiter); }

    void ExpectTimeOut() {
        m_objMessageBox.Expect("Device Time Out !!", MessageIcon::Critical, "Failure");
    }

    std::optional<CWaiter::Turn> m_objTurn;
};

class CCommandExchangeOperationTest : public CCommandExchangeTest,
                                      public ::testing::WithParamInterface<Operation> {
protected:
    bool Run() { return GetParam().m_fnRun(m_objExchange); }

    [[nodiscard]] std::string Answer() const {
        return GetParam().m_iReadGroup < 0 ? MWire::Status("00")
                                           : MWire::Settings(GetParam().m_iReadGroup);
    }

    void ExpectStored() {
        if (GetParam().m_iReadGroup >= 0) {
            EXPECT_EQ(MWire::StoredFields(m_objItemManager, GetParam().m_iReadGroup),
                      MWire::Fields(GetParam().m_iReadGroup));
        }
    }
};

INSTANTIATE_TEST_SUITE_P(, CCommandExchangeOperationTest, ::testing::ValuesIn(Operations),
                         [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });

TEST_P(CCommandExchangeOperationTest, SendsItsCommandAndTakesTheAnswer) {
    Connect();
    EXPECT_TRUE(Run());
    EXPECT_EQ(m_objSocket.m_strSent, Texts{GetParam().m_strCommand});
    EXPECT_EQ(m_objState.m_iReplyReceived, 1);
    ExpectStored();
    EXPECT_TRUE(m_objView.AreControlsEnabled());
    EXPECT_EQ(m_objMessageBox.BeepCount(), 0);
}

TEST_P(CCommandExchangeOperationTest, AnAnswerJustBelowFiveSecondsIsInTime) {
    Connect();
    // The wait for the answer begins a step after the command went out.
    m_objPrinter.m_iDelay = ReplyMilliseconds;
    EXPECT_TRUE(Run());
    ExpectStored();
}

TEST_P(CCommandExchangeOperationTest, ASilentPrinterTimesOutJustAfterFiveSeconds) {
    Connect();
    m_objPrinter.m_fnAnswer = CScriptedPrinter::KeepSilent;
    ExpectTimeOut();
    const std::int64_t iBefore = m_objClock.Elapsed();
    EXPECT_FALSE(Run());
    EXPECT_EQ(m_objClock.Elapsed() - iBefore, Step + ReplyMilliseconds + Step);
    EXPECT_EQ(m_objMessageBox.BeepCount(), 1);
    EXPECT_TRUE(m_objView.AreControlsEnabled());
    EXPECT_EQ(m_objSocket.m_strSent.size(), 1U);
}

TEST_P(CCommandExchangeOperationTest, TheTimeOutIsShownBeforeTheButtonsAreEnabled) {
    Connect();
    m_objPrinter.m_fnAnswer = CScriptedPrinter::KeepSilent;
    m_objExchange.BeginBusy();
    ExpectTimeOut();
    m_objMessageBox.WhileShown(
        [this](const auto& /*p_objBox*/) { EXPECT_FALSE(m_objView.AreControlsEnabled()); });
    EXPECT_FALSE(Run());
}

TEST_P(CCommandExchangeOperationTest, AFailureToSendIsShownWithTheButtonsEnabledButInAFlow) {
    m_objMessageBox.Expect("'LAN' Send Error !!", MessageIcon::Exclamation);
    m_objMessageBox.WhileShown(
        [this](const auto& /*p_objBox*/) { EXPECT_TRUE(m_objView.AreControlsEnabled()); });
    EXPECT_FALSE(Run());

    m_objMessageBox.Expect("'LAN' Send Error !!", MessageIcon::Exclamation);
    m_objMessageBox.WhileShown(
        [this](const auto& /*p_objBox*/) { EXPECT_FALSE(m_objView.AreControlsEnabled()); });
    const CBusy::Flow objFlow(m_objBusy);
    EXPECT_FALSE(Run());
}

TEST_P(CCommandExchangeOperationTest, AnAnswerAfterFiveSecondsIsTooLate) {
    Connect();
    m_objPrinter.m_iDelay = Step + ReplyMilliseconds + Step;
    ExpectTimeOut();
    EXPECT_FALSE(Run());
}

TEST_P(CCommandExchangeOperationTest, AnAnswerThatNeverCompletesTimesOut) {
    Connect();
    m_objPrinter.m_fnAnswer = [this](const std::string&) {
        return Answer().substr(0, Answer().size() - 1);
    };
    const std::string strBefore = MWire::StoredFields(m_objItemManager, 3);
    ExpectTimeOut();
    EXPECT_FALSE(Run());
    EXPECT_EQ(MWire::StoredFields(m_objItemManager, 3), strBefore);
}

TEST_P(CCommandExchangeOperationTest, TheNextCommandDoesNotSeeThePiecesOfTheFormerOne) {
    Connect();
    m_objPrinter.m_fnAnswer = [this](const std::string&) {
        return Answer().substr(0, Answer().size() - 1);
    };
    ExpectTimeOut();
    EXPECT_FALSE(Run());
    m_objPrinter.m_fnAnswer = CScriptedPrinter::Behave;
    EXPECT_TRUE(Run());
    ExpectStored();
}

TEST_P(CCommandExchangeOperationTest, AnUnconnectedLinkIsShownAtOnce) {
    m_objMessageBox.Expect("'LAN' Send Error !!", MessageIcon::Exclamation);
    EXPECT_FALSE(Run());
    EXPECT_EQ(m_objClock.Elapsed(), 0);
    EXPECT_TRUE(m_objView.AreControlsEnabled());
}

TEST_P(CCommandExchangeOperationTest, ASendThatDoesNotEndIsShown) {
    Connect();
    m_objSocket.m_bCompletesSends = false;
    m_objPrinter.m_fnAnswer = CScriptedPrinter::KeepSilent;
    m_objMessageBox.Expect("'LAN' Send Error !!", MessageIcon::Exclamation);
    EXPECT_FALSE(Run());
    EXPECT_EQ(m_objMessageBox.BeepCount(), 0);
    EXPECT_TRUE(m_objView.AreControlsEnabled());
}

TEST_P(CCommandExchangeOperationTest, ThePrintersClosingRunsIntoTheTimeOut) {
    Connect();
    m_objPrinter.m_fnAnswer = CScriptedPrinter::KeepSilent;
    m_objEventLoop.After(1000, [this] { m_objSocket.PeerCloses(); });
    ExpectTimeOut();
    const std::int64_t iBefore = m_objClock.Elapsed();
    EXPECT_FALSE(Run());
    EXPECT_GT(m_objClock.Elapsed() - iBefore, ReplyMilliseconds);
    EXPECT_EQ(m_objState.m_iConnected, 0);
    EXPECT_EQ(m_objState.m_iLinkError, 0);
}

TEST_P(CCommandExchangeOperationTest, OverMidnightTheAnswerEndsTheWait) {
    Connect();
    m_objClock.SetTimeOfDay(86398);
    m_objPrinter.m_iDelay = 1'800'000;
    EXPECT_TRUE(Run());
    ExpectStored();
}

TEST_P(CCommandExchangeOperationTest, OverMidnightClosingEndsTheWait) {
    Connect();
    m_objClock.SetTimeOfDay(86398);
    m_objPrinter.m_fnAnswer = CScriptedPrinter::KeepSilent;
    m_objEventLoop.After(1'800'000, [this] { m_objEventLoop.RequestClose(); });
    EXPECT_FALSE(Run());
    EXPECT_EQ(m_objMessageBox.BeepCount(), 0);
}

// A send in the first yield, an answer in the next, or the whole of the reply's wait.
TEST_P(CCommandExchangeOperationTest, ClosingInAnyYieldEndsTheWaitWithoutABox) {
    Connect();
    m_objPrinter.m_fnAnswer = CScriptedPrinter::KeepSilent;
    const std::int64_t iYield = m_objEventLoop.Yields();
    for (const std::int64_t iLater : {1, 2, 3, 250, 500}) {
        SCOPED_TRACE(iLater);
        CFakeClock objClock;
        CFakeEventLoop objEventLoop(objClock);
        CFakeTcpClient objSocket(objEventLoop);
        CFakeExchangeView objView;
        CSessionView objEvents(objView, m_objMessageBox);
        CAbsentSerialPort objSerialPort;
        CAbsentUsbLibrary objUsbLibrary;
        CPrinterSession objSession(
            m_objItemManager, m_objInterface, objEvents,
            {objEventLoop, objClock, objSocket, objSerialPort, objUsbLibrary});
        ASSERT_TRUE(objSession.Links().OpenLink(CInterface::LanInterface));
        const std::int64_t iClosing = objEventLoop.Yields() + iLater;
        objEventLoop.AtYield(iClosing, [&] { objEventLoop.RequestClose(); });
        EXPECT_FALSE(GetParam().m_fnRun(objSession.Exchange()));
        EXPECT_EQ(objEventLoop.Yields(), iClosing);
        EXPECT_EQ(objSocket.m_strSent.size(), 1U);
    }
    EXPECT_EQ(m_objEventLoop.Yields(), iYield);
    EXPECT_EQ(m_objMessageBox.BeepCount(), 0);
}

TEST_P(CCommandExchangeOperationTest, SendsNothingOnceTheProgramCloses) {
    Connect();
    m_objEventLoop.RequestClose();
    EXPECT_FALSE(Run());
    EXPECT_TRUE(m_objSocket.m_strSent.empty());
}

TEST_P(CCommandExchangeOperationTest, SendsNothingOnceALaterHandlerHasRun) {
    Connect();
    { const CWaiter::Turn objLater(m_objWaiter); }
    EXPECT_FALSE(Run());
    EXPECT_TRUE(m_objSocket.m_strSent.empty());
}

TEST_P(CCommandExchangeOperationTest, StopsWhenALaterHandlerRunsInItsWait) {
    Connect();
    m_objPrinter.m_fnAnswer = CScriptedPrinter::KeepSilent;
    m_objEventLoop.After(1000, [this] { const CWaiter::Turn objLater(m_objWaiter); });
    const std::int64_t iBefore = m_objClock.Elapsed();
    EXPECT_FALSE(Run());
    EXPECT_EQ(m_objClock.Elapsed() - iBefore, 1000);
}

TEST_P(CCommandExchangeOperationTest, AViewThatFailsEndsTheWaitWithItsException) {
    Connect();
    m_objPrinter.m_fnAnswer = [](const std::string&) { return MWire::Status("00"); };
    m_objView.m_fnShowStatus = [](const std::string& p_strText) {
        if (!p_strText.empty()) {
            throw std::runtime_error("no label");
        }
    };
    EXPECT_THROW(Run(), std::runtime_error);
    EXPECT_TRUE(m_objView.AreControlsEnabled());
}

TEST_P(CCommandExchangeOperationTest, ChangingTheInterfaceWhileItSendsDoesNotEndTheWait) {
    Connect();
    m_objEventLoop.AtNextYield(
        [this] { m_objInterface.SetActiveInterface(CInterface::UsbInterface); });
    m_objPrinter.m_iDelay = 2000;
    const std::int64_t iBefore = m_objClock.Elapsed();
    EXPECT_TRUE(Run());
    EXPECT_EQ(m_objClock.Elapsed() - iBefore, 2000);
    ExpectStored();
}

// The single routines.

TEST_F(CCommandExchangeTest, TextToBytesGivesTheCodeOfEachCharacter) {
    Bytes objBytes{1, 2, 3};
    EXPECT_TRUE(CCommandExchange::TextToBytes("{A\xFF\x80|}", objBytes));
    EXPECT_EQ(objBytes, (Bytes{0x7B, 0x41, 0xFF, 0x80, 0x7C, 0x7D}));
    EXPECT_FALSE(CCommandExchange::TextToBytes("", objBytes));
    EXPECT_EQ(objBytes, Bytes{});
}

TEST_F(CCommandExchangeTest, AnEmptyCommandIsNotSent) {
    Connect();
    EXPECT_FALSE(m_objExchange.Request("", 13, AwaitedAnswer::Any));
    EXPECT_TRUE(m_objSocket.m_strSent.empty());
}

TEST_F(CCommandExchangeTest, SendCommandDoesNotWaitForTheAnswer) {
    Connect();
    m_objPrinter.m_fnAnswer = CScriptedPrinter::KeepSilent;
    Bytes objBuffer;
    CFailure objFailure;
    std::int16_t iCount = 0;
    const std::int64_t iBefore = m_objClock.Elapsed();
    EXPECT_TRUE(m_objExchange.SendCommand(m_objInterface, MWire::ToBytes("{WS|}"), objBuffer,
                                          objFailure, iCount, 13, AwaitedAnswer::Any));
    EXPECT_EQ(m_objClock.Elapsed() - iBefore, Step);
    EXPECT_EQ(objBuffer.size(), 13U);
    EXPECT_EQ(m_objState.m_iReplyReceived, 0);
}

TEST_F(CCommandExchangeTest, SendCommandLeavesTheLinksWordsWithItsCaller) {
    Bytes objBuffer;
    CFailure objFailure;
    std::int16_t iCount = 0;
    EXPECT_FALSE(m_objExchange.SendCommand(m_objInterface, MWire::ToBytes("{WS|}"), objBuffer,
                                           objFailure, iCount, 13, AwaitedAnswer::Any));
    EXPECT_EQ(MFailureBox::HandlerText(objFailure), "'LAN' Send Error !!");
}

TEST_F(CCommandExchangeTest, BusyIsBegunAndEnded) {
    m_objExchange.BeginBusy();
    EXPECT_TRUE(m_objBusy.IsBusy());
    m_objExchange.EndBusy();
    EXPECT_EQ(m_objView.m_bEnabled, (Told{false, true}));
}

TEST_F(CCommandExchangeTest, WaitReplyYieldsEvenWhenTheAnswerIsIn) {
    m_objState.m_iReplyReceived = 1;
    EXPECT_TRUE(m_objExchange.WaitReply(5));
    EXPECT_EQ(m_objEventLoop.Yields(), 1);
}

TEST_F(CCommandExchangeTest, WaitStatusReplyWaitsForAKnownStatus) {
    Connect();
    m_objEventLoop.After(1000, [this] { m_objSocket.Arrive(MWire::Status("03")); });
    m_objEventLoop.After(2000, [this] { m_objSocket.Arrive(MWire::Status("40")); });
    const std::int64_t iBefore = m_objClock.Elapsed();
    EXPECT_TRUE(m_objExchange.WaitStatusReply(5));
    EXPECT_EQ(m_objClock.Elapsed() - iBefore, 2000);
}

TEST_F(CCommandExchangeTest, WaitStatusReplyTimesOutLikeAnyOther) {
    ExpectTimeOut();
    EXPECT_FALSE(m_objExchange.WaitStatusReply(1));
    EXPECT_EQ(m_objClock.Elapsed(), 1000 + Step);
    EXPECT_EQ(m_objMessageBox.BeepCount(), 1);
}

TEST_F(CCommandExchangeTest, WaitStatusReplyIsNotContentWithTheStatusBeforeTheCommand) {
    Connect();
    m_objSocket.Arrive(MWire::Status("00"));
    m_objPrinter.m_iDelay = 3000;
    Bytes objBuffer;
    CFailure objFailure;
    std::int16_t iCount = 0;
    const std::int64_t iBefore = m_objClock.Elapsed();
    EXPECT_TRUE(m_objExchange.SendCommand(m_objInterface, MWire::ToBytes("{WS|}"), objBuffer,
                                          objFailure, iCount, 13, AwaitedAnswer::Any));
    EXPECT_TRUE(m_objExchange.WaitStatusReply(5));
    EXPECT_EQ(m_objClock.Elapsed() - iBefore, 3000);
}

TEST_F(CCommandExchangeTest, APauseLastsItsSeconds) {
    for (const std::int16_t iSeconds : std::vector<std::int16_t>{0, 1, 5}) {
        SCOPED_TRACE(iSeconds);
        const std::int64_t iBefore = m_objClock.Elapsed();
        m_objExchange.Pause(iSeconds);
        EXPECT_EQ(m_objClock.Elapsed() - iBefore, 1000 * iSeconds);
    }
}

// So that they end on time, and sleep as long as nothing comes.
TEST_F(CCommandExchangeTest, PausesAndWaitsSayHowLongTheyLastStill) {
    double dAsked = 0;
    m_objEventLoop.AtYield(3, [&] { dAsked = m_objEventLoop.Asked(); });
    m_objExchange.Pause(5);
    EXPECT_NEAR(dAsked, 4.98, 1e-6);
    m_objEventLoop.AtYield(m_objEventLoop.Yields() + 3, [&] { dAsked = m_objEventLoop.Asked(); });
    ExpectTimeOut();
    EXPECT_FALSE(m_objExchange.WaitStatusReply(2));
    EXPECT_NEAR(dAsked, 1.98, 1e-6);
}

TEST_F(CCommandExchangeTest, APauseEndsWhenTheProgramCloses) {
    m_objEventLoop.After(300, [this] { m_objEventLoop.RequestClose(); });
    m_objExchange.Pause(5);
    EXPECT_EQ(m_objClock.Elapsed(), 300);
}

TEST_F(CCommandExchangeTest, APauseOverMidnightLastsUntilTheProgramCloses) {
    m_objClock.SetTimeOfDay(86399.5);
    m_objEventLoop.After(3'600'000, [this] { m_objEventLoop.RequestClose(); });
    m_objExchange.Pause(1);
    EXPECT_EQ(m_objClock.Elapsed(), 3'600'000);
}

// Reading and asking for the status.

TEST_F(CCommandExchangeTest, AStatusInsideAReadIsShownAndTheReadGoesOn) {
    Connect();
    m_objPrinter.m_fnAnswer = [](const std::string&) {
        return "\xFFjunk" + MWire::Status("04") + MWire::Settings(1);
    };
    EXPECT_TRUE(m_objExchange.ReadGroup(1));
    EXPECT_EQ(m_objView.m_strStatuses, Texts{"PAUSE"});
    EXPECT_EQ(MWire::StoredFields(m_objItemManager, 1), MWire::Fields(1));
}

TEST_F(CCommandExchangeTest, AStatusAloneDoesNotAnswerARead) {
    Connect();
    m_objPrinter.m_fnAnswer = [](const std::string&) { return MWire::Status("06"); };
    ExpectTimeOut();
    EXPECT_FALSE(m_objExchange.ReadGroup(1));
    EXPECT_EQ(m_objView.m_strStatuses, Texts{"Command Error"});
}

TEST_F(CCommandExchangeTest, JunkAnswersACommandButNotARead) {
    Connect();
    m_objPrinter.m_fnAnswer = [](const std::string&) { return "~junk"; };
    EXPECT_TRUE(m_objExchange.SendMaintenance(MCommand::HeadCheck));
    ExpectTimeOut();
    EXPECT_FALSE(m_objExchange.ReadGroup(0));
}

TEST_F(CCommandExchangeTest, AReadEndsWithTheButtonsEnabled) {
    Connect();
    m_objExchange.BeginBusy();
    m_objPrinter.m_fnAnswer = CScriptedPrinter::KeepSilent;
    ExpectTimeOut();
    EXPECT_FALSE(m_objExchange.ReadGroup(0));
    EXPECT_TRUE(m_objView.AreControlsEnabled());
}

TEST_F(CCommandExchangeTest, AStatusRequestClearsTheLabelFirst) {
    Connect();
    m_objView.m_bEnabled.clear();
    EXPECT_TRUE(m_objExchange.RequestStatus());
    EXPECT_EQ(m_objView.m_strStatuses, (Texts{"", "ON LINE"}));
    EXPECT_EQ(m_objView.m_bEnabled, (Told{false, true}));
}

TEST_F(CCommandExchangeTest, SettingsThatAnswerAStatusRequestFillNothing) {
    Connect();
    EXPECT_TRUE(m_objExchange.ReadGroup(1));
    m_objPrinter.m_fnAnswer = [](const std::string&) { return MWire::Settings(1, 2); };
    EXPECT_TRUE(m_objExchange.RequestStatus());
    EXPECT_EQ(MWire::StoredFields(m_objItemManager, 1), MWire::Fields(1));
}

}  // namespace
