#pragma once

#include <string>
#include <string_view>

/// Names of files in the state folder.
namespace MStateName {

/// The name of something on a link: "lan-192.168.10.20_3a8000". Letters, digits, "." and "-" stand
/// as they are, any other byte as "_" and its two hexadecimal digits, so that no two have the same.
std::string Of(std::string_view p_strLink, std::string_view p_strName);

}  // namespace MStateName
