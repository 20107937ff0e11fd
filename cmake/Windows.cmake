# A toolchain: programs for Windows, made on Debian. The rooms without a toolkit are built with it and
# their tests run under wine, which shows that they stay portable.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(CMAKE_CROSSCOMPILING_EMULATOR wine)
set(VARDEN_GTEST_SOURCES /usr/src/googletest CACHE PATH "GoogleTest to be built with them")
# Nothing to be found beside the programs.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")
