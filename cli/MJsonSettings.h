#pragma once

#include "cli/CFileContent.h"

#include <string>
#include <string_view>

/// The command line's own settings file:
///
///     {"varden": 1, "settings": {"speed": "9600bps", "feed-adj": -1.5}}
///
/// The number is that of the format. Only known settings stand in it, in the form of MSettingJson.
namespace MJsonSettings {

inline constexpr int Format = 1;

/// The file of p_objSnapshot, whose known settings all have values of theirs.
std::string Text(const CSnapshot& p_objSnapshot);

/// Reads a file's bytes and finds everything that is wrong in them: no JSON, no object, another
/// format, an unknown name, a name twice, a value that is none of the setting's.
CFileContent Read(std::string_view p_strBytes);

}  // namespace MJsonSettings
