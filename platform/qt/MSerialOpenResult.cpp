#include "platform/qt/MSerialOpenResult.h"

#include "platform/ISerialPort.h"

#ifdef Q_OS_UNIX
#include "platform/qt/CFileHandle.h"

#include <QFile>
#include <QFileInfo>

#include <fcntl.h>
#include <unistd.h>
#endif

#include <cerrno>

namespace {

#ifdef Q_OS_UNIX

/// The toolkit has removed a lock of its own by now.
bool IsLocked(const QString& p_strDevice, const QStringList& p_strFolders) {
    const QString strPrefix = QStringLiteral("/dev/");
    QString strName =
        p_strDevice.startsWith(strPrefix) ? p_strDevice.mid(strPrefix.size()) : p_strDevice;
    strName.replace('/', '_');
    for (const QString& strFolder : p_strFolders) {
        const bool bLock = QFile::exists(strFolder + "/LCK.." + strName);
        const QFileInfo objFolder(strFolder);
        if (objFolder.isReadable() && (bLock || objFolder.isWritable())) {
            return bLock;
        }
    }
    return false;
}

/// What the system says to whoever tries to open the port: 0 when it opens.
int TryToOpen(const QString& p_strDevice) {
    const CFileHandle objPort(::open(QFile::encodeName(p_strDevice).constData(),
                                     O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
    if (!objPort.IsOpen()) {
        return errno;
    }
    return ::isatty(objPort.Number()) != 0 ? 0 : ENOTTY;
}

bool IsBusy(const QString& p_strDevice) {
    return TryToOpen(p_strDevice) == EBUSY;
}

bool IsHeldByAnother(const QString& p_strDevice, const QStringList& p_strFolders) {
    return IsLocked(p_strDevice, p_strFolders) || IsBusy(p_strDevice);
}

#else

int TryToOpen(const QString& /*p_strDevice*/) {
    return 0;
}

/// Here a port asks for no permission: it is refused only while it is open elsewhere.
bool IsHeldByAnother(const QString& /*p_strDevice*/, const QStringList& /*p_strFolders*/) {
    return true;
}

#endif

}  // namespace

namespace MSerialOpenResult {

QStringList LockFolders() {
    return {"/var/lock", "/etc/locks", "/var/spool/locks",  "/var/spool/uucp",
            "/tmp",      "/var/tmp",   "/var/lock/lockdev", "/run/lock"};
}

std::int32_t Of(QSerialPort::SerialPortError p_iError, const QString& p_strDevice,
                const QStringList& p_strLockFolders) {
    const bool bHeld =
        p_iError == QSerialPort::PermissionError && IsHeldByAnother(p_strDevice, p_strLockFolders);
    return bHeld ? ISerialPort::AlreadyOpen : NotOpened;
}

std::int32_t Number(const QString& p_strDevice) {
    if (p_strDevice.isEmpty()) {
        return ENOENT;
    }
    const int iNumber = TryToOpen(p_strDevice);
    return iNumber != 0 ? iNumber : NotOpened;
}

}  // namespace MSerialOpenResult
