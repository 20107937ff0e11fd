#include "jobs/MWriteResults.h"

#include "jobs/MWritePlan.h"
#include "model/MSettingText.h"
#include "protocol/MAnswer.h"

#include <algorithm>

namespace {

using End = CWriteReport::End;
using Result = CWriteReport::Result;
using MSettings::Row;

bool IsReported(const Row& p_objRow) {
    return MSettingRoute::ReportedIn(p_objRow) != MAnswer::NoGroup;
}

bool Holds(const CSnapshot& p_objHeld, const Row& p_objRow, const CSnapshot& p_objOther) {
    return p_objHeld.IsKnown(p_objRow) &&
           MSettingText::Same(p_objRow, p_objHeld.Items(), p_objOther.Items());
}

class Judge {
public:
    Judge(const CWriteReport& p_objReport, const CWriteRun& p_objRun,
          const CWritePlan::Rows& p_objUnmet)
        : m_objReport(p_objReport)
        , m_objRun(p_objRun)
        , m_objUnmet(p_objUnmet) {}

    [[nodiscard]] Result Of(const Row& p_objRow) const {
        if (!IsReported(p_objRow)) {
            return Result::Unverifiable;
        }
        const MSettingRoute::Command iCommand = MSettingRoute::CarriedBy(p_objRow);
        const bool bSent = m_objRun.HasSent(iCommand);
        const CWritePlan& objPlan = m_objReport.m_objPlan;
        const CSnapshot& objHeld = m_objRun.Last().m_objSnapshot;
        const bool bChanges =
            !MSettingText::Same(p_objRow, objPlan.m_objBefore.Items(), objPlan.m_objAfter.Items());
        if (!m_objRun.IsRead()) {
            return m_objRun.HasSent() ? Result::Lost : Result::Same;
        }
        if (m_objReport.m_iEnd == End::Changed ||
            (bChanges && Holds(objHeld, p_objRow, objPlan.m_objAfter))) {
            return bChanges ? Result::Changed : Result::Same;
        }
        if (!objHeld.IsKnown(p_objRow)) {
            return Result::Lost;
        }
        if (!MWritePlan::HoldSameFields(p_objRow, objHeld, objPlan.m_objBefore)) {
            return Result::Mismatch;
        }
        if (!bSent || !bChanges) {
            return Result::Same;
        }
        return m_objRun.HasRefused(iCommand) ? Result::Refused : Undone(p_objRow);
    }

    /// Of one that had not to be sent.
    [[nodiscard]] Result OfUnsent(const Row& p_objRow) const {
        if (!IsReported(p_objRow)) {
            return Result::Unverifiable;
        }
        const bool bKnown = m_objRun.IsRead() && m_objRun.Last().m_objSnapshot.IsKnown(p_objRow);
        if (m_objRun.HasSent() && !bKnown) {
            return Result::Lost;
        }
        const CWritePlan::Rows& objRows = m_objReport.m_objRows;
        const bool bChanged = m_objReport.m_iWhy == CWriteReport::Why::OthersChanged &&
                              std::ranges::find(objRows, &p_objRow) != objRows.end();
        return bChanged ? Result::Mismatch : Result::Same;
    }

private:
    /// It is as before: has it ever been otherwise?
    [[nodiscard]] Result Undone(const Row& p_objRow) const {
        if (m_objRun.HasSeenOther(p_objRow)) {
            return Result::Restored;
        }
        const bool bUnmet = std::ranges::find(m_objUnmet, &p_objRow) != m_objUnmet.end();
        return bUnmet ? Result::Mismatch : Result::Same;
    }

    const CWriteReport& m_objReport;
    const CWriteRun& m_objRun;
    const CWritePlan::Rows& m_objUnmet;
};

/// What is told of: what was wanted, and what is not reported and travels along.
bool Concerns(const Row& p_objRow, const CWriteReport& p_objReport) {
    const CWritePlan::Rows objUnreported = p_objReport.m_objPlan.Unreported();
    return p_objReport.m_objWanted.IsKnown(p_objRow) ||
           std::ranges::find(objUnreported, &p_objRow) != objUnreported.end();
}

bool IsPlanned(const Row& p_objRow, const CWriteReport& p_objReport) {
    return std::ranges::find(p_objReport.m_objPlan.m_objSteps, MSettingRoute::CarriedBy(p_objRow),
                             &CWritePlan::Step::m_iCommand) !=
           p_objReport.m_objPlan.m_objSteps.end();
}

}  // namespace

namespace MWriteResults {

std::map<std::string, Result, std::less<>>
Of(const CWriteReport& p_objReport, const CWriteRun& p_objRun, const CWritePlan::Rows& p_objUnmet) {
    const Judge objJudge(p_objReport, p_objRun, p_objUnmet);
    std::map<std::string, Result, std::less<>> objResults;
    for (const Row& objRow : MSettings::All()) {
        if (!Concerns(objRow, p_objReport)) {
            continue;
        }
        objResults.emplace(objRow.m_strName, IsPlanned(objRow, p_objReport)
                                                 ? objJudge.Of(objRow)
                                                 : objJudge.OfUnsent(objRow));
    }
    return objResults;
}

std::map<std::string, Result, std::less<>> OfNone(const CWriteReport& p_objReport) {
    std::map<std::string, Result, std::less<>> objResults;
    for (const Row& objRow : MSettings::All()) {
        if (Concerns(objRow, p_objReport)) {
            objResults.emplace(objRow.m_strName,
                               IsReported(objRow) ? Result::Same : Result::Unverifiable);
        }
    }
    return objResults;
}

}  // namespace MWriteResults
