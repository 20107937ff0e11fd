#pragma once

#include <cstdint>

/// Why a device could not be had, as the system numbers it.
namespace MUsbNumber {

/// The system's error number (errno) for a failure of libusb (LIBUSB_ERROR_…): EACCES where this
/// user may not, EBUSY where another program has the device, ENODEV where there is none, EIO for
/// any other failure; 0 for none.
std::int32_t Of(int p_iLibrary);

}  // namespace MUsbNumber
