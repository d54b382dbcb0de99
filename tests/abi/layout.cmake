# What hosts that were compiled against an older header still rely on: sizes, offsets and the order of virtual tables.
kelcl_add_test(abi_layout SOURCES ${CMAKE_CURRENT_LIST_DIR}/abi_layout_test.cpp MODES C LIBRARIES ${CMAKE_DL_LIBS})
