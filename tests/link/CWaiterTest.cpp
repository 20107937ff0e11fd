#include "link/CWaiter.h"

#include "tests/fakes/CFakeEventLoop.h"

#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>

namespace {

class CWaiterTest : public ::testing::Test {
protected:
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

}  // namespace
