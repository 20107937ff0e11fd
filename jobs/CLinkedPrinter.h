#pragma once

#include "jobs/CDeadlineLoop.h"
#include "jobs/CPrinterLimits.h"
#include "jobs/IPrinter.h"
#include "link/CPrinterSession.h"

#include <functional>

/// A printer at the other end of one link. Nothing of one call is left for the next: each has a
/// session of its own, which is closed when it is over.
class CLinkedPrinter : public IPrinter {
public:
    /// What it stands on. Nothing is owned; all outlives the printer.
    struct Parts {
        CDeadlineLoop& m_objEventLoop;
        CPrinterPlatform m_objPlatform;  ///< with that loop, and a clock that does not start again
        ISessionEvents& m_objEvents;     ///< told what happens, as it happens
    };

    /// @param p_iInterface the link (CInterface::LanInterface …), whose end in p_objParts goes to
    ///        the printer whatever it is told.
    /// @param p_strDevice what failures name; empty: whatever the link itself says.
    CLinkedPrinter(const Parts& p_objParts, std::int16_t p_iInterface, std::string p_strDevice,
                   const CPrinterLimits& p_objLimits = {});

    CReadReport Read(std::span<const MSettings::Row* const> p_objRows) override;
    CStatusReport Status() override;
    CStatusReport Send(const std::string& p_strCommand) override;

    /// Opens the link and closes it again; true when that was possible. Nothing is sent.
    bool CanOpen();

private:
    class Session;
    using Command = std::function<COutcome(CCommandExchange&)>;

    CStatusReport Ask(const Command& p_fnCommand);
    void ReadGroup(Session& p_objSession, std::int16_t p_iGroup, CReadReport& p_objReport);

    Parts m_objParts;
    std::int16_t m_iInterface;
    std::string m_strDevice;
    CPrinterLimits m_objLimits;
};
