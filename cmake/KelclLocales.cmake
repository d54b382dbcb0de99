# Compiles the locales that tests, benchmarks and examples run under into <build>/locales, so that nothing depends
# on what the machine has installed. Programs find them with LOCPATH=<build>/locales.
find_program(KELCL_LOCALEDEF localedef REQUIRED)
if(NOT EXISTS /usr/share/i18n/locales/en_US)
    message(FATAL_ERROR "The locale sources under /usr/share/i18n are missing. "
        "Install them (Debian: apt-get install locales), or let ./dev do it.")
endif()

set(KELCL_LOCALE_DIR ${PROJECT_BINARY_DIR}/locales)
file(MAKE_DIRECTORY ${KELCL_LOCALE_DIR})
add_custom_target(kelcl_locales ALL)

# A locale's files are in the byte order of the machine that reads them.
set(kelcl_locale_byte_order --little-endian)
if(CMAKE_CXX_BYTE_ORDER STREQUAL "BIG_ENDIAN")
    set(kelcl_locale_byte_order --big-endian)
endif()
add_executable(has_codeset ${PROJECT_SOURCE_DIR}/cmake/has_codeset.cpp)
target_compile_features(has_codeset PRIVATE cxx_std_17)
target_link_libraries(has_codeset PRIVATE kelcl_warnings)

# kelcl_add_locale(NAME INPUT CHARMAP [CODESET])
# NAME is what LC_ALL holds; INPUT and CHARMAP are localedef's -i and -f (names, or paths of files of our own);
# CODESET is what the C library must call its character set, CHARMAP unless given.
function(kelcl_add_locale name input charmap)
    set(codeset ${charmap})
    if(ARGC GREATER 3)
        set(codeset ${ARGV3})
    endif()
    set(stamp ${KELCL_LOCALE_DIR}/${name}.stamp)
    set(sources ${PROJECT_SOURCE_DIR}/cmake/compile_locale.cmake)
    foreach(source IN ITEMS ${input} ${charmap})
        if(IS_ABSOLUTE ${source})
            list(APPEND sources ${source})
        endif()
    endforeach()
    add_custom_command(OUTPUT ${stamp}
        COMMAND ${CMAKE_COMMAND}
            -D LOCALEDEF=${KELCL_LOCALEDEF} -D BYTE_ORDER=${kelcl_locale_byte_order}
            -D DIRECTORY=${KELCL_LOCALE_DIR} -D NAME=${name} -D INPUT=${input} -D CHARMAP=${charmap}
            -P ${PROJECT_SOURCE_DIR}/cmake/compile_locale.cmake
        COMMAND has_codeset ${KELCL_LOCALE_DIR} ${name} ${codeset}
        COMMAND ${CMAKE_COMMAND} -E touch ${stamp}
        DEPENDS ${sources}
        COMMENT "Compiling locale ${name}"
        VERBATIM)
    string(MAKE_C_IDENTIFIER "kelcl_locale_${name}" target)
    add_custom_target(${target} DEPENDS ${stamp})
    add_dependencies(kelcl_locales ${target})
endfunction()

kelcl_add_locale(de_DE.ISO-8859-1 de_DE ISO-8859-1)
kelcl_add_locale(de_DE.UTF-8 de_DE UTF-8)
kelcl_add_locale(en_US.UTF-8 en_US UTF-8)
kelcl_add_locale(es_ES.UTF-8 es_ES UTF-8)
kelcl_add_locale(fr_FR.UTF-8 fr_FR UTF-8)
kelcl_add_locale(ja_JP.EUC-JISX0213 ja_JP EUC-JISX0213)
kelcl_add_locale(ja_JP.EUC-JP ja_JP EUC-JP)
kelcl_add_locale(ja_JP.SHIFT_JISX0213 ja_JP SHIFT_JISX0213)
kelcl_add_locale(ja_JP.SJIS ja_JP SHIFT_JIS)
kelcl_add_locale(ja_JP.UTF-8 ja_JP UTF-8)
kelcl_add_locale(ko_KR.EUC-KR ko_KR EUC-KR)
kelcl_add_locale(tr_TR.UTF-8 tr_TR UTF-8)
kelcl_add_locale(vi_VN.TCVN5712-1 vi_VN TCVN5712-1)
kelcl_add_locale(zh_CN.GB18030 zh_CN GB18030)
kelcl_add_locale(zh_HK.BIG5-HKSCS zh_HK BIG5-HKSCS)
kelcl_add_locale(zh_TW.BIG5 zh_TW BIG5)
kelcl_add_locale(zh_TW.EUC-TW zh_TW EUC-TW)
