#pragma once

#include "cli/CEnvironment.h"
#include "cli/CTarget.h"
#include "cli/ICommand.h"

#include <string>
#include <vector>

/// "read": reads settings from a printer, shows them, saves them.
class CReadCommand : public ICommand {
public:
    explicit CReadCommand(const CEnvironment& p_objEnvironment)
        : m_objFiles(p_objEnvironment.m_objFiles)
        , m_objPrinters(p_objEnvironment.m_objPrinters)
        , m_objAccess(p_objEnvironment.m_objAccess) {}

    void Describe(CLI::App& p_objTable) override;
    MExitCode::Code Run(COutput& p_objOutput) override;

private:
    using Rows = std::vector<const MSettings::Row*>;

    void CheckReported(const Rows& p_objRows, const CTarget& p_objTarget) const;
    void CheckSave(const Rows& p_objRows) const;
    void Tell(const CReadReport& p_objReport, const Rows& p_objRows, COutput& p_objOutput) const;
    void CheckReport(const CReadReport& p_objReport, const Rows& p_objRows,
                     const CTarget& p_objTarget) const;

    IFileStore& m_objFiles;
    IPrinterConnector& m_objPrinters;
    const IDeviceAccess& m_objAccess;
    std::string m_strTarget;
    std::vector<std::string> m_strSettings;  // empty: all
    std::string m_strSave;                   // empty: not to be saved
    bool m_bForce = false;
    double m_dPause = 1;
};
