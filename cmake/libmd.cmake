# The CMakeLists.txt of libmd for systems that Debian does not package it for, with the one digest
# that is used here: copied beside its sources.
cmake_minimum_required(VERSION 3.25)
project(libmd LANGUAGES C)

if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE Release)
endif()
# What configure would find out matters to other systems only.
file(WRITE "${CMAKE_CURRENT_BINARY_DIR}/config.h" "")
add_library(md STATIC src/sha2.c)
target_include_directories(md PRIVATE include src "${CMAKE_CURRENT_BINARY_DIR}")
install(TARGETS md ARCHIVE DESTINATION lib)
install(FILES include/sha2.h DESTINATION include)
