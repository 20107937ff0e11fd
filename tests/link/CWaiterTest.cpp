#include "link/CWaiter.h"

#include "tests/fakes/CFakeEventLoop.h"

#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>

namespace {

class CWaiterTest : public ::testing::Test {
protected:
    using Turn = CWaiter::Turn;
    using Later = CWaiter::Turn::Later;

    /// An event that fails.
    void FailInEvent() {
        try {
            throw std::runtime_error("an event has failed");
        } catch (...) {
            m_objWaiter.StoreFault();
        }
    }

    CFakeClock m_objClock;
    CFakeEventLoop m_objEventLoop{m_objClock};
    CWaiter m_objWaiter{m_objEventLoop, m_objClock};
};

TEST_F(CWaiterTest, NowIsTheClocksTimeOfDay) {
    m_objClock.SetTimeOfDay(86399.25);
    EXPECT_DOUBLE_EQ(m_objWaiter.Now(), 86399.25);
}

TEST_F(CWaiterTest, YieldLetsEventsRunAndGoesOn) {
    bool bRan = false;
    m_objEventLoop.AtNextYield([&] { bRan = true; });
    const CWaiter::Turn objTurn(m_objWaiter);
    EXPECT_TRUE(m_objWaiter.Yield());
    EXPECT_TRUE(bRan);
    EXPECT_FALSE(m_objWaiter.MustStop());
}

TEST_F(CWaiterTest, YieldGoesOnOutsideAnyTurn) {
    EXPECT_TRUE(m_objWaiter.Yield());
}

TEST_F(CWaiterTest, AYieldForATimeIsAYieldThatTheLoopIsToldTheTimeOf) {
    const CWaiter::Turn objTurn(m_objWaiter);
    EXPECT_TRUE(m_objWaiter.YieldFor(2.5));
    EXPECT_DOUBLE_EQ(m_objEventLoop.Asked(), 2.5);
    m_objEventLoop.AtNextYield([this] { FailInEvent(); });
    EXPECT_THROW(m_objWaiter.YieldFor(1), std::runtime_error);
    m_objEventLoop.AtNextYield([this] { m_objEventLoop.RequestClose(); });
    EXPECT_FALSE(m_objWaiter.YieldFor(1));
}

TEST_F(CWaiterTest, ClosingStopsTheYieldInWhichItHappens) {
    const CWaiter::Turn objTurn(m_objWaiter);
    m_objEventLoop.AtNextYield([this] { m_objEventLoop.RequestClose(); });
    EXPECT_FALSE(m_objWaiter.Yield());
    EXPECT_TRUE(m_objWaiter.MustStop());
}

TEST_F(CWaiterTest, ALaterTurnEndsTheEarlierOne) {
    const CWaiter::Turn objEarlier(m_objWaiter);
    {
        const CWaiter::Turn objLater(m_objWaiter);
        EXPECT_TRUE(m_objWaiter.Yield());
    }
    EXPECT_TRUE(m_objWaiter.MustStop());
    EXPECT_FALSE(m_objWaiter.Yield());
}

TEST_F(CWaiterTest, ALaterTurnOnlyDelaysOneThatSaysSo) {
    const Turn objEarlier(m_objWaiter, Later::DelaysIt);
    {
        const Turn objLater(m_objWaiter);
        EXPECT_TRUE(m_objWaiter.Yield());
    }
    EXPECT_FALSE(m_objWaiter.MustStop());
    EXPECT_TRUE(m_objWaiter.Yield());
}

TEST_F(CWaiterTest, EveryTurnSaysForItselfWhatALaterOneDoesToIt) {
    const Turn objDelayed(m_objWaiter, Later::DelaysIt);
    {
        const Turn objEnded(m_objWaiter);
        {
            const Turn objInnermost(m_objWaiter, Later::DelaysIt);
            { const Turn objLater(m_objWaiter); }
            EXPECT_FALSE(m_objWaiter.MustStop());
        }
        EXPECT_TRUE(m_objWaiter.MustStop());
    }
    EXPECT_FALSE(m_objWaiter.MustStop());
}

TEST_F(CWaiterTest, TakingOverEndsEveryTurnFurtherOutAndNotItsOwn) {
    const Turn objOutermost(m_objWaiter, Later::DelaysIt);
    {
        const Turn objEarlier(m_objWaiter, Later::DelaysIt);
        {
            const Turn objLater(m_objWaiter, Later::DelaysIt);
            m_objWaiter.TakeOver();
            EXPECT_FALSE(m_objWaiter.MustStop());
        }
        EXPECT_TRUE(m_objWaiter.MustStop());
    }
    EXPECT_TRUE(m_objWaiter.MustStop());
}

TEST_F(CWaiterTest, TakingOverOutsideAnyTurnIsHarmless) {
    m_objWaiter.TakeOver();
    EXPECT_TRUE(m_objWaiter.Yield());
}

TEST_F(CWaiterTest, ClosingStopsADelayedTurnToo) {
    const Turn objTurn(m_objWaiter, Later::DelaysIt);
    EXPECT_FALSE(m_objWaiter.IsClosing());
    m_objEventLoop.RequestClose();
    EXPECT_TRUE(m_objWaiter.IsClosing());
    EXPECT_TRUE(m_objWaiter.MustStop());
}

TEST_F(CWaiterTest, ATurnAfterAnotherGoesOn) {
    {
        const CWaiter::Turn objFirst(m_objWaiter);
        EXPECT_TRUE(m_objWaiter.Yield());
    }
    const CWaiter::Turn objSecond(m_objWaiter);
    EXPECT_TRUE(m_objWaiter.Yield());
}

TEST_F(CWaiterTest, TheNextYieldThrowsAnEventsFaultOnce) {
    const CWaiter::Turn objTurn(m_objWaiter);
    m_objEventLoop.AtNextYield([this] { FailInEvent(); });
    EXPECT_THROW(m_objWaiter.Yield(), std::runtime_error);
    EXPECT_TRUE(m_objWaiter.Yield());
}

TEST_F(CWaiterTest, AFaultIsTheInnermostTurnsThatWaits) {
    const Turn objOuter(m_objWaiter, Later::DelaysIt);
    {
        const Turn objInner(m_objWaiter);
        FailInEvent();
        EXPECT_THROW(m_objWaiter.Yield(), std::runtime_error);
    }
    EXPECT_TRUE(m_objWaiter.Yield());
}

TEST_F(CWaiterTest, AFaultBeforeAnInnerTurnIsStillTheOuterOnes) {
    const Turn objOuter(m_objWaiter, Later::DelaysIt);
    FailInEvent();
    {
        const Turn objInner(m_objWaiter);
        EXPECT_TRUE(m_objWaiter.Yield());
    }
    EXPECT_THROW(m_objWaiter.Yield(), std::runtime_error);
}

TEST_F(CWaiterTest, AFaultOutsideAnyTurnIsDropped) {
    FailInEvent();
    EXPECT_TRUE(m_objWaiter.Yield());
    const CWaiter::Turn objTurn(m_objWaiter);
    EXPECT_TRUE(m_objWaiter.Yield());
}

TEST_F(CWaiterTest, AFaultThatNobodyWaitedForEndsWithItsTurn) {
    {
        const CWaiter::Turn objTurn(m_objWaiter);
        FailInEvent();
    }
    const CWaiter::Turn objTurn(m_objWaiter);
    EXPECT_TRUE(m_objWaiter.Yield());
}

TEST_F(CWaiterTest, AStopwatchTellsTheSecondsThatHavePassed) {
    const Turn objTurn(m_objWaiter);
    CWaiter::Stopwatch objStopwatch(m_objWaiter);
    EXPECT_DOUBLE_EQ(objStopwatch.Elapsed(), 0);
    m_objClock.Advance(1500);
    EXPECT_DOUBLE_EQ(objStopwatch.Elapsed(), 1.5);
    m_objClock.Advance(500);
    EXPECT_DOUBLE_EQ(objStopwatch.Elapsed(), 2);
    EXPECT_FALSE(objStopwatch.IsInterrupted());
}

TEST_F(CWaiterTest, AStopwatchBeginsAgainBehindATurnInside) {
    const Turn objTurn(m_objWaiter, Later::DelaysIt);
    CWaiter::Stopwatch objStopwatch(m_objWaiter);
    m_objClock.Advance(1500);
    {
        const Turn objInner(m_objWaiter);
        m_objClock.Advance(60'000);
    }
    EXPECT_TRUE(objStopwatch.IsInterrupted());
    EXPECT_DOUBLE_EQ(objStopwatch.Elapsed(), 0);
    EXPECT_FALSE(objStopwatch.IsInterrupted());
    m_objClock.Advance(700);
    EXPECT_NEAR(objStopwatch.Elapsed(), 0.7, 1e-6);
}

TEST_F(CWaiterTest, WhatStandsInFrontOfTheWindowInterruptsADelayedTurnOnly) {
    const Turn objDelayed(m_objWaiter, Later::DelaysIt);
    CWaiter::Stopwatch objStopwatch(m_objWaiter);
    m_objWaiter.NoteAside();
    EXPECT_TRUE(objStopwatch.IsInterrupted());
    EXPECT_FALSE(m_objWaiter.MustStop());
    const Turn objEnded(m_objWaiter);
    const CWaiter::Stopwatch objOther(m_objWaiter);
    m_objWaiter.NoteAside();
    EXPECT_FALSE(objOther.IsInterrupted());
    EXPECT_FALSE(m_objWaiter.MustStop());
}

TEST_F(CWaiterTest, WhatHappensAsideInterruptsOnlyWhatIsDelayedByIt) {
    const CWaiter::Stopwatch objOutside(m_objWaiter);
    m_objWaiter.NoteAside();
    EXPECT_FALSE(objOutside.IsInterrupted());
    {
        const Turn objTurn(m_objWaiter, Later::EndsIt);
        const CWaiter::Stopwatch objInside(m_objWaiter);
        m_objWaiter.NoteAside();
        EXPECT_FALSE(objInside.IsInterrupted());
    }
    const Turn objTurn(m_objWaiter, Later::DelaysIt);
    const CWaiter::Stopwatch objInside(m_objWaiter);
    m_objWaiter.NoteAside();
    EXPECT_TRUE(objInside.IsInterrupted());
}

}  // namespace
