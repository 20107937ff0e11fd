#pragma once

/// What waits are measured by: the time of day, or a clock that takes its place and never starts
/// again.
class IClock {
public:
    virtual ~IClock() = default;

    /// Seconds since local midnight, with fractions; starts again at 0 each midnight.
    [[nodiscard]] virtual double SecondsSinceMidnight() const = 0;
};
