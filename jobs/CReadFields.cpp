#include "jobs/CReadFields.h"

#include "model/MNumber.h"
#include "model/MSettingText.h"
#include "protocol/MSettingRoute.h"

#include <algorithm>
#include <cctype>
#include <memory>
#include <utility>

CReadFields::CReadFields() {
    // A hexadecimal item would make a number of whatever it is given.
    for (const CItemManager::Row& objRow : CItemManager::Rows()) {
        auto objItem = std::make_shared<CItem>(*(m_objItems.*objRow.m_objSlot));
        objItem->m_iDataType = ItemDataType::Text;
        m_objItems.*objRow.m_objSlot = std::move(objItem);
    }
}

bool CReadFields::IsWellFormed(const MSettings::Row& p_objRow) const {
    static const CItemManager Types;
    return std::ranges::all_of(p_objRow.Items(), [&](MSettings::Slot p_objSlot) {
        if ((Types.*p_objSlot)->m_iDataType != ItemDataType::Hexadecimal) {
            return true;
        }
        const std::string strField = MNumber::ToText((m_objItems.*p_objSlot)->m_vValue);
        return std::ranges::all_of(strField,
                                   [](unsigned char p_c) { return std::isxdigit(p_c) != 0; });
    });
}

void CReadFields::Take(std::int16_t p_iGroup, CSnapshot& p_objSnapshot) const {
    const CItemManager objValues;
    for (const MSettings::Row& objRow : MSettings::All()) {
        if (MSettingRoute::ReportedIn(objRow) != p_iGroup || !IsWellFormed(objRow)) {
            continue;
        }
        for (const MSettings::Slot objSlot : objRow.Items()) {
            (objValues.*objSlot)->SetValue((m_objItems.*objSlot)->m_vValue);
        }
        if (!MSettingText::Show(objRow, objValues)) {
            continue;
        }
        for (const MSettings::Slot objSlot : objRow.Items()) {
            (p_objSnapshot.Items().*objSlot)->SetValue((m_objItems.*objSlot)->m_vValue);
        }
        p_objSnapshot.SetKnown(objRow);
    }
}
