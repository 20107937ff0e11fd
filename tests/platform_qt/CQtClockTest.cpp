#include "platform/qt/CQtClock.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>
#include <ctime>
#include <thread>

namespace {

constexpr double SecondsPerDay = 86400;

/// The difference of two times of day, midnight or not.
double Difference(double p_dFrom, double p_dTo) {
    return p_dTo >= p_dFrom ? p_dTo - p_dFrom : p_dTo + SecondsPerDay - p_dFrom;
}

double SystemSeconds() {
    const std::time_t iNow = std::time(nullptr);
    std::tm objNow{};
    localtime_r(&iNow, &objNow);
    return (objNow.tm_hour * 60 + objNow.tm_min) * 60 + objNow.tm_sec;
}

TEST(CQtClockTest, IsTheSystemsLocalTimeOfDay) {
    const CQtClock objClock;
    const double dBefore = SystemSeconds();
    const double dNow = objClock.SecondsSinceMidnight();
    EXPECT_GE(dNow, 0);
    EXPECT_LT(dNow, SecondsPerDay);
    // The system's seconds are cut off, so the clock is ahead of them by less than one more.
    EXPECT_LT(Difference(dBefore, dNow), 2);
}

TEST(CQtClockTest, GoesOnInFractionsOfASecond) {
    using std::chrono::steady_clock;
    const CQtClock objClock;
    const auto objBegin = steady_clock::now();
    const double dBefore = objClock.SecondsSinceMidnight();
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    const double dPassed = Difference(dBefore, objClock.SecondsSinceMidnight());
    const double dReal = std::chrono::duration<double>(steady_clock::now() - objBegin).count();
    EXPECT_GT(dPassed, 0.02);
    EXPECT_LT(dPassed, dReal + 0.02);
}

// A pause that begins late in a millisecond would end a part of one too early.
TEST(CQtClockTest, IsFinerThanAMillisecond) {
    constexpr double dMicrosecondsPerSecond = 1e6;
    const CQtClock objClock;
    int iBetween = 0;
    for (int i = 0; i < 200; ++i) {
        const double dMicroseconds = objClock.SecondsSinceMidnight() * dMicrosecondsPerSecond;
        iBetween += std::fmod(std::round(dMicroseconds), 1000) != 0 ? 1 : 0;
    }
    EXPECT_GT(iBetween, 100);
}

TEST(CQtClockTest, NeverGoesBackWithinAMillisecond) {
    const CQtClock objClock;
    double dBefore = objClock.SecondsSinceMidnight();
    for (int i = 0; i < 20'000; ++i) {
        const double dNow = objClock.SecondsSinceMidnight();
        ASSERT_LT(Difference(dBefore, dNow), 1);
        dBefore = dNow;
    }
}

// Of these test programs, all of them: a wait in real time over midnight would have no end.
TEST(CQtClockTest, BeginsAtNoonInATest) {
    constexpr double dNoon = SecondsPerDay / 2;
    EXPECT_NEAR(CQtClock().SecondsSinceMidnight(), dNoon, 600);
}

}  // namespace
