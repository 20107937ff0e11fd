#include "platform/qt/CQtClock.h"

#include <QTime>

double CQtClock::SecondsSinceMidnight() const {
    constexpr double dMillisecondsPerSecond = 1000;
    return QTime::currentTime().msecsSinceStartOfDay() / dMillisecondsPerSecond;
}
