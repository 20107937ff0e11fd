#pragma once

#include "simulator/usb/CUsbBehaviour.h"

#include <string>

/// What an emulated device tells about itself when the system asks.
namespace MUsbDescriptors {

/// The device's descriptor and its only configuration with all that belongs to it, two digits a
/// byte.
std::string Hex(const CUsbBehaviour& p_objBehaviour);

}  // namespace MUsbDescriptors
