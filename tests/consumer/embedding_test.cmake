# Builds and runs a project that takes the sources by FetchContent. Run with cmake -P; tests/CMakeLists.txt
# sets the variables.

set(build "${WORK}/build")
file(REMOVE_RECURSE "${WORK}")
# Without an optimiser, which takes most of the time.
execute_process(
    COMMAND ${CMAKE_COMMAND} -S "${CMAKE_CURRENT_LIST_DIR}/embedding" -B "${build}" -G Ninja
        -DCMAKE_CXX_FLAGS=-O0 "-DCMAKE_CXX_COMPILER=${COMPILER}" "-DCMAKE_CXX_COMPILER_LAUNCHER=${LAUNCHER}"
        "-DSOURCES=${CMAKE_CURRENT_LIST_DIR}/../.."
    COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${CMAKE_COMMAND} --build "${build}" COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND "${build}/core_consumer" WORKING_DIRECTORY "${build}" COMMAND_ERROR_IS_FATAL ANY)

# What was built is the core and the program, and nothing is installed of it.
file(GLOB_RECURSE built "${build}/*.so*" "${build}/*.a")
list(LENGTH built count)
if(NOT count EQUAL 1)
    message(FATAL_ERROR "more was built than the core: ${built}")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} --install "${build}" --prefix "${WORK}/installed"
    COMMAND_ERROR_IS_FATAL ANY)
file(GLOB_RECURSE installed "${WORK}/installed/*")
if(installed)
    message(FATAL_ERROR "this was installed: ${installed}")
endif()
