#include "protocol/MCommand.h"
#include "tests/link/CSessionEventsFixture.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

// What an exchange hands back, for the window and for a program that awaits its answers.

namespace {

using Kind = CFailure::Kind;

constexpr std::int16_t Com = CInterface::SerialInterface;
constexpr std::int16_t Lan = CInterface::LanInterface;
constexpr std::int16_t Usb = CInterface::UsbInterface;

std::string LinkName(std::int16_t p_iInterface) {
    return p_iInterface == Com ? "Com" : p_iInterface == Lan ? "Lan" : "Usb";
}

std::string FailureOf(const COutcome& p_objOutcome) {
    return CFakeSessionEvents::Name(p_objOutcome.m_objFailure.m_iKind);
}

// As the window's session is made.

class CExchangeOutcomeTest : public CSessionEventsFixture,
                             public ::testing::WithParamInterface<std::int16_t> {
protected:
    void SetUp() override { Use(GetParam()); }
};

INSTANTIATE_TEST_SUITE_P(, CExchangeOutcomeTest, ::testing::Values(Com, Lan, Usb),
                         [](const auto& p_objInfo) { return LinkName(p_objInfo.param); });

TEST_P(CExchangeOutcomeTest, AStatusIsThereWithItsCodeWhereItIsAwaited) {
    const COutcome objOutcome = Exchange().Request("{WS|}", 13, AwaitedAnswer::Any);
    EXPECT_TRUE(objOutcome);
    EXPECT_TRUE(objOutcome.m_bSent);
    EXPECT_TRUE(objOutcome.m_bTouched);
    EXPECT_EQ(objOutcome.m_strStatusCode.has_value(), GetParam() != Com);
    EXPECT_EQ(objOutcome.m_strStatusCode.value_or("00"), "00");
    EXPECT_EQ(objOutcome.m_strStatusText, GetParam() == Com ? "" : "ON LINE");
    EXPECT_FALSE(objOutcome.m_iGroup.has_value());
}

TEST_P(CExchangeOutcomeTest, SettingsTellTheGroupThatTheyHaveFilled) {
    const COutcome objOutcome = Exchange().ReadGroup(3);
    EXPECT_TRUE(objOutcome);
    EXPECT_EQ(objOutcome.m_iGroup,
              GetParam() == Com ? std::nullopt : std::optional<std::int16_t>(3));
    EXPECT_FALSE(objOutcome.m_strStatusCode.has_value());
}

TEST_P(CExchangeOutcomeTest, NothingIsTouchedWhenNothingCouldBeSent) {
    m_objSession.Links().CloseLink(GetParam());
    m_objLibrary.m_iOpenResults = {IUsbLibrary::Mismatch};
    const COutcome objOutcome = Exchange().Request("{WS|}", 13, AwaitedAnswer::Any);
    EXPECT_FALSE(objOutcome);
    EXPECT_FALSE(objOutcome.m_bSent);
    EXPECT_FALSE(objOutcome.m_bTouched);
    const Kind iExpected = GetParam() == Com   ? Kind::SerialNotOpen
                           : GetParam() == Lan ? Kind::LanNotSent
                                               : Kind::UsbMismatch;
    EXPECT_EQ(FailureOf(objOutcome), CFakeSessionEvents::Name(iExpected));
}

TEST_P(CExchangeOutcomeTest, ACommandThatIsCutShortByTheEndHasBeenTouched) {
    m_objEventLoop.AtYield(m_objEventLoop.Yields() + 2, [this] { m_objEventLoop.RequestClose(); });
    Answer(CScriptedPrinter::KeepSilent);
    const COutcome objOutcome = Exchange().Request("{WS|}", 13, AwaitedAnswer::Any);
    EXPECT_FALSE(objOutcome);
    EXPECT_TRUE(objOutcome.m_bTouched);
    EXPECT_EQ(FailureOf(objOutcome), "None");
}

TEST_P(CExchangeOutcomeTest, ACommandThatIsNotWaitedForTellsWhetherItWasTouched) {
    const COutcome objOutcome = Exchange().Send("{Z4;1|}");
    EXPECT_TRUE(objOutcome);
    EXPECT_TRUE(objOutcome.m_bSent);
    EXPECT_TRUE(objOutcome.m_bTouched);
    m_objInterface.SetActiveInterface(7);
    const COutcome objNowhere = Exchange().Send("{Z4;1|}");
    EXPECT_FALSE(objNowhere.m_bTouched);
    EXPECT_EQ(FailureOf(objNowhere), "NoLink");
}

class CExchangeOutcomeUsbTest : public CSessionEventsFixture {};

TEST_F(CExchangeOutcomeUsbTest, SettingsThatNobodyAskedForAreToldApart) {
    Use(Usb);
    Answer([](const std::string&) { return MWire::Settings(1); });
    const COutcome objOutcome = Exchange().Request("{Z2;1,0|}", 13, AwaitedAnswer::Any);
    EXPECT_FALSE(objOutcome);
    EXPECT_TRUE(objOutcome.m_bSent);
    EXPECT_EQ(FailureOf(objOutcome), "UsbStrayAnswer");
}

// As a program has it made that has to know.

class CAwaitedOutcomeTest : public CSessionEventsFixture,
                            public ::testing::WithParamInterface<std::int16_t> {
protected:
    CAwaitedOutcomeTest()
        : CSessionEventsFixture(CExchangeManners::OfAProgram()) {}
    void SetUp() override { Use(GetParam()); }

    COutcome AskStatus() { return Exchange().RequestStatus(); }
};

INSTANTIATE_TEST_SUITE_P(, CAwaitedOutcomeTest, ::testing::Values(Com, Lan, Usb),
                         [](const auto& p_objInfo) { return LinkName(p_objInfo.param); });

TEST_P(CAwaitedOutcomeTest, TheStatusIsThereOnEveryLink) {
    const COutcome objOutcome = AskStatus();
    EXPECT_TRUE(objOutcome);
    EXPECT_EQ(objOutcome.m_strStatusCode, "00");
    EXPECT_EQ(objOutcome.m_strStatusText, "ON LINE");
}

TEST_P(CAwaitedOutcomeTest, AnUnknownCodeIsAnAnswerWithoutWords) {
    Answer([](const std::string&) { return MWire::Status("77"); });
    const COutcome objOutcome = AskStatus();
    EXPECT_TRUE(objOutcome);
    EXPECT_EQ(objOutcome.m_strStatusCode, "77");
    EXPECT_EQ(objOutcome.m_strStatusText, "");
}

TEST_P(CAwaitedOutcomeTest, EachGroupIsThereOnEveryLink) {
    for (std::int16_t iGroup = 0; iGroup < 5; ++iGroup) {
        SCOPED_TRACE(iGroup);
        const COutcome objOutcome = Exchange().ReadGroup(iGroup);
        EXPECT_TRUE(objOutcome);
        EXPECT_EQ(objOutcome.m_iGroup, iGroup);
        EXPECT_EQ(MWire::StoredFields(m_objItemManager, iGroup), MWire::Fields(iGroup));
    }
}

TEST_P(CAwaitedOutcomeTest, ASilentPrinterIsNoReplyAfterFiveSeconds) {
    Answer(CScriptedPrinter::KeepSilent);
    const std::int64_t iBefore = m_objClock.Elapsed();
    const COutcome objOutcome = Exchange().ReadGroup(1);
    EXPECT_FALSE(objOutcome);
    EXPECT_TRUE(objOutcome.m_bSent);
    EXPECT_EQ(FailureOf(objOutcome), GetParam() == Usb ? "UsbNoAnswer" : "NoReply");
    EXPECT_NEAR(static_cast<double>(m_objClock.Elapsed() - iBefore), 5000, 1100);
}

TEST_P(CAwaitedOutcomeTest, AStatusThatComesToAReadIsLetPass) {
    Answer(CScriptedPrinter::KeepSilent);
    Arrive(300, MWire::Status("11"));
    Arrive(1700, MWire::Settings(1));
    const COutcome objOutcome = Exchange().ReadGroup(1);
    EXPECT_TRUE(objOutcome);
    EXPECT_EQ(objOutcome.m_iGroup, 1);
}

TEST_P(CAwaitedOutcomeTest, WhatOnlyBeginsLikeAStatusIsLetPass) {
    Answer(CScriptedPrinter::KeepSilent);
    Arrive(300, MWire::Status("\xBD\xE1"));
    Arrive(600, MWire::Status("2p"));
    Arrive(1700, MWire::Status("11"));
    const COutcome objOutcome = AskStatus();
    EXPECT_TRUE(objOutcome);
    EXPECT_EQ(objOutcome.m_strStatusCode, "11");
}

TEST_P(CAwaitedOutcomeTest, SettingsThatComeToAStatusRequestAreLetPassAndFillNothing) {
    Answer(CScriptedPrinter::KeepSilent);
    Arrive(300, MWire::Settings(1));
    Arrive(1700, MWire::Status("11"));
    const COutcome objOutcome = AskStatus();
    EXPECT_TRUE(objOutcome);
    EXPECT_EQ(objOutcome.m_strStatusCode, "11");
    EXPECT_EQ(MWire::StoredFields(m_objItemManager, 1), MWire::StoredFields(CItemManager(), 1));
}

TEST_P(CAwaitedOutcomeTest, ALateAnswerOfAnotherGroupFillsNothingAndTheWaitGoesOn) {
    for (std::int16_t iLate = 0; iLate < 5; ++iLate) {
        for (std::int16_t iAsked = 0; iAsked < 5; ++iAsked) {
            if (iLate == iAsked) {
                continue;
            }
            SCOPED_TRACE(std::to_string(iLate) + " to " + std::to_string(iAsked));
            Answer(CScriptedPrinter::KeepSilent);
            Arrive(300, MWire::Settings(iLate, 1));
            Arrive(1700, MWire::Settings(iAsked));
            const COutcome objOutcome = Exchange().ReadGroup(iAsked);
            EXPECT_TRUE(objOutcome);
            EXPECT_EQ(objOutcome.m_iGroup, iAsked);
            EXPECT_EQ(MWire::StoredFields(m_objItemManager, iAsked), MWire::Fields(iAsked));
            m_objEventLoop.Idle(1000);
        }
    }
}

TEST_P(CAwaitedOutcomeTest, ALinkThatGoesWhileTheAnswerIsAwaitedEndsTheWaitAtOnce) {
    Answer(CScriptedPrinter::KeepSilent);
    m_objEventLoop.After(500, [this] {
        m_objSocket.PeerCloses();
        m_objPort.Close();
        m_objLibrary.m_iOpenResults = {IUsbLibrary::NotReady};
    });
    const std::int64_t iBefore = m_objClock.Elapsed();
    const COutcome objOutcome = Exchange().ReadGroup(1);
    EXPECT_FALSE(objOutcome);
    EXPECT_TRUE(objOutcome.m_bSent);
    EXPECT_EQ(FailureOf(objOutcome), GetParam() == Com   ? "SerialLost"
                                     : GetParam() == Lan ? "LanClosed"
                                                         : "UsbNotOpened");
    EXPECT_LT(m_objClock.Elapsed() - iBefore, 1200);
}

class CAwaitedUsbPiecesTest : public CAwaitedOutcomeTest {
protected:
    /// These bytes come by themselves, as they are.
    void ArriveRaw(std::int64_t p_iMilliseconds, const std::string& p_strBytes) {
        m_objEventLoop.After(p_iMilliseconds,
                             [=, this] { m_objLibrary.m_strAnswers.push_back(p_strBytes); });
    }
};

INSTANTIATE_TEST_SUITE_P(, CAwaitedUsbPiecesTest, ::testing::Values(Usb),
                         [](const auto& p_objInfo) { return LinkName(p_objInfo.param); });

TEST_P(CAwaitedUsbPiecesTest, AnAnswerThatIsCutIsPutTogetherWithItsRest) {
    const std::string strAnswer = Framed(MWire::Settings(3));
    for (const std::size_t iCut :
         {std::size_t{1}, std::size_t{2}, std::size_t{40}, strAnswer.size() - 1}) {
        SCOPED_TRACE(iCut);
        Answer(CScriptedPrinter::KeepSilent);
        ArriveRaw(200, strAnswer.substr(0, iCut));
        ArriveRaw(1900, strAnswer.substr(iCut));
        const COutcome objOutcome = Exchange().ReadGroup(3);
        EXPECT_TRUE(objOutcome);
        EXPECT_EQ(objOutcome.m_iGroup, 3);
        EXPECT_EQ(MWire::StoredFields(m_objItemManager, 3), MWire::Fields(3));
        m_objItemManager = CItemManager();
    }
}

TEST_P(CAwaitedUsbPiecesTest, APieceWhoseRestDoesNotComeIsLetPass) {
    Answer(CScriptedPrinter::KeepSilent);
    ArriveRaw(200, Framed(MWire::Settings(1, 1)).substr(0, 20));
    ArriveRaw(1900, Framed(MWire::Settings(1)));
    EXPECT_TRUE(Exchange().ReadGroup(1));
    EXPECT_EQ(MWire::StoredFields(m_objItemManager, 1), MWire::Fields(1));
}

TEST_P(CAwaitedUsbPiecesTest, AStatusMayComeByteByByte) {
    Answer(CScriptedPrinter::KeepSilent);
    std::int64_t iTime = 200;
    for (const char cByte : MWire::Status("11")) {
        ArriveRaw(iTime += 100, std::string(1, cByte));
    }
    const COutcome objOutcome = AskStatus();
    EXPECT_TRUE(objOutcome);
    EXPECT_EQ(objOutcome.m_strStatusCode, "11");
}

TEST_P(CAwaitedUsbPiecesTest, AStatusMayComeWholeBehindTheFirstByteOfAnother) {
    Answer(CScriptedPrinter::KeepSilent);
    ArriveRaw(200, MWire::Status("00").substr(0, 1));
    ArriveRaw(300, MWire::Status("11"));
    const COutcome objOutcome = AskStatus();
    EXPECT_TRUE(objOutcome);
    EXPECT_EQ(objOutcome.m_strStatusCode, "11");
}

TEST_P(CAwaitedUsbPiecesTest, AStatusThatStaysCutIsNoAnswerInTheEnd) {
    Answer(CScriptedPrinter::KeepSilent);
    ArriveRaw(200, MWire::Status("00").substr(0, 3));
    const std::int64_t iBefore = m_objClock.Elapsed();
    const COutcome objOutcome = AskStatus();
    EXPECT_FALSE(objOutcome);
    EXPECT_EQ(FailureOf(objOutcome), "UsbNoAnswer");
    EXPECT_GE(m_objClock.Elapsed() - iBefore, 4000);
}

TEST_P(CAwaitedOutcomeTest, TheReplyTimeIsTheCallers) {
    CPrinterSession objQuick(
        m_objItemManager, m_objInterface, m_objEvents,
        CPrinterPlatform{m_objEventLoop, m_objClock, m_objSocket, m_objPort, m_objLibrary},
        CExchangeManners::OfAProgram(2));
    if (GetParam() != Usb) {
        ASSERT_TRUE(objQuick.Links().OpenLink(GetParam()));
    }
    Answer(CScriptedPrinter::KeepSilent);
    const std::int64_t iBefore = m_objClock.Elapsed();
    EXPECT_FALSE(objQuick.Exchange().ReadGroup(1));
    EXPECT_NEAR(static_cast<double>(m_objClock.Elapsed() - iBefore), 2000, 1100);
}

TEST_P(CAwaitedOutcomeTest, TheTimeToSendIsTheCallers) {
    if (GetParam() != Lan) {
        return;  // the others hand each byte over, or all at once
    }
    CPrinterSession objQuick(
        m_objItemManager, m_objInterface, m_objEvents,
        CPrinterPlatform{m_objEventLoop, m_objClock, m_objSocket, m_objPort, m_objLibrary},
        CExchangeManners::OfAProgram(5, 0.5));
    ASSERT_TRUE(objQuick.Links().OpenLink(Lan));
    m_objSocket.m_bCompletesSends = false;
    const std::int64_t iBefore = m_objClock.Elapsed();
    EXPECT_EQ(FailureOf(objQuick.Exchange().RequestStatus()), "LanNotSent");
    EXPECT_NEAR(static_cast<double>(m_objClock.Elapsed() - iBefore), 500, 100);
}

TEST_P(CAwaitedOutcomeTest, WhyNoAnswerCanComeAnyMoreIsTold) {
    Answer(CScriptedPrinter::KeepSilent);
    m_objEventLoop.After(500, [this] {
        m_objPort.GoAway();
        m_objSocket.PeerCloses();
    });
    AskStatus();
    EXPECT_EQ(m_objEvents.Lines("failure"),
              std::vector<std::string>{GetParam() == Com   ? "failure SerialLost"
                                       : GetParam() == Lan ? "failure LanClosed"
                                                           : "failure UsbNoAnswer"});
}

class CAwaitedUsbMidnightTest : public CSessionEventsFixture {
protected:
    CAwaitedUsbMidnightTest()
        : CSessionEventsFixture(CExchangeManners::OfAProgram()) {}
    void SetUp() override { Use(Usb); }
};

TEST_F(CAwaitedUsbMidnightTest, AWaitOverMidnightEnds) {
    m_objClock.SetTimeOfDay(86'398.5);
    Answer(CScriptedPrinter::KeepSilent);
    const std::int64_t iBefore = m_objClock.Elapsed();
    EXPECT_EQ(FailureOf(Exchange().RequestStatus()), "UsbNoAnswer");
    EXPECT_LE(m_objClock.Elapsed() - iBefore, 4000);
}

}  // namespace
