#include "flows/MHandler.h"

#include "model/CConversionError.h"
#include "tests/fakes/CFakeEventLoop.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace {

class MHandlerTest : public ::testing::Test {
protected:
    CFakeClock m_objClock;
    CFakeEventLoop m_objEventLoop{m_objClock};
    CWaiter m_objWaiter{m_objEventLoop, m_objClock};
};

TEST_F(MHandlerTest, RunsItsStepsOnce) {
    int iRuns = 0;
    MHandler::Run(m_objWaiter, [&] { ++iRuns; });
    EXPECT_EQ(iRuns, 1);
}

TEST_F(MHandlerTest, LetsNothingOut) {
    std::vector<std::string> strReached;
    MHandler::Run(m_objWaiter, [&] {
        strReached.emplace_back("conversion");
        throw CConversionError("no number");
    });
    MHandler::Run(m_objWaiter, [&] {
        strReached.emplace_back("standard");
        throw std::out_of_range("too far");
    });
    MHandler::Run(m_objWaiter, [&] {
        strReached.emplace_back("anything");
        throw 7;  // NOLINT(misc-throw-by-value-catch-by-reference): whatever it is
    });
    EXPECT_EQ(strReached, (std::vector<std::string>{"conversion", "standard", "anything"}));
}

TEST_F(MHandlerTest, AnExceptionEndsTheStepsThere) {
    bool bReached = false;
    MHandler::Run(m_objWaiter, [&] {
        std::vector<int>().at(1) = 0;
        bReached = true;
    });
    EXPECT_FALSE(bReached);
}

TEST_F(MHandlerTest, AnEventsFaultEndsTheHandlerThatWaits) {
    m_objEventLoop.AtNextYield([this] {
        try {
            throw std::runtime_error("an event has failed");
        } catch (...) {
            m_objWaiter.StoreFault();
        }
    });
    bool bReached = false;
    MHandler::Run(m_objWaiter, [&] {
        m_objWaiter.Yield();
        bReached = true;
    });
    EXPECT_FALSE(bReached);
}

TEST_F(MHandlerTest, AHandlerInsideAnothersWaitEndsTheOtherOne) {
    std::vector<std::string> strSteps;
    m_objEventLoop.AtNextYield([&] {
        MHandler::Run(m_objWaiter, [&] {
            strSteps.emplace_back(m_objWaiter.Yield() ? "later goes on" : "later stops");
        });
    });
    MHandler::Run(m_objWaiter, [&] {
        strSteps.emplace_back(m_objWaiter.Yield() ? "earlier goes on" : "earlier stops");
    });
    EXPECT_EQ(strSteps, (std::vector<std::string>{"later goes on", "earlier stops"}));
    MHandler::Run(m_objWaiter, [&] { EXPECT_TRUE(m_objWaiter.Yield()); });
}

TEST_F(MHandlerTest, AHandlerInsideOneThatItOnlyDelaysLeavesThatOneItsRest) {
    std::vector<std::string> strSteps;
    m_objEventLoop.AtNextYield([&] {
        MHandler::Run(m_objWaiter, [&] {
            strSteps.emplace_back(m_objWaiter.Yield() ? "later goes on" : "later stops");
            throw std::runtime_error("failed");
        });
    });
    MHandler::Run(
        m_objWaiter,
        [&] { strSteps.emplace_back(m_objWaiter.Yield() ? "earlier goes on" : "earlier stops"); },
        CWaiter::Turn::Later::DelaysIt);
    EXPECT_EQ(strSteps, (std::vector<std::string>{"later goes on", "earlier goes on"}));
}

TEST_F(MHandlerTest, AHandlerThatFailsInsideAnothersWaitEndsTheOtherOneToo) {
    bool bGoesOn = true;
    m_objEventLoop.AtNextYield(
        [&] { MHandler::Run(m_objWaiter, [] { throw std::runtime_error("failed"); }); });
    MHandler::Run(m_objWaiter, [&] { bGoesOn = m_objWaiter.Yield(); });
    EXPECT_FALSE(bGoesOn);
}

}  // namespace
