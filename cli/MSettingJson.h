#pragma once

#include "model/CSnapshot.h"
#include "model/MSettings.h"

#include <nlohmann/json.hpp>

/// Settings' values in JSON: an entry of a list, an address and a text as text, a number as number,
/// hexadecimal digits as text ("1B"). What the printer's bytes cannot say in ASCII is ISO 8859-1
/// there and UTF-8 here.
namespace MSettingJson {

/// The value, or the default when p_bDefaultValue is true; null when p_objItems holds none of the
/// setting's values.
nlohmann::ordered_json Value(const MSettings::Row& p_objRow, const CItemManager& p_objItems,
                             bool p_bDefaultValue = false);

/// What the items hold, for a value that is null; else null.
nlohmann::ordered_json Raw(const MSettings::Row& p_objRow, const CItemManager& p_objItems);

/// All settings that are known, by their names and in the catalogue's order.
nlohmann::ordered_json Values(const CSnapshot& p_objSnapshot);

/// What is held of those among them whose value is null.
nlohmann::ordered_json RawValues(const CSnapshot& p_objSnapshot);

/// A number of p_objRow's range, as Value would give it.
nlohmann::ordered_json Number(const MSettings::Row& p_objRow, std::int32_t p_iNumber);

}  // namespace MSettingJson
