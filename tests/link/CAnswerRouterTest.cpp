#include "link/CAnswerRouter.h"

#include "flows/CSessionView.h"
#include "protocol/MAnswer.h"
#include "tests/fakes/CFakeExchangeView.h"
#include "tests/fakes/CFakeMessageBox.h"
#include "tests/fakes/MWire.h"

#include <gtest/gtest.h>

#include <ostream>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Texts = std::vector<std::string>;

constexpr std::int16_t GroupCount = 5;

class CAnswerRouterTest : public ::testing::Test {
protected:
    void Take(const std::string& p_strBytes) { m_objRouter.TakeStream(MWire::ToBytes(p_strBytes)); }

    void BeginRead(std::int16_t p_iGroup) {
        m_objRouter.SetAnswerSelector(p_iGroup);
        m_objRouter.BeginCommand(AwaitedAnswer::Settings);
    }

    [[nodiscard]] std::string Stored(std::int16_t p_iGroup) const {
        return MWire::StoredFields(m_objItemManager, p_iGroup);
    }

    CItemManager m_objItemManager;
    CLinkState m_objState;
    CFakeExchangeView m_objView;
    CFakeMessageBox m_objMessageBox;  // none is expected
    CSessionView m_objEvents{m_objView, m_objMessageBox};
    CAnswerRouter m_objRouter{m_objItemManager, m_objState, m_objEvents};
};

TEST_F(CAnswerRouterTest, ACommandClearsTheFlagsOfAnswers) {
    m_objState.m_iReplyReceived = 1;
    m_objState.m_iStatusReceived = 1;
    m_objRouter.BeginCommand(AwaitedAnswer::Any);
    EXPECT_EQ(m_objState.m_iReplyReceived, 0);
    EXPECT_EQ(m_objState.m_iStatusReceived, 0);
}

TEST_F(CAnswerRouterTest, AStatusIsWholeWhereverItIsCut) {
    const std::string strAnswer = MWire::Status("15");
    for (std::size_t iCut = 1; iCut < strAnswer.size(); ++iCut) {
        SCOPED_TRACE(iCut);
        m_objView.m_strStatuses.clear();
        m_objRouter.BeginCommand(AwaitedAnswer::Any);
        Take(strAnswer.substr(0, iCut));
        EXPECT_EQ(m_objView.m_strStatuses, Texts{});
        EXPECT_EQ(m_objState.m_iReplyReceived, 0);
        Take(strAnswer.substr(iCut));
        EXPECT_EQ(m_objView.m_strStatuses, Texts{"Head Open Error"});
        EXPECT_EQ(m_objState.m_iReplyReceived, 1);
    }
}

class CAnswerRouterGroupTest : public CAnswerRouterTest,
                               public ::testing::WithParamInterface<std::int16_t> {};

TEST_P(CAnswerRouterGroupTest, SettingsAreWholeWhereverTheyAreCut) {
    const std::int16_t iGroup = GetParam();
    const std::size_t iLength = MWire::Settings(iGroup).size();
    ASSERT_EQ(iLength, static_cast<std::size_t>(MAnswer::ReceiveLength(iGroup) / 2));
    for (std::size_t iCut = 1; iCut < iLength; ++iCut) {
        SCOPED_TRACE(iCut);
        const std::string strBefore = Stored(iGroup);
        const std::string strAnswer = MWire::Settings(iGroup, iCut);
        BeginRead(iGroup);
        Take(strAnswer.substr(0, iCut));
        EXPECT_EQ(Stored(iGroup), strBefore);
        EXPECT_EQ(m_objState.m_iReplyReceived, 0);
        Take(strAnswer.substr(iCut));
        EXPECT_EQ(Stored(iGroup), MWire::Fields(iGroup, iCut));
        EXPECT_EQ(m_objState.m_iReplyReceived, 1);
    }
    EXPECT_EQ(m_objView.m_strStatuses, Texts{});
}

TEST_P(CAnswerRouterGroupTest, SettingsMayComeByteByByte) {
    BeginRead(GetParam());
    for (const char cByte : MWire::Settings(GetParam())) {
        EXPECT_EQ(m_objState.m_iReplyReceived, 0);
        Take(std::string(1, cByte));
    }
    EXPECT_EQ(Stored(GetParam()), MWire::Fields(GetParam()));
    EXPECT_EQ(m_objState.m_iReplyReceived, 1);
}

TEST_P(CAnswerRouterGroupTest, AStatusInTheMiddleOfAReadIsShownAndTheWaitGoesOn) {
    const std::int16_t iGroup = GetParam();
    BeginRead(iGroup);
    Take(MWire::Status("04"));
    EXPECT_EQ(m_objView.m_strStatuses, Texts{"PAUSE"});
    EXPECT_EQ(m_objState.m_iStatusReceived, 1);
    EXPECT_EQ(m_objState.m_iReplyReceived, 0);
    Take(MWire::Settings(iGroup));
    EXPECT_EQ(m_objState.m_iReplyReceived, 1);
    EXPECT_EQ(Stored(iGroup), MWire::Fields(iGroup));
}

TEST_P(CAnswerRouterGroupTest, OneBlockMayHoldEverything) {
    const std::int16_t iGroup = GetParam();
    BeginRead(iGroup);
    Take("~junk" + MWire::Status("00") + "\r\n" + MWire::Settings(iGroup, 1) + MWire::Status("02") +
         MWire::Settings(iGroup, 2) + "junk");
    EXPECT_EQ(m_objView.m_strStatuses, (Texts{"ON LINE", "On Running"}));
    EXPECT_EQ(Stored(iGroup), MWire::Fields(iGroup, 2));
    EXPECT_EQ(m_objState.m_iReplyReceived, 1);
}

INSTANTIATE_TEST_SUITE_P(, CAnswerRouterGroupTest, ::testing::Range(std::int16_t{0}, GroupCount));

TEST_F(CAnswerRouterTest, JunkIsAnAnswerToAnythingButARead) {
    m_objRouter.BeginCommand(AwaitedAnswer::Any);
    Take("\xFF");
    EXPECT_EQ(m_objState.m_iReplyReceived, 1);
    BeginRead(1);
    Take("\xFF~junk");
    EXPECT_EQ(m_objState.m_iReplyReceived, 0);
    EXPECT_EQ(m_objView.m_strStatuses, Texts{});
    EXPECT_EQ(m_objState.m_iStatusReceived, 0);
}

TEST_F(CAnswerRouterTest, SettingsAreAnAnswerToAnything) {
    m_objRouter.SetAnswerSelector(1);
    m_objRouter.BeginCommand(AwaitedAnswer::Any);
    Take(MWire::Settings(1));
    EXPECT_EQ(m_objState.m_iReplyReceived, 1);
    EXPECT_EQ(Stored(1), MWire::Fields(1));
}

TEST_F(CAnswerRouterTest, SettingsThatNoGroupWasNamedForChangeNothing) {
    for (const std::int16_t iSelector : std::vector<std::int16_t>{-1, 5, -2, 32767}) {
        SCOPED_TRACE(iSelector);
        m_objRouter.SetAnswerSelector(iSelector);
        m_objRouter.BeginCommand(AwaitedAnswer::Any);
        Take(MWire::Settings(1));
        EXPECT_EQ(m_objState.m_iReplyReceived, 1);
    }
    const CItemManager objUntouched;
    for (std::int16_t iGroup = 0; iGroup < GroupCount; ++iGroup) {
        EXPECT_EQ(Stored(iGroup), MWire::StoredFields(objUntouched, iGroup)) << iGroup;
    }
}

TEST_F(CAnswerRouterTest, ACommandThrowsAwayWhatAFormerExchangeHasLeft) {
    BeginRead(1);
    Take(MWire::Settings(1, 1).substr(0, 24));
    BeginRead(1);
    Take(MWire::Settings(1, 2));
    EXPECT_EQ(Stored(1), MWire::Fields(1, 2));
    EXPECT_EQ(m_objState.m_iReplyReceived, 1);
}

TEST_F(CAnswerRouterTest, AnAnswerThatNeverCompletesRoutesNothing) {
    const std::string strBefore = Stored(1);
    BeginRead(1);
    Take(MWire::Settings(1).substr(0, 24));
    EXPECT_EQ(Stored(1), strBefore);
    EXPECT_EQ(m_objState.m_iReplyReceived, 0);
}

TEST_F(CAnswerRouterTest, AnUnaskedStatusIsShown) {
    Take(MWire::Status("11"));
    EXPECT_EQ(m_objView.m_strStatuses, Texts{"Paper JAM"});
}

struct StatusCase {
    const char* m_strName;
    const char* m_strCode;
    Texts m_strShown;
    std::int16_t m_iReceived;
};

void PrintTo(const StatusCase& p_objCase, std::ostream* p_objStream) {
    *p_objStream << p_objCase.m_strName;
}

class CAnswerRouterStatusTest : public CAnswerRouterTest,
                                public ::testing::WithParamInterface<StatusCase> {};

TEST_P(CAnswerRouterStatusTest, ShowsWhatItsCodeTells) {
    m_objRouter.BeginCommand(AwaitedAnswer::Any);
    Take(MWire::Status(GetParam().m_strCode));
    EXPECT_EQ(m_objView.m_strStatuses, GetParam().m_strShown);
    EXPECT_EQ(m_objState.m_iStatusReceived, GetParam().m_iReceived);
    EXPECT_EQ(m_objState.m_iReplyReceived, 1);
    EXPECT_EQ(m_objView.m_strHeadChecks, Texts{});
}

INSTANTIATE_TEST_SUITE_P(, CAnswerRouterStatusTest,
                         ::testing::Values(StatusCase{"Known", "00", {"ON LINE"}, 1},
                                           StatusCase{"KnownWithBlanks", "55", {"  Save Mode"}, 1},
                                           StatusCase{"WithoutTextClears", "40", {""}, 1},
                                           StatusCase{"UnknownLeavesTheLabel", "03", {}, 0},
                                           StatusCase{"NoDigitsLeaveTheLabel", "|}", {}, 0}),
                         [](const auto& p_objInfo) { return p_objInfo.param.m_strName; });

TEST_F(CAnswerRouterTest, AHeadCheckTakesOneStatus) {
    m_objRouter.ExpectHeadCheck();
    Take(MWire::Status("17") + MWire::Status("00"));
    EXPECT_EQ(m_objView.m_strHeadChecks, Texts{"Thermal head Error"});
    EXPECT_EQ(m_objView.m_strStatuses, Texts{"ON LINE"});
}

TEST_F(CAnswerRouterTest, AHeadCheckWaitsPastAnUnknownStatus) {
    m_objRouter.ExpectHeadCheck();
    Take(MWire::Status("03"));
    EXPECT_EQ(m_objView.m_strHeadChecks, Texts{});
    Take(MWire::Status("00"));
    EXPECT_EQ(m_objView.m_strHeadChecks, Texts{"ON LINE"});
}

TEST_F(CAnswerRouterTest, AHeadCheckOutlivesTheCommandThatGoesOut) {
    m_objRouter.ExpectHeadCheck();
    m_objRouter.BeginCommand(AwaitedAnswer::Any);
    Take(MWire::Status("00"));
    EXPECT_EQ(m_objView.m_strHeadChecks, Texts{"ON LINE"});
}

TEST_F(CAnswerRouterTest, AViewThatFailsLosesTheRestOfItsBlockOnly) {
    m_objView.m_fnShowStatus = [](const std::string&) { throw std::runtime_error("no label"); };
    BeginRead(1);
    EXPECT_THROW(Take(MWire::Status("00") + MWire::Settings(1)), std::runtime_error);
    EXPECT_EQ(m_objState.m_iReplyReceived, 0);
    Take(MWire::Settings(1));
    EXPECT_EQ(Stored(1), MWire::Fields(1));
    EXPECT_EQ(m_objState.m_iReplyReceived, 1);
}

// What the router may hold is what its assembler may hold; here it is about not failing.
TEST_F(CAnswerRouterTest, RandomBytesAreHarmlessAndTheNextAnswerIsFound) {
    constexpr std::size_t iMany = 100'000;
    // Half of them are such as answers are made of: of all, few would begin or end one.
    const std::string strMeaning = "{}|+-0123456789AF\x01\x02\x03\x04";
    std::mt19937 objRandom(20240229);  // the same bytes each time
    for (std::int16_t iSelector = -1; iSelector <= GroupCount; ++iSelector) {
        SCOPED_TRACE(iSelector);
        std::vector<std::uint8_t> objStream(iMany);
        for (std::uint8_t& iByte : objStream) {
            const auto iRandom = objRandom();
            iByte = (iRandom >> 8) % 2 == 0
                        ? static_cast<std::uint8_t>(strMeaning[(iRandom >> 9) % strMeaning.size()])
                        : static_cast<std::uint8_t>(iRandom % 256);
        }
        m_objRouter.SetAnswerSelector(iSelector);
        EXPECT_NO_THROW(m_objRouter.TakeStream(objStream));
        BeginRead(1);
        Take(MWire::Settings(1, 3));
        EXPECT_EQ(Stored(1), MWire::Fields(1, 3));
    }
}

TEST_F(CAnswerRouterTest, EndlessRunsOfOneByteAreHarmless) {
    constexpr std::size_t iMany = 20'000;
    for (const char cByte : {'\0', '\x01', '{', '}', '|', '\x7F', '\xFF'}) {
        SCOPED_TRACE(static_cast<int>(cByte));
        BeginRead(4);
        EXPECT_NO_THROW(Take(std::string(iMany, cByte)));
        BeginRead(4);
        Take(MWire::Settings(4));
        EXPECT_EQ(Stored(4), MWire::Fields(4));
    }
}

struct KindCase {
    AwaitedAnswer m_iAwaited;
    bool m_bSettings;  // whether it is of that kind
    bool m_bStatus;
    bool m_bOther;
};

TEST_F(CAnswerRouterTest, TheKindOfABlockIsThatOfItsFirstByte) {
    const std::string strSettings = "\x02 {0|}";
    for (const KindCase& objCase : {KindCase{AwaitedAnswer::Settings, true, false, false},
                                    KindCase{AwaitedAnswer::Status, false, true, false},
                                    KindCase{AwaitedAnswer::Any, true, true, true}}) {
        SCOPED_TRACE(static_cast<int>(objCase.m_iAwaited));
        m_objRouter.BeginCommand(objCase.m_iAwaited);
        const auto Is = [this](const std::string& p_strBytes) {
            return m_objRouter.IsOfAwaitedKind(MWire::ToBytes(p_strBytes));
        };
        EXPECT_EQ(Is(strSettings), objCase.m_bSettings);
        EXPECT_EQ(Is(MWire::Status("00")), objCase.m_bStatus);
        EXPECT_EQ(Is("{0|}"), objCase.m_bOther);
        EXPECT_EQ(Is(""), objCase.m_bOther);
    }
}

TEST_F(CAnswerRouterTest, AStatusWithoutACodeOfTwoDigitsIsNotOfItsKind) {
    m_objRouter.BeginCommand(AwaitedAnswer::Status);
    for (const std::string& strStatus :
         {MWire::Status("77").substr(0, 3), MWire::Status("7Z"), MWire::Status("/0")}) {
        EXPECT_FALSE(m_objRouter.IsOfAwaitedKind(MWire::ToBytes(strStatus))) << strStatus;
    }
    EXPECT_TRUE(m_objRouter.IsOfAwaitedKind(MWire::ToBytes(MWire::Status("77").substr(0, 4))));
}

TEST_F(CAnswerRouterTest, ABlockThatBeginsNoAnswerIsNeverCut) {
    m_objRouter.SetAnswerSelector(0);
    EXPECT_FALSE(m_objRouter.IsCut(MWire::ToBytes("{0"), 54));
    EXPECT_FALSE(m_objRouter.IsCut(MWire::ToBytes(""), 54));
    EXPECT_TRUE(m_objRouter.IsCut(MWire::ToBytes("\x02 {0"), 54));
    EXPECT_TRUE(m_objRouter.IsCut(MWire::ToBytes("\x01\x02\x30"), 54));
    EXPECT_FALSE(m_objRouter.IsCut(MWire::ToBytes("\x01\x02\x30\x30"), 54));
}

TEST_F(CAnswerRouterTest, WhatWasLearnedIsToldByItsKind) {
    const auto Learned = [this] {
        return std::string(m_objRouter.HasLearned(AwaitedAnswer::Settings) ? "settings " : "") +
               (m_objRouter.HasLearned(AwaitedAnswer::Status) ? "status " : "") +
               (m_objRouter.HasLearned(AwaitedAnswer::Any) ? "any" : "");
    };
    BeginRead(0);
    EXPECT_EQ(Learned(), "");
    Take(MWire::Settings(0));
    EXPECT_EQ(Learned(), "settings any");
    Take(MWire::Status("00"));
    EXPECT_EQ(Learned(), "settings status any");
    BeginRead(0);
    Take(MWire::Status("00"));
    EXPECT_EQ(Learned(), "status any");
    m_objRouter.BeginCommand(AwaitedAnswer::Any);
    EXPECT_EQ(Learned(), "");
}

TEST_F(CAnswerRouterTest, AStatusInABlockIsWholeWithItsCode) {
    m_objRouter.BeginCommand(AwaitedAnswer::Any);
    EXPECT_TRUE(m_objRouter.TakeUsbAnswer(MWire::ToBytes("\x01\x02"
                                                         "1"),
                                          13));
    EXPECT_EQ(m_objView.m_strStatuses, Texts{});
    EXPECT_FALSE(m_objRouter.HasLearned(AwaitedAnswer::Status));
    EXPECT_TRUE(m_objRouter.TakeUsbAnswer(MWire::ToBytes("\x01\x02"
                                                         "14"),
                                          13));
    EXPECT_EQ(m_objView.m_strStatuses, Texts{"NO RIBBON"});
}

}  // namespace
