# WebAssembly with Debian's packages: clang 22, its libc++ and WASI's C library (scripts/wasm-deps.sh
# names them). A module has one thread and no exceptions.
#
# PLATEN_WASM_PREFIX (cache variable or environment) is the folder that holds the libraries which
# Debian does not package for WebAssembly; scripts/wasm-deps.sh builds it and prints where it is.
# This file is part of the recipe by which that folder is named: a change here builds it anew.

# CMake 3.25 knows no WASI.
set(CMAKE_SYSTEM_NAME Generic)
set(CMAKE_SYSTEM_PROCESSOR wasm32)

set(CMAKE_C_COMPILER clang-22)
set(CMAKE_CXX_COMPILER clang++-22)
# Of the same version, since what is linked are objects for optimising as a whole.
set(CMAKE_AR llvm-ar-22 CACHE FILEPATH "")
set(CMAKE_RANLIB llvm-ranlib-22 CACHE FILEPATH "")
# Clang calls wasm32-wasi deprecated, and has no headers of Debian's under the new name.
set(CMAKE_C_COMPILER_TARGET wasm32-wasi)
set(CMAKE_CXX_COMPILER_TARGET wasm32-wasi)
set(CMAKE_C_FLAGS_INIT "-Wno-deprecated")
set(CMAKE_CXX_FLAGS_INIT "-Wno-deprecated -fno-exceptions")

# CMake's compiler checks are projects of their own, and read this file again.
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES PLATEN_WASM_PREFIX)
if(NOT PLATEN_WASM_PREFIX)
    set(PLATEN_WASM_PREFIX "$ENV{PLATEN_WASM_PREFIX}")
endif()

# Everything is looked for in that folder only, the C library included, so that a header of this
# machine can never get in.
set(CMAKE_SYSROOT "${PLATEN_WASM_PREFIX}")
set(CMAKE_FIND_ROOT_PATH "${PLATEN_WASM_PREFIX}")
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
