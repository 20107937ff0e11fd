#pragma once

#include "model/CItemManager.h"
#include "model/MNumber.h"

#include <cstdint>
#include <string>
#include <vector>

/// What a printer puts on the wire, and which fields of it have reached their items.
namespace MWire {

/// A status answer: 13 bytes, p_strCode at the positions 2 and 3.
inline std::string Status(const std::string& p_strCode) {
    return "\x01\x02" + p_strCode + "0000000\x03\x04";
}

/// The items of answer group p_iGroup, 0 to 4.
inline ItemArray GroupItems(const CItemManager& p_objItemManager, std::int16_t p_iGroup) {
    ItemArray objItemAry;
    switch (p_iGroup) {
    case 0:
        p_objItemManager.GetItem_Adjustment(objItemAry);
        break;
    case 1:
        p_objItemManager.GetItem_Parameter(objItemAry);
        break;
    case 2:
        p_objItemManager.GetItem_Sensor(objItemAry);
        break;
    case 3:
        p_objItemManager.GetItem_Lan(objItemAry);
        break;
    default:
        p_objItemManager.GetItem_ParameterExpansion1(objItemAry);
        break;
    }
    return objItemAry;
}

/// Fields for every item of a group: each a run of one digit, the neighbour's another one. Every
/// digit means the same to printer and tool, also as a font code.
inline std::string Fields(std::int16_t p_iGroup, std::size_t p_iVariant = 0) {
    constexpr std::size_t iDigits = 6;
    const CItemManager objItemManager;
    std::string strFields;
    std::size_t iPosition = p_iVariant;
    for (const ItemRef& objItem : GroupItems(objItemManager, p_iGroup)) {
        const char cDigit = static_cast<char>('4' + static_cast<int>(iPosition++ % iDigits));
        strFields.append(static_cast<std::size_t>(objItem->m_iLength), cDigit);
    }
    return strFields;
}

/// The settings answer of group p_iGroup with those fields.
inline std::string Settings(std::int16_t p_iGroup, std::size_t p_iVariant = 0) {
    return "{" + std::to_string(p_iGroup) + Fields(p_iGroup, p_iVariant) + "|}";
}

/// What stands in the items of a group, written as fields.
inline std::string StoredFields(const CItemManager& p_objItemManager, std::int16_t p_iGroup) {
    std::string strFields;
    for (const ItemRef& objItem : GroupItems(p_objItemManager, p_iGroup)) {
        // A fixed item takes the printer's value without ever reporting it.
        strFields +=
            objItem->m_bFixedValue ? MNumber::ToText(objItem->m_vValue) : objItem->GetValueString();
    }
    return strFields;
}

/// The bytes of a text.
inline std::vector<std::uint8_t> ToBytes(const std::string& p_strText) {
    return {p_strText.begin(), p_strText.end()};
}

}  // namespace MWire
