#pragma once

#include "jobs/CReadReport.h"
#include "jobs/CStatusReport.h"

#include <span>
#include <string>

/// One printer that can be asked. Each call opens what it needs and closes it again, reports what
/// came of it as data, and lets no exception of a link or an answer out.
class IPrinter {
public:
    virtual ~IPrinter() = default;

    /// Reads what reports p_objRows (rows of MSettings::All(); those that no answer reports are
    /// left out), group by group in the order in which the printer is used to it, with a pause
    /// between two of them. The first group that fails ends it; what came before stays.
    virtual CReadReport Read(std::span<const MSettings::Row* const> p_objRows) = 0;

    /// Asks for the status.
    virtual CStatusReport Status() = 0;

    /// Sends a command that is answered with a status (MCommand): one that sets something, or of
    /// maintenance. Tells what the printer says to it.
    virtual CStatusReport Send(const std::string& p_strCommand) = 0;
};
