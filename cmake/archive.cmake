# What bundles are made with: minizip packs, libmd digests. Neither brings a CMake package.

find_path(PLATEN_MINIZIP_INCLUDE minizip/unzip.h REQUIRED)
find_library(PLATEN_MINIZIP_LIBRARY minizip REQUIRED)
find_path(PLATEN_LIBMD_INCLUDE sha2.h REQUIRED)
find_library(PLATEN_LIBMD_LIBRARY md REQUIRED)
# In a folder of their own: beside them may lie what the core has no business with.
file(COPY "${PLATEN_MINIZIP_INCLUDE}/minizip" "${PLATEN_LIBMD_INCLUDE}/sha2.h"
    DESTINATION "${CMAKE_CURRENT_BINARY_DIR}/archive")
add_library(platen_archive INTERFACE)
target_include_directories(platen_archive SYSTEM INTERFACE "${CMAKE_CURRENT_BINARY_DIR}/archive")
target_link_libraries(platen_archive INTERFACE
    "${PLATEN_MINIZIP_LIBRARY}" "${PLATEN_LIBMD_LIBRARY}" ZLIB::ZLIB)
