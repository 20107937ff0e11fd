#include "cli/MFileText.h"

#include "model/MNumber.h"

#include <algorithm>

namespace {

bool IsLetter(unsigned char p_c) {
    constexpr unsigned char Blank = 0x20;
    constexpr unsigned char Tilde = 0x7E;
    constexpr unsigned char FirstOfLatin = 0xA0;
    constexpr unsigned char Fill = 0xFF;
    constexpr std::string_view strFrame = "{|}";
    const bool bPrintable = (p_c >= Blank && p_c <= Tilde) || (p_c >= FirstOfLatin && p_c != Fill);
    return bPrintable && strFrame.find(static_cast<char>(p_c)) == std::string_view::npos;
}

}  // namespace

namespace MFileText {

bool IsValue(const MSettings::Row& p_objRow, std::string_view p_strText) {
    const CItemManager objItems;
    const CItem& objItem = *(objItems.*p_objRow.m_objSlots.front());
    const auto iWidth = static_cast<std::size_t>(objItem.m_iLength);
    // The default shows whether the field is always full.
    const bool bFull = MNumber::ToText(objItem.GetValue(true)).size() == iWidth;
    return (bFull ? p_strText.size() == iWidth : p_strText.size() <= iWidth) &&
           std::ranges::all_of(p_strText, IsLetter);
}

}  // namespace MFileText
