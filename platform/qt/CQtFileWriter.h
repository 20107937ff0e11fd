#pragma once

#include "platform/IFileWriter.h"

#include <QSaveFile>

#include <string>

/// A file being written by the toolkit's own means, on systems that have no writer of their own
/// (see CLinuxFileWriter): into a temporary file beside it, which takes its place in one step.
class CQtFileWriter : public IFileWriter {
public:
    /// Begins, where p_strPath or what it links to is a regular file that may be written, or
    /// nothing. To be called first, and once.
    bool Open(const std::string& p_strPath);

    bool Write(std::string_view p_strBytes) override;
    bool Commit() override;

private:
    QSaveFile m_objFile;
};
