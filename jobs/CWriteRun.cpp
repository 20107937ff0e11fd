#include "jobs/CWriteRun.h"

#include "jobs/MWritePlan.h"
#include "model/MSettingText.h"
#include "protocol/MStatus.h"

#include <algorithm>
#include <utility>

namespace {

using Rows = CWritePlan::Rows;
using Stage = IWriteEvents::Stage;
using Step = CWritePlan::Step;

/// The one status by which a printer says that it did not carry a command out.
constexpr const char* CommandError = "06";
constexpr double BetweenTries = 1;

/// Where a printer is when a step has been undone.
CPrinterPlace Behind(const Step& p_objStep, CPrinterPlace p_objPlace,
                     const CPrinterPlace& p_objHome) {
    if (p_objStep.m_iCommand == MSettingRoute::Command::IpAddress) {
        p_objPlace.m_strHost = p_objHome.m_strHost;
    } else if (p_objStep.m_iCommand == MSettingRoute::Command::SocketPort) {
        p_objPlace.m_iPort = p_objHome.m_iPort;
    } else {
        p_objPlace.m_strLine = p_objHome.m_strLine;
    }
    return p_objPlace;
}

}  // namespace

CWriteRun::CWriteRun(const CWritePlan& p_objPlan, IPrinterWays& p_objWays,
                     IWriteEvents& p_objEvents, double p_dReach)
    : m_objPlan(p_objPlan)
    , m_objWays(p_objWays)
    , m_objEvents(p_objEvents)
    , m_dReach(p_dReach) {}

void CWriteRun::AssumeSent() {
    for (const Step& objStep : m_objPlan.m_objSteps) {
        m_iTouched.insert(objStep.m_iCommand);
    }
    m_iSent = m_objPlan.m_objSteps.size();
    m_bUnanswered = true;
    m_objPlaces = m_objPlan.Places(m_iSent);
    // Whatever was begun, most of it was not: the printer is likelier where it was.
    std::ranges::reverse(m_objPlaces);
}

bool CWriteRun::Send(CWriteReport& p_objReport) {
    std::size_t iStep = 0;
    for (const Step& objStep : m_objPlan.m_objSteps) {
        m_objEvents.OnStage(Stage::Writing, ++iStep, m_objPlan.m_objSteps.size());
        p_objReport.m_objStatus =
            SendText(CWritePlan::Text(objStep.m_iCommand, m_objPlan.m_objAfter));
        const CStatusReport& objStatus = p_objReport.m_objStatus;
        if (objStatus.m_bSent) {
            m_iTouched.insert(objStep.m_iCommand);
            ++m_iSent;
        }
        if (!objStatus.m_strCode.empty() && MStatus::IsError(objStatus.m_strCode)) {
            p_objReport.m_iWhy = CWriteReport::Why::Refused;
            if (objStatus.m_strCode == CommandError) {
                m_iRefused.insert(objStep.m_iCommand);
            } else if (objStep.m_bCuts) {
                m_objPlaces = m_objPlan.Places(iStep);  // it may have carried it out all the same
            }
            return false;
        }
        const bool bUnanswered = objStatus.m_strCode.empty();
        if (bUnanswered && !(objStep.m_bCuts && objStatus.m_bSent)) {
            p_objReport.m_iWhy = CWriteReport::Why::NotAnswered;
            return false;
        }
        if (objStep.m_bCuts) {
            m_objPlaces = m_objPlan.Places(iStep);
        }
    }
    return true;
}

bool CWriteRun::ReadUntil(Rows (CWriteRun::*p_fnDiffering)() const) {
    for (int i = 0; i < Readings; ++i) {
        if (i > 0) {
            m_objWays.Wait(BetweenReadings);
        }
        Look();
        if (!IsRead()) {
            return false;
        }
        if ((this->*p_fnDiffering)().empty()) {
            return true;
        }
        if (!Unknown().empty()) {
            return false;
        }
    }
    return false;
}

void CWriteRun::Look() {
    Read();
    for (int i = 1; i < Hearings && IsRead() && !Unknown().empty(); ++i) {
        m_objWays.Wait(BetweenReadings);
        Read();
    }
}

bool CWriteRun::Restore() {
    for (int iRound = 0; iRound < Rounds; ++iRound) {
        m_objEvents.OnStage(Stage::Restoring, 0, 0);
        Look();
        if (!IsRead()) {
            return false;
        }
        const std::vector<const Step*> objSteps = ToUndo(iRound == 0);
        if (objSteps.empty()) {
            return Unrestored().empty();
        }
        std::size_t iStep = 0;
        for (const Step* const objStep : objSteps) {
            m_objEvents.OnStage(Stage::Restoring, ++iStep, objSteps.size());
            // Whether it has worked is told by what is read afterwards, not by the answer.
            SendText(CWritePlan::Text(objStep->m_iCommand, m_objPlan.m_objBefore));
            if (objStep->m_bCuts) {
                ComeTo(Behind(*objStep, Place(), m_objPlan.m_objHome));
            }
        }
        if (ReadUntil(&CWriteRun::Unrestored) && StaysRestored()) {
            return true;
        }
        if (IsRead() && !Unknown().empty()) {
            return false;  // sending it again would not make it understood
        }
    }
    return false;
}

/// A command that went unanswered may be carried out yet.
bool CWriteRun::StaysRestored() {
    if (!m_bUnanswered) {
        return true;
    }
    m_objWays.Wait(Settling);
    Look();
    return IsRead() && Unrestored().empty();
}

bool CWriteRun::IsRead() const {
    return m_objLast.m_objFailure.IsNone() && !m_objLast.m_iAnswered.empty();
}

/// Everything that has to be as it was or as wanted.
Rows CWriteRun::Concerned() const {
    Rows objRows = m_objPlan.Reported();
    const Rows objOthers = m_objPlan.Others();
    objRows.insert(objRows.end(), objOthers.begin(), objOthers.end());
    return objRows;
}

Rows CWriteRun::Unknown() const {
    Rows objRows = Concerned();
    std::erase_if(objRows, [&](const MSettings::Row* p_objRow) { return IsKnown(p_objRow); });
    return objRows;
}

Rows CWriteRun::Unmet() const {
    Rows objRows = m_objPlan.Reported();
    std::erase_if(objRows, [&](const MSettings::Row* p_objRow) {
        return IsKnown(p_objRow) && MSettingText::Same(*p_objRow, m_objLast.m_objSnapshot.Items(),
                                                       m_objPlan.m_objAfter.Items());
    });
    return objRows;
}

Rows CWriteRun::Unrestored() const {
    Rows objRows = m_objPlan.Reported();
    std::erase_if(objRows, [&](const MSettings::Row* p_objRow) { return IsAsBefore(*p_objRow); });
    return objRows;
}

Rows CWriteRun::OthersChanged() const {
    Rows objRows = m_objPlan.Others();
    std::erase_if(objRows, [&](const MSettings::Row* p_objRow) {
        return !IsKnown(p_objRow) || IsAsBefore(*p_objRow);
    });
    return objRows;
}

bool CWriteRun::IsAsBefore(const MSettings::Row& p_objRow) const {
    return IsKnown(&p_objRow) &&
           MWritePlan::HoldSameFields(p_objRow, m_objLast.m_objSnapshot, m_objPlan.m_objBefore);
}

/// Reads everything that is concerned, at one go: a printer that has lost its
/// power in between would not be noticed otherwise. Wherever it may be, for as long as it is
/// sought.
void CWriteRun::Read() {
    const Rows objRows = Concerned();
    const double dStart = m_objWays.Now();
    while (true) {
        for (const CPrinterPlace& objPlace : std::vector(m_objPlaces)) {
            const std::unique_ptr<IPrinter> objPrinter = m_objWays.At(objPlace);
            if (!objPrinter) {
                m_objLast = {};
                m_objLast.m_objFailure.m_iKind = CFailure::Kind::UsbNotOpened;
                continue;
            }
            m_objLast = objPrinter->Read(objRows);
            if (IsRead()) {
                ComeTo(objPlace);
                Notice();
                return;
            }
        }
        if (m_objWays.Now() - dStart >= m_dReach) {
            return;
        }
        m_objWays.Wait(BetweenTries);
    }
}

/// What was changed once is seen before it is as it was again.
void CWriteRun::Notice() {
    for (const MSettings::Row* const objRow : m_objPlan.Reported()) {
        if (IsKnown(objRow) && !IsAsBefore(*objRow)) {
            m_objSeenOther.insert(objRow);
        }
    }
}

/// Sends a command. As long as certainly nothing has gone out it is tried again, wherever the
/// printer may be.
CStatusReport CWriteRun::SendText(const std::string& p_strText) {
    const double dStart = m_objWays.Now();
    while (true) {
        CStatusReport objReport;
        objReport.m_objFailure.m_iKind = CFailure::Kind::UsbNotOpened;
        for (const CPrinterPlace& objPlace : std::vector(m_objPlaces)) {
            if (const std::unique_ptr<IPrinter> objPrinter = m_objWays.At(objPlace)) {
                objReport = objPrinter->Send(p_strText);
            }
            if (objReport.m_bSent) {
                m_bUnanswered = m_bUnanswered || objReport.m_strCode.empty();
                ComeTo(objPlace);
                return objReport;
            }
        }
        if (m_objWays.Now() - dStart >= m_dReach) {
            return objReport;
        }
        m_objWays.Wait(BetweenTries);
    }
}

/// From now on the printer is looked for there first.
void CWriteRun::ComeTo(CPrinterPlace p_objPlace) {
    std::erase(m_objPlaces, p_objPlace);
    m_objPlaces.insert(m_objPlaces.begin(), std::move(p_objPlace));
}

/// What has to be sent so that the printer is as it was: what it reports otherwise, and at first
/// whatever it may have taken.
std::vector<const Step*> CWriteRun::ToUndo(bool p_bFirst) const {
    const Rows objDiffering = Unrestored();
    std::vector<const Step*> objSteps;
    for (const Step& objStep : m_objPlan.m_objSteps) {
        const bool bDiffers =
            std::ranges::any_of(objDiffering, [&](const MSettings::Row* p_objRow) {
                return MSettingRoute::CarriedBy(*p_objRow) == objStep.m_iCommand;
            });
        if (HasSent(objStep.m_iCommand) &&
            (bDiffers || (p_bFirst && !HasRefused(objStep.m_iCommand)))) {
            objSteps.push_back(&objStep);
        }
    }
    return objSteps;
}
