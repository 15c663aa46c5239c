# The CMakeLists.txt of cairo for Windows, copied beside its sources; pixman's stand in the folder
# pixman there. Of cairo this builds what draws pages into pictures and into PDF, and no fonts: the
# text of charts arrives as outlines.
cmake_minimum_required(VERSION 3.25)
project(cairo LANGUAGES C)

find_package(PNG REQUIRED)

set(CMAKE_C_STANDARD 99)
add_compile_options(-w)

# The sources are listed in the Makefiles of both, a name a line.
function(listed_sources result folder makefile)
    file(STRINGS "${folder}/${makefile}" lines REGEX "^[ \t_a-z].*\\.c")
    set(sources)
    foreach(line IN LISTS lines)
        string(REGEX MATCHALL "[a-z0-9-]+\\.c" names "${line}")
        list(APPEND sources ${names})
    endforeach()
    list(TRANSFORM sources PREPEND "${folder}/")
    set(${result} ${sources} PARENT_SCOPE)
endfunction()

listed_sources(pixman_sources "${CMAKE_CURRENT_SOURCE_DIR}/pixman/pixman" Makefile.sources)
add_library(pixman-1 STATIC ${pixman_sources}
    pixman/pixman/pixman-sse2.c pixman/pixman/pixman-ssse3.c)
set_source_files_properties(pixman/pixman/pixman-ssse3.c PROPERTIES COMPILE_OPTIONS -mssse3)
target_compile_definitions(pixman-1 PRIVATE
    PACKAGE="pixman-1" TLS=__thread USE_SSE2 USE_SSSE3 SIZEOF_LONG=4)
target_include_directories(pixman-1 PUBLIC "${CMAKE_CURRENT_SOURCE_DIR}/pixman/pixman")

file(STRINGS src/Makefile.sources lines)
set(cairo_sources)
set(taken FALSE)
foreach(line IN LISTS lines)
    if(line MATCHES "^([a-z_0-9]+) *\\+?= *(.*)")
        set(taken FALSE)
        if(CMAKE_MATCH_1 MATCHES
           "^(cairo_sources|_cairo_font_subset_sources|_cairo_pdf_operators_sources|cairo_png_sources|_cairo_deflate_stream_sources|cairo_pdf_sources)$")
            set(taken TRUE)
        endif()
    endif()
    if(taken)
        string(REGEX MATCHALL "[A-Za-z0-9-]+\\.c" names "${line}")
        list(APPEND cairo_sources ${names})
    endif()
endforeach()
list(TRANSFORM cairo_sources PREPEND src/)

set(features "#define CAIRO_FEATURES_H
#define CAIRO_HAS_IMAGE_SURFACE 1
#define CAIRO_HAS_MIME_SURFACE 1
#define CAIRO_HAS_OBSERVER_SURFACE 1
#define CAIRO_HAS_PDF_SURFACE 1
#define CAIRO_HAS_PNG_FUNCTIONS 1
#define CAIRO_HAS_RECORDING_SURFACE 1
#define CAIRO_HAS_USER_FONT 1
")
file(WRITE "${CMAKE_CURRENT_BINARY_DIR}/cairo-features.h" "${features}")
file(WRITE "${CMAKE_CURRENT_BINARY_DIR}/config.h" "#define CAIRO_HAS_INTERPRETER 0
#define HAVE_STDINT_H 1
#define HAVE_INTTYPES_H 1
#define HAVE_UINT64_T 1
#define HAVE_WINDOWS_H 1
#define SIZEOF_INT 4
#define SIZEOF_LONG 4
#define SIZEOF_LONG_LONG 8
#define SIZEOF_SIZE_T 8
#define SIZEOF_VOID_P 8
#define HAVE_ZLIB 1
#define HAVE_CXX11_ATOMIC_PRIMITIVES 1
#define PACKAGE_NAME \"cairo\"
#define PACKAGE_BUGREPORT \"\"
")
add_library(cairo STATIC ${cairo_sources})
target_compile_definitions(cairo PRIVATE HAVE_CONFIG_H CAIRO_COMPILATION CAIRO_WIN32_STATIC_BUILD)
target_include_directories(cairo PRIVATE
    "${CMAKE_CURRENT_BINARY_DIR}" src "${CMAKE_CURRENT_SOURCE_DIR}")
target_link_libraries(cairo PRIVATE pixman-1 PNG::PNG)

install(TARGETS cairo pixman-1)
install(FILES src/cairo.h src/cairo-deprecated.h src/cairo-pdf.h cairo-version.h
    "${CMAKE_CURRENT_BINARY_DIR}/cairo-features.h" TYPE INCLUDE)
