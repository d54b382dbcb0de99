# The tests of what buffers and strings can do. Single-byte modes for what looks at bytes of 0x80 and above; what is the
# same everywhere on ASCII text also runs in two multi-byte locales.
set(single_byte_modes C C-i18n latin1 latin1-i18n)
set(ascii_modes ${single_byte_modes} utf8 utf8-i18n sjis sjis-i18n)

foreach(name IN ITEMS search editing classes compare)
    kelcl_add_test(ops_${name} SOURCES ${CMAKE_CURRENT_LIST_DIR}/ops_${name}_test.cpp MODES ${single_byte_modes})
endforeach()

# This one brings a function of its own that stands in for one of the C library.
kelcl_add_test(ops_collation_error SOURCES ${CMAKE_CURRENT_LIST_DIR}/ops_collation_error_test.cpp MODES C C-i18n)
