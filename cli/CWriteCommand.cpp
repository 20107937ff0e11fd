#include "cli/CWriteCommand.h"

#include "cli/CProgress.h"
#include "cli/CStateJournal.h"
#include "cli/CTargetWays.h"
#include "cli/MArgumentKind.h"
#include "cli/MSaving.h"
#include "cli/MSeconds.h"
#include "cli/MSettingsFile.h"
#include "cli/MSharedOptions.h"
#include "cli/MUtf8.h"
#include "cli/MWriteJson.h"
#include "cli/MWriteText.h"
#include "jobs/CWriteJob.h"
#include "protocol/MSettingRoute.h"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace {

using End = CWriteReport::End;
using Json = nlohmann::ordered_json;
using MSettings::Row;

constexpr const char* StopBit = "stop-bit";

constexpr const char* Examples = R"(Examples:
  varden write lan:192.168.10.20 feed-adj=-1.5 --check
  varden write usb --file shop.json
  varden write com:/dev/ttyUSB0 speed=19200bps stop-bit=1bit --allow-link-change
  varden write lan:192.168.10.20 ip-address=192.168.10.77 --allow-link-change

The printer is read before and afterwards; only what differs is sent. When
anything fails, what was is brought back. A change that could be neither
ended nor undone leaves a journal, and varden recover goes on from there.)";

/// The stop bits of a serial line, as the setting of the printer.
std::string StopBitOf(const CTarget& p_objTarget) {
    const std::string& strLine = p_objTarget.m_strLine;
    return strLine.ends_with('2') ? "2bits" : "1bit";
}

MSettings::Cuts LinkOf(const CTarget& p_objTarget) {
    switch (p_objTarget.m_iLink) {
    case CTarget::Link::Lan:
        return MSettings::Cuts::Lan;
    case CTarget::Link::Com:
        return MSettings::Cuts::Serial;
    case CTarget::Link::Usb:
        break;
    }
    return MSettings::Cuts::Nothing;
}

/// Everything that is wrong, at once.
void Refuse(const CWantedSettings& p_objWanted, const CTarget& p_objTarget, COutput& p_objOutput) {
    std::string strCause;
    Json& objProblems = p_objOutput.Json()["problems"] = Json::array();
    for (const CFileProblem& objProblem : p_objWanted.Problems()) {
        strCause += (strCause.empty() ? "" : "; ") + objProblem.Text();
        objProblems.push_back(
            {{"setting", objProblem.m_strSetting}, {"reason", objProblem.m_strReason}});
    }
    throw CCommandError(MExitCode::Wrong, {"Nothing was sent to " + p_objTarget.m_strText, strCause,
                                           p_objTarget.m_strText, "varden list tells the values"});
}

}  // namespace

void CWriteCommand::Describe(CLI::App& p_objTable) {
    p_objTable.add_option("TARGET", m_strTarget, "The printer.")
        ->required()
        ->type_name(MArgumentKind::Target);
    p_objTable.add_option("SETTING=VALUE", m_strWords, "What the printer is to have.")
        ->type_name(MArgumentKind::Assignment);
    p_objTable
        .add_option("--file", m_strFile,
                    "Takes what is wanted from a settings file; what is named besides counts more.")
        ->type_name(MArgumentKind::File);
    p_objTable.add_flag("--check", m_bCheckOnly,
                        "Changes nothing, and tells what would be; exit code 4 when anything "
                        "would.");
    p_objTable.add_flag("--allow-link-change", m_bAllowLinkChange,
                        "Also changes what the link in use stands on.");
    p_objTable
        .add_option("--stop-bit-is", m_strStopBitIs,
                    "What the printer has as its stop-bit, which it does not report: it is sent "
                    "along unless another is wanted.")
        ->type_name(MArgumentKind::StopBit);
    p_objTable
        .add_option("--if-unchanged", m_strExpected,
                    "Only when the printer is as this settings file says.")
        ->type_name(MArgumentKind::File);
    p_objTable
        .add_option("--expect-host", m_strHost, "Only when the printer's host name is this one.")
        ->type_name(MArgumentKind::Name);
    MSharedOptions::AddReach(p_objTable, m_dReach);
    MSharedOptions::AddPause(p_objTable, m_dPause);
    MSharedOptions::AddState(p_objTable, m_strState);
    p_objTable.footer(Examples);
}

MExitCode::Code CWriteCommand::Run(COutput& p_objOutput) {
    const CTarget objTarget = CTarget::Parse(m_strTarget);
    const std::chrono::milliseconds iPause = MSeconds::Pause(m_dPause);
    const CWriteRequest objRequest = Request(objTarget, p_objOutput);
    const std::unique_ptr<IStateStore> objStore = m_objEnvironment.m_fnState(m_strState);
    CStateJournal objJournal(
        *objStore, p_objOutput, objTarget,
        CStateJournal::KeyOf(*objStore, objTarget, m_objEnvironment.m_objPrinters), "write");
    p_objOutput.Json()["journal"] = objJournal.IsOpen() ? Json(objJournal.Path()) : Json(nullptr);
    objJournal.CheckNoneOpen();
    CProgress objProgress(objTarget, p_objOutput);
    CTargetWays objWays(objTarget, iPause, m_objEnvironment.m_objPrinters, objProgress);
    CWriteJob objJob(objWays, objJournal, objProgress);
    const CWriteReport objReport = Carry(objJob, objRequest, objJournal);
    Tell(objReport, objTarget, p_objOutput);
    p_objOutput.Json()["journal"] = objJournal.IsOpen() ? Json(objJournal.Path()) : Json(nullptr);
    if (const auto objError = MWriteText::Error(objReport, objTarget, objJournal.Path(),
                                                m_objEnvironment.m_objAccess)) {
        throw CCommandError(*objError);
    }
    return objReport.m_iEnd == End::WouldChange ? MExitCode::Different : MExitCode::Done;
}

/// Whatever ends it, a journal that stands is told.
CWriteReport CWriteCommand::Carry(CWriteJob& p_objJob, const CWriteRequest& p_objRequest,
                                  const CStateJournal& p_objJournal) {
    try {
        return p_objJob.Run(p_objRequest);
    } catch (const CCommandError&) {
        throw;
    } catch (const std::exception& objError) {
        if (p_objJournal.IsOpen()) {
            throw CCommandError(MExitCode::PersonNeeded, {"The change was broken off",
                                                          objError.what(),
                                                          {},
                                                          "the journal is " + p_objJournal.Path()});
        }
        throw;
    }
}

/// Everything that is asked for, checked before a printer is made of the target.
CWriteRequest CWriteCommand::Request(const CTarget& p_objTarget, COutput& p_objOutput) const {
    CWriteRequest objRequest;
    CWantedSettings objWanted;
    if (!m_strFile.empty()) {
        try {
            objWanted.TakeFile(m_objEnvironment.m_objFiles, m_strFile);
        } catch (const CCommandError& objError) {
            objWanted.Add("", objError.Words().m_strWhat +
                                  (objError.Words().m_strCause.empty() ? "" : ": ") +
                                  objError.Words().m_strCause);
        }
    }
    objWanted.TakeWords(m_strWords);
    Vouch(objWanted, objRequest);
    if (objWanted.Problems().empty() && objWanted.IsEmpty()) {
        objWanted.Add("", "no setting is named that a printer can be told");
    }
    p_objOutput.Json()["target"] = m_strTarget;
    p_objOutput.Json()["left_out"] = objWanted.LeftOut();
    if (!objWanted.Problems().empty()) {
        Refuse(objWanted, p_objTarget, p_objOutput);
    }
    if (!objWanted.LeftOut().empty()) {
        p_objOutput.Note("not sent, for a printer only reports it: " +
                         MSaving::Joined(objWanted.LeftOut()));
    }
    objRequest.m_objWanted = objWanted.Wanted();
    objRequest.m_iLink = LinkOf(p_objTarget);
    if (p_objTarget.m_iLink == CTarget::Link::Com) {
        objRequest.m_objLinkStands = objWanted.Value(StopBit, StopBitOf(p_objTarget));
    }
    objRequest.m_bAllowLinkChange = m_bAllowLinkChange;
    objRequest.m_bCheckOnly = m_bCheckOnly;
    objRequest.m_objExpected = Expected();
    objRequest.m_strExpectedHost = MUtf8::ToLatin1(m_strHost).value_or("\xFF");
    objRequest.m_dReach = MSeconds::Reach(m_dReach);
    return objRequest;
}

/// What is said of the setting that no answer reports. Without another one of its command it could
/// not even be told whether it has to be sent.
void CWriteCommand::Vouch(CWantedSettings& p_objWanted, CWriteRequest& p_objRequest) const {
    const Row& objStopBit = MSettings::Get(StopBit);
    if (!m_strStopBitIs.empty()) {
        p_objRequest.m_objVouched = p_objWanted.Value(StopBit, m_strStopBitIs);
        return;
    }
    const bool bAlone =
        p_objWanted.Wanted().IsKnown(objStopBit) &&
        std::ranges::none_of(MSettings::All(), [&](const Row& p_objRow) {
            return &p_objRow != &objStopBit && p_objWanted.Wanted().IsKnown(p_objRow) &&
                   MSettingRoute::CarriedBy(p_objRow) == MSettingRoute::CarriedBy(objStopBit);
        });
    if (bAlone) {
        p_objWanted.Add(StopBit, "the printer does not report it, so nobody knows whether it has "
                                 "to be changed; say what it is now with --stop-bit-is");
    }
}

CSnapshot CWriteCommand::Expected() const {
    if (m_strExpected.empty()) {
        return {};
    }
    const CFileContent objContent = MSettingsFile::Read(m_objEnvironment.m_objFiles, m_strExpected);
    if (!objContent.m_objProblems.empty()) {
        throw objContent.Error(m_strExpected);
    }
    return objContent.m_objSnapshot;
}

void CWriteCommand::Tell(const CWriteReport& p_objReport, const CTarget& p_objTarget,
                         COutput& p_objOutput) const {
    MWriteJson::Fill(p_objReport, p_objOutput.Json());
    const bool bMoved = p_objReport.m_iEnd == End::Changed && !p_objReport.m_objPlace.IsTargets();
    const std::string strPlace = p_objTarget.At(p_objReport.m_objPlace).m_strText;
    p_objOutput.Json()["moved_to"] = bMoved ? Json(strPlace) : Json(nullptr);
    const CTable objTable = MWriteJson::Table(p_objReport);
    if (p_objReport.m_iEnd == End::NotBegun) {
        return;
    }
    p_objOutput.Show(objTable);
    const Row& objStopBit = MSettings::Get(StopBit);
    const bool bUnsent =
        p_objReport.m_objWanted.IsKnown(objStopBit) && p_objReport.m_objPlan.Unreported().empty();
    if (bUnsent && m_strStopBitIs.empty()) {
        p_objOutput.Note("stop-bit is not sent: nothing else of its command changes, and the "
                         "printer does not report it; --stop-bit-is tells what it is now");
    }
    if (p_objReport.m_iEnd == End::Unchanged) {
        p_objOutput.Say("Nothing had to be changed");
    } else if (bMoved) {
        p_objOutput.Say("The printer is " + strPlace + " now");
    }
}
