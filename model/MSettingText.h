#pragma once

#include "model/CSettingError.h"
#include "model/MSettings.h"

#include <optional>
#include <string>
#include <string_view>

/// A setting's value as people write it: an entry of its list, a number with its decimal places
/// ("-1.5"), hexadecimal digits ("1B"), an address ("192.168.10.20"), a text without what fills
/// its field up. Texts are one byte a character, ISO 8859-1.
namespace MSettingText {

/// The value, or the default when p_bDefaultValue is true, that p_objItems holds. Nothing when
/// the items hold no value of the setting: a position beyond its list, a number outside its
/// range, no number.
std::optional<std::string> Show(const MSettings::Row& p_objRow, const CItemManager& p_objItems,
                                bool p_bDefaultValue = false);

/// What the items hold, as they hold it, for a value that cannot be shown.
std::string Raw(const MSettings::Row& p_objRow, const CItemManager& p_objItems);

/// Stores a value in the items. Upper and lower case are the same in lists and in hexadecimal
/// digits. Throws CSettingError, and stores nothing, for a text that is none of its values.
void Set(const MSettings::Row& p_objRow, const CItemManager& p_objItems,
         std::string_view p_strText);

/// What Set accepts, in words: "OFF, ON", "-5.0 to 5.0", "20 to FF (hexadecimal)".
std::string Allowed(const MSettings::Row& p_objRow);

/// True when both hold the same value of the setting: what means the same is the same, however it
/// is written. Values that cannot be shown are the same when they are held alike.
bool Same(const MSettings::Row& p_objRow, const CItemManager& p_objOne,
          const CItemManager& p_objOther);

}  // namespace MSettingText
