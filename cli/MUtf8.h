#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// Text of the command line, UTF-8, and that of the rooms below, one byte a character (ISO 8859-1).
namespace MUtf8 {

/// Every byte becomes the character of its code.
std::string FromLatin1(std::string_view p_strBytes);

/// Nothing when p_strText is no UTF-8, or has a character without a byte.
std::optional<std::string> ToLatin1(std::string_view p_strText);

/// How many characters p_strText has.
std::size_t Length(std::string_view p_strText);

/// The text as a terminal may be given it: what would steer the terminal is shown by its code, such
/// as <1B>, and so is a byte that belongs to no character.
std::string Printable(std::string_view p_strText);

}  // namespace MUtf8
