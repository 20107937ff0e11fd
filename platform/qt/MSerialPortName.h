#pragma once

#include <cstdint>
#include <string>

/// Which device the serial port COMn is.
namespace MSerialPortName {

/// Where a system that has one keeps its devices.
inline constexpr const char* DeviceFolder = "/dev";

/// The device of port p_iPort, counted from 1. On Windows "COM" and the number; elsewhere the
/// first of these that exists in p_strFolder: the alias comN that an administrator has made, the
/// USB adapter ttyUSB, the USB device ttyACM, the built-in port ttyS, these three counted from 0.
/// An alias counts also while it leads nowhere, so that no other device ever takes its place.
/// Empty when there is none.
std::string DeviceOf(std::int16_t p_iPort, const std::string& p_strFolder = DeviceFolder);

/// The device that people mean by p_strName: a path as it is, COMn (in any letters) as DeviceOf
/// has it, anything else as a device of p_strFolder ("ttyUSB0"). Empty for a COMn that is not
/// there.
std::string DeviceNamed(const std::string& p_strName,
                        const std::string& p_strFolder = DeviceFolder);

}  // namespace MSerialPortName
