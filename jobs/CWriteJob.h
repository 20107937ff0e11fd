#pragma once

#include "jobs/CWriteReport.h"
#include "jobs/CWriteRequest.h"
#include "jobs/CWriteRun.h"
#include "jobs/IPrinterWays.h"
#include "jobs/IWriteEvents.h"
#include "jobs/IWriteJournal.h"

#include <optional>

/// A change of settings that is whole or undone: read, planned, written down, sent, read back, and
/// brought back to what was when anything fails. What the printer answers to a command is a hint;
/// what it says when it is read is what counts.
class CWriteJob {
public:
    /// How many readings are taken before the change, until two that follow one another agree.
    static constexpr int SnapshotReadings = 3;

    /// None is owned; all outlive this.
    CWriteJob(IPrinterWays& p_objWays, IWriteJournal& p_objJournal, IWriteEvents& p_objEvents);

    /// Does it. What is wanted holds values of its settings, each of which a command carries.
    CWriteReport Run(const CWriteRequest& p_objRequest);

    /// Undoes what was written down: reads what p_objPlan concerns and brings back what was before.
    /// @param p_dReach for how many seconds a printer that does not answer is sought.
    CWriteReport Restore(const CWritePlan& p_objPlan, double p_dReach);

    /// Reads what p_objPlan concerns and tells how it stands, without changing anything: Changed
    /// when all is as wanted, Undone when all is as before, else PersonNeeded.
    CWriteReport Look(const CWritePlan& p_objPlan, double p_dReach);

private:
    using Why = CWriteReport::Why;

    bool Prepare(const CWriteRequest& p_objRequest, CWriteReport& p_objReport);
    bool TakeSnapshot(const CWriteRequest& p_objRequest, CWriteReport& p_objReport);
    bool Read(const CWritePlan::Rows& p_objRows, CWriteReport& p_objReport);
    bool IsExpected(const CWriteRequest& p_objRequest, CWriteReport& p_objReport) const;
    bool MakePlan(const CWriteRequest& p_objRequest, CWriteReport& p_objReport);
    bool IsReady(CWriteReport& p_objReport);
    static bool AreOthersAsBefore(const CWriteRun& p_objRun, CWriteReport& p_objReport);
    bool CarryOut(CWriteRun& p_objRun, CWriteReport& p_objReport);
    void Undo(CWriteRun& p_objRun, CWriteReport& p_objReport);
    void Finish(const CWriteRun& p_objRun, CWriteReport& p_objReport);

    IPrinterWays& m_objWays;
    IWriteJournal& m_objJournal;
    IWriteEvents& m_objEvents;
};
