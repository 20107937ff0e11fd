#pragma once

#include "model/MSettings.h"

#include <string>
#include <vector>

/// Settings as a command line names them.
namespace MSettingNames {

/// The settings of those names, once each and in the catalogue's order; all of them without a name.
/// Throws CCommandError, which tells every name that is none.
std::vector<const MSettings::Row*> Rows(const std::vector<std::string>& p_strNames);

}  // namespace MSettingNames
