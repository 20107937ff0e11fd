#include "tests/MSanitizers.h"
#include "tests/ui/CPrinterFixture.h"

#include <ctime>

namespace {

// The sanitizers make everything slower, waiting included.
constexpr double MostLoad = MSanitizers::Address ? 0.10 : 0.02;

constexpr double NanosecondsPerSecond = 1e9;

double Seconds(clockid_t p_iClock) {
    timespec objTime{};
    clock_gettime(p_iClock, &objTime);
    return static_cast<double>(objTime.tv_sec) +
           static_cast<double>(objTime.tv_nsec) / NanosecondsPerSecond;
}

using FmMainIdleTest = CPrinterFixture;

TEST_F(FmMainIdleTest, WaitingForASilentPrinterCostsNextToNothing) {
    StartPrinter({"--silent"});
    ConnectToPrinter();
    ExpectTimeOutBox();
    double dProcessor = 0;
    double dTime = 0;
    const auto fnMeasure = [&](double p_dSign) {
        dProcessor += p_dSign * Seconds(CLOCK_PROCESS_CPUTIME_ID);
        dTime += p_dSign * Seconds(CLOCK_MONOTONIC);
    };
    // From when the click has been drawn to when the wait has ended.
    QTimer::singleShot(300, [&] { fnMeasure(-1); });
    m_objBoxes.WhileShown([&](const auto&) { fnMeasure(1); });
    m_objWindow.Click("btnRead");
    EXPECT_GE(dTime, 4.5);
    EXPECT_LE(dProcessor / dTime, MostLoad);
    RecordProperty("ProcessorSeconds", std::to_string(dProcessor));
}

}  // namespace
