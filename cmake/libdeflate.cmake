# The CMakeLists.txt of libdeflate, whose own build is a Makefile: copied beside its sources.
cmake_minimum_required(VERSION 3.25)
project(libdeflate LANGUAGES C)

if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE Release)
endif()
file(GLOB sources lib/*.c lib/x86/*.c)
add_library(deflate STATIC ${sources})
target_include_directories(deflate PRIVATE .)
install(TARGETS deflate)
install(FILES libdeflate.h TYPE INCLUDE)
