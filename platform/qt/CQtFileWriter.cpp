#include "platform/qt/CQtFileWriter.h"

#include <QFile>
#include <QFileInfo>

#include <filesystem>
#include <system_error>

#ifdef Q_OS_UNIX
#include "platform/qt/MOnDisk.h"
#endif

namespace {

/// The toolkit waits for the disk when it commits, but does not mind a failure.
bool IsOnDisk([[maybe_unused]] const QSaveFile& p_objFile) {
#ifdef Q_OS_UNIX
    return MOnDisk::Wait(p_objFile.handle());
#else
    return true;
#endif
}

}  // namespace

bool CQtFileWriter::Open(const std::string& p_strPath) {
    m_objFile.setFileName(QFile::decodeName(p_strPath.c_str()));
    // No folder, pipe, device or circle of links is replaced.
    std::error_code objError;
    const auto objPath = QFileInfo(m_objFile.fileName()).filesystemFilePath();
    const auto iType = std::filesystem::status(objPath, objError).type();
    return !objPath.empty() &&
           (iType == std::filesystem::file_type::regular ||
            iType == std::filesystem::file_type::not_found) &&
           m_objFile.open(QIODevice::WriteOnly);
}

bool CQtFileWriter::Write(std::string_view p_strBytes) {
    const auto iCount = static_cast<qint64>(p_strBytes.size());
    return m_objFile.write(p_strBytes.data(), iCount) == iCount;
}

// Flushed beforehand, because the toolkit's commit takes no notice when the last of what it has
// buffered cannot be written. A write that has failed makes the commit fail; without a commit
// nothing is left.
bool CQtFileWriter::Commit() {
    return m_objFile.flush() && IsOnDisk(m_objFile) && m_objFile.commit();
}
