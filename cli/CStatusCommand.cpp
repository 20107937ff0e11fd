#include "cli/CStatusCommand.h"

#include "cli/CProgress.h"
#include "cli/MArgumentKind.h"
#include "cli/MFailureText.h"
#include "cli/MMetrics.h"
#include "cli/MSettingsFile.h"
#include "cli/MStatusText.h"

#include <CLI/CLI.hpp>

namespace {

using Json = nlohmann::ordered_json;

constexpr const char* Examples = R"(Examples:
  varden status lan:192.168.10.20
  varden status usb --json
  varden status lan:hall-3 --prometheus /var/lib/node_exporter/hall-3.prom

The exit code is 0 whatever the status is. The node exporter's collector takes
files whose names end with .prom; the file is written all or nothing, and also
when the printer cannot be reached.)";

}  // namespace

void CStatusCommand::Describe(CLI::App& p_objTable) {
    p_objTable.add_option("TARGET", m_strTarget, "The printer.")
        ->required()
        ->type_name(MArgumentKind::Target);
    p_objTable
        .add_option("--prometheus", m_strMetrics,
                    "Writes the status into a file for the node exporter's text-file collector.")
        ->type_name(MArgumentKind::File);
    p_objTable.footer(Examples);
}

MExitCode::Code CStatusCommand::Run(COutput& p_objOutput) {
    const CTarget objTarget = CTarget::Parse(m_strTarget);
    CStatusReport objReport;
    const std::optional<CCommandError> objFailed = Ask(objTarget, objReport, p_objOutput);
    Tell(objReport, p_objOutput);
    if (!m_strMetrics.empty()) {
        try {
            Write(objReport);
        } catch (const CCommandError& objError) {
            if (!objFailed) {
                throw;
            }
            p_objOutput.Note(objError.Words().m_strWhat);
        }
    }
    if (objFailed) {
        throw CCommandError(*objFailed);
    }
    return MExitCode::Done;
}

std::optional<CCommandError> CStatusCommand::Ask(const CTarget& p_objTarget,
                                                 CStatusReport& p_objReport, COutput& p_objOutput) {
    CProgress objProgress(p_objTarget, p_objOutput);
    try {
        p_objReport =
            m_objPrinters.Connect(p_objTarget, IPrinterConnector::DefaultPause, objProgress)
                ->Status();
    } catch (const CCommandError& objError) {
        if (objError.Code() == MExitCode::Wrong) {
            throw;
        }
        return objError;
    }
    // The blanks in front of some texts are for the window's label.
    p_objReport.m_strText.erase(0, p_objReport.m_strText.find_first_not_of(' '));
    if (p_objReport.m_objFailure.IsNone()) {
        return std::nullopt;
    }
    return MFailureText::Of(p_objReport.m_objFailure, p_objReport.m_bSent, p_objTarget,
                            m_objAccess);
}

void CStatusCommand::Tell(const CStatusReport& p_objReport, COutput& p_objOutput) const {
    const bool bAnswered = !p_objReport.m_strCode.empty();
    Json& objJson = p_objOutput.Json();
    objJson["target"] = m_strTarget;
    MStatusText::Put(p_objReport, objJson);
    objJson["seconds"] = bAnswered ? Json(p_objReport.m_dSeconds) : Json(nullptr);
    if (bAnswered) {
        p_objOutput.Say(MStatusText::Line(p_objReport));
    }
}

void CStatusCommand::Write(const CStatusReport& p_objReport) const {
    const std::unique_ptr<IFileWriter> objWriter = m_objFiles.OpenToWrite(m_strMetrics);
    const bool bWritten = objWriter && objWriter->Write(MMetrics::Text(m_strTarget, p_objReport)) &&
                          objWriter->Commit();
    if (!bWritten) {
        throw MSettingsFile::Unwritable(m_strMetrics);
    }
}
