#pragma once

#include "model/CItemManager.h"

#include <string>
#include <string_view>
#include <vector>

/// The LAN settings file: the five commands that LAN SET sends, a line each.
namespace MLanFile {

/// The lines without their ends: IP address, gateway, subnet mask, socket port, DHCP. A host name
/// longer than its field is written whole, in a line that StoreLine refuses. Throws
/// CConversionError when an item cannot be written as what it should be.
std::vector<std::string> BuildLines(const CItemManager& p_objItemManager);

/// Stores a line's fields in their items. Looks at how the line begins and at its length, not at
/// separators, at its end or at what stands in the fields. A DHCP line may lack the host name; one
/// that has it loses every byte 0xFF in it.
/// @return false, and nothing stored, for a line that is not of this file.
bool StoreLine(std::string_view p_strLine, const CItemManager& p_objItemManager);

}  // namespace MLanFile
