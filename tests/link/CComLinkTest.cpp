#include "link/CComLink.h"

#include "flows/MHandler.h"
#include "model/CConversionError.h"
#include "protocol/MAnswer.h"
#include "protocol/MCommand.h"
#include "tests/link/CComLinkFixture.h"

#include <gtest/gtest.h>

#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Texts = std::vector<std::string>;

constexpr std::int16_t Serial = CInterface::SerialInterface;
constexpr std::int16_t GroupCount = 5;

class CComLinkTest : public CComLinkFixture {};

// Opening and closing.

TEST_F(CComLinkTest, APortThatHasOpenedAndIsGoneIsNotOpen) {
    m_objPort.m_bGoesAtOnce = true;
    EXPECT_FALSE(m_objComLink.Open());
    EXPECT_EQ(m_objEventLoop.Yields(), 0);
}

TEST_F(CComLinkTest, OpensInItsOrderAndYieldsOnce) {
    EXPECT_TRUE(m_objComLink.Open());
    EXPECT_EQ(m_objPort.m_strCalls,
              (Texts{"close", "settings 9600,E,8,1", "handshaking 0", "receive threshold 1",
                     "input length 1", "send threshold 1", "port 1", "open"}));
    EXPECT_EQ(m_objEventLoop.Yields(), 1);
    EXPECT_TRUE(m_objPort.IsOpen());
}

TEST_F(CComLinkTest, OpensWithTheSettingsAsTheyAreNow) {
    m_objInterface.m_objComPortIndex->SetValue(6);
    m_objInterface.m_objSpeedIndex->SetValue(5);
    m_objInterface.m_objParityIndex->SetValue(2);
    m_objInterface.m_objDataLengthIndex->SetValue(0);
    m_objInterface.m_objStopBitIndex->SetValue(1);
    EXPECT_TRUE(m_objComLink.Open());
    EXPECT_EQ(m_objPort.m_strCalls[1], "settings 115200,O,7,2");
    EXPECT_EQ(m_objPort.m_strCalls[6], "port 7");
}

TEST_F(CComLinkTest, OpensAgainAfterAClose) {
    EXPECT_TRUE(m_objComLink.Open());
    m_objPort.m_strCalls.clear();
    EXPECT_TRUE(m_objLinks.OpenLink(Serial));
    EXPECT_EQ(m_objPort.m_strCalls.front(), "close");
    EXPECT_EQ(m_objPort.m_strCalls.back(), "open");
}

TEST_F(CComLinkTest, APortThatAnotherProgramHasIsToldOnce) {
    m_objPort.m_iOpenResult = ISerialPort::AlreadyOpen;
    m_objMessageBox.Expect("Already Opened Port by other Application", MessageIcon::Exclamation,
                           "Varden Setting Tool");
    EXPECT_FALSE(m_objComLink.Open());
    EXPECT_EQ(m_objMessageBox.BeepCount(), 0);
    EXPECT_FALSE(m_objPort.IsOpen());
}

TEST_F(CComLinkTest, TheNumberOfAPortThatAnotherProgramHas) {
    EXPECT_EQ(ISerialPort::AlreadyOpen, 8005);
}

TEST_F(CComLinkTest, AnyOtherFailureToOpenIsQuiet) {
    for (const std::int32_t iResult : std::vector<std::int32_t>{1, -1, 8002, 8004, 8006, 8012}) {
        SCOPED_TRACE(iResult);
        m_objPort.m_iOpenResult = iResult;
        EXPECT_FALSE(m_objComLink.Open());
        EXPECT_FALSE(m_objPort.IsOpen());
    }
}

TEST_F(CComLinkTest, SettingsThatAreNoNumberComeOutAndLeaveThePortClosed) {
    OpenQuietly();
    m_objInterface.m_objComPortIndex->SetValue("abc");
    EXPECT_THROW(m_objComLink.Open(), CConversionError);
    EXPECT_EQ(m_objPort.m_strCalls, Texts{"close"});
}

TEST_F(CComLinkTest, DoesNotOpenOnceTheProgramCloses) {
    m_objEventLoop.RequestClose();
    EXPECT_FALSE(m_objComLink.Open());
    EXPECT_TRUE(m_objPort.m_strCalls.empty());
}

TEST_F(CComLinkTest, Closes) {
    OpenQuietly();
    EXPECT_TRUE(m_objComLink.Close());
    EXPECT_TRUE(m_objComLink.Close());
    EXPECT_EQ(m_objPort.m_strCalls, (Texts{"close", "close"}));
    EXPECT_FALSE(m_objPort.IsOpen());
}

TEST(CComLinkLifetimeTest, TakesThePortsEventsForItsOwnLifetime) {
    CFakeClock objClock;
    CFakeEventLoop objEventLoop(objClock);
    CFakeSerialPort objPort(objEventLoop);
    CFakeMessageBox objMessageBox;
    CFakeExchangeView objView;
    CSessionView objEvents(objView, objMessageBox);
    CLinkState objState;
    const CItemManager objItemManager;
    const CInterface objInterface;
    CWaiter objWaiter(objEventLoop, objClock);
    CAnswerRouter objRouter(objItemManager, objState, objEvents);
    {
        const CComLink objLink(objPort, objInterface, objRouter, objState, objEvents, objWaiter);
        EXPECT_TRUE(objPort.HasEvents());
    }
    EXPECT_FALSE(objPort.HasEvents());
}

// Sending.

TEST_F(CComLinkTest, WritesByteByByteWithAYieldAfterEach) {
    OpenQuietly();
    m_objPort.m_bRaisesSendEvents = false;
    const std::int64_t iBegin = m_objEventLoop.Yields();
    const std::string strCommand = "{HD001,A\xFF\x80|}";
    EXPECT_TRUE(Exchange(strCommand));
    EXPECT_EQ(m_objPort.Sent(), strCommand);
    ASSERT_EQ(m_objPort.m_strWrites.size(), strCommand.size());
    for (std::size_t i = 0; i < strCommand.size(); ++i) {
        EXPECT_EQ(m_objPort.m_strWrites[i].size(), 1U);
        EXPECT_EQ(m_objPort.m_iYields[i] - iBegin, static_cast<std::int64_t>(i));
    }
    EXPECT_EQ(m_objEventLoop.Yields() - iBegin, static_cast<std::int64_t>(strCommand.size()));
}

TEST_F(CComLinkTest, APortThatIsNotOpenSendsNothingAndHasNoWords) {
    EXPECT_FALSE(Exchange("{WS|}"));
    EXPECT_EQ(m_strError, "");
    EXPECT_TRUE(m_objPort.m_strWrites.empty());
    EXPECT_EQ(m_objEventLoop.Yields(), 0);
}

TEST_F(CComLinkTest, EveryRequestOverAPortThatIsNotOpenIsQuiet) {
    EXPECT_FALSE(m_objExchange.RequestStatus());
    EXPECT_FALSE(m_objExchange.SendMaintenance(MCommand::HeadCheck));
    EXPECT_FALSE(m_objExchange.ReadGroup(1));
    EXPECT_TRUE(m_objView.AreControlsEnabled());
    EXPECT_EQ(m_objEventLoop.Yields(), 0);
}

TEST_F(CComLinkTest, AByteThatThePortRefusesEndsTheCommandQuietly) {
    OpenQuietly();
    m_objPort.m_bRaisesSendEvents = false;
    m_objEventLoop.AtYield(m_objEventLoop.Yields() + 2,
                           [this] { m_objPort.m_bRefusesOutput = true; });
    EXPECT_FALSE(Exchange("{WS|}"));
    EXPECT_EQ(m_objPort.Sent(), "{W");
    EXPECT_EQ(m_strError, "");
}

TEST_F(CComLinkTest, ClosingBetweenTwoBytesEndsTheCommand) {
    OpenQuietly();
    m_objPort.m_bRaisesSendEvents = false;
    m_objEventLoop.AtYield(m_objEventLoop.Yields() + 2, [this] { m_objEventLoop.RequestClose(); });
    EXPECT_FALSE(Exchange("{WS|}"));
    EXPECT_EQ(m_objPort.Sent(), "{W");
}

TEST_F(CComLinkTest, NoWaitFollowsACommand) {
    OpenQuietly();
    m_objPort.m_bRaisesSendEvents = false;
    const std::int64_t iBegin = m_objEventLoop.Yields();
    EXPECT_TRUE(m_objExchange.RequestStatus());
    EXPECT_EQ(m_objEventLoop.Yields() - iBegin, 5);
    EXPECT_EQ(m_objPort.Sent(), "{WS|}");
    EXPECT_TRUE(m_objView.AreControlsEnabled());
}

// Events.

TEST_F(CComLinkTest, ASendEventYieldsOnce) {
    OpenQuietly();
    const std::int64_t iBefore = m_objEventLoop.Yields();
    m_objPort.Raise(1);
    EXPECT_EQ(m_objEventLoop.Yields() - iBefore, 1);
    EXPECT_TRUE(m_objPort.m_strCalls.empty());
}

TEST_F(CComLinkTest, AReceiveEventSetsUpThePortAgainAndTakesOneCharacter) {
    OpenQuietly();
    m_objPort.Arrive("{");
    EXPECT_EQ(m_objPort.m_strCalls, (Texts{"receive threshold 1", "input length 1", "input"}));
    EXPECT_EQ(m_objPort.Waiting(), 0U);
}

TEST_F(CComLinkTest, AReceiveEventUndoesWhatOthersHaveSet) {
    OpenQuietly();
    m_objPort.SetReceiveThreshold(0);
    m_objPort.SetInputLength(0);
    m_objPort.Arrive("{12");
    ASSERT_EQ(m_objPort.Waiting(), 3U);
    m_objPort.Raise(2);
    EXPECT_EQ(m_objPort.Waiting(), 2U);
}

TEST_F(CComLinkTest, AReceiveEventWithoutACharacterIsHarmless) {
    OpenQuietly();
    m_objPort.Raise(2);
    EXPECT_TRUE(m_objView.m_strStatuses.empty());
}

TEST_F(CComLinkTest, CountsTheAnswersThatAreOutstanding) {
    EXPECT_FALSE(Exchange("{WS|}"));
    EXPECT_EQ(m_objState.m_iPendingAnswers, 0) << "nothing went out";
    OpenQuietly();
    m_objPort.m_bRaisesSendEvents = false;
    BeginRead(MAnswer::Adjustment);
    EXPECT_EQ(m_objState.m_iPendingAnswers, 1);
    const std::string strAnswer = MWire::Settings(MAnswer::Adjustment);
    m_objPort.Arrive(strAnswer.substr(0, 1));
    EXPECT_EQ(m_objState.m_iPendingAnswers, 1);
    m_objPort.Arrive(strAnswer.substr(1, 1));
    EXPECT_EQ(m_objState.m_iPendingAnswers, 0);
    m_objState.m_iPendingAnswers = 1;
    for (const char cCharacter : strAnswer.substr(2)) {
        m_objPort.Arrive(std::string(1, cCharacter));
    }
    EXPECT_EQ(Stored(MAnswer::Adjustment), MWire::Fields(MAnswer::Adjustment));
    EXPECT_EQ(m_objState.m_iPendingAnswers, 0) << "handed on";
}

TEST_F(CComLinkTest, ClearToSendShowsEachChangeOnce) {
    OpenQuietly();
    m_objPort.SetClearToSend(true);
    EXPECT_EQ(m_objView.m_strStatuses, Texts{});
    m_objPort.SetClearToSend(false);
    m_objPort.SetClearToSend(false);
    EXPECT_EQ(m_objView.m_strStatuses, Texts{"OFF LINE"});
    m_objPort.SetClearToSend(true);
    m_objPort.SetClearToSend(true);
    EXPECT_EQ(m_objView.m_strStatuses, (Texts{"OFF LINE", "ON LINE"}));
    m_objPort.SetClearToSend(false);
    EXPECT_EQ(m_objView.m_strStatuses, (Texts{"OFF LINE", "ON LINE", "OFF LINE"}));
}

// What comes tells nothing of the line, whatever the line is by then.
TEST_F(CComLinkTest, OnlyTheLinesOwnEventShowsIt) {
    OpenQuietly();
    m_objPort.m_bClearToSend = false;
    m_objPort.Arrive("x");
    m_objPort.Raise(1);
    m_objPort.Raise(99);
    EXPECT_EQ(m_objView.m_strStatuses, Texts{});
}

TEST_F(CComLinkTest, ClearToSendIsNoHeadChecksResult) {
    OpenQuietly();
    m_objRouter.ExpectHeadCheck();
    m_objPort.SetClearToSend(false);
    EXPECT_EQ(m_objView.m_strStatuses, Texts{"OFF LINE"});
    m_objPort.Arrive(MWire::Status("00"));
    EXPECT_EQ(m_objView.m_strHeadChecks, Texts{"ON LINE"});
}

TEST_F(CComLinkTest, AnOverrunIsTold) {
    OpenQuietly();
    for (int i = 0; i < 2; ++i) {
        m_objMessageBox.Expect("HARD ERROR", MessageIcon::Exclamation, "Varden Setting Tool");
        m_objPort.Raise(1006);
        m_objMessageBox.Verify();
    }
    EXPECT_EQ(m_objMessageBox.BeepCount(), 0);
}

TEST_F(CComLinkTest, AllOtherEventsAreIgnored) {
    OpenQuietly();
    m_objPort.m_bClearToSend = false;
    m_objPort.SetReceiveThreshold(0);
    m_objPort.Arrive("x");
    m_objPort.m_strCalls.clear();
    const std::int64_t iBefore = m_objEventLoop.Yields();
    for (const std::int16_t iEvent :
         std::vector<std::int16_t>{4,  5,    6,    7,    1001, 1004, 1008, 1009, 1010,  1011,  0, 8,
                                   -1, 1000, 1002, 1003, 1005, 1007, 1012, 2000, 32767, -32768}) {
        m_objPort.Raise(iEvent);
    }
    EXPECT_TRUE(m_objPort.m_strCalls.empty());
    EXPECT_EQ(m_objPort.Waiting(), 1U);
    EXPECT_TRUE(m_objView.m_strStatuses.empty());
    EXPECT_TRUE(m_objView.m_bEnabled.empty());
    EXPECT_EQ(m_objEventLoop.Yields(), iBefore);
}

// Answers.

TEST_F(CComLinkTest, AStatusIsShownWithItsLastCharacterOnly) {
    OpenQuietly();
    const std::string strAnswer = MWire::Status("15");
    m_objPort.Arrive(strAnswer.substr(0, strAnswer.size() - 1));
    EXPECT_EQ(m_objView.m_strStatuses, Texts{});
    m_objPort.Arrive(strAnswer.substr(strAnswer.size() - 1));
    EXPECT_EQ(m_objView.m_strStatuses, Texts{"Head Open Error"});
}

TEST_F(CComLinkTest, AStatusInTheMiddleOfACommandIsShownAndTheCommandGoesOn) {
    OpenQuietly();
    m_objPort.ArriveSlowly(MWire::Status("02"));
    const std::string strCommand = MCommand::TestPrint({0, 760, 1, 0, 0, 0, 0});
    EXPECT_TRUE(Exchange(strCommand));
    EXPECT_EQ(m_objPort.Sent(), strCommand);
    EXPECT_EQ(m_objView.m_strStatuses, Texts{"On Running"});
}

TEST_F(CComLinkTest, TheWholeReceiveBufferComesThroughFlowControlAndJunk) {
    OpenQuietly();
    BeginRead(1);
    std::string strLine = "\xFFjunk\r\n";
    for (const char cCharacter : MWire::Settings(1)) {
        strLine += std::string(1, cCharacter) + "\x13\x11\xFE";
    }
    m_objPort.Arrive(strLine);
    EXPECT_EQ(Stored(1), MWire::Fields(1));
}

class CComLinkGroupTest : public CComLinkTest,
                          public ::testing::WithParamInterface<std::int16_t> {};

TEST_P(CComLinkGroupTest, ReadsAGroupCharacterByCharacter) {
    OpenQuietly();
    const std::int16_t iGroup = GetParam();
    const std::string strAnswer = MWire::Settings(iGroup, 2);
    BeginRead(iGroup);
    const std::string strBefore = Stored(iGroup);
    m_objPort.Arrive(strAnswer.substr(0, strAnswer.size() - 1));
    EXPECT_EQ(Stored(iGroup), strBefore);
    m_objPort.Arrive(strAnswer.substr(strAnswer.size() - 1));
    EXPECT_EQ(Stored(iGroup), MWire::Fields(iGroup, 2));
    EXPECT_TRUE(m_objView.m_strStatuses.empty());
}

TEST_P(CComLinkGroupTest, AnAnswerThatWasCutDoesNotSpoilTheNext) {
    OpenQuietly();
    const std::int16_t iGroup = GetParam();
    BeginRead(iGroup);
    const std::string strCut = MWire::Settings(iGroup, 1);
    m_objPort.Arrive(strCut.substr(0, strCut.size() - 1));
    BeginRead(iGroup);
    m_objPort.Arrive(MWire::Settings(iGroup, 2));
    EXPECT_EQ(Stored(iGroup), MWire::Fields(iGroup, 2));
}

INSTANTIATE_TEST_SUITE_P(, CComLinkGroupTest, ::testing::Range(std::int16_t{0}, GroupCount));

TEST_F(CComLinkTest, SettingsAreCompleteAtTheLengthThatTheCommandExpects) {
    OpenQuietly();
    m_objRouter.SetAnswerSelector(MAnswer::Sensor);
    const std::string strAnswer = MWire::Settings(2);
    ASSERT_TRUE(Exchange("{Z5;2|}", 30));
    m_objPort.Arrive(strAnswer + "44");
    EXPECT_NE(Stored(2), MWire::Fields(2));
    m_objPort.Arrive("4");
    EXPECT_EQ(Stored(2), MWire::Fields(2));
}

TEST_F(CComLinkTest, SettingsThatEndBeforeTheirGroupStoreNothingAndEndNoHandler) {
    OpenQuietly();
    for (std::int16_t iGroup = 0; iGroup < GroupCount; ++iGroup) {
        SCOPED_TRACE(iGroup);
        m_objRouter.SetAnswerSelector(iGroup);
        bool bReached = false;
        MHandler::Run(m_objWaiter, [&] {
            ASSERT_TRUE(Exchange(MCommand::HeadCheck));
            m_objPort.ArriveSlowly(MWire::Settings(iGroup));
            m_objExchange.Pause(2);
            bReached = true;
        });
        EXPECT_TRUE(bReached);
    }
    ExpectNothingStored();
}

TEST_F(CComLinkTest, SettingsThatNoGroupWasNamedForAreDropped) {
    OpenQuietly();
    for (const std::int16_t iSelector : std::vector<std::int16_t>{-1, 5, -2, 32767}) {
        SCOPED_TRACE(iSelector);
        m_objRouter.SetAnswerSelector(iSelector);
        for (std::int16_t iGroup = 0; iGroup < GroupCount; ++iGroup) {
            ASSERT_TRUE(Exchange("{WS|}", MAnswer::ReceiveLength(iGroup)));
            m_objPort.Arrive(MWire::Settings(iGroup));
        }
    }
    ExpectNothingStored();
}

TEST_F(CComLinkTest, SettingsBeforeAnyCommandAreDropped) {
    OpenQuietly();
    for (std::int16_t iGroup = 0; iGroup < GroupCount; ++iGroup) {
        m_objPort.Arrive(MWire::Settings(iGroup));
    }
    ExpectNothingStored();
}

TEST_F(CComLinkTest, SettingsOfAnotherLengthThanExpectedNeverFail) {
    OpenQuietly();
    for (std::int16_t iSelector = -1; iSelector <= GroupCount; ++iSelector) {
        for (const std::int16_t iLength :
             std::vector<std::int16_t>{0, 2, 7, 13, 24, 50, 54, 62, 192, 400, 512, 32767, -1}) {
            SCOPED_TRACE(iSelector);
            SCOPED_TRACE(iLength);
            m_objRouter.SetAnswerSelector(iSelector);
            ASSERT_TRUE(Exchange("{WS|}", iLength));
            EXPECT_NO_THROW(m_objPort.Arrive("{1" + std::string(600, '4') + "|}"));
        }
    }
    BeginRead(3);
    m_objPort.Arrive(MWire::Settings(3));
    EXPECT_EQ(Stored(3), MWire::Fields(3));
}

TEST_F(CComLinkTest, RandomCharactersAreHarmlessAndTheNextAnswerIsFound) {
    constexpr std::size_t iMany = 100'000;
    // Half of them are such as answers are made of: of all, few would begin or end one.
    const std::string strMeaning = "{}|+-0123456789AF\x01\x02\x03\x04";
    std::mt19937 objRandom(20240229);  // the same characters each time
    OpenQuietly();
    BeginRead(3);
    std::string strLine(iMany, '\0');
    for (char& cCharacter : strLine) {
        const auto iRandom = objRandom();
        cCharacter = (iRandom >> 8) % 2 == 0 ? strMeaning[(iRandom >> 9) % strMeaning.size()]
                                             : static_cast<char>(iRandom % 256);
    }
    EXPECT_NO_THROW(m_objPort.Arrive(strLine));
    BeginRead(1);
    m_objPort.Arrive(MWire::Settings(1, 3));
    EXPECT_EQ(Stored(1), MWire::Fields(1, 3));
}

TEST_F(CComLinkTest, EndlessRunsOfOneCharacterAreHarmless) {
    constexpr std::size_t iMany = 20'000;
    OpenQuietly();
    for (const char cCharacter : {'\0', '\x01', '{', '|', '\x11', '\x80', '\xFF'}) {
        SCOPED_TRACE(static_cast<int>(cCharacter));
        BeginRead(4);
        EXPECT_NO_THROW(m_objPort.Arrive("{" + std::string(iMany, cCharacter)));
        BeginRead(4);
        m_objPort.Arrive(MWire::Settings(4));
        EXPECT_EQ(Stored(4), MWire::Fields(4));
    }
}

// What fails inside an event.

TEST_F(CComLinkTest, AViewThatFailsInsideAnEventOutsideAHandlerIsDropped) {
    OpenQuietly();
    m_objView.m_fnShowStatus = [](const std::string&) { throw std::runtime_error("no label"); };
    EXPECT_NO_THROW(m_objPort.Arrive(MWire::Status("00")));
    EXPECT_NO_THROW(m_objPort.SetClearToSend(false));
    m_objView.m_fnShowStatus = nullptr;
    bool bGoesOn = false;
    MHandler::Run(m_objWaiter, [&] { bGoesOn = m_objWaiter.Yield(); });
    EXPECT_TRUE(bGoesOn);
    m_objPort.Arrive(MWire::Status("02"));
    EXPECT_EQ(m_objView.m_strStatuses, Texts{"On Running"});
}

TEST_F(CComLinkTest, AViewThatFailsInsideAnEventEndsTheHandlerThatWaits) {
    OpenQuietly();
    m_objView.m_fnShowStatus = [](const std::string&) { throw std::runtime_error("no label"); };
    m_objPort.ArriveSlowly(MWire::Status("00"));
    bool bReached = false;
    MHandler::Run(m_objWaiter, [&] {
        m_objExchange.Pause(1);
        bReached = true;
    });
    EXPECT_FALSE(bReached);
    EXPECT_EQ(m_objClock.Elapsed(), 10 + 130);
}

// A send event yields itself: what fails in there belongs to the handler outside all the same.
TEST_F(CComLinkTest, AFaultInsideASendEventsYieldReachesTheHandler) {
    OpenQuietly();
    m_objView.m_fnShowStatus = [](const std::string&) { throw std::runtime_error("no label"); };
    m_objEventLoop.AtNextYield([this] {
        m_objEventLoop.AtYield(m_objEventLoop.Yields() + 1,
                               [this] { m_objPort.Arrive(MWire::Status("00")); });
        m_objPort.Raise(1);
    });
    bool bReached = false;
    EXPECT_NO_THROW(MHandler::Run(m_objWaiter, [&] {
        m_objExchange.Pause(1);
        bReached = true;
    }));
    EXPECT_FALSE(bReached);
}

TEST_F(CComLinkTest, ABoxThatFailsInsideAnEventIsContained) {
    OpenQuietly();
    m_objMessageBox.Expect("HARD ERROR", MessageIcon::Exclamation);
    m_objMessageBox.WhileShown([](const auto&) { throw std::runtime_error("no box"); });
    EXPECT_NO_THROW(m_objPort.Raise(1006));
}

}  // namespace
