#pragma once

#include "platform/IFileStore.h"

/// Files of this computer. What is written goes into a file of its own, which takes the other's
/// place in one step; see CLinuxFileWriter and, for other systems, CQtFileWriter.
class CQtFileStore : public IFileStore {
public:
    [[nodiscard]] bool Exists(const std::string& p_strPath) const override;
    std::unique_ptr<IFileReader> OpenToRead(const std::string& p_strPath) override;
    std::unique_ptr<IFileWriter> OpenToWrite(const std::string& p_strPath) override;
};
