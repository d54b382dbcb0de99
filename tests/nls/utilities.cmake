# Encodings in which some sequences of bytes give two wide characters.
set(kelcl_pair_modes hkscs eucjisx0213 sjisx0213)

# The rules of stepping are hidden in the library, so their test is linked from its object files.
# The switch makes no difference to it.
kelcl_add_internal_test(nls_stepping SOURCES ${CMAKE_CURRENT_LIST_DIR}/stepping_test.cpp
    MODES C latin1 utf8 turkish eucjp sjis gb18030 big5 euckr euctw ${kelcl_pair_modes})
kelcl_add_internal_test(nls_first_use SOURCES ${CMAKE_CURRENT_LIST_DIR}/first_use_test.cpp
    MODES C latin1 utf8 eucjp sjis gb18030 big5 euckr euctw tcvn ${kelcl_pair_modes})
# Only in encodings with characters of four bytes. Under the sanitizers these millions of sequences would take minutes;
# nls_stepping has samples of them.
if(NOT KELCL_SANITIZERS)
    kelcl_add_internal_test(nls_four_bytes SOURCES ${CMAKE_CURRENT_LIST_DIR}/four_bytes_test.cpp
        MODES utf8 gb18030 euctw)
endif()

set(utilities_tests positions conversion pieces bytes wide_buffer)
list(TRANSFORM utilities_tests PREPEND ${CMAKE_CURRENT_LIST_DIR}/utilities_)
list(TRANSFORM utilities_tests APPEND _test.cpp)
kelcl_add_test(nls_utilities SOURCES ${utilities_tests} ALL MODES euctw ${kelcl_pair_modes})
kelcl_add_test(nls_core SOURCES ${CMAKE_CURRENT_LIST_DIR}/core_test.cpp ALL MODES euctw ${kelcl_pair_modes})
kelcl_add_test(nls_pairs SOURCES ${CMAKE_CURRENT_LIST_DIR}/pairs_test.cpp MODES ${kelcl_pair_modes})
kelcl_add_test(nls_held_back SOURCES ${CMAKE_CURRENT_LIST_DIR}/held_back_test.cpp MODES tcvn)
if(KELCL_SANITIZERS)
    # These walk so many texts in so many locales that optimising them pays even there.
    foreach(target IN ITEMS test_nls_stepping test_nls_core)
        target_compile_options(${target} PRIVATE -O1)
    endforeach()
endif()

# Brings a wcscoll of its own, which stands in for the C library's.
kelcl_add_test(nls_collation_error SOURCES ${CMAKE_CURRENT_LIST_DIR}/collation_error_test.cpp
        ${PROJECT_SOURCE_DIR}/tests/support/failing_allocations.cpp
    MODES C C-i18n utf8 utf8-i18n eucjp-i18n)

# Locales whose MB_CUR_MAX is smaller than some characters of their character sets.
set(nls_incomplete_modes "")
foreach(codeset IN ITEMS GB18030 UTF-8)
    set(charmap ${CMAKE_CURRENT_BINARY_DIR}/short.${codeset}.charmap)
    configure_file(${CMAKE_CURRENT_LIST_DIR}/short.charmap.in ${charmap} @ONLY)
    kelcl_add_locale(short.${codeset} POSIX ${charmap} ${codeset})
    string(REPLACE "-" "" mode short${codeset})
    string(TOLOWER ${mode} mode)
    set(kelcl_mode_locale_${mode} short.${codeset})
    list(APPEND nls_incomplete_modes ${mode} ${mode}-i18n)
endforeach()
kelcl_add_test(nls_incomplete SOURCES ${CMAKE_CURRENT_LIST_DIR}/incomplete_test.cpp MODES ${nls_incomplete_modes})

# The kernels of UTF-8 as the library has them, and with their portable forms only.
kelcl_add_internal_test(nls_utf8 SOURCES ${CMAKE_CURRENT_LIST_DIR}/utf8_test.cpp)
kelcl_add_test(nls_utf8_portable SOURCES ${CMAKE_CURRENT_LIST_DIR}/utf8_test.cpp
    ${PROJECT_SOURCE_DIR}/nls/utf8.cpp ${PROJECT_SOURCE_DIR}/string/byte_edit.cpp NO_LIBRARY)
target_compile_definitions(test_nls_utf8_portable PRIVATE KELCL_PORTABLE_KERNELS)
target_compile_options(test_nls_utf8_portable PRIVATE ${kelcl_coverage})
