#pragma once

#include "platform/IClock.h"

/// The system's local time of day, in steps of a millisecond.
class CQtClock : public IClock {
public:
    [[nodiscard]] double SecondsSinceMidnight() const override;
};
