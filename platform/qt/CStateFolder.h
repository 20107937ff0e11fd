#pragma once

#include "platform/IStateStore.h"

#include <cstddef>
#include <string>

/// The state in a folder of the disk, which is made with its parents when it is needed first, for
/// nobody but its owner.
///
/// A name begins with no "."; what is hidden is none of these files, and no link is followed. The
/// lock NAME is the file NAME.lock, which goes with its holder; one that a killed program has left
/// holds nobody back. Its holder's line stands in it.
class CStateFolder : public IStateStore {
public:
    /// More than so many bytes are neither written nor read.
    static constexpr std::size_t MostBytes = 1U << 20U;

    /// @param p_strFolder a path, made absolute; empty: nothing can be kept.
    explicit CStateFolder(const std::string& p_strFolder);

    /// Where this user's programs keep their state: "$XDG_STATE_HOME/varden", which is
    /// "~/.local/state/varden" unless set, on other systems the toolkit's place. Empty for a user
    /// who has no home.
    static std::string Default();

    std::unique_ptr<ILock> Lock(const std::string& p_strName, const std::string& p_strHolder,
                                std::string& p_strWhy, bool& p_bHeld) override;
    /// Where the disk fails at the very end, with the folder, it is false, and the new file may
    /// stand there, whole.
    bool Write(const std::string& p_strName, const std::string& p_strBytes) override;
    [[nodiscard]] std::optional<std::string> Read(const std::string& p_strName) const override;
    [[nodiscard]] bool Stands(const std::string& p_strName) const override;
    bool Remove(const std::string& p_strName) override;
    [[nodiscard]] std::vector<std::string> Names(const std::string& p_strEnd) const override;
    [[nodiscard]] std::string Path(const std::string& p_strName) const override;

private:
    [[nodiscard]] bool IsGood(const std::string& p_strName) const;

    std::string m_strFolder;
};
