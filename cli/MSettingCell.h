#pragma once

#include "model/CItemManager.h"
#include "model/MSettings.h"

#include <string>

/// Settings' values in people's tables.
namespace MSettingCell {

/// The value that p_objItems holds; what is held, and that it is none, for anything else. UTF-8.
std::string Text(const MSettings::Row& p_objRow, const CItemManager& p_objItems);

}  // namespace MSettingCell
