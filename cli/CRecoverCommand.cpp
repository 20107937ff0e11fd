#include "cli/CRecoverCommand.h"

#include "cli/CProgress.h"
#include "cli/CTargetWays.h"
#include "cli/MArgumentKind.h"
#include "cli/MJournalJson.h"
#include "cli/MSeconds.h"
#include "cli/MSharedOptions.h"
#include "cli/MWriteJson.h"
#include "cli/MWriteText.h"
#include "jobs/CWriteJob.h"

#include <CLI/CLI.hpp>

namespace {

using Json = nlohmann::ordered_json;
using Report = CWriteReport;

constexpr const char* Examples = R"(Examples:
  varden recover
  varden recover lan:192.168.10.20
  varden recover lan:192.168.10.20 --restore
  varden recover lan:192.168.10.20 --restore --via usb

Without TARGET it lists the changes that were begun and not ended. With it the
printer is read, and it is told how it stands: as it was, as wanted, or neither.
--restore brings back what was, --keep leaves the printer as it is; both read it
at the end, and remove the journal only then.)";

/// How the printer stands, for people.
const char* Standing(const Report& p_objReport) {
    switch (p_objReport.m_iEnd) {
    case Report::End::Changed:
        return "The printer is as it was wanted";
    case Report::End::Undone:
        return "The printer is as it was before";
    default:
        return "The printer is neither as it was before nor as it was wanted";
    }
}

/// It has told everything that it has to be known of.
bool IsSeen(const Report& p_objReport) {
    return p_objReport.m_iWhy != Report::Why::NotReadBack &&
           p_objReport.m_iWhy != Report::Why::NotUnderstood;
}

/// The printer is where the other way leads, wherever the change has taken it; over the network it
/// leaves from there for where it was.
void GoAnotherWay(CWritePlan& p_objPlan, const CTarget& p_objBegun, const CTarget& p_objWay) {
    const bool bLan =
        p_objBegun.m_iLink == CTarget::Link::Lan && p_objWay.m_iLink == CTarget::Link::Lan;
    for (CWritePlan::Step& objStep : p_objPlan.m_objSteps) {
        objStep.m_bCuts = objStep.m_bCuts && bLan;
        objStep.m_objPlace = {};
    }
    if (bLan) {
        p_objPlan.m_objHome = {p_objBegun.m_strHost, p_objBegun.m_iPort, {}};
    }
}

}  // namespace

void CRecoverCommand::Describe(CLI::App& p_objTable) {
    p_objTable
        .add_option("TARGET", m_strTarget,
                    "The printer, as it was named when the change was begun; all unless given.")
        ->type_name(MArgumentKind::Target);
    CLI::Option* const objRestore = p_objTable.add_flag(
        "--restore", m_bRestore, "Brings back what was before the change, and verifies it.");
    CLI::Option* const objKeep =
        p_objTable.add_flag("--keep", m_bKeep, "Leaves the printer as it is.");
    objRestore->excludes(objKeep);
    p_objTable
        .add_flag("--unseen", m_bUnseen,
                  "With --keep: also when the printer cannot be read or understood, or is gone.")
        ->needs(objKeep);
    p_objTable.add_option("--via", m_strVia, "The same printer over another link, such as usb.")
        ->type_name(MArgumentKind::Target);
    MSharedOptions::AddReach(p_objTable, m_dReach);
    MSharedOptions::AddPause(p_objTable, m_dPause);
    MSharedOptions::AddState(p_objTable, m_strState);
    p_objTable.footer(Examples);
}

MExitCode::Code CRecoverCommand::Run(COutput& p_objOutput) {
    const std::unique_ptr<IStateStore> objStore = m_objEnvironment.m_fnState(m_strState);
    if (!m_strTarget.empty()) {
        return One(*objStore, p_objOutput);
    }
    if (m_bRestore || m_bKeep || !m_strVia.empty()) {
        throw CCommandError(MExitCode::Wrong, {"The printer is missing",
                                               "these options are for one printer",
                                               {},
                                               "varden recover lists those with a journal"});
    }
    return List(*objStore, p_objOutput);
}

MExitCode::Code CRecoverCommand::List(IStateStore& p_objStore, COutput& p_objOutput) const {
    CTable objTable({"TARGET", "BEGUN", "JOURNAL"});
    Json& objJournals = p_objOutput.Json()["journals"] = Json::array();
    for (const std::string& strName : p_objStore.Names(CStateJournal::End)) {
        const auto strBytes = p_objStore.Read(strName);
        const auto objRecord = strBytes ? MJournalJson::Read(*strBytes) : std::nullopt;
        const std::string strPath = p_objStore.Path(strName);
        objJournals.push_back(
            {{"target", objRecord ? Json(objRecord->m_strTarget) : Json(nullptr)},
             {"started", objRecord ? Json(objRecord->m_strStarted) : Json(nullptr)},
             {"journal", strPath}});
        objTable.Add({objRecord ? objRecord->m_strTarget : "not known",
                      objRecord ? objRecord->m_strStarted : "not known", strPath});
    }
    if (objTable.IsEmpty()) {
        p_objOutput.Say("No change is open");
    } else {
        p_objOutput.Show(objTable);
    }
    return MExitCode::Done;
}

MExitCode::Code CRecoverCommand::One(IStateStore& p_objStore, COutput& p_objOutput) const {
    const CTarget objTarget = CTarget::Parse(m_strTarget);
    CTarget::Parse(Way());
    MSeconds::Pause(m_dPause);
    MSeconds::Reach(m_dReach);
    Json& objJson = p_objOutput.Json();
    objJson["target"] = m_strTarget;
    const std::string strKey =
        CStateJournal::KeyOf(p_objStore, objTarget, m_objEnvironment.m_objPrinters);
    CStateJournal objJournal(p_objStore, p_objOutput, objTarget, strKey, "recover");
    const std::optional<CJournalRecord> objRecord = objJournal.Record();
    if (!objRecord) {
        objJson["journal"] = nullptr;
        p_objOutput.Say("No change of " + m_strTarget + " is open");
        if (!p_objStore.Names(CStateJournal::End).empty()) {
            p_objOutput.Note("changes of other printers are: varden recover lists them");
        }
        return MExitCode::Done;
    }
    objJson["started"] = objRecord->m_strStarted;
    const Done objDone = Do(*objRecord, objJournal, p_objOutput);
    const CWriteReport& objReport = objDone.m_objReport;
    MWriteJson::Fill(objReport, objJson);
    if (objReport.m_iWhy != Report::Why::NotReadBack) {
        p_objOutput.Show(MWriteJson::Table(objReport));
    }
    if (IsSeen(objReport)) {
        p_objOutput.Say(Standing(objReport));
    }
    return End(objDone, objJournal, p_objOutput);
}

CRecoverCommand::Done CRecoverCommand::Do(const CJournalRecord& p_objRecord,
                                          CStateJournal& p_objJournal, COutput& p_objOutput) const {
    const CTarget objWay = CTarget::Parse(Way());
    CWritePlan objPlan = p_objRecord.m_objPlan;
    if (!m_strVia.empty()) {
        GoAnotherWay(objPlan, CTarget::Parse(m_strTarget), objWay);
    }
    CProgress objProgress(objWay, p_objOutput);
    CTargetWays objWays(objWay, MSeconds::Pause(m_dPause), m_objEnvironment.m_objPrinters,
                        objProgress, CTargetWays::First::MayBeAway);
    CWriteJob objJob(objWays, p_objJournal, objProgress);
    const Report objReport =
        m_bRestore ? objJob.Restore(objPlan, m_dReach) : objJob.Look(objPlan, m_dReach);
    return {objReport, objWays.Refusal()};
}

MExitCode::Code CRecoverCommand::End(const Done& p_objDone, CStateJournal& p_objJournal,
                                     COutput& p_objOutput) const {
    const bool bSeen = IsSeen(p_objDone.m_objReport);
    if (m_bKeep && (bSeen || m_bUnseen) && !p_objJournal.Close()) {
        throw CCommandError(MExitCode::PersonNeeded,
                            {p_objJournal.Path() + " cannot be removed", {}, m_strTarget, {}});
    }
    const bool bOpen = p_objJournal.IsOpen();
    p_objOutput.Json()["journal"] = bOpen ? Json(p_objJournal.Path()) : Json(nullptr);
    if (!bOpen) {
        p_objOutput.Say("The journal is removed");
        return MExitCode::Done;
    }
    if (bSeen && !m_bRestore) {
        p_objOutput.Say("The journal is " + p_objJournal.Path());
        return MExitCode::Different;
    }
    CWriteReport objReport = p_objDone.m_objReport;
    objReport.m_iEnd = Report::End::PersonNeeded;
    throw CCommandError(*MWriteText::Error(objReport, CTarget::Parse(m_strTarget),
                                           p_objJournal.Path(), m_objEnvironment.m_objAccess,
                                           p_objDone.m_objRefusal));
}
