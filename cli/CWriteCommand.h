#pragma once

#include "cli/CEnvironment.h"
#include "cli/CStateJournal.h"
#include "cli/CTarget.h"
#include "cli/CWantedSettings.h"
#include "cli/ICommand.h"
#include "jobs/CWriteJob.h"
#include "jobs/CWriteReport.h"
#include "jobs/CWriteRequest.h"

#include <string>
#include <vector>

/// "write": changes settings of a printer, whole or not at all.
class CWriteCommand : public ICommand {
public:
    explicit CWriteCommand(const CEnvironment& p_objEnvironment)
        : m_objEnvironment(p_objEnvironment) {}

    void Describe(CLI::App& p_objTable) override;
    MExitCode::Code Run(COutput& p_objOutput) override;

private:
    static CWriteReport Carry(CWriteJob& p_objJob, const CWriteRequest& p_objRequest,
                              const CStateJournal& p_objJournal);
    CWriteRequest Request(const CTarget& p_objTarget, COutput& p_objOutput) const;
    void Vouch(CWantedSettings& p_objWanted, CWriteRequest& p_objRequest) const;
    CSnapshot Expected() const;
    void Tell(const CWriteReport& p_objReport, const CTarget& p_objTarget,
              COutput& p_objOutput) const;

    CEnvironment m_objEnvironment;
    std::string m_strTarget;
    std::vector<std::string> m_strWords;  // SETTING=VALUE
    std::string m_strFile;
    std::string m_strStopBitIs;
    std::string m_strExpected;
    std::string m_strHost;
    std::string m_strState;  // empty: the usual folder
    bool m_bAllowLinkChange = false;
    bool m_bCheckOnly = false;
    double m_dReach = 60;
    double m_dPause = 1;
};
