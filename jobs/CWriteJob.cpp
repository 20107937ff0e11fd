#include "jobs/CWriteJob.h"

#include "jobs/MWritePlan.h"
#include "jobs/MWriteResults.h"
#include "model/MSettingText.h"
#include "protocol/MAnswer.h"
#include "protocol/MStatus.h"

#include <algorithm>

namespace {

using End = CWriteReport::End;
using Rows = CWritePlan::Rows;
using Stage = IWriteEvents::Stage;
using MSettings::Row;

const Row& HostName() {
    return MSettings::Get("dhcp-host-name");
}

/// Whether a setting is reported, and stays what it is until somebody changes it.
bool IsLasting(const Row& p_objRow) {
    const Rows objLasting = MWritePlan::Lasting();
    return std::ranges::find(objLasting, &p_objRow) != objLasting.end();
}

/// The settings of p_objRows in which the two differ.
Rows Differing(const Rows& p_objRows, const CSnapshot& p_objOne, const CSnapshot& p_objOther) {
    Rows objRows = p_objRows;
    std::erase_if(objRows, [&](const Row* p_objRow) {
        return MSettingText::Same(*p_objRow, p_objOne.Items(), p_objOther.Items());
    });
    return objRows;
}

MWritePlan::Ends Ends(const CWriteRequest& p_objRequest, const CWriteReport& p_objReport) {
    return {p_objReport.m_objBefore, p_objRequest.m_objWanted, p_objRequest.m_objVouched,
            p_objRequest.m_objLinkStands, p_objRequest.m_iLink};
}

/// All that has to be read before the plan can be made.
Rows RowsToRead(const CWriteRequest& p_objRequest) {
    Rows objRows = MWritePlan::ToRead(p_objRequest.m_objWanted);
    for (const Row& objRow : MSettings::All()) {
        const bool bWanted = p_objRequest.m_objExpected.IsKnown(objRow) ||
                             (!p_objRequest.m_strExpectedHost.empty() && &objRow == &HostName());
        if (bWanted && IsLasting(objRow)) {
            objRows.push_back(&objRow);
        }
    }
    return objRows;
}

/// The settings that a plan changes, with what they are to be.
CSnapshot WhatChanges(const CWritePlan& p_objPlan) {
    CSnapshot objChanges;
    objChanges.Items() = p_objPlan.m_objAfter.Items();
    for (const Row* const objRow : p_objPlan.Carried()) {
        if (!p_objPlan.m_objBefore.IsKnown(*objRow) ||
            !MSettingText::Same(*objRow, p_objPlan.m_objBefore.Items(),
                                p_objPlan.m_objAfter.Items())) {
            objChanges.SetKnown(*objRow);
        }
    }
    return objChanges;
}

/// Settings that were sent with another value than the one that somebody vouches for, or that
/// nobody vouches for, and that no answer reports: what was sent back for them cannot be verified.
Rows Doubtful(const CWritePlan& p_objPlan, const CWriteRun& p_objRun) {
    Rows objRows = p_objPlan.Unreported();
    std::erase_if(objRows, [&](const Row* p_objRow) {
        const MSettingRoute::Command iCommand = MSettingRoute::CarriedBy(*p_objRow);
        const bool bSentAsItWas = p_objPlan.m_objBefore.IsKnown(*p_objRow) &&
                                  MSettingText::Same(*p_objRow, p_objPlan.m_objBefore.Items(),
                                                     p_objPlan.m_objAfter.Items());
        return bSentAsItWas || !p_objRun.HasSent(iCommand) || p_objRun.HasRefused(iCommand);
    });
    return objRows;
}

}  // namespace

CWriteJob::CWriteJob(IPrinterWays& p_objWays, IWriteJournal& p_objJournal,
                     IWriteEvents& p_objEvents)
    : m_objWays(p_objWays)
    , m_objJournal(p_objJournal)
    , m_objEvents(p_objEvents) {}

CWriteReport CWriteJob::Run(const CWriteRequest& p_objRequest) {
    CWriteReport objReport;
    objReport.m_objWanted = p_objRequest.m_objWanted;
    const bool bGoesOn = Prepare(p_objRequest, objReport);
    objReport.m_objFinally = objReport.m_objBefore;
    objReport.m_objResults = MWriteResults::OfNone(objReport);
    if (!bGoesOn) {
        return objReport;
    }
    CWriteRun objRun(objReport.m_objPlan, m_objWays, m_objEvents, p_objRequest.m_dReach);
    const bool bDone = CarryOut(objRun, objReport);
    const bool bUnmet = objReport.m_iWhy == Why::OtherThanWanted;
    const Rows objUnmet = bUnmet ? objReport.m_objRows : Rows();
    if (bDone) {
        objReport.m_iEnd = AreOthersAsBefore(objRun, objReport) ? End::Changed : End::PersonNeeded;
    } else {
        Undo(objRun, objReport);
    }
    Finish(objRun, objReport);
    objReport.m_objResults = MWriteResults::Of(objReport, objRun, objUnmet);
    return objReport;
}

/// Everything before the first byte that changes something. False when that is all.
bool CWriteJob::Prepare(const CWriteRequest& p_objRequest, CWriteReport& p_objReport) {
    if (!TakeSnapshot(p_objRequest, p_objReport) || !IsExpected(p_objRequest, p_objReport) ||
        !MakePlan(p_objRequest, p_objReport)) {
        return false;
    }
    if (p_objReport.m_objPlan.m_objSteps.empty()) {
        p_objReport.m_iEnd = End::Unchanged;
        return false;
    }
    if (p_objRequest.m_bCheckOnly) {
        p_objReport.m_iEnd = End::WouldChange;
        return false;
    }
    if (!IsReady(p_objReport)) {
        return false;
    }
    if (!m_objJournal.Open(p_objReport.m_objPlan)) {
        p_objReport.m_iWhy = Why::NoJournal;
        return false;
    }
    return true;
}

/// Two readings that agree. The later ones bring everything when something has to be changed: what
/// the commands do not carry has to stay as it is.
bool CWriteJob::TakeSnapshot(const CWriteRequest& p_objRequest, CWriteReport& p_objReport) {
    const Rows objRows = RowsToRead(p_objRequest);
    if (!Read(objRows, p_objReport)) {
        return false;
    }
    const CWritePlan objFirst = MWritePlan::Make(Ends(p_objRequest, p_objReport));
    const Rows objAll = objFirst.m_objSteps.empty() ? objRows : MWritePlan::Lasting();
    for (int i = 1; i < SnapshotReadings; ++i) {
        const CSnapshot objFormer = p_objReport.m_objBefore;
        if (!Read(objAll, p_objReport)) {
            return false;
        }
        p_objReport.m_objRows = Differing(objRows, objFormer, p_objReport.m_objBefore);
        if (p_objReport.m_objRows.empty()) {
            return true;
        }
    }
    p_objReport.m_iWhy = Why::Unsteady;
    return false;
}

/// One reading before the change; what fails is told.
bool CWriteJob::Read(const Rows& p_objRows, CWriteReport& p_objReport) {
    m_objEvents.OnStage(Stage::Reading, 0, 0);
    CReadReport objRead;
    objRead.m_objFailure.m_iKind = CFailure::Kind::UsbNotOpened;
    if (const std::unique_ptr<IPrinter> objPrinter = m_objWays.At({})) {
        objRead = objPrinter->Read(p_objRows);
    }
    p_objReport.m_bSent |= objRead.m_bSent;
    if (!objRead.m_objFailure.IsNone()) {
        p_objReport.m_iWhy = Why::NotRead;
        p_objReport.m_objRead = objRead;
        p_objReport.m_objRead.m_bSent = p_objReport.m_bSent;
        return false;
    }
    p_objReport.m_objBefore = objRead.m_objSnapshot;
    return true;
}

bool CWriteJob::IsExpected(const CWriteRequest& p_objRequest, CWriteReport& p_objReport) const {
    const CSnapshot& objBefore = p_objReport.m_objBefore;
    for (const Row& objRow : MSettings::All()) {
        const bool bAsked = p_objRequest.m_objExpected.IsKnown(objRow) && IsLasting(objRow);
        if (bAsked &&
            (!objBefore.IsKnown(objRow) ||
             !MSettingText::Same(objRow, objBefore.Items(), p_objRequest.m_objExpected.Items()))) {
            p_objReport.m_iWhy = Why::NotAsExpected;
            p_objReport.m_objRows.push_back(&objRow);
        }
    }
    if (p_objReport.m_iWhy == Why::None && !p_objRequest.m_strExpectedHost.empty() &&
        MSettingText::Show(HostName(), objBefore.Items()) != p_objRequest.m_strExpectedHost) {
        p_objReport.m_iWhy = Why::OtherHost;
    }
    return p_objReport.m_iWhy == Why::None;
}

bool CWriteJob::MakePlan(const CWriteRequest& p_objRequest, CWriteReport& p_objReport) {
    const MWritePlan::Ends objEnds = Ends(p_objRequest, p_objReport);
    CWritePlan& objPlan = p_objReport.m_objPlan;
    objPlan = MWritePlan::Make(objEnds);
    MWritePlan::TakeOthers(p_objReport.m_objBefore, objPlan);
    const bool bTexts =
        std::ranges::all_of(objPlan.m_objSteps, [&](const CWritePlan::Step& p_objStep) {
            return !CWritePlan::Text(p_objStep.m_iCommand, objPlan.m_objBefore).empty() &&
                   !CWritePlan::Text(p_objStep.m_iCommand, objPlan.m_objAfter).empty();
        });
    const Rows objLinkChanges =
        p_objRequest.m_bAllowLinkChange ? Rows() : MWritePlan::LinkChanges(objPlan, objEnds);
    const struct {
        Why m_iWhy;
        Rows m_objRows;
    } Refusals[] = {{Why::Unreadable, MWritePlan::Unreadable(objPlan)},  // NOLINT(*-c-arrays)
                    {Why::NotGiven, MWritePlan::Missing(objPlan)},
                    {Why::Unreadable, bTexts ? Rows() : objPlan.Reported()},
                    {Why::LinkChange, objLinkChanges}};
    for (const auto& objRefusal : Refusals) {
        if (!objRefusal.m_objRows.empty()) {
            p_objReport.m_iWhy = objRefusal.m_iWhy;
            p_objReport.m_objRows = objRefusal.m_objRows;
            return false;
        }
    }
    return true;
}

/// Whether the printer can be changed now, and its way back is not somebody else's.
bool CWriteJob::IsReady(CWriteReport& p_objReport) {
    for (const CPrinterPlace& objPlace :
         p_objReport.m_objPlan.Places(p_objReport.m_objPlan.m_objSteps.size())) {
        if (!objPlace.IsTargets() && objPlace.m_strLine.empty() && m_objWays.IsTaken(objPlace)) {
            p_objReport.m_iWhy = Why::PlaceTaken;
            p_objReport.m_objPlace = objPlace;
            return false;
        }
    }
    p_objReport.m_objStatus.m_objFailure.m_iKind = CFailure::Kind::UsbNotOpened;
    if (const std::unique_ptr<IPrinter> objPrinter = m_objWays.At({})) {
        p_objReport.m_objStatus = objPrinter->Status();
    }
    const CStatusReport& objStatus = p_objReport.m_objStatus;
    if (objStatus.m_strCode.empty() || MStatus::IsError(objStatus.m_strCode)) {
        p_objReport.m_iWhy = Why::NotReady;
        return false;
    }
    return true;
}

/// What cannot be understood is not as it was; changed it is not therefore.
bool CWriteJob::AreOthersAsBefore(const CWriteRun& p_objRun, CWriteReport& p_objReport) {
    const Rows objUnknown = p_objRun.Unknown();
    const Rows objRows = objUnknown.empty() ? p_objRun.OthersChanged() : objUnknown;
    if (!objRows.empty()) {
        p_objReport.m_iWhy = objUnknown.empty() ? Why::OthersChanged : Why::NotUnderstood;
        p_objReport.m_objRows = objRows;
    }
    return objRows.empty();
}

bool CWriteJob::CarryOut(CWriteRun& p_objRun, CWriteReport& p_objReport) {
    if (!p_objRun.Send(p_objReport)) {
        return false;
    }
    m_objEvents.OnStage(Stage::ReadingBack, 0, 0);
    if (p_objRun.ReadBack()) {
        return true;
    }
    p_objReport.m_objRead = p_objRun.Last();
    const Rows objUnknown = p_objRun.Unknown();
    if (!p_objRun.IsRead()) {
        p_objReport.m_iWhy = Why::NotReadBack;
    } else if (objUnknown.empty()) {
        p_objReport.m_iWhy = Why::OtherThanWanted;
        p_objReport.m_objRows = p_objRun.Unmet();
    } else {
        p_objReport.m_iWhy = Why::NotUnderstood;
        p_objReport.m_objRows = objUnknown;
    }
    return false;
}

void CWriteJob::Undo(CWriteRun& p_objRun, CWriteReport& p_objReport) {
    if (!p_objRun.HasSent()) {
        p_objReport.m_iEnd = End::Undone;
        return;
    }
    const bool bRestored = p_objRun.Restore();
    const bool bOthers = p_objRun.IsRead() && AreOthersAsBefore(p_objRun, p_objReport);
    p_objReport.m_objDoubtful = Doubtful(p_objReport.m_objPlan, p_objRun);
    p_objReport.m_iEnd =
        bRestored && bOthers && p_objReport.m_objDoubtful.empty() ? End::Undone : End::PersonNeeded;
}

/// The journal goes only when nothing is left to be done.
void CWriteJob::Finish(const CWriteRun& p_objRun, CWriteReport& p_objReport) {
    p_objReport.m_bSent |= p_objRun.HasSent();
    p_objReport.m_objPlace = p_objRun.Place();
    p_objReport.m_objFinally =
        p_objRun.HasSent() ? p_objRun.Last().m_objSnapshot : p_objReport.m_objBefore;
    if (p_objReport.m_iEnd != End::PersonNeeded) {
        p_objReport.m_bJournalStays = !m_objJournal.Close();
    }
}

CWriteReport CWriteJob::Restore(const CWritePlan& p_objPlan, double p_dReach) {
    CWriteReport objReport;
    objReport.m_objPlan = p_objPlan;
    objReport.m_objBefore = p_objPlan.m_objBefore;
    objReport.m_objWanted = WhatChanges(p_objPlan);
    CWriteRun objRun(objReport.m_objPlan, m_objWays, m_objEvents, p_dReach);
    objRun.AssumeSent();
    Undo(objRun, objReport);
    if (!objRun.IsRead()) {
        objReport.m_iWhy = Why::NotReadBack;
        objReport.m_objRead = objRun.Last();
    } else if (objReport.m_iEnd == End::PersonNeeded && objReport.m_iWhy == Why::None) {
        objReport.m_iWhy = Why::OtherThanWanted;
        objReport.m_objRows = objRun.Unrestored();
    }
    Finish(objRun, objReport);
    objReport.m_objResults = MWriteResults::Of(objReport, objRun, {});
    return objReport;
}

CWriteReport CWriteJob::Look(const CWritePlan& p_objPlan, double p_dReach) {
    CWriteReport objReport;
    objReport.m_objPlan = p_objPlan;
    objReport.m_objBefore = p_objPlan.m_objBefore;
    objReport.m_objWanted = WhatChanges(p_objPlan);
    CWriteRun objRun(objReport.m_objPlan, m_objWays, m_objEvents, p_dReach);
    objRun.AssumeSent();
    objReport.m_iEnd = End::PersonNeeded;
    objRun.Look();
    if (!objRun.IsRead()) {
        objReport.m_iWhy = Why::NotReadBack;
        objReport.m_objRead = objRun.Last();
    } else if (AreOthersAsBefore(objRun, objReport)) {
        objReport.m_iEnd = objRun.Unmet().empty()        ? End::Changed
                           : objRun.Unrestored().empty() ? End::Undone
                                                         : End::PersonNeeded;
    }
    objReport.m_objFinally = objRun.Last().m_objSnapshot;
    objReport.m_objPlace = objRun.Place();
    objReport.m_objResults = MWriteResults::Of(objReport, objRun, {});
    return objReport;
}
