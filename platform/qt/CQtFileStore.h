#pragma once

#include "platform/IFileStore.h"

/// Files through the toolkit. A file is written into a temporary one beside it, which takes its
/// place in one step.
class CQtFileStore : public IFileStore {
public:
    [[nodiscard]] bool Exists(const std::string& p_strPath) const override;
    std::unique_ptr<IFileReader> OpenToRead(const std::string& p_strPath) override;
    std::unique_ptr<IFileWriter> OpenToWrite(const std::string& p_strPath) override;
};
