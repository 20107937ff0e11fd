#include "platform/qt/CSerialLineWatch.h"

#include "tests/platform_qt/CFakeLineState.h"

#include <gtest/gtest.h>

namespace {

using Change = CSerialLineWatch::Change;

class CSerialLineWatchTest : public ::testing::Test {
protected:
    Change LookAt(ILineState::Reading p_objReading) {
        m_objLine.m_objReading = p_objReading;
        return m_objWatch.Look(0);
    }
    void BeginAt(ILineState::Reading p_objReading) {
        m_objLine.m_objReading = p_objReading;
        m_objWatch.Begin(0);
    }

    CFakeLineState m_objLine;
    CSerialLineWatch m_objWatch{m_objLine};
};

TEST_F(CSerialLineWatchTest, HowTheLineIsAtFirstIsNoChange) {
    BeginAt({false, 7});
    EXPECT_FALSE(m_objWatch.ClearToSend());
    EXPECT_EQ(LookAt({false, 7}), Change{});
    EXPECT_TRUE(m_objWatch.SeesAnything());
}

TEST_F(CSerialLineWatchTest, TellsEachChangeOfTheLineOnce) {
    BeginAt({true, 0});
    EXPECT_EQ(LookAt({false, 0}), (Change{true, false}));
    EXPECT_FALSE(m_objWatch.ClearToSend());
    EXPECT_EQ(LookAt({false, 0}), Change{});
    EXPECT_EQ(LookAt({true, 0}), (Change{true, false}));
    EXPECT_TRUE(m_objWatch.ClearToSend());
}

TEST_F(CSerialLineWatchTest, TellsOverrunsOnceHoweverManyThereWere) {
    BeginAt({true, 3});
    EXPECT_EQ(LookAt({true, 3}), Change{});
    EXPECT_EQ(LookAt({true, 9}), (Change{false, true}));
    EXPECT_EQ(LookAt({true, 9}), Change{});
    EXPECT_EQ(LookAt({false, 10}), (Change{true, true}));
}

TEST_F(CSerialLineWatchTest, EachMayBeMissing) {
    BeginAt({std::nullopt, 3});
    EXPECT_EQ(LookAt({std::nullopt, 4}), (Change{false, true}));
    EXPECT_TRUE(m_objWatch.SeesAnything());
    BeginAt({true, std::nullopt});
    EXPECT_EQ(LookAt({false, std::nullopt}), (Change{true, false}));
    EXPECT_TRUE(m_objWatch.SeesAnything());
}

TEST_F(CSerialLineWatchTest, ASystemThatTellsNothingIsSeenAtTheFirstLook) {
    EXPECT_TRUE(m_objWatch.ClearToSend());
    BeginAt({});
    EXPECT_EQ(LookAt({}), Change{});
    EXPECT_FALSE(m_objWatch.SeesAnything());
    EXPECT_TRUE(m_objWatch.ClearToSend());
}

TEST_F(CSerialLineWatchTest, OverrunsOfAnotherPortAreNone) {
    BeginAt({true, 3});
    BeginAt({true, 100});
    EXPECT_EQ(LookAt({true, 100}), Change{});
}

TEST_F(CSerialLineWatchTest, ALineThatWasLeftOffAndIsOnAgainIsAChange) {
    BeginAt({true, 0});
    LookAt({false, 0});
    BeginAt({true, 0});
    EXPECT_EQ(LookAt({true, 0}), (Change{true, false}));
    BeginAt({false, 0});
    EXPECT_EQ(LookAt({false, 0}), Change{});
    BeginAt({});
    EXPECT_EQ(LookAt({}), (Change{true, false})) << "a port that tells nothing counts as on";
}

}  // namespace
