# The tests of the byte kernels run twice: as the library has them, and with their portable forms only, which are what
# other processors get.
set(kernel_tests kernels_decimal kernels_digits kernels_edit kernels_search kernels_sequence kernels_set kernels_wildcard)
list(TRANSFORM kernel_tests PREPEND ${CMAKE_CURRENT_LIST_DIR}/)
list(TRANSFORM kernel_tests APPEND .cpp)

if(KELCL_SANITIZERS)
    # Their plain models do so much that optimising them pays even there.
    foreach(test IN ITEMS decimal search set wildcard)
        set_source_files_properties(${CMAKE_CURRENT_LIST_DIR}/kernels_${test}.cpp PROPERTIES COMPILE_OPTIONS -O1)
    endforeach()
endif()

kelcl_add_internal_test(kernels SOURCES ${kernel_tests} TIMEOUT 1200) # long only where lines are counted

get_property(kernel_sources GLOBAL PROPERTY kelcl_kernel_sources)
kelcl_add_test(kernels_portable SOURCES ${kernel_tests} ${kernel_sources} TIMEOUT 1200 NO_LIBRARY)
target_compile_definitions(test_kernels_portable PRIVATE KELCL_PORTABLE_KERNELS)
target_compile_options(test_kernels_portable PRIVATE ${kelcl_coverage})
