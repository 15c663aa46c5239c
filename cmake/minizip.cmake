# The CMakeLists.txt of minizip for systems that Debian does not package it for: copied beside its
# sources. The library is only given bytes in memory, whose size 32 bits hold; files of such a size
# are all that its own functions for files take here.
cmake_minimum_required(VERSION 3.25)
project(minizip LANGUAGES C)

if(NOT CMAKE_BUILD_TYPE)
    set(CMAKE_BUILD_TYPE Release)
endif()
find_package(ZLIB REQUIRED)
add_library(minizip STATIC ioapi.c unzip.c zip.c)
target_compile_definitions(minizip PRIVATE USE_FILE32API NOCRYPT NOUNCRYPT)
target_link_libraries(minizip PRIVATE ZLIB::ZLIB)
install(TARGETS minizip ARCHIVE DESTINATION lib)
install(FILES crypt.h ioapi.h unzip.h zip.h DESTINATION include/minizip)
