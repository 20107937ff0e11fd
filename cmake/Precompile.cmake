# The headers of the toolkit and of the test framework cost more than most of our sources. With
# VARDEN_PRECOMPILE one target of a kind reads them, and the others of its kind take them from there.
# Only Clang takes them from a target whose options differ a little. Builds without the option, such as
# clang-tidy's, show that every file includes what it uses.
#
# In a debug build the inline functions of those headers, and the templates that they instantiate, are
# compiled once, too, into a library beside the precompiled headers, and not into each object again:
# that is most of what an object takes. An optimised build keeps them where they can be inlined.
if(VARDEN_PRECOMPILE AND NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
  message(FATAL_ERROR "VARDEN_PRECOMPILE needs Clang.")
endif()
set(VARDEN_PRECOMPILE_CODE OFF)
if(VARDEN_PRECOMPILE AND CMAKE_BUILD_TYPE STREQUAL "Debug" AND CMAKE_GENERATOR STREQUAL "Ninja"
   AND NOT VARDEN_COVERAGE)
  set(VARDEN_PRECOMPILE_CODE ON)
  list(APPEND CMAKE_CXX_COMPILE_OPTIONS_CREATE_PCH -fpch-codegen)
  # What makes sources for the toolkit needs nothing that a target links.
  set(CMAKE_AUTOGEN_ORIGIN_DEPENDS OFF)
endif()

# The library with the code of p_target's precompiled headers, varden_code_of_TARGET. It is imported: as a
# target that is built it would wait for p_target, which waits for it; Ninja knows the files.
function(varden_add_precompiled_code p_target)
  set(folder "${CMAKE_CURRENT_BINARY_DIR}/CMakeFiles/${p_target}.dir")
  set(library "${CMAKE_CURRENT_BINARY_DIR}/lib${p_target}_precompiled.a")
  separate_arguments(flags UNIX_COMMAND "${CMAKE_CXX_FLAGS} ${CMAKE_CXX_FLAGS_DEBUG}")
  add_custom_command(
    OUTPUT "${library}"
    COMMAND "${CMAKE_CXX_COMPILER}" ${flags} "$<TARGET_PROPERTY:${p_target},COMPILE_OPTIONS>" -fPIC
            ${CMAKE_CXX20_STANDARD_COMPILE_OPTION} -ffunction-sections -Wno-unused-command-line-argument -c "${folder}/cmake_pch.hxx.pch"
            -o "${folder}/cmake_pch.o"
    COMMAND "${CMAKE_AR}" rcs "${library}" "${folder}/cmake_pch.o"
    DEPENDS "${folder}/cmake_pch.hxx.pch"
    COMMAND_EXPAND_LISTS VERBATIM)
  add_custom_target(${p_target}_precompiled DEPENDS "${library}")
  # What the headers belong to stands behind it on the linker's line.
  get_target_property(links ${p_target} LINK_LIBRARIES)
  list(FILTER links INCLUDE REGEX "^(GTest|Qt6)::")
  list(TRANSFORM links REPLACE "(.+)" "$<LINK_ONLY:\\1>")
  add_library(varden_code_of_${p_target} STATIC IMPORTED GLOBAL)
  set_target_properties(varden_code_of_${p_target} PROPERTIES
    IMPORTED_LOCATION "${library}"
    INTERFACE_LINK_LIBRARIES "${links}"
    # Some of the functions call what the libraries keep to themselves. Nobody calls those.
    INTERFACE_LINK_OPTIONS LINKER:--gc-sections)
endfunction()

# The target that reads the headers: varden_precompile(TARGET HEADER...)
function(varden_precompile p_target)
  if(VARDEN_PRECOMPILE)
    target_precompile_headers(${p_target} PRIVATE ${ARGN})
    if(VARDEN_PRECOMPILE_CODE)
      varden_add_precompiled_code(${p_target})
      target_link_libraries(${p_target} PRIVATE varden_code_of_${p_target})
    endif()
  endif()
endfunction()

# A target that takes them from there. It has all definitions that p_owner has, and may be p_owner.
function(varden_precompiled_from p_target p_owner)
  if(VARDEN_PRECOMPILE AND NOT p_target STREQUAL p_owner)
    target_precompile_headers(${p_target} REUSE_FROM ${p_owner})
    if(VARDEN_PRECOMPILE_CODE)
      target_link_libraries(${p_target} PRIVATE varden_code_of_${p_owner})
    endif()
  endif()
endfunction()
