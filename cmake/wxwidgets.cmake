# Defines platen_wx_base: wxWidgets without its GUI; platen_wx_core: wxWidgets with it; platen_wx_gui:
# the same with XML resources. A target takes one of them.
#
# For Windows it is found in the folder PLATEN_WINDOWS_PREFIX, laid out as wxWidgets' own CMake
# build installs it with mingw-w64.

add_library(platen_wx_base INTERFACE IMPORTED)

if(WIN32)
    set(platen_wx_folders
        "${PLATEN_WINDOWS_PREFIX}/lib/gcc_x64_dll/mswu"
        "${PLATEN_WINDOWS_PREFIX}/include")
    foreach(needed lib/gcc_x64_dll/mswu/wx/setup.h include/wx/defs.h)
        if(NOT EXISTS "${PLATEN_WINDOWS_PREFIX}/${needed}")
            message(FATAL_ERROR "PLATEN_WINDOWS_PREFIX ('${PLATEN_WINDOWS_PREFIX}') does not hold "
                "wxWidgets: there is no ${needed} in it. scripts/windows-deps.sh builds that folder "
                "and prints its name.")
        endif()
    endforeach()
    set_target_properties(platen_wx_base PROPERTIES
        INTERFACE_INCLUDE_DIRECTORIES "${platen_wx_folders}"
        INTERFACE_COMPILE_DEFINITIONS "UNICODE;_UNICODE;WXUSINGDLL;__WXMSW__;wxUSE_GUI=0"
        INTERFACE_LINK_LIBRARIES "${PLATEN_WINDOWS_PREFIX}/lib/gcc_x64_dll/libwxbase32u.a")

    add_library(platen_wx_core INTERFACE IMPORTED)
    set_target_properties(platen_wx_core PROPERTIES
        INTERFACE_INCLUDE_DIRECTORIES "${platen_wx_folders}"
        INTERFACE_COMPILE_DEFINITIONS "UNICODE;_UNICODE;WXUSINGDLL;__WXMSW__"
        INTERFACE_LINK_LIBRARIES
            "${PLATEN_WINDOWS_PREFIX}/lib/gcc_x64_dll/libwxmsw32u_core.a;${PLATEN_WINDOWS_PREFIX}/lib/gcc_x64_dll/libwxbase32u.a")

    add_library(platen_wx_gui INTERFACE IMPORTED)
    set_target_properties(platen_wx_gui PROPERTIES
        INTERFACE_LINK_LIBRARIES
            "${PLATEN_WINDOWS_PREFIX}/lib/gcc_x64_dll/libwxmsw32u_xrc.a;platen_wx_core")
else()
    # platen_find_wx(TARGET COMPONENT...)
    macro(platen_find_wx target)
        find_package(wxWidgets REQUIRED COMPONENTS ${ARGN})
        set_target_properties(${target} PROPERTIES
            INTERFACE_INCLUDE_DIRECTORIES "${wxWidgets_INCLUDE_DIRS}"
            INTERFACE_COMPILE_DEFINITIONS "${wxWidgets_DEFINITIONS}"
            INTERFACE_COMPILE_OPTIONS "${wxWidgets_CXX_FLAGS}"
            INTERFACE_LINK_LIBRARIES "${wxWidgets_LIBRARIES}")
    endmacro()

    add_library(platen_wx_core INTERFACE IMPORTED)
    add_library(platen_wx_gui INTERFACE IMPORTED)
    platen_find_wx(platen_wx_base base)
    platen_find_wx(platen_wx_core core base)
    platen_find_wx(platen_wx_gui xrc core base)
endif()
