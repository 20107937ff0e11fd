#pragma once

#include "cli/CTarget.h"
#include "jobs/IPrinter.h"
#include "link/ISessionEvents.h"

#include <chrono>
#include <memory>

/// Makes printers of their names.
class IPrinterConnector {
public:
    virtual ~IPrinterConnector() = default;

    /// The printer that p_objTarget names; nothing is opened yet. Throws CCommandError when it can
    /// be told at once that there is no such one.
    /// @param p_iPause how long a read waits behind each answer.
    /// @param p_objEvents hears what happens. Not owned, outlives the printer.
    virtual std::unique_ptr<IPrinter> Connect(const CTarget& p_objTarget,
                                              std::chrono::milliseconds p_iPause,
                                              ISessionEvents& p_objEvents) = 0;

    /// The pause that a printer is used to.
    static constexpr std::chrono::milliseconds DefaultPause{1000};
};
