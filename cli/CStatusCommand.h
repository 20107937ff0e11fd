#pragma once

#include "cli/CEnvironment.h"
#include "cli/CTarget.h"
#include "cli/ICommand.h"

#include <optional>
#include <string>

/// "status": asks a printer for its status, and tells a monitoring system of it.
class CStatusCommand : public ICommand {
public:
    explicit CStatusCommand(const CEnvironment& p_objEnvironment)
        : m_objFiles(p_objEnvironment.m_objFiles)
        , m_objPrinters(p_objEnvironment.m_objPrinters)
        , m_objAccess(p_objEnvironment.m_objAccess) {}

    void Describe(CLI::App& p_objTable) override;
    MExitCode::Code Run(COutput& p_objOutput) override;

private:
    std::optional<CCommandError> Ask(const CTarget& p_objTarget, CStatusReport& p_objReport,
                                     COutput& p_objOutput);
    void Tell(const CStatusReport& p_objReport, COutput& p_objOutput) const;
    void Write(const CStatusReport& p_objReport) const;

    IFileStore& m_objFiles;
    IPrinterConnector& m_objPrinters;
    const IDeviceAccess& m_objAccess;
    std::string m_strTarget;
    std::string m_strMetrics;  // empty: none to be written
};
