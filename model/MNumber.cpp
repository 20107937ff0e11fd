#include "model/MNumber.h"

#include "model/CConversionError.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <system_error>

namespace {

bool IsBlank(char p_c) {
    return p_c == ' ' || p_c == '\t';
}

bool IsDigit(char p_c) {
    return p_c >= '0' && p_c <= '9';
}

std::string_view Trimmed(std::string_view p_strText) {
    while (!p_strText.empty() && IsBlank(p_strText.front())) {
        p_strText.remove_prefix(1);
    }
    while (!p_strText.empty() && IsBlank(p_strText.back())) {
        p_strText.remove_suffix(1);
    }
    return p_strText;
}

std::size_t SkipDigits(std::string_view p_strText, std::size_t p_iFrom) {
    while (p_iFrom < p_strText.size() && IsDigit(p_strText[p_iFrom])) {
        ++p_iFrom;
    }
    return p_iFrom;
}

std::size_t SkipSign(std::string_view p_strText, std::size_t p_iFrom) {
    const bool bSign =
        p_iFrom < p_strText.size() && (p_strText[p_iFrom] == '+' || p_strText[p_iFrom] == '-');
    return bSign ? p_iFrom + 1 : p_iFrom;
}

/// Where the exponent begins (its "e"), or the end; nothing when the text is no number.
std::optional<std::size_t> MantissaEnd(std::string_view p_strText) {
    const std::size_t iFirst = SkipSign(p_strText, 0);
    std::size_t iEnd = SkipDigits(p_strText, iFirst);
    std::size_t iDigits = iEnd - iFirst;
    if (iEnd < p_strText.size() && p_strText[iEnd] == '.') {
        const std::size_t iFraction = iEnd + 1;
        iEnd = SkipDigits(p_strText, iFraction);
        iDigits += iEnd - iFraction;
    }
    if (iDigits == 0) {
        return std::nullopt;
    }
    return iEnd;
}

bool IsExponent(std::string_view p_strText) {
    if (p_strText.front() != 'e' && p_strText.front() != 'E') {
        return false;
    }
    const std::size_t iDigits = SkipSign(p_strText, 1);
    return iDigits < p_strText.size() && SkipDigits(p_strText, iDigits) == p_strText.size();
}

/// Of a number that no double can hold: true when it is too close to 0, false when too large.
bool IsTooSmall(std::string_view p_strMantissa, std::string_view p_strExponent) {
    const std::size_t iPoint = std::min(p_strMantissa.find('.'), p_strMantissa.size());
    const std::size_t iFirst = p_strMantissa.find_first_of("123456789");
    const auto iMagnitude = static_cast<std::int64_t>(iPoint) - static_cast<std::int64_t>(iFirst);
    if (p_strExponent.empty()) {
        return iMagnitude < 0;
    }
    const std::string_view strDigits = p_strExponent.substr(p_strExponent[1] == '+' ? 2 : 1);
    std::int32_t iExponent = 0;
    const auto objResult =
        std::from_chars(strDigits.data(), strDigits.data() + strDigits.size(), iExponent);
    return objResult.ec == std::errc() ? iMagnitude + iExponent < 0 : strDigits.front() == '-';
}

std::optional<double> Read(std::string_view p_strText) {
    std::string_view strNumber = Trimmed(p_strText);
    const std::optional<std::size_t> iMantissa = MantissaEnd(strNumber);
    if (!iMantissa) {
        return std::nullopt;
    }
    const std::string_view strExponent = strNumber.substr(*iMantissa);
    if (!strExponent.empty() && !IsExponent(strExponent)) {
        return std::nullopt;
    }
    if (strNumber.front() == '+') {  // from_chars knows no plus sign
        strNumber.remove_prefix(1);
    }
    double dNumber = 0;
    const auto objResult =
        std::from_chars(strNumber.data(), strNumber.data() + strNumber.size(), dNumber);
    if (objResult.ec == std::errc::result_out_of_range) {
        const bool bTooSmall =
            IsTooSmall(strNumber.substr(0, strNumber.size() - strExponent.size()), strExponent);
        return bTooSmall ? std::optional(0.0) : std::nullopt;
    }
    return dNumber;
}

template <typename T>
T Whole(double p_dNumber) {
    const double dWhole = std::nearbyint(p_dNumber);  // the default mode rounds ties to even
    if (!(dWhole >= static_cast<double>(std::numeric_limits<T>::min()) &&
          dWhole <= static_cast<double>(std::numeric_limits<T>::max()))) {
        throw CConversionError(MNumber::ToText(p_dNumber));
    }
    return static_cast<T>(dWhole);
}

std::optional<unsigned> HexDigit(char p_c) {
    if (IsDigit(p_c)) {
        return static_cast<unsigned>(p_c - '0');
    }
    if (p_c >= 'a' && p_c <= 'f') {
        return static_cast<unsigned>(p_c - 'a' + 10);
    }
    if (p_c >= 'A' && p_c <= 'F') {
        return static_cast<unsigned>(p_c - 'A' + 10);
    }
    return std::nullopt;
}

/// The longest fixed notation of a double has 309 digits before the point.
using TextBuffer = std::array<char, 400>;

std::string FixedDigits(double p_dNumber) {
    TextBuffer arrText{};
    const auto objResult = std::to_chars(arrText.data(), arrText.data() + arrText.size(), p_dNumber,
                                         std::chars_format::fixed, 0);
    return {arrText.data(), objResult.ptr};
}

}  // namespace

namespace MNumber {

bool IsNumber(std::string_view p_strText) {
    return Read(p_strText).has_value();
}

double ToDouble(const CItemValue& p_vValue) {
    if (const std::string* strText = p_vValue.Text()) {
        const std::optional<double> dNumber = Read(*strText);
        if (!dNumber) {
            throw CConversionError(*strText);
        }
        return *dNumber;
    }
    const double* dNumber = p_vValue.Number();
    return dNumber != nullptr ? *dNumber : 0.0;
}

std::int16_t ToInt16(const CItemValue& p_vValue) {
    return Whole<std::int16_t>(ToDouble(p_vValue));
}

std::int32_t ToInt32(const CItemValue& p_vValue) {
    return RoundToInt32(ToDouble(p_vValue));
}

std::int32_t RoundToInt32(double p_dNumber) {
    return Whole<std::int32_t>(p_dNumber);
}

std::uint32_t ReadHex(std::string_view p_strText) {
    constexpr std::uint64_t iHighest = std::numeric_limits<std::uint32_t>::max();
    std::uint64_t iNumber = 0;
    for (const char c : p_strText) {
        if (IsBlank(c)) {
            continue;
        }
        const std::optional<unsigned> iDigit = HexDigit(c);
        if (!iDigit) {
            break;
        }
        iNumber = std::min(iNumber * 16 + *iDigit, iHighest);
    }
    return static_cast<std::uint32_t>(iNumber);
}

std::string ToText(double p_dNumber) {
    constexpr double dExactWhole = 1e15;  // beyond it the fixed digits are no more exact
    if (p_dNumber == std::trunc(p_dNumber) && std::abs(p_dNumber) < dExactWhole) {
        return FixedDigits(p_dNumber + 0.0);  // the sum turns -0 into 0
    }
    TextBuffer arrText{};
    const auto objResult =
        std::to_chars(arrText.data(), arrText.data() + arrText.size(), p_dNumber);
    return {arrText.data(), objResult.ptr};
}

std::string ToText(const CItemValue& p_vValue) {
    if (const std::string* strText = p_vValue.Text()) {
        return *strText;
    }
    const double* dNumber = p_vValue.Number();
    return dNumber != nullptr ? ToText(*dNumber) : std::string();
}

std::string MagnitudeDigits(double p_dNumber) {
    return FixedDigits(std::abs(p_dNumber));
}

std::string HexText(double p_dNumber) {
    const double dWhole = std::nearbyint(p_dNumber);
    if (!(dWhole >= static_cast<double>(std::numeric_limits<std::int32_t>::min()) &&
          dWhole <= static_cast<double>(std::numeric_limits<std::uint32_t>::max()))) {
        throw CConversionError(ToText(p_dNumber));
    }
    auto iRest = static_cast<std::uint32_t>(static_cast<std::int64_t>(dWhole));
    std::string strDigits;
    do {
        strDigits.insert(strDigits.begin(), "0123456789ABCDEF"[iRest % 16]);
        iRest /= 16;
    } while (iRest != 0);
    return strDigits;
}

std::string SignOf(const CItemValue& p_vValue) {
    return ToDouble(p_vValue) < 0 ? "-" : "+";
}

}  // namespace MNumber
