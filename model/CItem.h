#pragma once

#include "model/CItemValue.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// How an item's value is written into its field of a command; any other code acts like Text.
enum class ItemDataType : std::int16_t {
    Text = 0,         ///< the value's text as it stands, neither padded nor cut
    Decimal = 1,      ///< the absolute value, zero-padded to the item's length, never cut
    Hexadecimal = 4,  ///< upper-case hexadecimal, zero-padded to the item's length, never cut
};

/// One setting: its value, the default it falls back to, and how it stands in a command's field.
///
/// A sign is never part of a decimal field; a signed setting is a pair of items, a Text item that
/// holds "+" or "-" and the Decimal item of the magnitude.
class CItem {
public:
    CItemValue m_vValue;                            ///< empty until InitializeValue
    std::int16_t m_iLength = 0;                     ///< the field's width in characters
    ItemDataType m_iDataType = ItemDataType::Text;  ///< see ItemDataType
    CItemValue m_vDefaultValue;                     ///< set once, by InitializeValue
    bool m_bFixedValue = false;                     ///< always reports its default when true

    /// Makes p_vValue the value and the default, unconverted whatever the data type.
    /// @return false, always; nobody uses it.
    bool InitializeValue(CItemValue p_vValue, bool p_bFixedValue = false);

    /// Stores a new value. A Hexadecimal item reads its text as hexadecimal and keeps the number
    /// (text that is not hexadecimal gives 0); every other item keeps the value as given.
    /// @return true, always.
    bool SetValue(CItemValue p_vValue);

    /// The default when p_bDefaultValue is true or the item is fixed, else the value.
    [[nodiscard]] const CItemValue& GetValue(bool p_bDefaultValue = false) const;

    /// The field text of GetValue(p_bDefaultValue). Throws CConversionError when the item is
    /// Decimal or Hexadecimal and holds a text that is not a number.
    [[nodiscard]] std::string GetValueString(bool p_bDefaultValue = false) const;

private:
    static std::string RepeatText(std::string_view p_strText, std::int16_t p_iCount);
    static std::string PadLeftZeros(const std::string& p_strText, std::int16_t p_iWidth);
};

/// A shared reference to an item: the catalogue, the groups and the pages speak of the same one.
using ItemRef = std::shared_ptr<CItem>;

/// An ordered group of items, lowest index 0. Never holds a null reference.
using ItemArray = std::vector<ItemRef>;
