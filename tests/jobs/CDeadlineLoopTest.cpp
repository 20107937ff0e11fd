#include "jobs/CDeadlineLoop.h"

#include "link/CWaiter.h"
#include "tests/fakes/CFakeEventLoop.h"

#include <gtest/gtest.h>

namespace {

class CDeadlineLoopTest : public ::testing::Test {
protected:
    CFakeClock m_objClock;
    CFakeEventLoop m_objEventLoop{m_objClock};
    CDeadlineLoop m_objLoop{m_objEventLoop, m_objClock};
};

TEST_F(CDeadlineLoopTest, WithoutALimitItIsTheLoopInside) {
    m_objLoop.Yield();
    EXPECT_EQ(m_objEventLoop.Yields(), 1);
    m_objClock.Advance(100'000);
    EXPECT_FALSE(m_objLoop.IsTimeUp());
    EXPECT_FALSE(m_objLoop.IsClosing());
    m_objLoop.RequestClose();
    EXPECT_TRUE(m_objEventLoop.IsClosing());
    EXPECT_TRUE(m_objLoop.IsClosing());
    EXPECT_FALSE(m_objLoop.IsTimeUp());
}

TEST_F(CDeadlineLoopTest, ALimitEndsAWaitWhenItsTimeIsOver) {
    CWaiter objWaiter(m_objLoop, m_objClock);
    const CDeadlineLoop::Limit objLimit(m_objLoop, 2.5);
    while (objWaiter.Yield()) {
    }
    EXPECT_EQ(m_objClock.Elapsed(), 2500);
    EXPECT_TRUE(m_objLoop.IsTimeUp());
}

TEST_F(CDeadlineLoopTest, AYieldLastsNoLongerThanTheLimit) {
    m_objLoop.YieldFor(7);
    EXPECT_DOUBLE_EQ(m_objEventLoop.Asked(), 7);
    const CDeadlineLoop::Limit objLimit(m_objLoop, 2.5);
    m_objLoop.YieldFor(7);
    EXPECT_DOUBLE_EQ(m_objEventLoop.Asked(), 2.5);
    m_objLoop.YieldFor(0.5);
    EXPECT_DOUBLE_EQ(m_objEventLoop.Asked(), 0.5);
}

TEST_F(CDeadlineLoopTest, BehindALimitWaitsGoOn) {
    {
        const CDeadlineLoop::Limit objLimit(m_objLoop, 1);
        m_objClock.Advance(1000);
        EXPECT_TRUE(m_objLoop.IsClosing());
    }
    EXPECT_FALSE(m_objLoop.IsClosing());
    EXPECT_FALSE(m_objEventLoop.IsClosing());
}

TEST_F(CDeadlineLoopTest, OfTwoLimitsTheOneThatIsOverFirstCounts) {
    const CDeadlineLoop::Limit objOuter(m_objLoop, 3);
    {
        const CDeadlineLoop::Limit objLonger(m_objLoop, 5);
        m_objClock.Advance(2980);
        EXPECT_FALSE(m_objLoop.IsTimeUp());
        const CDeadlineLoop::Limit objShorter(m_objLoop, 0.005);
        m_objClock.Advance(5);
        EXPECT_TRUE(m_objLoop.IsTimeUp());
    }
    EXPECT_FALSE(m_objLoop.IsTimeUp());
    const CDeadlineLoop::Limit objLonger(m_objLoop, 5);
    m_objClock.Advance(15);
    EXPECT_TRUE(m_objLoop.IsTimeUp());
}

}  // namespace
