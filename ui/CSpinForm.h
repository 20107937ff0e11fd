#pragma once

#include <QString>

#include <cstdint>
#include <string>

/// Which numbers a spin edit takes, and how it writes them: whole numbers, in units of the last
/// shown decimal place.
struct CSpinForm {
    /// What is wrong with a text.
    enum class Fault : std::uint8_t { None, NoNumber, OutOfRange };

    std::int32_t m_iMax = 100;
    std::int32_t m_iMin = 0;
    std::int32_t m_iIncrement = 1;
    std::int16_t m_iDecimalPoint = 0;
    int m_iShownPlaces = 0;  ///< digits after the point in the display format
    bool m_bHexaMode = false;

    /// Whether the value, not yet rounded, lies in the range.
    [[nodiscard]] bool Contains(double p_dValue) const;

    /// Whether one step from p_iValue stays in the range.
    [[nodiscard]] bool CanStep(std::int32_t p_iValue, bool p_bUp) const;

    /// How p_iValue is shown.
    [[nodiscard]] QString TextOf(std::int32_t p_iValue) const;

    /// The value that the decimal number p_strText writes. Throws CConversionError.
    [[nodiscard]] double TypedNumber(const std::string& p_strText) const;

    [[nodiscard]] Fault FaultOf(const QString& p_strText) const;

    /// For people: "-5.0 to 5.0, in steps of 0.5".
    [[nodiscard]] QString RangeText() const;
};
