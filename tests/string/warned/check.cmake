# Compiles SOURCE without an output, and compares the lines that COMPILER warns of by `-WWARNING` with those that end in
# "// warned".
cmake_minimum_required(VERSION 3.25)
execute_process(
    COMMAND ${COMPILER} -std=c++17 -fsyntax-only -W${WARNING} -I${INCLUDE_DIR} ${SOURCE}
    RESULT_VARIABLE status ERROR_VARIABLE messages COMMAND_ERROR_IS_FATAL ANY)

file(STRINGS ${SOURCE} lines)
set(number 0)
foreach(line IN LISTS lines)
    math(EXPR number "${number} + 1")
    set(expected FALSE)
    if(line MATCHES "// warned$")
        set(expected TRUE)
    endif()
    set(warned FALSE)
    if(messages MATCHES "\\.cpp:${number}:[0-9]+: warning: [^\n]*\\[-W${WARNING}\\]")
        set(warned TRUE)
    endif()
    if(NOT warned STREQUAL expected)
        message(SEND_ERROR "line ${number}, a warning: ${warned}, expected: ${expected}\n${line}\n${messages}")
    endif()
endforeach()
