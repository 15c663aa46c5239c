# What compilers and linkers do against faults that nobody has found yet, in builds that are optimised:
# canaries on the stack, checked copies, pages that are written or run but never both, tables that are
# read-only once a program has started, programs that are loaded anywhere. scripts/hardening.py tells
# what a built file has of it. A package builder that brings flags of its own may switch it off.
# Left out: checked jumps and returns (-fcf-protection), which protect nothing beside the C library of
# Debian 12, whose start files do not have them; clang's control flow integrity, which gcc lacks; and on
# Windows canaries and checked copies, for which mingw-w64 wants a library of its own (libssp), in every
# program that links the static core, too.
option(PLATEN_HARDENING "Optimised builds have the compiler's and the linker's protections" ON)

set(platen_hardened OFF)
if(PLATEN_HARDENING AND NOT PLATEN_SANITIZE AND NOT PLATEN_SANITIZE_THREADS AND NOT PLATEN_FUZZ
        AND NOT platen_system STREQUAL "wasm"
        AND (NOT CMAKE_BUILD_TYPE MATCHES "^(Debug|)$" OR CMAKE_CXX_FLAGS_DEBUG MATCHES "-O[1-3s]"))
    set(platen_hardened ON)
    if(WIN32)
        add_link_options(-Wl,--dynamicbase,--nxcompat,--high-entropy-va)
    else()
        add_compile_options(-fstack-protector-strong -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3
            -fstack-clash-protection)
        # gcc 12 takes impossible lengths inside std::wstring for possible ones where copies are checked.
        if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
            add_compile_options(-Wno-attribute-warning)
        endif()
        add_link_options(-Wl,-z,relro,-z,now,-z,noexecstack)
        include(CheckPIESupported)
        check_pie_supported()
    endif()
endif()
