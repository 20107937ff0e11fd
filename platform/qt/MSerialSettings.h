#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

/// The settings text of a serial port: speed, parity, data bits and stop bits, as "9600,E,8,1".
namespace MSerialSettings {

enum class Parity : std::uint8_t { None, Even, Odd };

struct Values {
    std::int32_t m_iSpeed = 0;  ///< bits a second
    Parity m_iParity = Parity::None;
    std::int16_t m_iDataBits = 0;  ///< 7 or 8
    std::int16_t m_iStopBits = 0;  ///< 1 or 2

    bool operator==(const Values&) const = default;
};

/// What p_strText says, or nothing when it is not written exactly so: one of the printer's six
/// speeds, "N", "E" or "O", then the two digits.
std::optional<Values> Parse(std::string_view p_strText);

}  // namespace MSerialSettings
