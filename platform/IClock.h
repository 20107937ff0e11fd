#pragma once

/// The time of day.
class IClock {
public:
    virtual ~IClock() = default;

    /// Seconds since local midnight, with fractions; starts again at 0 each midnight.
    [[nodiscard]] virtual double SecondsSinceMidnight() const = 0;
};
