# What is released is built so that a fault of ours is harder to make use of: programs that can be
# loaded anywhere, tables of addresses that are read-only before main begins, guarded stacks, checked
# calls of the C library. tests/package/check-hardening.sh reads in a program whether it is.
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

if(CMAKE_SYSTEM_NAME STREQUAL "Linux" AND NOT VARDEN_SANITIZE)
  set(release "$<CONFIG:Release>")
  add_compile_options(
    "$<${release}:-fstack-protector-strong>" "$<${release}:-fstack-clash-protection>"
    # Taken back first: some compilers define it by themselves, and twice is an error.
    "$<${release}:-U_FORTIFY_SOURCE>" "$<${release}:-D_FORTIFY_SOURCE=2>")
  add_link_options("$<${release}:-Wl,-z,relro,-z,now>")
endif()

# Not a part of anything: shows what the options make of a call that can be checked.
add_library(varden_hardening_probe OBJECT EXCLUDE_FROM_ALL tests/package/hardening_probe.cpp)
