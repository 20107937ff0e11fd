# The one place for compiler warnings: every target links varden_warnings.
add_library(varden_warnings INTERFACE)

if(MSVC)
  target_compile_options(varden_warnings INTERFACE /W4 /permissive- /utf-8)
  if(VARDEN_WERROR)
    target_compile_options(varden_warnings INTERFACE /WX)
  endif()
else()
  target_compile_options(varden_warnings INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow
                                                   -Wnon-virtual-dtor)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # Finds fault with the library's own concatenation of strings; later versions do not.
    target_compile_options(varden_warnings INTERFACE -Wno-restrict)
  endif()
  if(VARDEN_WERROR)
    target_compile_options(varden_warnings INTERFACE -Werror)
  endif()
endif()
