#pragma once

#include "platform/IClock.h"

#include <cmath>
#include <cstdint>

/// A time of day that stands still until it is moved. Counts whole milliseconds, so that steps add
/// up exactly.
class CFakeClock : public IClock {
public:
    /// Sets the time of day; moves nothing that waits for Elapsed.
    void SetTimeOfDay(double p_dSeconds) {
        m_iTimeOfDay = std::llround(p_dSeconds * MillisecondsPerSecond);
    }

    void Advance(std::int64_t p_iMilliseconds) {
        m_iElapsed += p_iMilliseconds;
        m_iTimeOfDay = (m_iTimeOfDay + p_iMilliseconds) % MillisecondsPerDay;
    }

    /// Milliseconds by which the clock was moved altogether; midnight does not matter to it.
    [[nodiscard]] std::int64_t Elapsed() const { return m_iElapsed; }

    [[nodiscard]] double SecondsSinceMidnight() const override {
        return static_cast<double>(m_iTimeOfDay) / MillisecondsPerSecond;
    }

private:
    static constexpr double MillisecondsPerSecond = 1000;
    static constexpr std::int64_t MillisecondsPerDay = 86'400'000;

    std::int64_t m_iTimeOfDay = 36'000'000;  // ten in the morning
    std::int64_t m_iElapsed = 0;
};
