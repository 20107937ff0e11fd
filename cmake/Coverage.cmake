# Which lines and branches the tests reach: Clang counts in the source's own terms, and every process writes
# what it counted when it ends (tests/coverage/README.md).
option(VARDEN_COVERAGE "Count which lines and branches are reached; needs Clang" OFF)
if(VARDEN_COVERAGE)
  if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    message(FATAL_ERROR "VARDEN_COVERAGE needs Clang.")
  endif()
  add_compile_options(-fprofile-instr-generate -fcoverage-mapping)
  add_link_options(-fprofile-instr-generate)
endif()
