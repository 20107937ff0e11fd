#include "platform/qt/MSerialOpenResult.h"

#include "platform/ISerialPort.h"

#include <cerrno>

namespace {

bool IsHeldByAnother([[maybe_unused]] const QString& p_strError) {
#ifdef Q_OS_WIN
    // There a port asks for no permission: it is refused only while it is open elsewhere.
    return true;
#else
    // Both texts come in the language of the words that they are compared with.
    return p_strError == QSerialPort::tr("Permission error while locking the device") ||
           p_strError == qt_error_string(EBUSY);
#endif
}

}  // namespace

namespace MSerialOpenResult {

std::int32_t Of(QSerialPort::SerialPortError p_iError, const QString& p_strError) {
    const bool bHeld = p_iError == QSerialPort::PermissionError && IsHeldByAnother(p_strError);
    return bHeld ? ISerialPort::AlreadyOpen : NotOpened;
}

}  // namespace MSerialOpenResult
