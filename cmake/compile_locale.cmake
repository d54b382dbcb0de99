# Compiles one locale. localedef warns about character sets that are no superset of ASCII (Shift JIS) and then ends with
# status 1 although the locale is good, so its status says little: whether the C library takes the locale is asked after.
execute_process(
    COMMAND ${LOCALEDEF} ${BYTE_ORDER} --no-archive -c -i ${INPUT} -f ${CHARMAP} ${DIRECTORY}/${NAME}
    OUTPUT_FILE ${DIRECTORY}/${NAME}.log ERROR_FILE ${DIRECTORY}/${NAME}.log)
