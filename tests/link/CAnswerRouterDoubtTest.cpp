#include "link/CAnswerRouter.h"

#include "flows/CSessionView.h"
#include "protocol/MAnswer.h"
#include "tests/fakes/CFakeExchangeView.h"
#include "tests/fakes/CFakeMessageBox.h"
#include "tests/fakes/MWire.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

// Settings of another group than the one that was asked for, and those that do not show whose they
// are, over the two links on which an answer comes in pieces.

namespace {

using Texts = std::vector<std::string>;

enum class Wire : std::uint8_t { Stream, Serial };

constexpr std::int16_t GroupCount = 5;
constexpr std::int16_t Longest = MAnswer::Lan;
constexpr double Quiet = 0.25;

/// An answer of p_iGroup that does not show where it ends.
std::string Endless(std::int16_t p_iGroup, std::size_t p_iVariant = 0) {
    std::string strAnswer = MWire::Settings(p_iGroup, p_iVariant);
    return strAnswer.replace(strAnswer.size() - 2, 2, "77");
}

std::string Name(Wire p_iWire) {
    return p_iWire == Wire::Stream ? "Stream" : "Serial";
}

class CAnswerRouterDoubtFixture : public ::testing::Test {
protected:
    void TakeFrom(Wire p_iWire, const std::string& p_strBytes) {
        if (p_iWire == Wire::Stream) {
            m_objRouter.TakeStream(MWire::ToBytes(p_strBytes));
            return;
        }
        for (const std::uint8_t iCharacter : MWire::ToBytes(p_strBytes)) {
            m_objRouter.TakeSerial(iCharacter,
                                   MAnswer::ReceiveLength(m_objRouter.AnswerSelector()));
        }
    }

    void BeginRead(std::int16_t p_iGroup) {
        m_objRouter.SetAnswerSelector(p_iGroup);
        m_objRouter.BeginCommand(AwaitedAnswer::Settings);
    }

    [[nodiscard]] std::string Stored(std::int16_t p_iGroup) const {
        return MWire::StoredFields(m_objItemManager, p_iGroup);
    }

    /// What stands in the items of all groups.
    [[nodiscard]] Texts AllStored() const {
        Texts strStored;
        for (std::int16_t iGroup = 0; iGroup < GroupCount; ++iGroup) {
            strStored.push_back(Stored(iGroup));
        }
        return strStored;
    }

    CItemManager m_objItemManager;
    CLinkState m_objState;
    CFakeExchangeView m_objView;
    CFakeMessageBox m_objMessageBox;  // none is expected
    CSessionView m_objEvents{m_objView, m_objMessageBox};
    CAnswerRouter m_objRouter{m_objItemManager, m_objState, m_objEvents};
};

// Another group's answer.

struct Mistaken {
    std::int16_t m_iAsked;
    std::int16_t m_iCame;
};

std::vector<Mistaken> AllMistaken() {
    std::vector<Mistaken> objAll;
    for (std::int16_t iAsked = 0; iAsked < GroupCount; ++iAsked) {
        for (std::int16_t iCame = 0; iCame < GroupCount; ++iCame) {
            if (iCame != iAsked) {
                objAll.push_back({iAsked, iCame});
            }
        }
    }
    return objAll;
}

class CAnswerRouterForeignTest : public CAnswerRouterDoubtFixture,
                                 public ::testing::WithParamInterface<std::tuple<Wire, Mistaken>> {
protected:
    void Take(const std::string& p_strBytes) {
        TakeFrom(std::get<0>(GetParam()), p_strBytes);
        m_dNow += Quiet / 4;
        m_objRouter.SettleQuiet(m_dNow, Quiet);
    }

    /// The answer that was asked for comes to its place.
    void ExpectTheRightAnswer(std::size_t p_iVariant) {
        Take(MWire::Settings(m_iAsked, p_iVariant));
        EXPECT_EQ(Stored(m_iAsked), MWire::Fields(m_iAsked, p_iVariant));
        ExpectReply(1);
    }

    /// Nobody waits for a reply on the serial port.
    void ExpectReply(std::int16_t p_iReply) {
        if (std::get<0>(GetParam()) == Wire::Stream) {
            EXPECT_EQ(m_objState.m_iReplyReceived, p_iReply);
        }
    }

    const std::int16_t m_iAsked = std::get<1>(GetParam()).m_iAsked;
    const std::int16_t m_iCame = std::get<1>(GetParam()).m_iCame;
    double m_dNow = 36'000;
};

TEST_P(CAnswerRouterForeignTest, FillsNothingWhereverItIsCut) {
    const std::string strAnswer = MWire::Settings(m_iCame, 1);
    for (std::size_t iCut = 1; iCut <= strAnswer.size(); ++iCut) {
        SCOPED_TRACE(iCut);
        const Texts strBefore = AllStored();
        BeginRead(m_iAsked);
        Take(strAnswer.substr(0, iCut));
        Take(strAnswer.substr(iCut));
        EXPECT_EQ(AllStored(), strBefore);
        ExpectReply(0);
        ExpectTheRightAnswer(iCut);
    }
}

TEST_P(CAnswerRouterForeignTest, FillsNothingByteByByte) {
    const Texts strBefore = AllStored();
    BeginRead(m_iAsked);
    for (const char cByte : MWire::Settings(m_iCame, 1)) {
        Take(std::string(1, cByte));
        EXPECT_EQ(AllStored(), strBefore);
        ExpectReply(0);
    }
    ExpectTheRightAnswer(2);
}

TEST_P(CAnswerRouterForeignTest, OneBlockMayHoldManyAndTheRightOneBehindThem) {
    BeginRead(m_iAsked);
    Take(MWire::Settings(m_iCame, 1) + MWire::Settings(m_iCame, 2) + MWire::Status("04") +
         MWire::Settings(m_iCame, 3) + "\r\n" + MWire::Settings(m_iAsked, 4));
    EXPECT_EQ(m_objView.m_strStatuses, Texts{"PAUSE"});
    EXPECT_EQ(Stored(m_iAsked), MWire::Fields(m_iAsked, 4));
    ExpectReply(1);
}

TEST_P(CAnswerRouterForeignTest, TheRightOneMayComeFirst) {
    BeginRead(m_iAsked);
    Take(MWire::Settings(m_iAsked, 4) + MWire::Settings(m_iCame, 1));
    EXPECT_EQ(Stored(m_iAsked), MWire::Fields(m_iAsked, 4));
    ExpectReply(1);
}

INSTANTIATE_TEST_SUITE_P(, CAnswerRouterForeignTest,
                         ::testing::Combine(::testing::Values(Wire::Stream, Wire::Serial),
                                            ::testing::ValuesIn(AllMistaken())),
                         [](const auto& p_objInfo) {
                             const Mistaken& objMistaken = std::get<1>(p_objInfo.param);
                             return Name(std::get<0>(p_objInfo.param)) + "Asked" +
                                    std::to_string(objMistaken.m_iAsked) + "Came" +
                                    std::to_string(objMistaken.m_iCame);
                         });

// An answer that shows no end.

class CAnswerRouterEndlessTest
    : public CAnswerRouterDoubtFixture,
      public ::testing::WithParamInterface<std::tuple<Wire, std::int16_t>> {
protected:
    void Take(const std::string& p_strBytes) { TakeFrom(std::get<0>(GetParam()), p_strBytes); }

    /// An endless answer to a read of m_iGroup, of which it is not yet clear what it is.
    void BeginDoubt() {
        BeginRead(m_iGroup);
        Take(Endless(m_iGroup, 1));
        ExpectNotTaken();
    }

    void ExpectNotTaken() const {
        EXPECT_NE(Stored(m_iGroup), MWire::Fields(m_iGroup, 1));
        EXPECT_EQ(m_objState.m_iReplyReceived, 0);
    }

    void ExpectTaken() const {
        EXPECT_EQ(Stored(m_iGroup), MWire::Fields(m_iGroup, 1));
        const std::int16_t iReply = std::get<0>(GetParam()) == Wire::Stream ? 1 : 0;
        EXPECT_EQ(m_objState.m_iReplyReceived, iReply);
        EXPECT_EQ(m_objState.m_iPendingAnswers, 0);
    }

    const std::int16_t m_iGroup = std::get<1>(GetParam());
};

TEST_P(CAnswerRouterEndlessTest, IsTakenOnceNothingMoreComes) {
    BeginDoubt();
    EXPECT_FALSE(m_objRouter.SettleQuiet(100, Quiet)) << "the time counts from here";
    EXPECT_FALSE(m_objRouter.SettleQuiet(100.24, Quiet));
    ExpectNotTaken();
    EXPECT_TRUE(m_objRouter.SettleQuiet(100.25, Quiet));
    ExpectTaken();
    EXPECT_FALSE(m_objRouter.SettleQuiet(200, Quiet)) << "nothing is left";
}

TEST_P(CAnswerRouterEndlessTest, EveryByteThatComesBeginsTheQuietTimeAnew) {
    BeginDoubt();
    EXPECT_FALSE(m_objRouter.SettleQuiet(100, Quiet));
    Take("x");
    EXPECT_FALSE(m_objRouter.SettleQuiet(100.3, Quiet));
    EXPECT_FALSE(m_objRouter.SettleQuiet(100.5, Quiet));
    EXPECT_TRUE(m_objRouter.SettleQuiet(100.55, Quiet));
    ExpectTaken();
}

TEST_P(CAnswerRouterEndlessTest, AWaitSleepsLittleWhileItIsInDoubtAndElseAsLongAsItHas) {
    EXPECT_DOUBLE_EQ(m_objRouter.SleepBeforeSettling(3, Quiet), 3);
    BeginDoubt();
    EXPECT_LE(m_objRouter.SleepBeforeSettling(3, Quiet), Quiet / 4);
    EXPECT_DOUBLE_EQ(m_objRouter.SleepBeforeSettling(0.001, Quiet), 0.001);
    EXPECT_FALSE(m_objRouter.SettleQuiet(100, Quiet));
    EXPECT_TRUE(m_objRouter.SettleQuiet(100.25, Quiet));
    EXPECT_DOUBLE_EQ(m_objRouter.SleepBeforeSettling(3, Quiet), 3);
}

TEST_P(CAnswerRouterEndlessTest, AtMidnightTheQuietTimeBeginsAnew) {
    BeginDoubt();
    EXPECT_FALSE(m_objRouter.SettleQuiet(86'399.9, Quiet));
    EXPECT_FALSE(m_objRouter.SettleQuiet(0, Quiet));
    EXPECT_FALSE(m_objRouter.SettleQuiet(0.2, Quiet));
    EXPECT_TRUE(m_objRouter.SettleQuiet(0.25, Quiet));
    ExpectTaken();
}

TEST_P(CAnswerRouterEndlessTest, IsTakenWhenAnotherAnswerBegins) {
    for (const char* strHead : {"\x01", "{"}) {
        SCOPED_TRACE(static_cast<int>(*strHead));
        BeginDoubt();
        Take("xx" + std::string(strHead));
        ExpectTaken();
        MAnswer::DistributeAnswer(m_objItemManager, MWire::ToBytes(MWire::Settings(m_iGroup)),
                                  m_iGroup);
    }
}

TEST_P(CAnswerRouterEndlessTest, TheAnswerThatBeginsBehindItIsRead) {
    BeginDoubt();
    Take(MWire::Status("04"));
    ExpectTaken();
    EXPECT_EQ(m_objView.m_strStatuses, Texts{"PAUSE"});
    Take(MWire::Settings(m_iGroup, 2));
    EXPECT_EQ(Stored(m_iGroup), MWire::Fields(m_iGroup, 2));
}

TEST_P(CAnswerRouterEndlessTest, IsTakenForItsGroupWhenAnotherIsNamed) {
    for (const std::int16_t iNext : std::vector<std::int16_t>{0, 1, MAnswer::NoGroup}) {
        SCOPED_TRACE(iNext);
        BeginDoubt();
        m_objRouter.SetAnswerSelector(iNext);
        ExpectTaken();
        m_objRouter.SetAnswerSelector(m_iGroup);
        MAnswer::DistributeAnswer(m_objItemManager, MWire::ToBytes(MWire::Settings(m_iGroup)),
                                  m_iGroup);
    }
}

TEST_P(CAnswerRouterEndlessTest, IsTakenBeforeACommandGoesOut) {
    BeginDoubt();
    m_objRouter.BeginCommand(AwaitedAnswer::Settings);
    EXPECT_EQ(Stored(m_iGroup), MWire::Fields(m_iGroup, 1));
    EXPECT_EQ(m_objState.m_iReplyReceived, 0) << "it is no answer to the next one";
}

TEST_P(CAnswerRouterEndlessTest, IsTakenWhenAnEndShowsWhereNoAnswersIs) {
    BeginDoubt();
    const std::size_t iLength = Endless(m_iGroup).size();
    constexpr std::size_t iNobodys = 40;
    ASSERT_GT(iNobodys, iLength + 2);
    for (std::size_t i = iLength; i + 1 < iNobodys; ++i) {
        Take(i + 2 == iNobodys ? "|" : "x");
        ExpectNotTaken();
    }
    Take("}");
    ExpectTaken();
}

TEST_P(CAnswerRouterEndlessTest, IsTakenAtTheLongestAnswersLength) {
    BeginDoubt();
    const std::size_t iMissing = MWire::Settings(Longest).size() - Endless(m_iGroup).size();
    Take(std::string(iMissing - 1, 'x'));
    ExpectNotTaken();
    Take("x");
    ExpectTaken();
    Take(MWire::Settings(m_iGroup, 2));
    EXPECT_EQ(Stored(m_iGroup), MWire::Fields(m_iGroup, 2)) << "the next answer is found";
}

TEST_P(CAnswerRouterEndlessTest, IsTakenAtOnceWhenAnEndHasShownInsideIt) {
    std::string strAnswer = Endless(m_iGroup, 1);
    strAnswer.replace(strAnswer.size() - 3, 2, "|}");
    const ItemRef objFirst = MWire::GroupItems(m_objItemManager, m_iGroup).front();
    const auto iWidth = static_cast<std::size_t>(objFirst->m_iLength);
    const CItemValue vCame = MWire::Fields(m_iGroup, 1).substr(0, iWidth);
    BeginRead(m_iGroup);
    Take(strAnswer.substr(0, strAnswer.size() - 1));
    EXPECT_NE(objFirst->m_vValue, vCame);
    Take(strAnswer.substr(strAnswer.size() - 1));
    EXPECT_EQ(objFirst->m_vValue, vCame);
}

INSTANTIATE_TEST_SUITE_P(, CAnswerRouterEndlessTest,
                         ::testing::Combine(::testing::Values(Wire::Stream, Wire::Serial),
                                            ::testing::Values(std::int16_t{0}, std::int16_t{1},
                                                              std::int16_t{2}, std::int16_t{4})),
                         [](const auto& p_objInfo) {
                             return Name(std::get<0>(p_objInfo.param)) + "Group" +
                                    std::to_string(std::get<1>(p_objInfo.param));
                         });

class CAnswerRouterWireTest : public CAnswerRouterDoubtFixture,
                              public ::testing::WithParamInterface<Wire> {};

TEST_P(CAnswerRouterWireTest, TheLongestAnswerNeedsNoEnd) {
    BeginRead(Longest);
    TakeFrom(GetParam(), Endless(Longest));
    EXPECT_EQ(Stored(Longest), MWire::Fields(Longest));
}

TEST_P(CAnswerRouterWireTest, AnAnswerWithItsEndIsTakenAtOnceAndWhatFollowsIsNotOfIt) {
    BeginRead(MAnswer::Parameter);
    TakeFrom(GetParam(), MWire::Settings(MAnswer::Parameter));
    EXPECT_EQ(Stored(MAnswer::Parameter), MWire::Fields(MAnswer::Parameter));
    TakeFrom(GetParam(), "|}");
    EXPECT_EQ(Stored(MAnswer::Parameter), MWire::Fields(MAnswer::Parameter));
}

INSTANTIATE_TEST_SUITE_P(, CAnswerRouterWireTest, ::testing::Values(Wire::Stream, Wire::Serial),
                         [](const auto& p_objInfo) { return Name(p_objInfo.param); });

TEST_F(CAnswerRouterDoubtFixture, EachWireHasADoubtOfItsOwn) {
    BeginRead(MAnswer::Parameter);
    TakeFrom(Wire::Serial, Endless(MAnswer::Parameter, 1));
    TakeFrom(Wire::Stream, MWire::Status("04"));
    EXPECT_NE(Stored(MAnswer::Parameter), MWire::Fields(MAnswer::Parameter, 1));
    m_objRouter.BeginCommand(AwaitedAnswer::Settings);
    EXPECT_EQ(Stored(MAnswer::Parameter), MWire::Fields(MAnswer::Parameter, 1));
}

TEST_F(CAnswerRouterDoubtFixture, QuietTimeAloneTakesNothing) {
    BeginRead(MAnswer::Parameter);
    TakeFrom(Wire::Stream, MWire::Settings(MAnswer::Parameter).substr(0, 24));
    EXPECT_FALSE(m_objRouter.SettleQuiet(100, Quiet));
    EXPECT_FALSE(m_objRouter.SettleQuiet(200, Quiet));
    EXPECT_EQ(m_objState.m_iReplyReceived, 0);
}

TEST_F(CAnswerRouterDoubtFixture, ADoubtThatNobodyHasSeenYetIsNotQuiet) {
    EXPECT_FALSE(m_objRouter.SettleQuiet(100, 0));
    BeginRead(MAnswer::Parameter);
    TakeFrom(Wire::Stream, Endless(MAnswer::Parameter, 1));
    EXPECT_FALSE(m_objRouter.SettleQuiet(200, 0));
    EXPECT_TRUE(m_objRouter.SettleQuiet(200, 0));
}

}  // namespace
