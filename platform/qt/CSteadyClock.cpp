#include "platform/qt/CSteadyClock.h"

double CSteadyClock::SecondsSinceMidnight() const {
    const std::chrono::duration<double> dSeconds = std::chrono::steady_clock::now() - m_iStart;
    return dSeconds.count();
}
