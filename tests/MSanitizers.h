#pragma once

/// What the tests have been built with, for those that measure time.
namespace MSanitizers {

// Each compiler has a way of its own to tell it.
#if defined(__SANITIZE_ADDRESS__)
inline constexpr bool Address = true;
#elif defined(__has_feature)
inline constexpr bool Address = __has_feature(address_sanitizer);
#else
inline constexpr bool Address = false;
#endif

}  // namespace MSanitizers
