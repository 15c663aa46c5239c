# The core was compiled with no wxWidgets header in reach and refers to nothing of wxWidgets; nor does
# the program PROGRAM, where one is named. Run with cmake -P; tests/CMakeLists.txt sets the variables.

file(STRINGS "${COMMANDS}" compilations REGEX "\"command\": .*platen_docs\\.dir")
list(LENGTH compilations count)
if(count LESS 40)
    message(FATAL_ERROR "${COMMANDS} has only ${count} compilations of the core")
endif()
foreach(compilation IN LISTS compilations)
    string(REGEX MATCHALL "(-I|-isystem )[^ \"]+" folders "${compilation}")
    foreach(folder IN LISTS folders)
        string(REGEX REPLACE "^(-I|-isystem )" "" folder "${folder}")
        if(EXISTS "${folder}/wx/defs.h")
            message(FATAL_ERROR "there is wxWidgets in ${folder}:\n${compilation}")
        endif()
    endforeach()
    if(compilation MATCHES "[ \"]-D(__WX|WXUSINGDLL|wxUSE)")
        message(FATAL_ERROR "compiled for wxWidgets:\n${compilation}")
    endif()
endforeach()

execute_process(COMMAND "${NM}" "${ARCHIVE}"
    OUTPUT_VARIABLE symbols ERROR_VARIABLE ignored COMMAND_ERROR_IS_FATAL ANY)
if(NOT symbols MATCHES "logError")
    message(FATAL_ERROR "${NM} did not list the symbols of ${ARCHIVE}")
endif()
# A class's name follows its length in a symbol, a function's may stand alone.
string(REGEX MATCHALL "[^\n]*([0-9]| )_?wx[A-Z][^\n]*" found "${symbols}")
if(found)
    message(FATAL_ERROR "the core refers to wxWidgets: ${found}")
endif()

if(PROGRAM)
    execute_process(COMMAND "${OBJDUMP}" -p "${PROGRAM}"
        OUTPUT_VARIABLE needed COMMAND_ERROR_IS_FATAL ANY)
    if(NOT needed MATCHES "NEEDED")
        message(FATAL_ERROR "${OBJDUMP} did not list the libraries of ${PROGRAM}")
    endif()
    if(needed MATCHES "NEEDED +([^\n]*libwx[^\n]*)")
        message(FATAL_ERROR "${PROGRAM} loads ${CMAKE_MATCH_1}")
    endif()
endif()
