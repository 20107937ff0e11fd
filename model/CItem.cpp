#include "model/CItem.h"

#include "model/MNumber.h"

#include <utility>

bool CItem::InitializeValue(CItemValue p_vValue, bool p_bFixedValue) {
    m_vValue = p_vValue;
    m_vDefaultValue = std::move(p_vValue);
    m_bFixedValue = p_bFixedValue;
    return false;
}

bool CItem::SetValue(CItemValue p_vValue) {
    if (m_iDataType == ItemDataType::Hexadecimal) {
        m_vValue = static_cast<double>(MNumber::ReadHex(MNumber::ToText(p_vValue)));
    } else {
        m_vValue = std::move(p_vValue);
    }
    return true;
}

const CItemValue& CItem::GetValue(bool p_bDefaultValue) const {
    return p_bDefaultValue || m_bFixedValue ? m_vDefaultValue : m_vValue;
}

std::string CItem::GetValueString(bool p_bDefaultValue) const {
    const CItemValue& vValue = GetValue(p_bDefaultValue);
    switch (m_iDataType) {
    case ItemDataType::Decimal: {
        const double dNumber = MNumber::ToDouble(vValue);
        return m_iLength > 0 ? PadLeftZeros(MNumber::MagnitudeDigits(dNumber), m_iLength)
                             : MNumber::ToText(dNumber < 0 ? -dNumber : dNumber);
    }
    case ItemDataType::Hexadecimal:
        return PadLeftZeros(MNumber::HexText(MNumber::ToDouble(vValue)), m_iLength);
    case ItemDataType::Text:
        break;
    }
    return MNumber::ToText(vValue);
}

std::string CItem::RepeatText(std::string_view p_strText, std::int16_t p_iCount) {
    std::string strRepeated;
    for (std::int16_t i = 0; i < p_iCount; ++i) {
        strRepeated += p_strText;
    }
    return strRepeated;
}

std::string CItem::PadLeftZeros(const std::string& p_strText, std::int16_t p_iWidth) {
    const auto iMissing = p_iWidth - static_cast<std::int32_t>(p_strText.size());
    return RepeatText("0", static_cast<std::int16_t>(iMissing)) + p_strText;
}
