# Cross compilation for 64-bit Windows with Debian's mingw-w64 (posix threads: std::thread works).
#
# PLATEN_WINDOWS_PREFIX (cache variable or environment) is the folder that holds the libraries which
# Debian does not package for Windows; scripts/windows-deps.sh builds it and prints where it is.
# This file is part of the recipe by which that folder is named: a change here builds it anew.

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)

# CMake's compiler checks are projects of their own, and read this file again.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES PLATEN_WINDOWS_PREFIX)
if(NOT PLATEN_WINDOWS_PREFIX)
    set(PLATEN_WINDOWS_PREFIX "$ENV{PLATEN_WINDOWS_PREFIX}")
endif()

# Programs are run on this machine; everything else is looked for in the Windows folders only, so
# that a header or a library of this machine can never get in.
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32 ${PLATEN_WINDOWS_PREFIX})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
