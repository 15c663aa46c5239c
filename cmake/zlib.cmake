# The CMakeLists.txt of zlib for WebAssembly, whose own builds a shared library: copied over it.
cmake_minimum_required(VERSION 3.25)
project(zlib LANGUAGES C)

file(GLOB sources *.c)
add_library(z STATIC ${sources})
target_compile_definitions(z PRIVATE HAVE_UNISTD_H)
install(TARGETS z ARCHIVE DESTINATION lib)
install(FILES zlib.h zconf.h DESTINATION include)
