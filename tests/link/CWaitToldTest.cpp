#include "link/CWaitTold.h"

#include "tests/fakes/CFakeSessionEvents.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Seconds = std::vector<std::int16_t>;

class CWaitToldTest : public ::testing::Test {
protected:
    CFakeSessionEvents m_objEvents;
    CWaitTold m_objTold{m_objEvents};
};

TEST_F(CWaitToldTest, EachWholeSecondIsToldOnceAndTheEnd) {
    for (const double dSeconds : {0.0, 0.9, 1.0, 1.5, 1.9, 2.0, 4.5}) {
        m_objTold.Tell(dSeconds);
    }
    m_objTold.End();
    m_objTold.End();
    EXPECT_EQ(m_objEvents.m_iWaiting, (Seconds{1, 2, 4, 0}));
}

TEST_F(CWaitToldTest, WhatIsNoNumberOfSecondsIsNotTold) {
    m_objTold.Tell(-0.001);
    m_objTold.Tell(-86'399);
    m_objTold.Tell(32'768);
    EXPECT_EQ(m_objEvents.m_iWaiting, Seconds{});
    m_objTold.Tell(32'767);
    EXPECT_EQ(m_objEvents.m_iWaiting, Seconds{32'767});
}

TEST_F(CWaitToldTest, ItsOwnEndIsTheWaitsEnd) {
    {
        CWaitTold objTold(m_objEvents);
        objTold.Tell(3);
    }
    { const CWaitTold objTold(m_objEvents); }
    EXPECT_EQ(m_objEvents.m_iWaiting, (Seconds{3, 0}));
}

}  // namespace
