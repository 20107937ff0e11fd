#pragma once

#include "model/CItemManager.h"

#include <cstdint>
#include <span>
#include <string_view>

/// What the fuzz targets have in common.
namespace MFuzz {

/// The bytes that a target is given.
using Input = std::span<const std::uint8_t>;

/// Ends the program, which is a finding, when p_bHolds is false.
void Require(bool p_bHolds, std::string_view p_strWhat);

/// Two catalogues hold the same.
void RequireSame(const CItemManager& p_objOne, const CItemManager& p_objOther);

/// Whatever the items hold, each is written as text or refused with CConversionError, and with
/// nothing else; so are the commands made of them, which have their exact widths wherever they are
/// said to have them.
void RequireRendered(const CItemManager& p_objItems);

}  // namespace MFuzz
