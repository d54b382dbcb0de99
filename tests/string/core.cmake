# Storage and sharing of texts, and what a DString is without its vocabulary of operations.
foreach(test IN ITEMS buffer string first_use)
    kelcl_add_test(core_${test} SOURCES ${CMAKE_CURRENT_LIST_DIR}/core_${test}_test.cpp MODES ALL)
endforeach()
kelcl_add_test(core_append MODES ALL
    SOURCES ${CMAKE_CURRENT_LIST_DIR}/core_append_test.cpp ${PROJECT_SOURCE_DIR}/tests/support/failing_allocations.cpp)

kelcl_add_test(core_streams SOURCES ${CMAKE_CURRENT_LIST_DIR}/core_streams_test.cpp MODES C latin1-i18n utf8 sjis-i18n)
kelcl_add_test(core_reading SOURCES ${CMAKE_CURRENT_LIST_DIR}/core_reading_test.cpp
    MODES C latin1 utf8 utf8-i18n eucjp sjis sjis-i18n)
kelcl_add_test(core_allocation MODES C utf8 eucjp-i18n
    SOURCES ${CMAKE_CURRENT_LIST_DIR}/core_allocation_test.cpp ${PROJECT_SOURCE_DIR}/tests/support/failing_allocations.cpp)
kelcl_add_test(core_decimal_point SOURCES ${CMAKE_CURRENT_LIST_DIR}/core_decimal_point_test.cpp)
kelcl_add_test(core_host_buffer SOURCES ${CMAKE_CURRENT_LIST_DIR}/core_host_buffer_test.cpp MODES C latin1-i18n)
kelcl_add_test(core_switch SOURCES ${CMAKE_CURRENT_LIST_DIR}/core_switch_test.cpp NO_MAIN STARTS_PROGRAMS)

# Hosts use the headers in every dialect from C++17 on.
kelcl_add_test(core_interface SOURCES ${CMAKE_CURRENT_LIST_DIR}/core_interface_test.cpp MODES ALL)
kelcl_add_test(core_interface_cxx17 SOURCES ${CMAKE_CURRENT_LIST_DIR}/core_interface_test.cpp MODES C utf8-i18n)
set_target_properties(test_core_interface_cxx17 PROPERTIES CXX_STANDARD 17)
