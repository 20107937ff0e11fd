#include "model/MSettingText.h"

#include "model/CConversionError.h"
#include "model/MNumber.h"

#include <algorithm>
#include <cctype>
#include <cmath>

namespace {

using MSettings::Kind;
using MSettings::Range;
using MSettings::Row;
using MSettings::Slot;

constexpr char FieldFill = '\xFF';
constexpr char Separator = '.';

const CItem& First(const Row& p_objRow, const CItemManager& p_objItems) {
    return *(p_objItems.*p_objRow.m_objSlots.front());
}

bool SameLetters(std::string_view p_strOne, std::string_view p_strOther) {
    return std::ranges::equal(p_strOne, p_strOther, [](unsigned char p_c, unsigned char p_cOther) {
        return std::toupper(p_c) == std::toupper(p_cOther);
    });
}

/// A number's digits with its decimal places, or in hexadecimal, where a byte has two.
std::string NumberText(const Range& p_objRange, std::int32_t p_iValue) {
    if (p_objRange.m_bHexa) {
        const std::string strDigits = MNumber::HexText(p_iValue);
        return strDigits.size() < 2 ? "0" + strDigits : strDigits;
    }
    std::string strDigits = std::to_string(std::abs(p_iValue));
    const auto iDecimals = static_cast<std::size_t>(p_objRange.m_iDecimals);
    if (iDecimals > 0) {
        strDigits.insert(
            0, std::max<std::size_t>(iDecimals + 1, strDigits.size()) - strDigits.size(), '0');
        strDigits.insert(strDigits.size() - iDecimals, 1, '.');
    }
    return p_iValue < 0 ? "-" + strDigits : strDigits;
}

bool IsIn(const Range& p_objRange, std::int32_t p_iValue) {
    return p_iValue >= p_objRange.m_iMin && p_iValue <= p_objRange.m_iMax;
}

std::optional<std::string> ShowNumber(const Row& p_objRow, const CItemManager& p_objItems,
                                      bool p_bDefaultValue) {
    std::int32_t iValue = MNumber::ToInt32(First(p_objRow, p_objItems).GetValue(p_bDefaultValue));
    if (p_objRow.m_objDirection != nullptr) {
        const CItem& objDirection = *(p_objItems.*p_objRow.m_objDirection);
        const std::string strSign = MNumber::ToText(objDirection.GetValue(p_bDefaultValue));
        if (strSign != "+" && strSign != "-") {
            return std::nullopt;
        }
        iValue = strSign == "-" ? -std::abs(iValue) : std::abs(iValue);
    }
    return IsIn(p_objRow.m_objRange, iValue)
               ? std::optional(NumberText(p_objRow.m_objRange, iValue))
               : std::nullopt;
}

std::optional<std::string> ShowList(const Row& p_objRow, const CItemManager& p_objItems,
                                    bool p_bDefaultValue) {
    const std::int32_t iPosition =
        MNumber::ToInt32(First(p_objRow, p_objItems).GetValue(p_bDefaultValue));
    if (iPosition < 0 || static_cast<std::size_t>(iPosition) >= p_objRow.m_strEntries.size()) {
        return std::nullopt;
    }
    return std::string(p_objRow.m_strEntries[static_cast<std::size_t>(iPosition)]);
}

std::optional<std::string> ShowAddress(const Row& p_objRow, const CItemManager& p_objItems,
                                       bool p_bDefaultValue) {
    std::string strAddress;
    for (const Slot objSlot : p_objRow.m_objSlots) {
        const std::int32_t iPart =
            MNumber::ToInt32((p_objItems.*objSlot)->GetValue(p_bDefaultValue));
        if (!IsIn(p_objRow.m_objRange, iPart)) {
            return std::nullopt;
        }
        strAddress += (strAddress.empty() ? "" : ".") + std::to_string(iPart);
    }
    return strAddress;
}

std::string ShowText(const Row& p_objRow, const CItemManager& p_objItems, bool p_bDefaultValue) {
    std::string strText = MNumber::ToText(First(p_objRow, p_objItems).GetValue(p_bDefaultValue));
    std::erase(strText, FieldFill);
    return strText.substr(0, strText.find_last_not_of(std::string_view(" \0", 2)) + 1);
}

[[noreturn]] void Refuse(const Row& p_objRow, std::string_view p_strText) {
    throw CSettingError(std::string(p_objRow.m_strName) + ": \"" + std::string(p_strText) +
                        "\" is none of its values (" + MSettingText::Allowed(p_objRow) + ")");
}

void SetList(const Row& p_objRow, CItem& p_objItem, std::string_view p_strText) {
    const auto objFound =
        std::ranges::find_if(p_objRow.m_strEntries, [&](std::string_view p_strEntry) {
            return SameLetters(p_strEntry, p_strText);
        });
    if (objFound == p_objRow.m_strEntries.end()) {
        Refuse(p_objRow, p_strText);
    }
    const auto iPosition = static_cast<int>(objFound - p_objRow.m_strEntries.begin());
    // A Hexadecimal item reads what it is given as hexadecimal digits.
    p_objItem.SetValue(p_objItem.m_iDataType == ItemDataType::Hexadecimal
                           ? CItemValue(MNumber::HexText(iPosition))
                           : CItemValue(iPosition));
}

/// The number in stored units; nothing for a text that is none, or has more decimal places.
std::optional<std::int32_t> ReadNumber(const Range& p_objRange, std::string_view p_strText) {
    constexpr std::size_t iMostDigits = 8;
    if (p_strText.empty() || p_strText.size() > iMostDigits) {
        return std::nullopt;
    }
    if (p_objRange.m_bHexa) {
        const bool bDigits = std::ranges::all_of(
            p_strText, [](unsigned char p_c) { return std::isxdigit(p_c) != 0; });
        return bDigits && p_strText.size() < iMostDigits
                   ? std::optional(static_cast<std::int32_t>(MNumber::ReadHex(p_strText)))
                   : std::nullopt;
    }
    if (p_strText.find_first_not_of("+-.0123456789") != std::string_view::npos ||
        !MNumber::IsNumber(p_strText)) {
        return std::nullopt;
    }
    const std::size_t iPoint = std::min(p_strText.find('.'), p_strText.size());
    const std::size_t iPlaces = p_strText.size() - std::min(iPoint + 1, p_strText.size());
    if (iPlaces > static_cast<std::size_t>(p_objRange.m_iDecimals)) {
        return std::nullopt;
    }
    // Moving the point in the text is exact; a product is not.
    return MNumber::ToInt32(std::string(p_strText) + "e" + std::to_string(p_objRange.m_iDecimals));
}

void SetNumber(const Row& p_objRow, const CItemManager& p_objItems, std::string_view p_strText) {
    const std::optional<std::int32_t> iValue = ReadNumber(p_objRow.m_objRange, p_strText);
    if (!iValue || !IsIn(p_objRow.m_objRange, *iValue)) {
        Refuse(p_objRow, p_strText);
    }
    CItem& objItem = *(p_objItems.*p_objRow.m_objSlots.front());
    if (p_objRow.m_objDirection != nullptr) {
        (p_objItems.*p_objRow.m_objDirection)->SetValue(MNumber::SignOf(*iValue));
    }
    const std::int32_t iMagnitude = std::abs(*iValue);
    objItem.SetValue(objItem.m_iDataType == ItemDataType::Hexadecimal
                         ? CItemValue(MNumber::HexText(iMagnitude))
                         : CItemValue(iMagnitude));
}

void SetAddress(const Row& p_objRow, const CItemManager& p_objItems, std::string_view p_strText) {
    std::array<std::int32_t, 4> arrParts{};
    std::string_view strRest = p_strText;
    for (std::size_t i = 0; i < arrParts.size(); ++i) {
        const bool bLast = i + 1 == arrParts.size();
        const std::size_t iEnd = bLast ? strRest.size() : strRest.find(Separator);
        const std::string_view strPart = strRest.substr(0, iEnd);
        const bool bDigits = iEnd != std::string_view::npos &&
                             strPart.find_first_not_of("0123456789") == std::string_view::npos;
        const std::optional<std::int32_t> iPart =
            bDigits ? ReadNumber(p_objRow.m_objRange, strPart) : std::nullopt;
        if (!iPart || !IsIn(p_objRow.m_objRange, *iPart)) {
            Refuse(p_objRow, p_strText);
        }
        arrParts[i] = *iPart;
        strRest.remove_prefix(bLast ? iEnd : iEnd + 1);
    }
    for (std::size_t i = 0; i < arrParts.size(); ++i) {
        (p_objItems.*p_objRow.m_objSlots[i])->SetValue(arrParts[i]);
    }
}

/// Only what every link carries, and what does not look like the frame of a command.
bool IsPlain(std::string_view p_strText) {
    return std::ranges::all_of(p_strText, [](char p_c) {
        return p_c >= ' ' && p_c <= '~' && p_c != '{' && p_c != '|' && p_c != '}';
    });
}

void SetText(const Row& p_objRow, CItem& p_objItem, std::string_view p_strText) {
    const auto iWidth = static_cast<std::size_t>(p_objItem.m_iLength);
    // The default shows whether the field is always full.
    const bool bFull = MNumber::ToText(p_objItem.GetValue(true)).size() == iWidth;
    if (!IsPlain(p_strText) || p_strText.size() > iWidth || (bFull && p_strText.size() != iWidth)) {
        Refuse(p_objRow, p_strText);
    }
    p_objItem.SetValue(std::string(p_strText));
}

}  // namespace

namespace MSettingText {

std::optional<std::string> Show(const Row& p_objRow, const CItemManager& p_objItems,
                                bool p_bDefaultValue) {
    try {
        switch (p_objRow.m_iKind) {
        case Kind::List:
            return ShowList(p_objRow, p_objItems, p_bDefaultValue);
        case Kind::Number:
            return ShowNumber(p_objRow, p_objItems, p_bDefaultValue);
        case Kind::Address:
            return ShowAddress(p_objRow, p_objItems, p_bDefaultValue);
        case Kind::Text:
            break;
        }
        return ShowText(p_objRow, p_objItems, p_bDefaultValue);
    } catch (const CConversionError&) {
        return std::nullopt;
    }
}

std::string Raw(const Row& p_objRow, const CItemManager& p_objItems) {
    std::string strRaw;
    for (const Slot objSlot : p_objRow.Items()) {
        const bool bNextPart = p_objRow.m_iKind == Kind::Address && !strRaw.empty();
        strRaw += (bNextPart ? "." : "") + MNumber::ToText((p_objItems.*objSlot)->GetValue());
    }
    return strRaw;
}

void Set(const Row& p_objRow, const CItemManager& p_objItems, std::string_view p_strText) {
    CItem& objItem = *(p_objItems.*p_objRow.m_objSlots.front());
    switch (p_objRow.m_iKind) {
    case Kind::List:
        SetList(p_objRow, objItem, p_strText);
        break;
    case Kind::Number:
        SetNumber(p_objRow, p_objItems, p_strText);
        break;
    case Kind::Address:
        SetAddress(p_objRow, p_objItems, p_strText);
        break;
    case Kind::Text:
        SetText(p_objRow, objItem, p_strText);
        break;
    }
}

std::string Allowed(const Row& p_objRow) {
    const Range& objRange = p_objRow.m_objRange;
    std::string strAllowed;
    switch (p_objRow.m_iKind) {
    case Kind::List:
        for (const std::string_view strEntry : p_objRow.m_strEntries) {
            strAllowed += (strAllowed.empty() ? "" : ", ") + std::string(strEntry);
        }
        return strAllowed;
    case Kind::Number:
        return NumberText(objRange, objRange.m_iMin) + " to " +
               NumberText(objRange, objRange.m_iMax) + (objRange.m_bHexa ? " (hexadecimal)" : "");
    case Kind::Address:
        return "0.0.0.0 to 255.255.255.255";
    case Kind::Text:
        break;
    }
    const CItemManager objItems;
    const CItem& objItem = First(p_objRow, objItems);
    const std::string strWidth = std::to_string(objItem.m_iLength);
    const bool bFull = MNumber::ToText(objItem.GetValue(true)).size() ==
                       static_cast<std::size_t>(objItem.m_iLength);
    return (bFull ? strWidth : "at most " + strWidth) + " characters, none of { | }";
}

bool Same(const Row& p_objRow, const CItemManager& p_objOne, const CItemManager& p_objOther) {
    const std::optional<std::string> strOne = Show(p_objRow, p_objOne);
    const std::optional<std::string> strOther = Show(p_objRow, p_objOther);
    if (!strOne && !strOther) {
        return Raw(p_objRow, p_objOne) == Raw(p_objRow, p_objOther);
    }
    return strOne == strOther;
}

}  // namespace MSettingText
