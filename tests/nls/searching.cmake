# The tests of searching and editing multi-byte texts. The tests set the national-language switch themselves where it
# matters; the random operations take it from the mode.
set(multi_byte_modes utf8 eucjp sjis gb18030 big5 euckr)
set(multi_byte_wide_modes ${multi_byte_modes})
list(TRANSFORM multi_byte_wide_modes APPEND -i18n)

foreach(name IN ITEMS search editing aliasing)
    kelcl_add_test(nls_${name} SOURCES ${CMAKE_CURRENT_LIST_DIR}/${name}_test.cpp MODES ${multi_byte_modes} utf8-i18n)
endforeach()
kelcl_add_random_operations(nls)
kelcl_add_test(nls_random SOURCES ${CMAKE_CURRENT_LIST_DIR}/random_test.cpp
    MODES ${multi_byte_modes} ${multi_byte_wide_modes} turkish turkish-i18n LIBRARIES nls_random_operations)
