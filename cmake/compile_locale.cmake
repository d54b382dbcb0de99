# Compiles one locale and makes sure that the C library takes it. localedef warns about character sets that are no
# superset of ASCII (Shift JIS) and then ends with status 1 although the locale is good, so its status says little:
# what counts is whether `locale` finds the locale with the character set that was asked for.
execute_process(
    COMMAND ${LOCALEDEF} --no-archive -c -i ${INPUT} -f ${CHARMAP} ${DIRECTORY}/${NAME}
    OUTPUT_VARIABLE messages ERROR_VARIABLE messages)
execute_process(
    COMMAND ${CMAKE_COMMAND} -E env LOCPATH=${DIRECTORY} LC_ALL=${NAME} ${LOCALE} charmap
    OUTPUT_VARIABLE codeset OUTPUT_STRIP_TRAILING_WHITESPACE)
if(NOT codeset STREQUAL CODESET)
    message(FATAL_ERROR "Locale ${NAME} was not compiled: its character set is '${codeset}', not '${CODESET}'.\n"
        "localedef said:\n${messages}\n"
        "Check that the locale sources are there (Debian: apt-get install --reinstall locales).")
endif()
