# The rules of stepping are hidden in the library, so their test is linked from its object files.
# The switch makes no difference to it.
kelcl_add_internal_test(nls_stepping SOURCES ${CMAKE_CURRENT_LIST_DIR}/stepping_test.cpp
    MODES C latin1 utf8 turkish eucjp sjis gb18030 big5 euckr)
# Only in encodings with characters of four bytes. Under the sanitizers these millions of sequences would take minutes;
# nls_stepping has samples of them.
if(NOT KELCL_SANITIZERS)
    kelcl_add_internal_test(nls_four_bytes SOURCES ${CMAKE_CURRENT_LIST_DIR}/four_bytes_test.cpp MODES utf8 gb18030)
endif()

set(utilities_tests positions conversion pieces bytes wide_buffer)
list(TRANSFORM utilities_tests PREPEND ${CMAKE_CURRENT_LIST_DIR}/utilities_)
list(TRANSFORM utilities_tests APPEND _test.cpp)
kelcl_add_test(nls_utilities SOURCES ${utilities_tests} MODES ALL)
kelcl_add_test(nls_core SOURCES ${CMAKE_CURRENT_LIST_DIR}/core_test.cpp MODES ALL)
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

# A locale whose MB_CUR_MAX is smaller than some characters of its character set.
kelcl_add_locale(short.GB18030 POSIX ${CMAKE_CURRENT_LIST_DIR}/short_gb18030.charmap GB18030)
set(kelcl_mode_locale_short short.GB18030)
kelcl_add_test(nls_incomplete SOURCES ${CMAKE_CURRENT_LIST_DIR}/incomplete_test.cpp MODES short short-i18n)

# The kernels of UTF-8 as the library has them, and with their portable forms only.
kelcl_add_internal_test(nls_utf8 SOURCES ${CMAKE_CURRENT_LIST_DIR}/utf8_test.cpp)
kelcl_add_test(nls_utf8_portable SOURCES ${CMAKE_CURRENT_LIST_DIR}/utf8_test.cpp
    ${PROJECT_SOURCE_DIR}/nls/utf8.cpp ${PROJECT_SOURCE_DIR}/string/byte_edit.cpp NO_LIBRARY)
target_compile_definitions(test_nls_utf8_portable PRIVATE KELCL_PORTABLE_KERNELS)
target_compile_options(test_nls_utf8_portable PRIVATE ${kelcl_coverage})
