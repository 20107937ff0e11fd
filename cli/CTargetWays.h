#pragma once

#include "cli/CCommandError.h"
#include "cli/CTarget.h"
#include "cli/IPrinterConnector.h"
#include "jobs/IPrinterWays.h"

#include <cstdint>
#include <optional>

/// The printer that a target names, and where it may be besides.
class CTargetWays : public IPrinterWays {
public:
    /// What it means that there is no printer when it is gone to first.
    enum class First : std::uint8_t {
        IsThere,    ///< that the target is not the one that is meant
        MayBeAway,  ///< that it is not there now, as later: it was there once
    };

    /// The references are not owned; all outlive this and the printers.
    CTargetWays(const CTarget& p_objTarget, std::chrono::milliseconds p_iPause,
                IPrinterConnector& p_objPrinters, ISessionEvents& p_objEvents,
                First p_iFirst = First::IsThere)
        : m_objTarget(p_objTarget)
        , m_iPause(p_iPause)
        , m_objPrinters(p_objPrinters)
        , m_objEvents(p_objEvents)
        , m_bMet(p_iFirst == First::MayBeAway) {}

    /// Throws CCommandError as long as none was there, when it can be told at once that there is
    /// none; unless it may be away.
    std::unique_ptr<IPrinter> At(const CPrinterPlace& p_objPlace) override;
    /// Why there was none when it was gone to last; nothing when there was one.
    [[nodiscard]] const std::optional<CCommandError>& Refusal() const { return m_objRefusal; }
    bool IsTaken(const CPrinterPlace& p_objPlace) override;
    [[nodiscard]] double Now() const override { return m_objPrinters.Now(); }
    void Wait(double p_dSeconds) override { m_objPrinters.Wait(p_dSeconds); }

private:
    CTarget m_objTarget;
    std::chrono::milliseconds m_iPause;
    IPrinterConnector& m_objPrinters;
    ISessionEvents& m_objEvents;
    std::optional<CCommandError> m_objRefusal;
    bool m_bMet;  // it has been there once
};
