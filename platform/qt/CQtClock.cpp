#include "platform/qt/CQtClock.h"

#include <QDateTime>

#include <chrono>

double CQtClock::SecondsSinceMidnight() const {
    // The toolkit's time of day has whole milliseconds: a wait between two of them would be up to
    // one too short.
    using namespace std::chrono;
    const auto iNow = system_clock::now();
    const auto iWhole = floor<milliseconds>(iNow);
    const QTime objTime = QDateTime::fromMSecsSinceEpoch(iWhole.time_since_epoch().count()).time();
    const duration<double> dSeconds =
        milliseconds(objTime.msecsSinceStartOfDay()) + (iNow - iWhole);
    return dSeconds.count();
}
