#pragma once

#include "jobs/CReadReport.h"
#include "jobs/CStatusReport.h"
#include "jobs/CWritePlan.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

/// What has come of a change of settings, or of its undoing.
struct CWriteReport {
    enum class End : std::uint8_t {
        Unchanged,     ///< the printer holds what is wanted, and held it before
        Changed,       ///< it holds what is wanted, as it says itself
        WouldChange,   ///< it would be changed; nothing was sent that changes anything
        NotBegun,      ///< nothing was sent that changes anything: m_iWhy
        Undone,        ///< it has failed, m_iWhy, and the printer is as it was
        PersonNeeded,  ///< it has failed, m_iWhy, and the printer is not as it was, or nobody knows
    };

    /// Why it has not been done.
    enum class Why : std::uint8_t {
        None,
        NotRead,          ///< the settings could not be read: m_objRead
        Unsteady,         ///< readings differ from one another: m_objRows
        Unreadable,       ///< the printer has told no values of m_objRows
        NotGiven,         ///< m_objRows travel along, and nobody says what they are
        LinkChange,       ///< it would change m_objRows, on which the link stands
        NotAsExpected,    ///< m_objRows are not as they have to be before
        OtherHost,        ///< its host name is another one
        PlaceTaken,       ///< somebody is where the printer would go
        NotReady,         ///< it reports a status that is an error, or none: m_objStatus
        NoJournal,        ///< the journal could not be written
        Refused,          ///< it has refused a command: m_objStatus
        NotAnswered,      ///< a command has failed: m_objStatus
        OtherThanWanted,  ///< it has taken everything, and m_objRows are not as wanted
        OthersChanged,    ///< m_objRows, which no command has carried, are not as they were
        NotReadBack,      ///< it could not be read back: m_objRead
        NotUnderstood,    ///< it was read back, and has told no values of m_objRows
    };

    /// What has become of a setting that was wanted, or that had to travel along.
    enum class Result : std::uint8_t {
        Same,          ///< it is as it was, and nobody has seen it otherwise
        Changed,       ///< it is as wanted, as the printer says
        Unverifiable,  ///< it was sent, or not, and no answer reports it
        Refused,       ///< the printer has refused its command, and it is as it was
        Mismatch,      ///< it did not become what was sent, and is what it was, or something else
        Restored,      ///< it was changed, and is what it was again, both as the printer says
        Lost,          ///< something was sent, and nobody knows what the printer holds
    };

    End m_iEnd = End::NotBegun;
    Why m_iWhy = Why::None;
    CWritePlan::Rows m_objRows{};
    CReadReport m_objRead{};      ///< the last reading that failed
    CStatusReport m_objStatus{};  ///< the command or question that ended it
    CWritePlan m_objPlan{};
    CSnapshot m_objWanted{};
    CSnapshot m_objBefore{};     ///< what was read before
    CSnapshot m_objFinally{};    ///< what was read last; known is what was
    CPrinterPlace m_objPlace{};  ///< where the printer answered last
    /// By the settings' names, in no order: those of the plan, and those that were wanted.
    std::map<std::string, Result, std::less<>> m_objResults{};
    /// Settings that may be other than before, and that the printer does not report: the one thing
    /// that a failure may leave behind although all that can be read is as it was.
    CWritePlan::Rows m_objDoubtful{};
    /// All is as wanted, or as it was, but the journal could not be removed.
    bool m_bJournalStays = false;
    bool m_bSent = false;  ///< anything has gone out to the printer at all
};
