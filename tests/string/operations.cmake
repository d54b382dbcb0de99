# The tests of what buffers and strings can do. Single-byte modes for what looks at bytes of 0x80 and above; what is the
# same everywhere on ASCII text also runs in two multi-byte locales.
set(single_byte_modes C C-i18n latin1 latin1-i18n)
set(ascii_modes ${single_byte_modes} utf8 utf8-i18n sjis sjis-i18n)

foreach(name IN ITEMS search editing classes compare frontend)
    kelcl_add_test(ops_${name} SOURCES ${CMAKE_CURRENT_LIST_DIR}/ops_${name}_test.cpp MODES ${single_byte_modes})
endforeach()
kelcl_add_random_operations(string)
kelcl_add_test(ops_random SOURCES ${CMAKE_CURRENT_LIST_DIR}/ops_random_test.cpp
    MODES ${single_byte_modes} LIBRARIES string_random_operations)
foreach(name IN ITEMS ascii words radix bits)
    kelcl_add_test(ops_${name} SOURCES ${CMAKE_CURRENT_LIST_DIR}/ops_${name}_test.cpp MODES ${ascii_modes})
endforeach()
kelcl_add_test(ops_overflow SOURCES ${CMAKE_CURRENT_LIST_DIR}/ops_overflow_test.cpp MODES C utf8 utf8-i18n sjis)

# These bring functions of their own that stand in for some of the C and C++ library.
kelcl_add_test(ops_collation_error MODES C C-i18n
    SOURCES ${CMAKE_CURRENT_LIST_DIR}/ops_collation_error_test.cpp ${PROJECT_SOURCE_DIR}/tests/support/failing_allocations.cpp)
kelcl_add_test(ops_allocation MODES ${single_byte_modes}
    SOURCES ${CMAKE_CURRENT_LIST_DIR}/ops_allocation_test.cpp ${PROJECT_SOURCE_DIR}/tests/support/failing_allocations.cpp)

# Texts near 4 GiB, in up to 9 GiB of memory: only for those who ask for the label.
kelcl_add_test(ops_huge SOURCES ${CMAKE_CURRENT_LIST_DIR}/ops_huge_test.cpp MODES C LABELS huge TIMEOUT 1800)
