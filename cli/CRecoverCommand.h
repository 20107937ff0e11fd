#pragma once

#include "cli/CCommandError.h"
#include "cli/CEnvironment.h"
#include "cli/CStateJournal.h"
#include "cli/CTarget.h"
#include "cli/ICommand.h"
#include "jobs/CWriteReport.h"

#include <optional>
#include <string>

/// "recover": what became of changes that were begun and not ended, and how to end them.
class CRecoverCommand : public ICommand {
public:
    explicit CRecoverCommand(const CEnvironment& p_objEnvironment)
        : m_objEnvironment(p_objEnvironment) {}

    void Describe(CLI::App& p_objTable) override;
    MExitCode::Code Run(COutput& p_objOutput) override;

private:
    MExitCode::Code List(IStateStore& p_objStore, COutput& p_objOutput) const;
    MExitCode::Code One(IStateStore& p_objStore, COutput& p_objOutput) const;
    /// What has come of it; and why there was no printer in the end, where that can be told.
    struct Done {
        CWriteReport m_objReport;
        std::optional<CCommandError> m_objRefusal;
    };

    Done Do(const CJournalRecord& p_objRecord, CStateJournal& p_objJournal,
            COutput& p_objOutput) const;
    MExitCode::Code End(const Done& p_objDone, CStateJournal& p_objJournal,
                        COutput& p_objOutput) const;
    [[nodiscard]] const std::string& Way() const {
        return m_strVia.empty() ? m_strTarget : m_strVia;
    }

    CEnvironment m_objEnvironment;
    std::string m_strTarget;  // empty: all are listed
    std::string m_strVia;     // empty: over the target's own link
    std::string m_strState;   // empty: the usual folder
    bool m_bRestore = false;
    bool m_bKeep = false;
    bool m_bUnseen = false;
    double m_dReach = 60;
    double m_dPause = 1;
};
