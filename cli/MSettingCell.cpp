#include "cli/MSettingCell.h"

#include "cli/MUtf8.h"
#include "model/MSettingText.h"

namespace MSettingCell {

std::string Text(const MSettings::Row& p_objRow, const CItemManager& p_objItems) {
    const auto strValue = MSettingText::Show(p_objRow, p_objItems);
    return MUtf8::FromLatin1(
        strValue ? *strValue : "none of its values: " + MSettingText::Raw(p_objRow, p_objItems));
}

}  // namespace MSettingCell
