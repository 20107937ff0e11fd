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

# Makes a room: a static library that sees the project's root and nothing but what it links. Those
# without a toolkit take the standard headers from varden_model.
function(varden_add_room p_target)
  cmake_parse_arguments(ROOM "" "" "SOURCES;KNOWS" ${ARGN})
  add_library(${p_target} STATIC ${ROOM_SOURCES})
  target_include_directories(${p_target} PUBLIC "${PROJECT_SOURCE_DIR}")
  target_link_libraries(${p_target} PUBLIC ${ROOM_KNOWS} PRIVATE varden_warnings)
  if(NOT "${ROOM_KNOWS}" MATCHES "Qt6::")
    varden_precompiled_from(${p_target} varden_model)
  endif()
endfunction()
