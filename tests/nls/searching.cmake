# The tests of searching and editing multi-byte texts. The tests set the national-language switch themselves where it
# matters; the random operations take it from the mode.
set(multi_byte_modes utf8 eucjp sjis gb18030 big5 euckr euctw ${kelcl_pair_modes})
set(multi_byte_wide_modes ${multi_byte_modes})
list(TRANSFORM multi_byte_wide_modes APPEND -i18n)

set(nls_search_tests search extraction predicate_search)
set(nls_editing_tests editing)
set(nls_aliasing_tests aliasing)
foreach(name IN ITEMS search editing aliasing)
    list(TRANSFORM nls_${name}_tests PREPEND ${CMAKE_CURRENT_LIST_DIR}/)
    list(TRANSFORM nls_${name}_tests APPEND _test.cpp)
    kelcl_add_test(nls_${name} SOURCES ${nls_${name}_tests} MODES ${multi_byte_modes} utf8-i18n)
endforeach()
kelcl_add_random_operations(nls)
kelcl_add_test(nls_random SOURCES ${CMAKE_CURRENT_LIST_DIR}/random_test.cpp
    MODES ${multi_byte_modes} ${multi_byte_wide_modes} turkish turkish-i18n LIBRARIES nls_random_operations)

kelcl_add_test(nls_occurrences SOURCES ${CMAKE_CURRENT_LIST_DIR}/occurrences_test.cpp MODES ${multi_byte_modes} utf8-i18n)
kelcl_add_test(nls_search_memory MODES ${multi_byte_modes}
    SOURCES ${CMAKE_CURRENT_LIST_DIR}/search_memory_test.cpp ${PROJECT_SOURCE_DIR}/tests/support/failing_allocations.cpp)
# Brings counting forms of functions of the C library, which the sanitizers would replace.
if(NOT KELCL_SANITIZERS)
    kelcl_add_test(nls_growth SOURCES ${CMAKE_CURRENT_LIST_DIR}/growth_test.cpp MODES ${multi_byte_modes})
    # A compiler that takes the loop of its memcmp for one would have it call itself.
    target_compile_options(test_nls_growth PRIVATE -fno-builtin -fno-tree-loop-distribute-patterns)
endif()
