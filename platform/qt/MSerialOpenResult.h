#pragma once

#include <QSerialPort>

#include <cstdint>

/// Why a serial port did not open.
namespace MSerialOpenResult {

/// Any reason but another program.
inline constexpr std::int32_t NotOpened = 1;

/// ISerialPort::AlreadyOpen when another program has the port, else NotOpened. The toolkit calls
/// both "no permission" and tells them apart in words only.
/// @param p_strError the toolkit's words for the error.
std::int32_t Of(QSerialPort::SerialPortError p_iError, const QString& p_strError);

}  // namespace MSerialOpenResult
