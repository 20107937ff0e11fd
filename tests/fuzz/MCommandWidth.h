#pragma once

#include <cstddef>
#include <string_view>

/// How wide the commands are that the window sends, held against the golden ones.
namespace MCommandWidth {

/// The bytes of the command that p_strBytes begin with; 0 when no command of the window begins so.
std::size_t Of(std::string_view p_strBytes);

}  // namespace MCommandWidth
