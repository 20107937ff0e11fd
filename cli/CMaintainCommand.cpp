#include "cli/CMaintainCommand.h"

#include "cli/CProgress.h"
#include "cli/MArgumentKind.h"
#include "cli/MFailureText.h"
#include "cli/MSharedOptions.h"
#include "cli/MStatusText.h"
#include "protocol/MStatus.h"

#include <CLI/CLI.hpp>

namespace {

using Json = nlohmann::ordered_json;
using MMaintenance::Field;
using MMaintenance::Function;

constexpr const char* Examples = R"(Examples:
  varden maintain lan:192.168.10.20 head-check
  varden maintain usb ram-clear mode=parameter destination=ja
  varden maintain usb test-print pattern=barcode issue-count=3 --yes

The exit code is 0 when the printer's status afterwards is no error.)";

constexpr const char* HelpHint = "varden maintain --help shows the functions and what they take";

std::string Joined(const std::vector<std::string>& p_strProblems) {
    std::string strJoined;
    for (const std::string& strProblem : p_strProblems) {
        strJoined += (strJoined.empty() ? "" : "; ") + strProblem;
    }
    return strJoined;
}

/// True when the printer has not done what it was asked for, or nobody knows.
bool IsBad(const CStatusReport& p_objReport) {
    return !p_objReport.m_objFailure.IsNone() || MStatus::IsError(p_objReport.m_strCode);
}

bool AsksForStatus(const Function& p_objFunction, const CTarget& p_objTarget) {
    return p_objFunction.m_iAsks == Function::Asks::Always ||
           (p_objFunction.m_iAsks == Function::Asks::OnUsb &&
            p_objTarget.m_iLink == CTarget::Link::Usb);
}

Json FieldsJson(const Function& p_objFunction, const MMaintenance::Values& p_iValues) {
    Json objJson = Json::object();
    for (std::size_t i = 0; i < p_iValues.size(); ++i) {
        const Field& objField = p_objFunction.m_objFields[i];
        const std::string strText = MMaintenance::Text(objField, p_iValues[i]);
        Json& objValue = objJson[std::string(objField.m_strName)];
        if (MMaintenance::NamesOf(objField).empty()) {
            objValue = p_iValues[i];
        } else {
            objValue = strText.empty() ? Json(nullptr) : Json(strText);
        }
    }
    return objJson;
}

}  // namespace

void CMaintainCommand::Describe(CLI::App& p_objTable) {
    p_objTable.add_option("TARGET", m_strTarget, "The printer.")
        ->required()
        ->type_name(MArgumentKind::Target);
    p_objTable.add_option("FUNCTION", m_strFunction, "What it is to do; see below.")
        ->required()
        ->type_name(MArgumentKind::Function);
    p_objTable.add_option("FIELD", m_strFields, "What the function takes, each as NAME=VALUE.")
        ->type_name(MArgumentKind::Field);
    p_objTable.add_flag("--yes", m_bYes,
                        "Does without asking what changes something in the printer or uses up "
                        "labels.");
    MSharedOptions::AddState(p_objTable, m_strState);
    p_objTable.footer(MMaintenance::HelpText() + "\n" + Examples);
}

MExitCode::Code CMaintainCommand::Run(COutput& p_objOutput) {
    const Wanted objWanted = Check();
    Tell(objWanted, {}, p_objOutput);
    Confirm(objWanted);
    const Guard objGuard = Take(objWanted, p_objOutput);
    const CStatusReport objReport = Do(objWanted, p_objOutput);
    Tell(objWanted, objReport, p_objOutput);
    CheckReport(objWanted, objReport);
    return MExitCode::Done;
}

CMaintainCommand::Wanted CMaintainCommand::Check() const {
    Wanted objWanted{{}, MMaintenance::Find(m_strFunction), {}};
    std::vector<std::string> strProblems;
    if (objWanted.m_objFunction == nullptr) {
        strProblems.push_back("there is no function \"" + m_strFunction + "\"");
    } else {
        objWanted.m_iValues =
            MMaintenance::Read(*objWanted.m_objFunction, m_strFields, strProblems);
    }
    try {
        objWanted.m_objTarget = CTarget::Parse(m_strTarget);
    } catch (const CCommandError& objError) {
        if (strProblems.empty()) {
            throw;
        }
        strProblems.insert(strProblems.begin(), objError.Words().m_strWhat);
    }
    if (!strProblems.empty()) {
        throw CCommandError(MExitCode::Wrong, {"This is no command line of varden maintain",
                                               Joined(strProblems), m_strTarget, HelpHint});
    }
    return objWanted;
}

/// What changes something in a printer is kept apart from a change of its settings that is under
/// way, or was left in the middle.
CMaintainCommand::Guard CMaintainCommand::Take(const Wanted& p_objWanted,
                                               COutput& p_objOutput) const {
    if (!p_objWanted.m_objFunction->m_bConfirm) {
        return {};
    }
    Guard objGuard{m_fnState(m_strState), nullptr};
    const std::string strKey =
        CStateJournal::KeyOf(*objGuard.m_objStore, p_objWanted.m_objTarget, m_objPrinters);
    objGuard.m_objJournal = std::make_unique<CStateJournal>(
        *objGuard.m_objStore, p_objOutput, p_objWanted.m_objTarget, strKey, "maintain");
    objGuard.m_objJournal->CheckNoneOpen();
    return objGuard;
}

std::string CMaintainCommand::AsTyped() const {
    std::string strTyped = m_strFunction;
    for (const std::string& strField : m_strFields) {
        strTyped += " " + strField;
    }
    return strTyped;
}

void CMaintainCommand::Confirm(const Wanted& p_objWanted) {
    if (m_bYes || !p_objWanted.m_objFunction->m_bConfirm) {
        return;
    }
    CCommandError::Texts objTexts{m_strFunction + " was not confirmed",
                                  "nobody can be asked: standard input and standard error are no "
                                  "terminal",
                                  m_strTarget, "--yes does without asking"};
    if (m_objTerminal.CanAsk()) {
        const std::optional<std::string> strTyped = m_objTerminal.Ask(
            AsTyped() + " " + std::string(p_objWanted.m_objFunction->m_strMeaning) + " " +
            m_strTarget + ". Type \"" + m_strFunction + "\" to have it done: ");
        if (strTyped == m_strFunction) {
            return;
        }
        objTexts.m_strCause = "something else was typed";
    }
    throw CCommandError(MExitCode::Wrong, objTexts);
}

CStatusReport CMaintainCommand::Do(const Wanted& p_objWanted, COutput& p_objOutput) {
    const Function& objFunction = *p_objWanted.m_objFunction;
    CProgress objProgress(p_objWanted.m_objTarget, p_objOutput);
    const std::unique_ptr<IPrinter> objPrinter = m_objPrinters.Connect(
        p_objWanted.m_objTarget, IPrinterConnector::DefaultPause, objProgress);
    CStatusReport objReport = Send(*objPrinter, objFunction.m_fnCommands(p_objWanted.m_iValues));
    if (IsBad(objReport) || !AsksForStatus(objFunction, p_objWanted.m_objTarget)) {
        return objReport;
    }
    p_objOutput.ShowProgress(m_strTarget + ": waiting for the end of " + m_strFunction + " ...");
    m_objPrinters.Wait(objFunction.m_dPause);
    objReport = objPrinter->Status();
    objReport.m_bSent = true;
    return objReport;
}

CStatusReport CMaintainCommand::Send(IPrinter& p_objPrinter,
                                     const std::vector<std::string>& p_strCommands) {
    CStatusReport objWorst;
    bool bSent = false;
    for (const std::string& strCommand : p_strCommands) {
        const CStatusReport objReport = p_objPrinter.Send(strCommand);
        bSent |= objReport.m_bSent;
        // A pass that has failed does not keep the printer from the next one, unless nobody is
        // there.
        if (strCommand == p_strCommands.front() || !IsBad(objWorst)) {
            objWorst = objReport;
        }
        if (!bSent) {
            break;
        }
    }
    objWorst.m_bSent = bSent;
    return objWorst;
}

void CMaintainCommand::Tell(const Wanted& p_objWanted, const CStatusReport& p_objReport,
                            COutput& p_objOutput) const {
    Json& objJson = p_objOutput.Json();
    objJson["target"] = m_strTarget;
    objJson["function"] = m_strFunction;
    objJson["fields"] = FieldsJson(*p_objWanted.m_objFunction, p_objWanted.m_iValues);
    objJson["commands"] = p_objWanted.m_objFunction->m_fnCommands(p_objWanted.m_iValues);
    objJson["sent"] = p_objReport.m_bSent;
    MStatusText::Put(p_objReport, objJson);
    if (!p_objReport.m_strCode.empty()) {
        p_objOutput.Say(MStatusText::Line(p_objReport));
    }
}

void CMaintainCommand::CheckReport(const Wanted& p_objWanted,
                                   const CStatusReport& p_objReport) const {
    if (!p_objReport.m_objFailure.IsNone()) {
        throw MFailureText::Of(p_objReport.m_objFailure, p_objReport.m_bSent,
                               p_objWanted.m_objTarget, m_objAccess);
    }
    if (MStatus::IsError(p_objReport.m_strCode)) {
        throw CCommandError(
            MExitCode::Failed,
            {m_strTarget + " reports an error",
             "its status after " + m_strFunction + " is " + MStatusText::Line(p_objReport),
             m_strTarget, "varden status " + m_strTarget + " asks again"});
    }
}
