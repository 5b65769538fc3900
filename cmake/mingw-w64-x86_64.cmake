# Cross-compiling the Qt-free core, the command-line program and their tests for 64-bit
# Windows with Debian's MinGW-w64 (package g++-mingw-w64-x86-64-posix: the posix thread model,
# so std::thread and std::mutex work). Used by `make test-windows`:
#   cmake -S . -B build-win -DCMAKE_TOOLCHAIN_FILE=cmake/mingw-w64-x86_64.cmake
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(ARDEN_MINGW_PREFIX x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${ARDEN_MINGW_PREFIX}-gcc-posix)
set(CMAKE_CXX_COMPILER ${ARDEN_MINGW_PREFIX}-g++-posix)
set(CMAKE_RC_COMPILER ${ARDEN_MINGW_PREFIX}-windres)

set(CMAKE_FIND_ROOT_PATH /usr/${ARDEN_MINGW_PREFIX})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# libstdc++, libgcc and winpthread linked in, so every .exe runs under Wine (or on a Windows
# machine) without copying the compiler's DLLs next to it.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static")

# The Windows programs and tests run under Wine with a private prefix inside the build folder
# (see cmake/WineRun.cmake); ctest and GoogleTest's test discovery start them through it.
set(ARDEN_WINE_BUILD ON)
