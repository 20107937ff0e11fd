#pragma once

#include "model/CItemManager.h"

#include <string>
#include <string_view>
#include <vector>

/// The parameter settings file: the two set commands that SET sends, a line each.
namespace MParameterFile {

/// The lines without their ends, parameters first. Throws CConversionError when an item cannot be
/// written as what it should be.
std::vector<std::string> BuildLines(const CItemManager& p_objItemManager);

/// Stores a line's fields in the items of its group. Looks at its first four characters, its
/// group's digit and its length, at nothing else of it.
/// @return false, and nothing stored, for a line that is not of this file.
bool StoreLine(std::string_view p_strLine, const CItemManager& p_objItemManager);

}  // namespace MParameterFile
