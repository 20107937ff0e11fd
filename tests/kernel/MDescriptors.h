#pragma once

#include "tests/kernel/CDeviceSettings.h"

#include <cstdint>
#include <string>

/// What a simulated device tells about itself when the kernel asks.
namespace MDescriptors {

inline constexpr std::uint8_t OutEndpoint = 0x01;
inline constexpr std::uint8_t InEndpoint = 0x82;
inline constexpr std::size_t PacketSize = 512;  ///< of the bulk endpoints, at high speed

std::string Device();

/// The one configuration with all that belongs to it.
std::string Configuration(const CDeviceSettings& p_objSettings);

}  // namespace MDescriptors
