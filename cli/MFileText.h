#pragma once

#include "model/MSettings.h"

#include <string_view>

/// Settings of kind Text as files hold them. A file may have every letter that the window takes;
/// what is set by MSettingText has only those that every link carries.
namespace MFileText {

/// Whether p_strText (ISO 8859-1) can be the setting's: as long as it has to be, nothing in it that
/// steers or that frames a command.
bool IsValue(const MSettings::Row& p_objRow, std::string_view p_strText);

}  // namespace MFileText
