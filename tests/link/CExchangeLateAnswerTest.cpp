#include "flows/CReadWriteFlow.h"
#include "link/CComLink.h"
#include "protocol/MAnswer.h"
#include "protocol/MCommand.h"
#include "tests/fakes/CFakeSerialPort.h"
#include "tests/fakes/CFakeSettingsPage.h"
#include "tests/fakes/CLinkFixture.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

// What a read has asked for comes when nobody waits for it any more, or another read does.

namespace {

struct LaterCase {
    const char* m_strName;
    bool (*m_fnRun)(CCommandExchange& p_objExchange);
};

class CExchangeLateAnswerTest : public CLinkFixture,
                                public ::testing::WithParamInterface<LaterCase> {};

TEST_P(CExchangeLateAnswerTest, FillsNoItemOnceAnotherCommandIsOut) {
    constexpr std::int16_t iGroup = 0;
    Connect();
    const CWaiter::Turn objTurn(m_objWaiter);
    m_objPrinter.m_fnAnswer = CScriptedPrinter::KeepSilent;
    m_objMessageBox.Expect("Device Time Out !!", MessageIcon::Critical, "Failure");
    EXPECT_FALSE(m_objExchange.ReadGroup(iGroup));

    m_objPrinter.m_fnAnswer = [&](const std::string&) {
        return MWire::Settings(iGroup) + MWire::Status("00");
    };
    EXPECT_TRUE(GetParam().m_fnRun(m_objExchange));
    m_objEventLoop.Idle(1000);
    EXPECT_EQ(m_objView.m_strStatuses.back(), "ON LINE") << "the status behind it is still read";
    const CItemManager objUntouched;
    EXPECT_EQ(MWire::StoredFields(m_objItemManager, iGroup),
              MWire::StoredFields(objUntouched, iGroup));
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(, CExchangeLateAnswerTest, ::testing::Values(
    LaterCase{"Send", [](CCommandExchange& p_objExchange) { return p_objExchange.Send(MCommand::SensorAdjustReflect).m_bDone; }},
    LaterCase{"Request", [](CCommandExchange& p_objExchange) { return p_objExchange.Request("{Z2;1,0|}", 13, AwaitedAnswer::Any).m_bDone; }},
    LaterCase{"Maintenance", [](CCommandExchange& p_objExchange) { return p_objExchange.SendMaintenance("{Z11|}").m_bDone; }},
    LaterCase{"Status", [](CCommandExchange& p_objExchange) { return p_objExchange.RequestStatus().m_bDone; }}),
    [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });
// clang-format on

// The next read is out when the answer to the former one comes.

using Texts = std::vector<std::string>;

constexpr std::int64_t Step = CFakeEventLoop::StepMilliseconds;
constexpr std::int64_t ReplyMilliseconds = 1000 * CExchangeManners{}.m_iReplySeconds;
constexpr std::int64_t QuietMilliseconds = 250;

/// A settings answer that does not show where it ends.
std::string Endless(std::int16_t p_iGroup) {
    std::string strAnswer = MWire::Settings(p_iGroup);
    return strAnswer.replace(strAnswer.size() - 2, 2, "77");
}

class CExchangeLateReadTest : public CLinkFixture {
protected:
    void SetUp() override { Connect(); }

    /// Each command is answered with p_strAnswer.
    void AnswerWith(const std::string& p_strAnswer) {
        m_objPrinter.m_fnAnswer = [p_strAnswer](const std::string&) { return p_strAnswer; };
    }

    bool ReadGroup(std::int16_t p_iGroup) {
        const CWaiter::Turn objTurn(m_objWaiter);
        return m_objExchange.ReadGroup(p_iGroup).m_bDone;
    }

    void ExpectTimeOut() {
        m_objMessageBox.Expect("Device Time Out !!", MessageIcon::Critical, "Failure");
    }

    [[nodiscard]] std::string Stored(std::int16_t p_iGroup) const {
        return MWire::StoredFields(m_objItemManager, p_iGroup);
    }

    void ExpectUntouched(std::int16_t p_iGroup) const {
        EXPECT_EQ(Stored(p_iGroup), MWire::StoredFields(CItemManager(), p_iGroup));
    }

    CFakeSettingsPage m_objParameterPage;
    CFakeSettingsPage m_objLanPage;
    CReadWriteFlow m_objFlow{m_objItemManager, m_objSession, m_objMessageBox, m_objParameterPage,
                             m_objLanPage};
};

TEST_F(CExchangeLateReadTest, AnotherGroupsAnswerIsWaitedPast) {
    AnswerWith(MWire::Settings(MAnswer::Adjustment));
    m_objEventLoop.After(3000, [this] { m_objSocket.Arrive(MWire::Settings(MAnswer::Parameter)); });
    const std::int64_t iBefore = m_objClock.Elapsed();
    EXPECT_TRUE(ReadGroup(MAnswer::Parameter));
    EXPECT_EQ(m_objClock.Elapsed() - iBefore, 3000);
    EXPECT_EQ(Stored(MAnswer::Parameter), MWire::Fields(MAnswer::Parameter));
    ExpectUntouched(MAnswer::Adjustment);
}

TEST_F(CExchangeLateReadTest, AnotherGroupsAnswerAloneRunsIntoTheTimeOut) {
    AnswerWith(MWire::Settings(MAnswer::Adjustment));
    ExpectTimeOut();
    const std::int64_t iBefore = m_objClock.Elapsed();
    EXPECT_FALSE(ReadGroup(MAnswer::Parameter));
    EXPECT_EQ(m_objClock.Elapsed() - iBefore, Step + ReplyMilliseconds + Step);
    ExpectUntouched(MAnswer::Parameter);
    ExpectUntouched(MAnswer::Adjustment);
}

TEST_F(CExchangeLateReadTest, AnotherGroupsLongerAnswerMayPauseWhereTheShorterOneEnds) {
    const std::string strLonger = MWire::Settings(MAnswer::Adjustment);
    const std::size_t iShorter = MWire::Settings(MAnswer::Parameter).size();
    AnswerWith(strLonger.substr(0, iShorter));
    m_objEventLoop.After(m_objPrinter.m_iDelay + QuietMilliseconds - Step,
                         [&] { m_objSocket.Arrive(strLonger.substr(iShorter)); });
    ExpectTimeOut();
    EXPECT_FALSE(ReadGroup(MAnswer::Parameter));
    ExpectUntouched(MAnswer::Parameter);
}

TEST_F(CExchangeLateReadTest, AnAnswerWithoutAnEndIsTakenAfterTheQuietTime) {
    AnswerWith(Endless(MAnswer::Parameter));
    const std::int64_t iBefore = m_objClock.Elapsed();
    EXPECT_TRUE(ReadGroup(MAnswer::Parameter));
    EXPECT_EQ(m_objClock.Elapsed() - iBefore, m_objPrinter.m_iDelay + QuietMilliseconds);
    EXPECT_EQ(Stored(MAnswer::Parameter), MWire::Fields(MAnswer::Parameter));
}

TEST_F(CExchangeLateReadTest, AnAnswerWithoutAnEndJustBelowFiveSecondsIsInTime) {
    AnswerWith(Endless(MAnswer::Parameter));
    m_objPrinter.m_iDelay = ReplyMilliseconds;
    EXPECT_TRUE(ReadGroup(MAnswer::Parameter));
    EXPECT_EQ(Stored(MAnswer::Parameter), MWire::Fields(MAnswer::Parameter));
}

TEST_F(CExchangeLateReadTest, AnAnswerWithoutAnEndAfterFiveSecondsIsTooLate) {
    AnswerWith(Endless(MAnswer::Parameter));
    m_objPrinter.m_iDelay = Step + ReplyMilliseconds + Step;
    ExpectTimeOut();
    EXPECT_FALSE(ReadGroup(MAnswer::Parameter));
}

TEST_F(CExchangeLateReadTest, AStatusIsNotWaitedForByADoubt) {
    const CWaiter::Turn objTurn(m_objWaiter);
    m_objRouter.SetAnswerSelector(MAnswer::Parameter);
    m_objEventLoop.After(500, [this] { m_objSocket.Arrive(Endless(MAnswer::Parameter)); });
    ExpectTimeOut();
    EXPECT_FALSE(m_objExchange.WaitStatusReply(1));
    EXPECT_EQ(m_objState.m_iReplyReceived, 1);
}

TEST_F(CExchangeLateReadTest, APauseTakesWhatHasNoEndToo) {
    const CWaiter::Turn objTurn(m_objWaiter);
    m_objRouter.SetAnswerSelector(MAnswer::Parameter);
    m_objEventLoop.After(100, [this] { m_objSocket.Arrive(Endless(MAnswer::Parameter)); });
    m_objEventLoop.After(100 + QuietMilliseconds,
                         [this] { EXPECT_EQ(m_objState.m_iReplyReceived, 0); });
    m_objEventLoop.After(100 + QuietMilliseconds + Step,
                         [this] { EXPECT_EQ(m_objState.m_iReplyReceived, 1); });
    m_objExchange.Pause(1);
    EXPECT_EQ(Stored(MAnswer::Parameter), MWire::Fields(MAnswer::Parameter));
}

TEST_F(CExchangeLateReadTest, ReadAgainAfterATimeOutMixesNoGroups) {
    m_objPrinter.m_iDelay = 6000;
    ExpectTimeOut();
    m_objFlow.Read();
    ExpectTimeOut();
    m_objFlow.Read();
    EXPECT_EQ(m_objSocket.m_strSent, (Texts{"{Z5;0|}", "{Z5;0|}", "{Z5;1|}"}));
    EXPECT_EQ(Stored(MAnswer::Adjustment), MWire::Fields(MAnswer::Adjustment));
    ExpectUntouched(MAnswer::Parameter);
    EXPECT_EQ(m_objParameterPage.m_iRefreshes, 0);
}

TEST_F(CExchangeLateReadTest, ALateLanAnswerFillsNoneOfReadsGroups) {
    m_objPrinter.m_iDelay = 6000;
    ExpectTimeOut();
    m_objFlow.LanRead();
    m_objPrinter.m_iDelay = 2 * Step;
    m_objPrinter.m_fnAnswer = [](const std::string& p_strCommand) {
        return p_strCommand == "{Z5;0|}" ? std::nullopt : CScriptedPrinter::Behave(p_strCommand);
    };
    ExpectTimeOut();
    m_objFlow.Read();
    ExpectUntouched(MAnswer::Adjustment);
    ExpectUntouched(MAnswer::Lan);
}

// On a serial line nobody waits: the late answer comes while the next group is asked for.

class CExchangeLateSerialTest : public CExchangeLateReadTest {
protected:
    void SetUp() override {
        m_objInterface.SetActiveInterface(CInterface::SerialInterface);
        m_objLinks.SetLink(CInterface::SerialInterface, m_objComLink);
        ASSERT_TRUE(m_objComLink.Open());
    }

    CFakeSerialPort m_objPort{m_objEventLoop};
    CComLink m_objComLink{m_objPort,  m_objInterface, m_objRouter,
                          m_objState, m_objEvents,    m_objWaiter};
};

TEST_F(CExchangeLateSerialTest, AnAnswerOneGroupTooLateFillsNothing) {
    // Each answer comes when the next group is asked for.
    std::string strLate;
    m_objPort.m_fnAnswer = [&](const std::string& p_strCommand) {
        const std::string strBefore = strLate;
        strLate = *CScriptedPrinter::Behave(p_strCommand);
        return strBefore;
    };
    m_objFlow.Read();
    EXPECT_EQ(m_objPort.Sent(), "{Z5;0|}{Z5;1|}{Z5;4|}");
    for (const std::int16_t iGroup : {std::int16_t{0}, std::int16_t{1}, std::int16_t{4}}) {
        ExpectUntouched(iGroup);
    }
}

TEST_F(CExchangeLateSerialTest, TheRightAnswerBehindTheLateOneIsTaken) {
    std::string strLate;
    m_objPort.m_fnAnswer = [&](const std::string& p_strCommand) {
        const std::string strAnswer = *CScriptedPrinter::Behave(p_strCommand);
        const std::string strBoth = strLate + strAnswer;
        strLate = strAnswer;
        return strBoth;
    };
    m_objFlow.Read();
    for (const std::int16_t iGroup : {std::int16_t{0}, std::int16_t{1}, std::int16_t{4}}) {
        EXPECT_EQ(Stored(iGroup), MWire::Fields(iGroup)) << iGroup;
    }
    EXPECT_EQ(m_objParameterPage.m_iRefreshes, 1);
}

TEST_F(CExchangeLateSerialTest, AnswersWithoutAnEndAreTakenInTheirPause) {
    m_objPort.m_fnAnswer = [](const std::string& p_strCommand) {
        return Endless(static_cast<std::int16_t>(p_strCommand[4] - '0'));
    };
    m_objParameterPage.m_fnRefresh = [this] {
        for (const std::int16_t iGroup : {std::int16_t{0}, std::int16_t{1}, std::int16_t{4}}) {
            EXPECT_EQ(Stored(iGroup), MWire::Fields(iGroup)) << iGroup;
        }
        return true;
    };
    m_objFlow.Read();
    EXPECT_EQ(m_objParameterPage.m_iRefreshes, 1);
}

}  // namespace
