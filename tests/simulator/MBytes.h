#pragma once

#include <cstdint>
#include <span>
#include <string_view>

/// Texts as the bytes they are.
namespace MBytes {

inline std::span<const std::uint8_t> Of(std::string_view p_strText) {
    return {reinterpret_cast<const std::uint8_t*>(p_strText.data()), p_strText.size()};
}

}  // namespace MBytes
