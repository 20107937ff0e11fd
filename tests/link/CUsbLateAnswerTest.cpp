#include "flows/CReadWriteFlow.h"
#include "flows/MFailureBox.h"
#include "protocol/MAnswer.h"
#include "tests/fakes/CFakeSettingsPage.h"
#include "tests/fakes/CUsbLinkFixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

// Settings on USB that are another group's than the one that was asked for, or cut.

namespace {

using Texts = std::vector<std::string>;

constexpr const char* NoAnswer = "Please confirm the connection of USB.";
constexpr std::int64_t Step = CFakeEventLoop::StepMilliseconds;
constexpr std::int16_t GroupCount = 5;

const std::string Head = "\x02"
                         "0";

/// A group's answer without its "|}".
std::string Endless(std::int16_t p_iGroup) {
    std::string strAnswer = Head + MWire::Settings(p_iGroup);
    return strAnswer.replace(strAnswer.size() - 2, 2, "77");
}

class CUsbLateAnswerTest : public CUsbLinkFixture {
protected:
    bool ReadGroup(std::int16_t p_iGroup) {
        const CWaiter::Turn objTurn(m_objWaiter);
        return m_objExchange.ReadGroup(p_iGroup).m_bDone;
    }

    /// These come so many milliseconds from now, one behind the other.
    void AnswerAfter(std::int64_t p_iMilliseconds, const std::string& p_strAnswer) {
        m_objEventLoop.After(p_iMilliseconds, [this, p_strAnswer] {
            m_objLibrary.m_strAnswers.push_back(p_strAnswer);
        });
    }

    void ExpectFailure(std::int16_t p_iGroup) {
        m_objMessageBox.Expect(NoAnswer, MessageIcon::Exclamation);
        EXPECT_FALSE(ReadGroup(p_iGroup));
        m_objMessageBox.Verify();
        EXPECT_TRUE(m_objView.AreControlsEnabled());
    }

    void ExpectNothingStored() const {
        const CItemManager objUntouched;
        for (std::int16_t iGroup = 0; iGroup < GroupCount; ++iGroup) {
            EXPECT_EQ(MWire::StoredFields(m_objItemManager, iGroup),
                      MWire::StoredFields(objUntouched, iGroup))
                << iGroup;
        }
    }

    [[nodiscard]] std::int64_t Receives() const {
        return std::ranges::count_if(m_objLibrary.m_strCalls, [](const std::string& p_strCall) {
            return p_strCall.starts_with("rcv");
        });
    }
};

class CUsbLateGroupTest : public CUsbLateAnswerTest,
                          public ::testing::WithParamInterface<std::int16_t> {};

INSTANTIATE_TEST_SUITE_P(, CUsbLateGroupTest, ::testing::Range(std::int16_t{0}, GroupCount));

TEST_P(CUsbLateGroupTest, AnotherGroupsAnswerIsDroppedAndTheRightOneBehindItTaken) {
    const std::int16_t iAsked = GetParam();
    for (std::int16_t iCame = 0; iCame < GroupCount; ++iCame) {
        if (iCame == iAsked) {
            continue;
        }
        SCOPED_TRACE(iCame);
        const auto iVariant = static_cast<std::size_t>(iCame);
        const std::string strBefore = MWire::StoredFields(m_objItemManager, iCame);
        AnswerWith(Head + MWire::Settings(iCame, 1));
        AnswerAfter(900, Head + MWire::Settings(iAsked, iVariant));
        EXPECT_TRUE(ReadGroup(iAsked));
        EXPECT_EQ(MWire::StoredFields(m_objItemManager, iAsked), MWire::Fields(iAsked, iVariant));
        EXPECT_EQ(MWire::StoredFields(m_objItemManager, iCame), strBefore);
    }
    EXPECT_EQ(Receives(), 2 * (GroupCount - 1));
    EXPECT_EQ(m_objMessageBox.BeepCount(), 0);
    EXPECT_FALSE(m_objLibrary.IsOpen());
}

TEST_P(CUsbLateGroupTest, WithoutItsEndTheNumberOfBytesTells) {
    for (std::int16_t iCame = 0; iCame < GroupCount; ++iCame) {
        if (iCame != GetParam()) {
            AnswerWith(Endless(iCame));
            ExpectFailure(GetParam());
        }
    }
    EXPECT_EQ(Receives(), 2 * (GroupCount - 1)) << "each was dropped";
    ExpectNothingStored();
}

TEST_P(CUsbLateGroupTest, AnAnswerOfItsOwnLengthNeedsNoEnd) {
    AnswerWith(Endless(GetParam()));
    EXPECT_TRUE(ReadGroup(GetParam()));
    EXPECT_EQ(MWire::StoredFields(m_objItemManager, GetParam()), MWire::Fields(GetParam()));
    EXPECT_EQ(Receives(), 1);
}

TEST_P(CUsbLateGroupTest, AnAnswerThatIsCutFillsNothingAndHasFailed) {
    const std::string strWhole = Head + MWire::Settings(GetParam());
    for (std::size_t iLength = 1; iLength < strWhole.size(); ++iLength) {
        SCOPED_TRACE(iLength);
        AnswerWith(strWhole.substr(0, iLength));
        ExpectFailure(GetParam());
    }
    ExpectNothingStored();
}

TEST_P(CUsbLateGroupTest, AnAnswerThatIsNoSettingsHasFailed) {
    for (const std::string& strAnswer :
         {MWire::Status("14"), std::string("\x01\x02"), std::string("\x03"),
          std::string("\x03 whatever"), MWire::Settings(GetParam()), std::string("~")}) {
        SCOPED_TRACE(strAnswer);
        AnswerWith(strAnswer);
        ExpectFailure(GetParam());
    }
    EXPECT_EQ(m_objView.m_strStatuses, Texts{"NO RIBBON"});
    EXPECT_EQ(m_objMessageBox.BeepCount(), 0);
    ExpectNothingStored();
}

TEST_F(CUsbLateAnswerTest, ADroppedAnswerLeavesNothingInTheBuffer) {
    AnswerWith(Head + MWire::Settings(MAnswer::Adjustment));
    m_objRouter.SetAnswerSelector(MAnswer::Parameter);
    const CWaiter::Turn objTurn(m_objWaiter);
    Bytes objBuffer;
    CFailure objFailure;
    std::int16_t iCount = -7;
    EXPECT_TRUE(
        m_objUsbLink.Exchange(MWire::ToBytes("{Z5;1|}"), objBuffer, objFailure, iCount, 50));
    EXPECT_EQ(objBuffer, Bytes(50, 0));
    EXPECT_EQ(iCount, 0);
    EXPECT_EQ(MFailureBox::HandlerText(objFailure), NoAnswer);
    EXPECT_EQ(m_objState.m_iReplyReceived, 0);
    EXPECT_EQ(m_objMessageBox.BeepCount(), 1);
    EXPECT_EQ(Receives(), 2);
}

TEST_F(CUsbLateAnswerTest, EndlessWrongAnswersEndAfterASecond) {
    for (int i = 1; i < 500; ++i) {
        AnswerAfter(100 * i, Head + MWire::Settings(MAnswer::Adjustment));
    }
    const std::int64_t iBefore = m_objClock.Elapsed();
    m_objLibrary.m_fnSent = nullptr;
    ExpectFailure(MAnswer::Parameter);
    EXPECT_GE(m_objClock.Elapsed() - iBefore, 1000);
    EXPECT_LE(m_objClock.Elapsed() - iBefore, 1200);
    EXPECT_EQ(m_objMessageBox.BeepCount(), 1);
    ExpectNothingStored();
}

TEST_F(CUsbLateAnswerTest, AWrongAnswerAfterASecondIsTheLast) {
    m_objLibrary.m_fnSent = nullptr;
    AnswerAfter(900, Head + MWire::Settings(MAnswer::Adjustment));
    AnswerAfter(1200, Head + MWire::Settings(MAnswer::Adjustment));
    AnswerAfter(1300, Head + MWire::Settings(MAnswer::Parameter));
    ExpectFailure(MAnswer::Parameter);
    EXPECT_EQ(Receives(), 2);
    ExpectNothingStored();
}

TEST_F(CUsbLateAnswerTest, EndlessWrongAnswersEndOverMidnightToo) {
    m_objClock.SetTimeOfDay(86'399.9);
    for (int i = 1; i < 500; ++i) {
        AnswerAfter(100 * i, Head + MWire::Settings(MAnswer::Adjustment));
    }
    m_objLibrary.m_fnSent = nullptr;
    const std::int64_t iBefore = m_objClock.Elapsed();
    ExpectFailure(MAnswer::Parameter);
    EXPECT_LE(m_objClock.Elapsed() - iBefore, 2000);
}

TEST_F(CUsbLateAnswerTest, NothingBehindAWrongAnswerIsWaitedForOnce) {
    AnswerWith(Head + MWire::Settings(MAnswer::Adjustment));
    const std::int64_t iBefore = m_objClock.Elapsed();
    ExpectFailure(MAnswer::Parameter);
    EXPECT_LE(m_objClock.Elapsed() - iBefore, CFakeUsbLibrary::ReceiveMilliseconds + 10 * Step);
    EXPECT_EQ(Receives(), 2);
}

TEST_F(CUsbLateAnswerTest, AStatusBehindAWrongAnswerIsShownAndTheReadHasFailed) {
    AnswerWith(Head + MWire::Settings(MAnswer::Adjustment));
    AnswerAfter(300, MWire::Status("14"));
    ExpectFailure(MAnswer::Parameter);
    EXPECT_EQ(m_objView.m_strStatuses, Texts{"NO RIBBON"});
    ExpectNothingStored();
}

TEST_F(CUsbLateAnswerTest, APrinterThatGoesBehindAWrongAnswerIsToldOnce) {
    AnswerWith(Head + MWire::Settings(MAnswer::Adjustment));
    m_objLibrary.m_iOpenResults = {0, 0, 0, -1};
    m_objMessageBox.Expect("'USB' Open Error !!", MessageIcon::Critical);
    ExpectFailure(MAnswer::Parameter);
    EXPECT_EQ(Receives(), 1);
}

TEST_F(CUsbLateAnswerTest, ClosingBehindAWrongAnswerEndsItWithoutABox) {
    AnswerWith(Head + MWire::Settings(MAnswer::Adjustment));
    m_objEventLoop.After(500, [this] { m_objEventLoop.RequestClose(); });
    EXPECT_FALSE(ReadGroup(MAnswer::Parameter));
    EXPECT_EQ(m_objMessageBox.BeepCount(), 0);
    EXPECT_FALSE(m_objLibrary.IsOpen());
}

TEST_F(CUsbLateAnswerTest, ClosingWithAUselessAnswerShowsNoBox) {
    AnswerWith("\x03");
    // The answer is there before the last yield of the exchange.
    m_objEventLoop.AtYield(5, [this] { m_objEventLoop.RequestClose(); });
    EXPECT_FALSE(ReadGroup(MAnswer::Parameter));
    EXPECT_EQ(m_objState.m_iReplyReceived, 1);
}

TEST_F(CUsbLateAnswerTest, ASendThatFailsHasOneBox) {
    m_objLibrary.m_iSendResult = -1;
    m_objMessageBox.Expect("Device Time Out !!", MessageIcon::Critical);
    EXPECT_FALSE(ReadGroup(MAnswer::Parameter));
}

TEST_F(CUsbLateAnswerTest, AReadThatIsNotEvenSentAfterOneThatWentWellHasFailed) {
    EXPECT_TRUE(ReadGroup(MAnswer::Parameter));
    m_objEventLoop.RequestClose();
    EXPECT_FALSE(ReadGroup(MAnswer::Parameter));
}

TEST_F(CUsbLateAnswerTest, OtherCommandsDropNothing) {
    const CWaiter::Turn objTurn(m_objWaiter);
    AnswerWith(Head + MWire::Settings(MAnswer::Adjustment));
    EXPECT_FALSE(m_objExchange.SendMaintenance("{Z11|}")) << "settings that nobody asked for";
    EXPECT_EQ(Receives(), 1);
    ExpectNothingStored();
}

TEST_F(CUsbLateAnswerTest, ReadAgainAfterAFailureMixesNoGroups) {
    constexpr std::int64_t iLate = 1200;
    CFakeSettingsPage objParameterPage;
    CFakeSettingsPage objLanPage;
    CReadWriteFlow objFlow{m_objItemManager, m_objSession, m_objMessageBox, objParameterPage,
                           objLanPage};
    m_objLibrary.m_fnSent = [&](const std::string& p_strCommand) {
        const auto iGroup = static_cast<std::int16_t>(p_strCommand[4] - '0');
        AnswerAfter(iLate, Head + MWire::Settings(iGroup));
    };
    m_objMessageBox.Expect(NoAnswer, MessageIcon::Exclamation);
    objFlow.Read();
    m_objMessageBox.Expect(NoAnswer, MessageIcon::Exclamation);
    objFlow.Read();
    EXPECT_EQ(m_objLibrary.m_strSent, (Texts{"{Z5;0|}", "{Z5;0|}", "{Z5;1|}"}));
    EXPECT_EQ(MWire::StoredFields(m_objItemManager, 0), MWire::Fields(0));
    EXPECT_EQ(MWire::StoredFields(m_objItemManager, 1), MWire::StoredFields(CItemManager(), 1));
    EXPECT_EQ(objParameterPage.m_iRefreshes, 0);
    EXPECT_TRUE(m_objView.AreControlsEnabled());
}

}  // namespace
