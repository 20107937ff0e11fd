#pragma once

#include "platform/IClock.h"

#include <chrono>

/// A clock that only ever goes on: neither midnight nor whoever sets the time of day moves it.
class CSteadyClock : public IClock {
public:
    /// Seconds since this clock was made, with fractions. They never start again.
    [[nodiscard]] double SecondsSinceMidnight() const override;

private:
    std::chrono::steady_clock::time_point m_iStart = std::chrono::steady_clock::now();
};
