#pragma once

#include "jobs/CWritePlan.h"
#include "jobs/CWriteReport.h"
#include "jobs/IPrinterWays.h"
#include "jobs/IWriteEvents.h"

#include <cstdint>
#include <set>
#include <string>
#include <vector>

/// A plan being carried out, read back or undone: sends its commands, knows where the printer may
/// be meanwhile, and takes nothing for done but what the printer says when it is read.
class CWriteRun {
public:
    /// How often what was read may differ from what it should be, and the seconds between.
    static constexpr int Readings = 5;
    static constexpr double BetweenReadings = 1;
    /// How often it is read when what it tells cannot be understood, before that is how it is.
    static constexpr int Hearings = 3;
    /// How often the undoing is begun anew when it has not brought what it should; it is
    /// not when nobody can tell what it has brought.
    static constexpr int Rounds = 3;
    /// How long a printer that has left a command unanswered is left alone before it is read last.
    static constexpr double Settling = 5;

    /// None is owned; all outlive this.
    /// @param p_dReach for how many seconds a printer that does not answer is sought.
    CWriteRun(const CWritePlan& p_objPlan, IPrinterWays& p_objWays, IWriteEvents& p_objEvents,
              double p_dReach);

    /// All of it may have been sent before, by whoever was at it.
    void AssumeSent();

    /// Sends the steps with what is wanted, up to the first that fails. True when none does; a step
    /// that cuts the link may go unanswered.
    bool Send(CWriteReport& p_objReport);

    /// Reads until what comes is understood, as often as Hearings says.
    void Look();

    /// Reads until the printer holds what is wanted, as often as Readings says. True when it does.
    bool ReadBack() { return ReadUntil(&CWriteRun::Unmet); }

    /// Brings back what was before, of everything that may have been sent, and verifies it. It is
    /// sent also when it reads as it was: a printer may carry out a command long after it has taken
    /// it, and what comes behind that command is carried out behind it.
    bool Restore();

    /// A command may have gone out.
    [[nodiscard]] bool HasSent() const { return m_iSent > 0; }
    [[nodiscard]] bool HasSent(MSettingRoute::Command p_iCommand) const {
        return m_iTouched.contains(p_iCommand);
    }
    /// The printer has said that it did not carry the command out.
    [[nodiscard]] bool HasRefused(MSettingRoute::Command p_iCommand) const {
        return m_iRefused.contains(p_iCommand);
    }

    /// Any reading has brought p_objRow with other fields than there were before.
    [[nodiscard]] bool HasSeenOther(const MSettings::Row& p_objRow) const {
        return m_objSeenOther.contains(&p_objRow);
    }

    /// The last reading: whole, or failed.
    [[nodiscard]] const CReadReport& Last() const { return m_objLast; }
    [[nodiscard]] bool IsRead() const;
    /// What has to be as wanted or as it was, and the last reading has brought no value of.
    [[nodiscard]] CWritePlan::Rows Unknown() const;
    /// What the steps carry and the last reading has not brought with the value that is wanted, or
    /// not with the fields that there were before.
    [[nodiscard]] CWritePlan::Rows Unmet() const;
    [[nodiscard]] CWritePlan::Rows Unrestored() const;
    /// What the steps do not carry and the last reading has brought otherwise than it was.
    [[nodiscard]] CWritePlan::Rows OthersChanged() const;
    /// Where the printer has answered last.
    [[nodiscard]] const CPrinterPlace& Place() const { return m_objPlaces.front(); }

private:
    void Read();
    void Notice();
    bool ReadUntil(CWritePlan::Rows (CWriteRun::*p_fnDiffering)() const);
    [[nodiscard]] CWritePlan::Rows Concerned() const;
    [[nodiscard]] bool IsKnown(const MSettings::Row* p_objRow) const {
        return m_objLast.m_objSnapshot.IsKnown(*p_objRow);
    }
    [[nodiscard]] bool IsAsBefore(const MSettings::Row& p_objRow) const;
    CStatusReport SendText(const std::string& p_strText);
    void ComeTo(CPrinterPlace p_objPlace);
    bool StaysRestored();
    [[nodiscard]] std::vector<const CWritePlan::Step*> ToUndo(bool p_bFirst) const;

    const CWritePlan& m_objPlan;
    IPrinterWays& m_objWays;
    IWriteEvents& m_objEvents;
    double m_dReach;
    std::vector<CPrinterPlace> m_objPlaces{CPrinterPlace{}};  // the likeliest first
    std::set<MSettingRoute::Command> m_iTouched;
    std::set<MSettingRoute::Command> m_iRefused;
    std::set<const MSettings::Row*> m_objSeenOther;
    std::size_t m_iSent = 0;
    bool m_bUnanswered = false;  // a command has gone out, and nobody knows what became of it
    CReadReport m_objLast;
};
