#pragma once

#include "platform/ISerialPortLister.h"

#include <QString>

#include <vector>

/// What people are told of a serial port.
namespace MPortText {

/// The device that COMn stands for, n being p_iNumber, and what it is, as the system knows it:
/// "/dev/ttyUSB0: FTDI FT232R USB UART". "no such port" when it is none of p_objPorts.
QString Of(int p_iNumber, const std::vector<CSerialPortEntry>& p_objPorts);

}  // namespace MPortText
