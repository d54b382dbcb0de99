# The byte kernels. They stand by themselves: the tests build them once more, without vector intrinsics.
set(kernels
    byte_edit byte_pattern byte_search byte_set byte_translate decimal decimal_limbs digits pattern_matches spectrum wildcard)
list(TRANSFORM kernels PREPEND ${CMAKE_CURRENT_SOURCE_DIR}/)
list(TRANSFORM kernels APPEND .cpp)
target_sources(kelcl PRIVATE ${kernels})
set_property(GLOBAL PROPERTY kelcl_kernel_sources ${kernels})

# The loops are written for a compiler that vectorises, in every build that optimises at all.
set_source_files_properties(${kernels} TARGET_DIRECTORY kelcl PROPERTIES
    COMPILE_OPTIONS "$<$<NOT:$<CONFIG:Debug>>:-O3>")
