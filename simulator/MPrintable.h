#pragma once

#include <string>
#include <string_view>

/// Bytes made readable for people.
namespace MPrintable {

/// Every printable 7-bit character as it stands, every other byte as its code between angle
/// brackets, such as <01> or <FF>. "<" itself becomes <3C>, so that the text is unambiguous.
std::string Printable(std::string_view p_strBytes);

/// "1 byte", "27 bytes".
std::string ByteCount(std::size_t p_iBytes);

}  // namespace MPrintable
