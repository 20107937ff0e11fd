#pragma once

#include <string_view>

/// How the addresses and names of computers are written.
namespace MIpAddress {

/// True for four numbers up to 255 with a "." between.
bool IsV4(std::string_view p_strText);

/// True for an IPv6 address, perhaps shortened by "::", perhaps with an IPv4 address at its end or
/// a zone behind it ("fe80::1%eth0").
bool IsV6(std::string_view p_strText);

/// True for a computer's name or an IPv4 address: letters, digits, "-", "_" and single "."; what is
/// nothing but digits and "." must be an address.
bool IsHostName(std::string_view p_strText);

}  // namespace MIpAddress
