#pragma once

#include <QSerialPort>
#include <QString>
#include <QStringList>

#include <cstdint>

/// Why a serial port did not open.
namespace MSerialOpenResult {

/// Any reason but another program.
inline constexpr std::int32_t NotOpened = 1;

/// Where programs leave lock files of the ports that they have open, in the toolkit's order.
QStringList LockFolders();

/// ISerialPort::AlreadyOpen when another program has the port, else NotOpened. The toolkit calls
/// both "no permission". Which of them it is says the system: a port that another program has is
/// locked (a file "LCK..ttyS0" in the first of the folders that is used at all), or busy to
/// whoever tries to open it.
/// @param p_strDevice the port's device file, by its own name.
std::int32_t Of(QSerialPort::SerialPortError p_iError, const QString& p_strDevice,
                const QStringList& p_strLockFolders = LockFolders());

/// The system's error number (errno) for a port that did not open and that no other program has,
/// as a second try to open it tells: ENOENT where there is none, EACCES where this user may not,
/// ENOTTY where there is something else. NotOpened where that try does not fail.
/// @param p_strDevice the port's device file, by its own name; empty for none.
std::int32_t Number(const QString& p_strDevice);

}  // namespace MSerialOpenResult
