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
    /// @param p_iPause how long a read waits between two answers.
    /// @param p_objEvents hears what happens. Not owned, outlives the printer.
    virtual std::unique_ptr<IPrinter> Connect(const CTarget& p_objTarget,
                                              std::chrono::milliseconds p_iPause,
                                              ISessionEvents& p_objEvents) = 0;

    /// Whether anybody takes a connection at a target of the network; takes three seconds at most.
    virtual bool IsTaken(const CTarget& p_objTarget) = 0;

    /// What the printer is called in the state folder: the same for all ways to write the target
    /// that are known to be the same. Letters, digits, ".", "-" and "_". Throws as Connect does.
    virtual std::string KeyOf(const CTarget& p_objTarget) = 0;

    /// Seconds that pass steadily, from any moment on.
    [[nodiscard]] virtual double Now() = 0;

    /// Lets so many seconds pass.
    virtual void Wait(double p_dSeconds) = 0;

    /// The pause that a printer is used to.
    static constexpr std::chrono::milliseconds DefaultPause{1000};
};
