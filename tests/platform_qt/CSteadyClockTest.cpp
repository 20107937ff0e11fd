#include "platform/qt/CSteadyClock.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace {

TEST(CSteadyClockTest, BeginsAtNothingAndGoesOnWithRealTime) {
    using std::chrono::steady_clock;
    const auto iStart = steady_clock::now();
    const CSteadyClock objClock;
    EXPECT_GE(objClock.SecondsSinceMidnight(), 0);
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    const double dPassed = objClock.SecondsSinceMidnight();
    const double dReal = std::chrono::duration<double>(steady_clock::now() - iStart).count();
    EXPECT_GE(dPassed, 0.03);
    EXPECT_LE(dPassed, dReal);
}

}  // namespace
