# What compresses: libdeflate where it can be had, with zlib for what it refuses, and zlib alone
# elsewhere. libdeflate 1.14 brings no CMake package.

add_library(platen_codec INTERFACE)
target_link_libraries(platen_codec INTERFACE ZLIB::ZLIB)
set(platen_codec_source codec_zlib.cpp)
if(PLATEN_LIBDEFLATE)
    find_path(PLATEN_LIBDEFLATE_INCLUDE libdeflate.h)
    # The archive first: in Debian's the same code deflates a fifth faster than in the shared library.
    find_library(PLATEN_LIBDEFLATE_LIBRARY NAMES libdeflate.a deflate)
    if(PLATEN_LIBDEFLATE_INCLUDE AND PLATEN_LIBDEFLATE_LIBRARY)
        set(platen_codec_source codec_libdeflate.cpp)
        # In a folder of its own: beside it may lie what the core has no business with.
        file(COPY "${PLATEN_LIBDEFLATE_INCLUDE}/libdeflate.h"
            DESTINATION "${CMAKE_CURRENT_BINARY_DIR}/libdeflate")
        target_include_directories(platen_codec SYSTEM INTERFACE
            "${CMAKE_CURRENT_BINARY_DIR}/libdeflate")
        target_link_libraries(platen_codec INTERFACE "${PLATEN_LIBDEFLATE_LIBRARY}")
    else()
        message(STATUS "libdeflate not found: zlib compresses")
    endif()
endif()
