#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// A printer's IEEE 1284 device identification: "MFG:Varden;MDL:Label;CLS:PRINTER;" behind two
/// bytes of length.
namespace MDeviceId {

/// The longest identification that is asked for, its length included.
inline constexpr std::size_t LongestAnswer = 1024;

/// The identification's text out of the bytes that a printer has sent. The length in front is
/// big-endian and counts its own two bytes; a printer may leave those two out of the count, send
/// an absurd length or none at all. Without a length that fits, the text is all there is; it
/// ends before the first byte 0. Empty when nothing was sent but a length.
std::string Text(std::span<const std::uint8_t> p_objAnswer);

/// The makers that an identification names (keys MFG and MANUFACTURER, whatever the case), in its
/// order and without blanks around them. There may be none, or one with an empty name.
std::vector<std::string> Makers(std::string_view p_strText);

/// True when one of the makers that the identification names is this one, whatever the case.
bool IsMaker(std::string_view p_strText, std::string_view p_strMaker);

}  // namespace MDeviceId
