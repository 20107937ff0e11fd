#pragma once

#include "model/CItemValue.h"

#include <cstdint>
#include <string>
#include <string_view>

/// Reading and writing numbers, the same on every system and in every locale.
///
/// A number's text: blanks around it, one sign, decimal digits with at most one ".", an optional
/// exponent ("e" or "E", one sign, digits). At least one digit; nothing else.
namespace MNumber {

/// True when ToDouble would read p_strText.
bool IsNumber(std::string_view p_strText);

/// The held number, the number that the held text writes, or 0 for an empty value.
/// Throws CConversionError for any other text, also for a number too large for a double.
double ToDouble(const CItemValue& p_vValue);

/// Rounded to a whole number, ties to even. Throws CConversionError also outside 16 bits.
std::int16_t ToInt16(const CItemValue& p_vValue);

/// Rounded to a whole number, ties to even. Throws CConversionError also outside 32 bits.
std::int32_t ToInt32(const CItemValue& p_vValue);

/// Like the others, for a number that is at hand already.
std::int32_t RoundToInt32(double p_dNumber);

/// The number that p_strText writes in hexadecimal: its digits up to the first character that is
/// none, blanks skipped; no digit gives 0 ("B0" 176, "" 0, "1G" 1). Never fails. The result is
/// 0 to 0xFFFFFFFF, a larger one is held at that end, so that it cannot pass for a small one.
std::uint32_t ReadHex(std::string_view p_strText);

/// The text of a number: a whole one without a decimal point, any other in its shortest form.
std::string ToText(double p_dNumber);

/// The held text as it stands, the held number's text, or "" for an empty value.
std::string ToText(const CItemValue& p_vValue);

/// The whole decimal digits of the absolute value: no sign, no point, no exponent.
std::string MagnitudeDigits(double p_dNumber);

/// Upper-case hexadecimal digits without a prefix. Throws CConversionError outside 32 bits; a
/// negative number gives its two's complement.
std::string HexText(double p_dNumber);

/// "-" for a value below 0, else "+" (0 gives "+"): the text of a direction item.
/// Throws CConversionError for a text that is not a number.
std::string SignOf(const CItemValue& p_vValue);

}  // namespace MNumber
