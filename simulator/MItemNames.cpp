#include "simulator/MItemNames.h"

#include <algorithm>

namespace MItemNames {

std::string_view Of(const CItemManager::Row& p_objRow) {
    constexpr std::string_view strPrefix = "m_obj";
    return p_objRow.m_strName.substr(strPrefix.size());
}

std::string_view Of(const CItemManager& p_objItems, const ItemRef& p_objItem) {
    const auto objRows = CItemManager::Rows();
    return Of(*std::find_if(objRows.begin(), objRows.end(), [&](const auto& p_objRow) {
        return p_objItems.*p_objRow.m_objSlot == p_objItem;
    }));
}

bool IsName(std::string_view p_strName) {
    const auto objRows = CItemManager::Rows();
    return std::any_of(objRows.begin(), objRows.end(),
                       [&](const auto& p_objRow) { return Of(p_objRow) == p_strName; });
}

}  // namespace MItemNames
