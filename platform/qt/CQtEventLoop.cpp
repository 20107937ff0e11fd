#include "platform/qt/CQtEventLoop.h"

#include <QCoreApplication>
#include <QTimer>

#include <algorithm>
#include <cmath>

namespace {

/// How long a yield sleeps at most: short enough for waits of whole seconds, long enough that
/// looking at the clock costs nothing.
constexpr int SleepMilliseconds = 8;

}  // namespace

void CQtEventLoop::Yield() {
    Sleep(SleepMilliseconds);
}

void CQtEventLoop::YieldFor(double p_dSeconds) {
    constexpr double dMillisecondsPerSecond = 1000;
    const double dLeft = std::ceil(p_dSeconds * dMillisecondsPerSecond);
    Sleep(static_cast<int>(std::clamp(dLeft, 1.0, static_cast<double>(m_iLongestMilliseconds))));
}

void CQtEventLoop::Sleep(int p_iMilliseconds) {
    // Each yield has a timer of its own: a handler that runs inside may yield, too, and what ends
    // its sleep must not be taken from this one.
    QTimer objWakeUp;
    objWakeUp.setTimerType(Qt::PreciseTimer);
    objWakeUp.start(p_iMilliseconds);
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}
