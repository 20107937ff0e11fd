#include "platform/qt/CQtFileStore.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <cerrno>
#include <filesystem>
#include <system_error>

#ifdef Q_OS_UNIX
#include <unistd.h>
#endif
#ifdef Q_OS_WIN
#include <qt_windows.h>
#endif

namespace {

/// The toolkit's form of a path; empty, which is no file's name, when it cannot express it.
QString ToQt(const std::string& p_strPath) {
    QString strPath = QFile::decodeName(p_strPath.c_str());
    return QFile::encodeName(strPath).toStdString() == p_strPath ? strPath : QString();
}

/// True for a file that is not shown to people: on Windows also one of the system's own, of which
/// the toolkit knows nothing.
bool IsHidden(const QFileInfo& p_objInfo) {
#ifdef Q_OS_WIN
    const std::wstring strPath = p_objInfo.filesystemFilePath().wstring();
    const DWORD iAttributes = ::GetFileAttributesW(strPath.c_str());
    if (iAttributes != INVALID_FILE_ATTRIBUTES && (iAttributes & FILE_ATTRIBUTE_SYSTEM) != 0) {
        return true;
    }
#endif
    return p_objInfo.isHidden();
}

/// Waits until the disk has taken a file's content, and asks what closing the file would say. The
/// toolkit does both when it commits, but does not mind a failure. A file system that cannot wait
/// for its disk is no failure here either.
bool IsOnDisk([[maybe_unused]] const QSaveFile& p_objFile) {
#ifdef Q_OS_UNIX
    const int iFile = p_objFile.handle();
    if (::fsync(iFile) != 0 && errno != EINVAL && errno != ENOTSUP) {
        return false;
    }
    const int iCopy = ::dup(iFile);
    return iCopy >= 0 && ::close(iCopy) == 0;
#else
    return true;
#endif
}

class CReader : public IFileReader {
public:
    explicit CReader(const QString& p_strPath)
        : m_objFile(p_strPath) {}

    /// Unbuffered: the caller reads in blocks, and a failure shows when it happens. Only a regular
    /// file: opening a pipe that nobody writes to would not return.
    bool Open() {
        return QFileInfo(m_objFile).isFile() &&
               m_objFile.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }

    std::optional<std::size_t> Read(std::span<char> p_arrBuffer) override {
        const qint64 iRead =
            m_objFile.read(p_arrBuffer.data(), static_cast<qint64>(p_arrBuffer.size()));
        if (iRead < 0 || m_objFile.error() != QFileDevice::NoError) {
            return std::nullopt;
        }
        return static_cast<std::size_t>(iRead);
    }

private:
    QFile m_objFile;
};

class CWriter : public IFileWriter {
public:
    explicit CWriter(const QString& p_strPath)
        : m_objFile(p_strPath) {}

    /// Only in the place of a regular file or of none: no folder, pipe, device or circle of links
    /// is replaced.
    bool Open() {
        std::error_code objError;
        const auto objPath = QFileInfo(m_objFile.fileName()).filesystemFilePath();
        const auto iType = std::filesystem::status(objPath, objError).type();
        return !objPath.empty() &&
               (iType == std::filesystem::file_type::regular ||
                iType == std::filesystem::file_type::not_found) &&
               m_objFile.open(QIODevice::WriteOnly);
    }

    bool Write(std::string_view p_strBytes) override {
        const auto iCount = static_cast<qint64>(p_strBytes.size());
        return m_objFile.write(p_strBytes.data(), iCount) == iCount;
    }

    // Flushed beforehand, because the toolkit's commit takes no notice when the last of what it
    // has buffered cannot be written. A write that has failed makes the commit fail; without a
    // commit nothing is left.
    bool Commit() override {
        return m_objFile.flush() && IsOnDisk(m_objFile) && m_objFile.commit();
    }

private:
    QSaveFile m_objFile;
};

/// The object when it opens, else null.
template <typename Interface, typename File>
std::unique_ptr<Interface> Opened(const std::string& p_strPath) {
    auto objFile = std::make_unique<File>(ToQt(p_strPath));
    return objFile->Open() ? std::move(objFile) : nullptr;
}

}  // namespace

bool CQtFileStore::Exists(const std::string& p_strPath) const {
    const QFileInfo objInfo(ToQt(p_strPath));
    return objInfo.isFile() && !IsHidden(objInfo);
}

std::unique_ptr<IFileReader> CQtFileStore::OpenToRead(const std::string& p_strPath) {
    return Opened<IFileReader, CReader>(p_strPath);
}

std::unique_ptr<IFileWriter> CQtFileStore::OpenToWrite(const std::string& p_strPath) {
    return Opened<IFileWriter, CWriter>(p_strPath);
}
