# platen_cairo: cairo with what it needs. For Windows both libraries are static ones that
# scripts/windows-deps.sh has built.
find_package(ZLIB REQUIRED)
add_library(platen_cairo INTERFACE)
if(WIN32)
    find_path(PLATEN_CAIRO_INCLUDE cairo.h REQUIRED)
    find_library(PLATEN_CAIRO_LIBRARY cairo REQUIRED)
    find_library(PLATEN_PIXMAN_LIBRARY pixman-1 REQUIRED)
    find_package(PNG REQUIRED)
    target_include_directories(platen_cairo SYSTEM INTERFACE "${PLATEN_CAIRO_INCLUDE}")
    target_compile_definitions(platen_cairo INTERFACE CAIRO_WIN32_STATIC_BUILD)
    target_link_libraries(platen_cairo INTERFACE
        "${PLATEN_CAIRO_LIBRARY}" "${PLATEN_PIXMAN_LIBRARY}" PNG::PNG ZLIB::ZLIB gdi32)
else()
    find_package(PkgConfig REQUIRED)
    pkg_check_modules(PLATEN_PANGO REQUIRED IMPORTED_TARGET pangocairo)
    target_link_libraries(platen_cairo INTERFACE PkgConfig::PLATEN_PANGO)
endif()
