#pragma once

#include "cli/CCommandError.h"
#include "platform/IDeviceAccess.h"

#include <cstdint>
#include <optional>
#include <string>

/// The words for a device that cannot be used: why, and the way out.
namespace MAccessText {

enum class Device : std::uint8_t { SerialPort, UsbPrinter };

/// Nothing for a device that can be used.
std::optional<CCommandError::Texts> Problem(const std::string& p_strDevice, Device p_iDevice,
                                            const CDeviceState& p_objState);

}  // namespace MAccessText
