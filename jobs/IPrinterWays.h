#pragma once

#include "jobs/CPrinterPlace.h"
#include "jobs/IPrinter.h"

#include <memory>

/// One printer that a target names, wherever its settings take it; and the time to wait for it.
class IPrinterWays {
public:
    virtual ~IPrinterWays() = default;

    /// The printer at that place; null when it can be told at once that there is none now.
    virtual std::unique_ptr<IPrinter> At(const CPrinterPlace& p_objPlace) = 0;

    /// Whether anybody takes a connection at that place. Takes a few seconds at most.
    virtual bool IsTaken(const CPrinterPlace& p_objPlace) = 0;

    /// Seconds that pass steadily, from any moment on.
    [[nodiscard]] virtual double Now() const = 0;

    /// Lets so many seconds pass.
    virtual void Wait(double p_dSeconds) = 0;
};
