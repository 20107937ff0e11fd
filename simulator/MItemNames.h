#pragma once

#include "model/CItemManager.h"

#include <string_view>

/// What the printer's settings are called in everything that is printed or written: the
/// catalogue's names without the prefix that marks a member, such as FeedAdjustment.
namespace MItemNames {

std::string_view Of(const CItemManager::Row& p_objRow);

/// The name of an item of p_objItems.
std::string_view Of(const CItemManager& p_objItems, const ItemRef& p_objItem);

/// True when a setting is called so.
bool IsName(std::string_view p_strName);

}  // namespace MItemNames
