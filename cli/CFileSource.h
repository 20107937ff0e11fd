#pragma once

#include "cli/ISettingsSource.h"
#include "platform/IFileStore.h"

/// Settings files. Every name is a file's: the last source to be asked.
class CFileSource : public ISettingsSource {
public:
    /// p_objFiles is not owned and outlives this.
    explicit CFileSource(IFileStore& p_objFiles)
        : m_objFiles(p_objFiles) {}

    [[nodiscard]] bool Knows(const std::string& /*p_strName*/) const override { return true; }
    /// The file is read here. One in which anything is wrong is refused.
    Fetch Open(const std::string& p_strName, COutput& p_objOutput) override;

private:
    IFileStore& m_objFiles;
};
