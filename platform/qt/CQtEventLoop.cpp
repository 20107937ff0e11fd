#include "platform/qt/CQtEventLoop.h"

#include <QCoreApplication>
#include <QTimer>

namespace {

/// How long a yield sleeps at most: short enough for waits of whole seconds, long enough that
/// looking at the clock costs nothing.
constexpr int SleepMilliseconds = 8;

}  // namespace

void CQtEventLoop::Yield() {
    // Each yield has a timer of its own: a handler that runs inside may yield, too, and what ends
    // its sleep must not be taken from this one.
    QTimer objWakeUp;
    objWakeUp.setTimerType(Qt::PreciseTimer);
    objWakeUp.start(SleepMilliseconds);
    QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}
