# The headers of the toolkit and of the test framework cost more than most of our sources. With
# VARDEN_PRECOMPILE one target of a kind reads them, and the others of its kind take them from there.
# Only Clang takes them from a target whose options differ a little. Builds without the option, such as
# clang-tidy's, show that every file includes what it uses.
if(VARDEN_PRECOMPILE AND NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
  message(FATAL_ERROR "VARDEN_PRECOMPILE needs Clang.")
endif()

# The target that reads the headers: varden_precompile(TARGET HEADER...)
function(varden_precompile p_target)
  if(VARDEN_PRECOMPILE)
    target_precompile_headers(${p_target} PRIVATE ${ARGN})
  endif()
endfunction()

# A target that takes them from there. It has all definitions that p_owner has, and may be p_owner.
function(varden_precompiled_from p_target p_owner)
  if(VARDEN_PRECOMPILE AND NOT p_target STREQUAL p_owner)
    target_precompile_headers(${p_target} REUSE_FROM ${p_owner})
  endif()
endfunction()
