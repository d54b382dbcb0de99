# What single benchmarks need beyond the others.

# bench_kernels times hidden functions, so it is linked from the library's objects.
function(kelcl_bench_kernels target)
    target_sources(${target} PRIVATE $<TARGET_OBJECTS:kelcl>)
    target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/include)
endfunction()

# GMP beside the number conversions, where it is installed.
function(kelcl_bench_gmp target)
    find_path(KELCL_GMP_INCLUDE_DIR gmp.h)
    find_library(KELCL_GMP_LIBRARY gmp)
    mark_as_advanced(KELCL_GMP_INCLUDE_DIR KELCL_GMP_LIBRARY)
    if(KELCL_GMP_INCLUDE_DIR AND KELCL_GMP_LIBRARY)
        target_compile_definitions(${target} PRIVATE KELCL_BENCH_GMP=1)
        target_include_directories(${target} PRIVATE ${KELCL_GMP_INCLUDE_DIR})
        target_link_libraries(${target} PRIVATE ${KELCL_GMP_LIBRARY})
    endif()
endfunction()

# ICU and GLib beside the multi-byte text, where they are installed.
function(kelcl_bench_unicode target)
    find_package(PkgConfig)
    if(NOT PkgConfig_FOUND)
        return()
    endif()
    pkg_check_modules(KELCL_ICU IMPORTED_TARGET icu-uc)
    if(KELCL_ICU_FOUND)
        target_compile_definitions(${target} PRIVATE KELCL_BENCH_ICU=1)
        target_link_libraries(${target} PRIVATE PkgConfig::KELCL_ICU)
    endif()
    pkg_check_modules(KELCL_GLIB IMPORTED_TARGET glib-2.0)
    if(KELCL_GLIB_FOUND)
        target_compile_definitions(${target} PRIVATE KELCL_BENCH_GLIB=1)
        target_link_libraries(${target} PRIVATE PkgConfig::KELCL_GLIB)
    endif()
endfunction()
