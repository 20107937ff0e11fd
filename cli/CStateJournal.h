#pragma once

#include "cli/CJournalRecord.h"
#include "cli/COutput.h"
#include "cli/CTarget.h"
#include "cli/IPrinterConnector.h"
#include "jobs/IWriteJournal.h"
#include "platform/IStateStore.h"

#include <memory>
#include <optional>
#include <string>

/// The journal of one printer in the state folder, and the right to change the printer: one program
/// has it at a time.
class CStateJournal : public IWriteJournal {
public:
    /// What the names of journals end with.
    static constexpr const char* End = ".json";

    /// Takes the printer's lock; throws CCommandError when another program has it, who says which,
    /// and when there can be none. Neither reference is owned; both outlive this.
    /// @param p_strKey KeyOf.
    CStateJournal(IStateStore& p_objStore, COutput& p_objOutput, const CTarget& p_objTarget,
                  const std::string& p_strKey, const std::string& p_strCommand);

    /// What the printer is called in p_objStore: as the change that was begun of it, whether or not
    /// it is there now, else as IPrinterConnector::KeyOf has it. Throws as that does.
    static std::string KeyOf(const IStateStore& p_objStore, const CTarget& p_objTarget,
                             IPrinterConnector& p_objPrinters);

    /// Throws CCommandError when a change of this printer was begun and is neither whole nor
    /// undone.
    void CheckNoneOpen() const;

    /// The change that was begun; nothing when there is none. Ctrl-C names the journal from now on.
    /// Throws CCommandError for a file that
    /// is no journal.
    [[nodiscard]] std::optional<CJournalRecord> Record() const;

    /// Whether its file stands there.
    [[nodiscard]] bool IsOpen() const;

    /// Where it stands, or would.
    [[nodiscard]] std::string Path() const { return m_objStore.Path(m_strName); }

    /// From now on Ctrl-C leaves with a word about the journal, too.
    bool Open(const CWritePlan& p_objPlan) override;
    bool Close() override;

private:
    void TellInterruption() const;

    IStateStore& m_objStore;
    COutput& m_objOutput;
    std::string m_strTarget;
    std::string m_strName;
    std::unique_ptr<IStateStore::ILock> m_objLock;
};
