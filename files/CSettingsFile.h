#pragma once

#include "model/CItemManager.h"
#include "platform/IFileStore.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// Writes and reads one kind of settings file: lines of text, a printer's command each, ended by
/// CR LF.
class CSettingsFile {
public:
    /// A file with more bytes than this, a mebibyte, is no settings file. Those that Save writes
    /// have less than two hundred.
    static constexpr std::uint64_t LargestFile = 1024 * 1024;

    /// How the lines of a kind are made, and how one is stored (false: not of this kind).
    struct Format {
        std::vector<std::string> (*m_objBuildLines)(const CItemManager&);
        bool (*m_objStoreLine)(std::string_view, const CItemManager&);
    };

    /// None is owned; all outlive this.
    CSettingsFile(const Format& p_objFormat, const CItemManager& p_objItemManager,
                  IFileStore& p_objFileStore);

    /// Writes the items' values, all or nothing: false, or an exception from making the lines,
    /// leaves whatever stood at p_strPath as it was.
    bool Save(const std::string& p_strPath) const;

    /// Stores a file's lines in the items. False when the file cannot be read, or at its first
    /// line of another kind; what came before that line stays stored. An empty file is fine. One
    /// that is larger than LargestFile stores nothing; where it grows while it is read, what lies
    /// beyond that is not stored.
    bool Load(const std::string& p_strPath) const;

private:
    Format m_objFormat;
    const CItemManager& m_objItemManager;
    IFileStore& m_objFileStore;
};
