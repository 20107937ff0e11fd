#include "cli/CReadCommand.h"

#include "cli/CProgress.h"
#include "cli/MArgumentKind.h"
#include "cli/MFailureText.h"
#include "cli/MSaving.h"
#include "cli/MSeconds.h"
#include "cli/MSettingCell.h"
#include "cli/MSettingJson.h"
#include "cli/MSettingNames.h"
#include "cli/MSharedOptions.h"
#include "cli/MWhyText.h"
#include "protocol/MAnswer.h"
#include "protocol/MSettingRoute.h"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace {

using Json = nlohmann::ordered_json;
using MSettings::Row;
using Why = CReadReport::Why;

constexpr const char* Examples = R"(Examples:
  varden read lan:192.168.10.20
  varden read com:/dev/ttyUSB0,9600,E,8,1 speed parity --json
  varden read usb --save shop.json

TARGET is lan:HOST[:PORT], com:DEVICE[,9600,E,8,1], usb, usb:BUS-PORT, or usb:
and a serial number; varden ports shows what is plugged in. Reading changes
nothing. A .dt1 or .dt2 file gets the settings that it holds; what no answer of
the printer reports has its default there, as in the window, and that is told.)";

bool IsReported(const Row& p_objRow) {
    return MSettingRoute::ReportedIn(p_objRow) != MAnswer::NoGroup;
}

Json SettingJson(const Row& p_objRow, const CReadReport& p_objReport) {
    const Why iWhy = MWhyText::Of(p_objReport, p_objRow);
    const CItemManager& objItems = p_objReport.m_objSnapshot.Items();
    const bool bValue = iWhy == Why::Known;
    return {{"value", bValue ? MSettingJson::Value(p_objRow, objItems) : Json(nullptr)},
            {"raw", MSettingJson::Raw(p_objRow, objItems)},
            {"why", bValue ? Json(nullptr) : Json(MWhyText::Word(iWhy))}};
}

std::string Cell(const Row& p_objRow, const CReadReport& p_objReport) {
    const Why iWhy = p_objReport.WhyUnknown(p_objRow);
    return iWhy == Why::Known ? MSettingCell::Text(p_objRow, p_objReport.m_objSnapshot.Items())
                              : "not known: " + std::string(MWhyText::Text(iWhy));
}

/// The names of the settings that an answer should have brought, and that have no value.
std::vector<std::string> Unread(const CReadReport& p_objReport,
                                const std::vector<const Row*>& p_objRows) {
    std::vector<std::string> strNames;
    for (const Row* const objRow : p_objRows) {
        const Why iWhy = MWhyText::Of(p_objReport, *objRow);
        if (iWhy != Why::Known && iWhy != Why::NotReported) {
            strNames.emplace_back(objRow->m_strName);
        }
    }
    return strNames;
}

/// What was asked for. An answer brings more than that.
CSnapshot Asked(const CReadReport& p_objReport, const std::vector<const Row*>& p_objRows) {
    CSnapshot objAsked;
    objAsked.Items() = p_objReport.m_objSnapshot.Items();
    for (const Row* const objRow : p_objRows) {
        if (p_objReport.m_objSnapshot.IsKnown(*objRow)) {
            objAsked.SetKnown(*objRow);
        }
    }
    return objAsked;
}

}  // namespace

void CReadCommand::Describe(CLI::App& p_objTable) {
    p_objTable.add_option("TARGET", m_strTarget, "The printer.")
        ->required()
        ->type_name(MArgumentKind::Target);
    p_objTable
        .add_option("SETTING", m_strSettings, "The settings to read; all of them unless given.")
        ->type_name(MArgumentKind::Setting);
    CLI::Option* const objSave =
        p_objTable
            .add_option("--save", m_strSave,
                        "Writes the settings into a file, of the kind that its name tells: .dt1, "
                        ".dt2 or .json; only when everything was read.")
            ->type_name(MArgumentKind::File);
    p_objTable.add_flag("--force", m_bForce, "With --save: replaces a file that is there already.")
        ->needs(objSave);
    MSharedOptions::AddPause(p_objTable, m_dPause);
    p_objTable.footer(Examples);
}

MExitCode::Code CReadCommand::Run(COutput& p_objOutput) {
    const CTarget objTarget = CTarget::Parse(m_strTarget);
    const Rows objRows = MSettingNames::Rows(m_strSettings);
    const std::chrono::milliseconds iPause = MSeconds::Pause(m_dPause);
    CheckReported(objRows, objTarget);
    if (!m_strSave.empty()) {
        CheckSave(objRows);
    }
    CProgress objProgress(objTarget, p_objOutput);
    const CReadReport objReport =
        m_objPrinters.Connect(objTarget, iPause, objProgress)->Read(objRows);
    Tell(objReport, objRows, p_objOutput);
    CheckReport(objReport, objRows, objTarget);
    if (!m_strSave.empty()) {
        MSaving::Save(m_objFiles, m_strSave, Asked(objReport, objRows), p_objOutput);
    }
    return MExitCode::Done;
}

void CReadCommand::CheckReported(const Rows& p_objRows, const CTarget& p_objTarget) const {
    const bool bAny =
        std::ranges::any_of(p_objRows, [](const Row* p_objRow) { return IsReported(*p_objRow); });
    if (!bAny) {
        throw CCommandError(MExitCode::Wrong,
                            {"There is nothing to read",
                             "no answer of a printer reports " + MSaving::Joined(m_strSettings),
                             p_objTarget.m_strText, "varden list tells what can be read"});
    }
}

void CReadCommand::CheckSave(const Rows& p_objRows) const {
    const MSettingsFile::Kind iKind = MSettingsFile::KindOf(m_strSave);
    CSnapshot objAsked;
    for (const Row& objRow : MSettings::All()) {
        const bool bAsked = std::ranges::find(p_objRows, &objRow) != p_objRows.end();
        // What no answer reports is nothing that could be asked for.
        if (bAsked || (!IsReported(objRow) && MSettingsFile::CanHold(iKind, objRow))) {
            objAsked.SetKnown(objRow);
        }
    }
    const MSaving::Fit objFit = MSaving::FitOf(iKind, objAsked);
    const std::string strHint = "name no settings, or save them as .json";
    if (!m_strSettings.empty() && !objFit.m_strLeftOut.empty()) {
        throw CCommandError(MExitCode::Wrong, {m_strSave + " cannot hold all that is asked for",
                                               "no room: " + MSaving::Joined(objFit.m_strLeftOut),
                                               m_strSave, strHint});
    }
    if (!objFit.m_strMissing.empty()) {
        throw CCommandError(MExitCode::Wrong, {m_strSave + " has to hold more than is asked for",
                                               "missing: " + MSaving::Joined(objFit.m_strMissing),
                                               m_strSave, strHint});
    }
    MSaving::CheckFree(m_strSave, m_bForce);
}

void CReadCommand::Tell(const CReadReport& p_objReport, const Rows& p_objRows,
                        COutput& p_objOutput) const {
    CTable objTable({"NAME", "LABEL", "VALUE"});
    Json& objJson = p_objOutput.Json();
    objJson["target"] = m_strTarget;
    objJson["complete"] =
        p_objReport.m_objFailure.IsNone() && Unread(p_objReport, p_objRows).empty();
    Json& objSettings = objJson["settings"] = Json::object();
    for (const Row* const objRow : p_objRows) {
        objSettings[std::string(objRow->m_strName)] = SettingJson(*objRow, p_objReport);
        objTable.Add({std::string(objRow->m_strName), std::string(objRow->m_strLabel),
                      Cell(*objRow, p_objReport)});
    }
    objJson["saved"] = nullptr;
    const bool bAnything = p_objReport.m_objFailure.IsNone() || !p_objReport.m_iAnswered.empty();
    if (m_strSave.empty() && bAnything) {
        p_objOutput.Show(objTable);
    }
}

void CReadCommand::CheckReport(const CReadReport& p_objReport, const Rows& p_objRows,
                               const CTarget& p_objTarget) const {
    if (!p_objReport.m_objFailure.IsNone()) {
        throw MFailureText::OfRead(p_objReport, p_objTarget, m_objAccess);
    }
    const std::vector<std::string> strUnread = Unread(p_objReport, p_objRows);
    if (!strUnread.empty()) {
        throw MFailureText::OfUnreadable(strUnread, p_objTarget.m_strText);
    }
}
