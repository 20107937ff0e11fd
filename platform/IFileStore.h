#pragma once

#include "platform/IFileReader.h"
#include "platform/IFileWriter.h"

#include <memory>
#include <string>

/// Files on the disk. Paths are bytes in the system's own encoding.
class IFileStore {
public:
    virtual ~IFileStore() = default;

    /// True for a file that an ordinary listing of its folder shows: a folder is none, and what
    /// is hidden counts as absent.
    [[nodiscard]] virtual bool Exists(const std::string& p_strPath) const = 0;

    /// Opens a file for reading; null when that fails.
    virtual std::unique_ptr<IFileReader> OpenToRead(const std::string& p_strPath) = 0;

    /// Begins to write a file anew; null when that fails. Where the name is a link, the file it
    /// points to is written and the link stays; an existing file keeps its permissions.
    virtual std::unique_ptr<IFileWriter> OpenToWrite(const std::string& p_strPath) = 0;
};
