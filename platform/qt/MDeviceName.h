#pragma once

#include <string>

/// The names of device files.
namespace MDeviceName {

/// The device itself, where p_strDevice is a link to one, or a link to a link; else p_strDevice.
/// Empty when there is no device at the end. Links among the folders stay.
std::string OwnName(const std::string& p_strDevice);

}  // namespace MDeviceName
