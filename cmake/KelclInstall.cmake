# What `cmake --install` lays down: library, headers, CMake package and pkg-config file, and the target that takes it all away
# again. catalog/ installs the message catalogs.
include(CMakePackageConfigHelpers)

set(kelcl_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/kelcl)

install(TARGETS kelcl EXPORT kelclTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT kelcl_runtime NAMELINK_COMPONENT kelcl_development
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT kelcl_development)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/kelcl
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT kelcl_development
    FILES_MATCHING PATTERN "*.h")

install(EXPORT kelclTargets
    NAMESPACE kelcl:: DESTINATION ${kelcl_package_dir} COMPONENT kelcl_development)
configure_package_config_file(
    ${CMAKE_CURRENT_LIST_DIR}/kelclConfig.cmake.in ${PROJECT_BINARY_DIR}/cmake/kelclConfig.cmake
    INSTALL_DESTINATION ${kelcl_package_dir}
    PATH_VARS CMAKE_INSTALL_LOCALEDIR)
write_basic_package_version_file(
    ${PROJECT_BINARY_DIR}/cmake/kelclConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(
    FILES ${PROJECT_BINARY_DIR}/cmake/kelclConfig.cmake ${PROJECT_BINARY_DIR}/cmake/kelclConfigVersion.cmake
    DESTINATION ${kelcl_package_dir} COMPONENT kelcl_development)

# kelcl.pc finds its prefix from where it lies, so that an installed tree can be moved. Under /usr it names it, as pkg-config
# then knows that compilers look there without being told.
set(kelcl_pkgconfig_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
set(kelcl_pc_prefix /usr)
if(NOT CMAKE_INSTALL_PREFIX STREQUAL "/usr")
    cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX
        BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX}/${kelcl_pkgconfig_dir} OUTPUT_VARIABLE kelcl_pc_prefix)
    set(kelcl_pc_prefix "\${pcfiledir}/${kelcl_pc_prefix}")
endif()
foreach(directory IN ITEMS LIBDIR INCLUDEDIR LOCALEDIR)
    if(IS_ABSOLUTE "${CMAKE_INSTALL_${directory}}")
        set(kelcl_pc_${directory} "${CMAKE_INSTALL_${directory}}")
    else()
        set(kelcl_pc_${directory} "\${prefix}/${CMAKE_INSTALL_${directory}}")
    endif()
endforeach()
set(kelcl_pc_libs "-lkelcl")
if(NOT BUILD_SHARED_LIBS)
    string(APPEND kelcl_pc_libs " -Wl,-u,${kelcl_start_up_symbol}")
endif()
configure_file(${CMAKE_CURRENT_LIST_DIR}/kelcl.pc.in ${PROJECT_BINARY_DIR}/cmake/kelcl.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/cmake/kelcl.pc
    DESTINATION ${kelcl_pkgconfig_dir} COMPONENT kelcl_development)

if(PROJECT_IS_TOP_LEVEL)
    add_custom_target(uninstall
        COMMAND ${CMAKE_COMMAND} -D BUILD=${PROJECT_BINARY_DIR} -P ${CMAKE_CURRENT_LIST_DIR}/uninstall.cmake
        COMMENT "Removing what was last installed"
        VERBATIM)
endif()
