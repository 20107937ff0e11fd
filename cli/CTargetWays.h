#pragma once

#include "cli/CTarget.h"
#include "cli/IPrinterConnector.h"
#include "jobs/IPrinterWays.h"

/// The printer that a target names, and where it may be besides.
class CTargetWays : public IPrinterWays {
public:
    /// The references are not owned; all outlive this and the printers.
    CTargetWays(const CTarget& p_objTarget, std::chrono::milliseconds p_iPause,
                IPrinterConnector& p_objPrinters, ISessionEvents& p_objEvents)
        : m_objTarget(p_objTarget)
        , m_iPause(p_iPause)
        , m_objPrinters(p_objPrinters)
        , m_objEvents(p_objEvents) {}

    /// Throws CCommandError the first time, when it can be told at once that there is no printer.
    std::unique_ptr<IPrinter> At(const CPrinterPlace& p_objPlace) override;
    bool IsTaken(const CPrinterPlace& p_objPlace) override;
    [[nodiscard]] double Now() const override { return m_objPrinters.Now(); }
    void Wait(double p_dSeconds) override { m_objPrinters.Wait(p_dSeconds); }

private:
    CTarget m_objTarget;
    std::chrono::milliseconds m_iPause;
    IPrinterConnector& m_objPrinters;
    ISessionEvents& m_objEvents;
    bool m_bMet = false;  // it has been there once
};
