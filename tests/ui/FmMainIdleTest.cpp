#include "tests/MSanitizers.h"
#include "tests/platform_qt/CUnreachablePort.h"
#include "tests/ui/CPrinterFixture.h"

#include <QEventLoop>
#include <QTest>
#include <QToolButton>

#include <ctime>

namespace {

// The sanitizers make everything slower, waiting included.
constexpr double MostWaiting = MSanitizers::Address ? 0.10 : 0.02;
constexpr double MostAtRest = MSanitizers::Address ? 0.05 : 0.005;

constexpr double NanosecondsPerSecond = 1e9;

double Seconds(clockid_t p_iClock) {
    timespec objTime{};
    clock_gettime(p_iClock, &objTime);
    return static_cast<double>(objTime.tv_sec) +
           static_cast<double>(objTime.tv_nsec) / NanosecondsPerSecond;
}

/// The share of a processor that the program takes between the two calls of Mark.
class FmMainIdleTest : public CPrinterFixture {
protected:
    void Mark(double p_dSign) {
        m_dProcessor += p_dSign * Seconds(CLOCK_PROCESS_CPUTIME_ID);
        m_dTime += p_dSign * Seconds(CLOCK_MONOTONIC);
    }

    void ExpectLoad(double p_dMost, double p_dLeastTime) {
        EXPECT_GE(m_dTime, p_dLeastTime);
        EXPECT_LE(m_dProcessor / m_dTime, p_dMost);
        RecordProperty("ProcessorSeconds", std::to_string(m_dProcessor));
    }

    double m_dProcessor = 0;
    double m_dTime = 0;
};

TEST_F(FmMainIdleTest, WaitingForASilentPrinterCostsNextToNothing) {
    StartPrinter({"--silent"});
    ConnectToPrinter();
    ExpectTimeOutBox();
    // From when the click has been drawn to when the wait has ended.
    QTimer::singleShot(300, [&] { Mark(-1); });
    m_objBoxes.WhileShown([&](const auto&) { Mark(1); });
    m_objWindow.Click("btnRead");
    ExpectLoad(MostWaiting, 4.5);
}

TEST_F(FmMainIdleTest, WaitingForAConnectionCostsNextToNothing) {
    const CUnreachablePort objPort;
    m_objWindow.Form().Interface().m_objSocketPort->SetValue(objPort.Number());
    QTimer::singleShot(500, [&] { Mark(-1); });
    QTimer::singleShot(4500, [&] {
        Mark(1);
        m_objWindow.Form().findChild<QToolButton*>("btnStop")->click();
    });
    ConnectToPrinter();
    ExpectLoad(MostWaiting, 2);
}

TEST_F(FmMainIdleTest, AnOpenWindowAtRestCostsNothing) {
    QTest::qWait(500);  // until it has been drawn
    QEventLoop objNothing;
    QTimer::singleShot(2000, &objNothing, &QEventLoop::quit);
    Mark(-1);
    objNothing.exec();
    Mark(1);
    ExpectLoad(MostAtRest, 1.9);
}

}  // namespace
