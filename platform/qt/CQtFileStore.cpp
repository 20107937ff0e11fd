#include "platform/qt/CQtFileStore.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

#ifdef Q_OS_LINUX
#include "platform/qt/CLinuxFileWriter.h"
#else
#include "platform/qt/CQtFileWriter.h"
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

    [[nodiscard]] std::uint64_t Size() const override {
        return static_cast<std::uint64_t>(std::max<qint64>(m_objFile.size(), 0));
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

#ifdef Q_OS_LINUX
using CWriter = CLinuxFileWriter;
#else
using CWriter = CQtFileWriter;
#endif

}  // namespace

bool CQtFileStore::Exists(const std::string& p_strPath) const {
    const QFileInfo objInfo(ToQt(p_strPath));
    return objInfo.isFile() && !IsHidden(objInfo);
}

std::unique_ptr<IFileReader> CQtFileStore::OpenToRead(const std::string& p_strPath) {
    auto objReader = std::make_unique<CReader>(ToQt(p_strPath));
    return objReader->Open() ? std::move(objReader) : nullptr;
}

std::unique_ptr<IFileWriter> CQtFileStore::OpenToWrite(const std::string& p_strPath) {
    // A name that Exists cannot ask about is not written either.
    auto objWriter = std::make_unique<CWriter>();
    return !ToQt(p_strPath).isEmpty() && objWriter->Open(p_strPath) ? std::move(objWriter)
                                                                    : nullptr;
}
