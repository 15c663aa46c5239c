# Installs the build in BUILT below WORK, and builds and runs the project beside this file against
# what was installed. Without BUILT it takes what the system has. Run with cmake -P; tests/CMakeLists.txt and
# packages_test.sh set the variables.

set(build "${WORK}/build")
set(settings -DCMAKE_BUILD_TYPE=Release)
file(REMOVE_RECURSE "${WORK}")

if(BUILT)
    set(installed "${WORK}/installed")
    execute_process(
        COMMAND ${CMAKE_COMMAND} --install "${BUILT}" --prefix "${installed}"
        COMMAND_ERROR_IS_FATAL ANY)
    # By name, since a cross build looks for packages in the toolchain's folders only.
    list(APPEND settings "-Dplaten_DIR=${installed}/${LIBDIR}/cmake/platen")
else()
    set(installed /usr)
endif()
if(TOOLCHAIN)
    list(APPEND settings
        "-DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN}" "-DPLATEN_WINDOWS_PREFIX=${LIBRARIES}")
else()
    list(APPEND settings "-DCMAKE_CXX_COMPILER=${COMPILER}")
endif()
execute_process(
    COMMAND ${CMAKE_COMMAND} -S "${CMAKE_CURRENT_LIST_DIR}" -B "${build}" -G Ninja ${settings}
    COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${CMAKE_COMMAND} --build "${build}" COMMAND_ERROR_IS_FATAL ANY)

if(NOT TOOLCHAIN)
    # The examples of the site, as they are shown there.
    execute_process(
        COMMAND ${CMAKE_COMMAND} -S "${EXAMPLES}" -B "${WORK}/examples" -G Ninja ${settings}
        COMMAND_ERROR_IS_FATAL ANY)
    execute_process(COMMAND ${CMAKE_COMMAND} --build "${WORK}/examples" COMMAND_ERROR_IS_FATAL ANY)

    # Without CMake.
    if(BUILT)
        set(ENV{PKG_CONFIG_PATH} "${installed}/${LIBDIR}/pkgconfig")
        set(ENV{LD_LIBRARY_PATH} "${installed}/${LIBDIR}")
    endif()
    foreach(package "platen-c;cc;-std=c99;c.c" "platen-core;${COMPILER};-std=c++20;core.cpp"
            "platen;${COMPILER};-std=c++20;-DLIBRARY_PRINTS=false;main.cpp")
        list(POP_FRONT package name)
        list(POP_BACK package source)
        execute_process(COMMAND pkg-config --cflags --libs ${name}
            OUTPUT_VARIABLE flags OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
        separate_arguments(flags UNIX_COMMAND "${flags}")
        execute_process(
            COMMAND ${package} "${CMAKE_CURRENT_LIST_DIR}/${source}" -o "${build}/by_pkg_config" ${flags}
            COMMAND_ERROR_IS_FATAL ANY)
        execute_process(COMMAND "${build}/by_pkg_config" WORKING_DIRECTORY "${build}"
            COMMAND_ERROR_IS_FATAL ANY)
        message(STATUS "works: ${source}, built with pkg-config ${name}")
    endforeach()
    unset(ENV{LD_LIBRARY_PATH})
    execute_process(COMMAND "${CMAKE_CURRENT_LIST_DIR}/share_test.sh" "${installed}"
        COMMAND_ERROR_IS_FATAL ANY)
    message(STATUS "works: what people and desktops get")
endif()

# For Windows programs: where the library's DLL is, as Wine names it.
string(REPLACE "/" "\\" windows_folder "Z:${installed}/${BINDIR}")
set(ENV{WINEPATH} "${windows_folder}")
foreach(program consumer core_consumer c_consumer chart_consumer)
    execute_process(
        COMMAND ${EMULATOR} "${build}/${program}${SUFFIX}"
        WORKING_DIRECTORY "${build}"
        COMMAND_ERROR_IS_FATAL ANY)
    message(STATUS "works: ${program}, built with CMake")
endforeach()
