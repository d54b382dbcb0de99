# Runs the port with stand-ins for vcpkg's functions.
# Usage: cmake -D SOURCE=… -D BUILD=… -D WORK=… -D CXX=… -P vcpkg.cmake
set(CURRENT_PORT_DIR ${SOURCE}/packaging/vcpkg/kelcl)
set(CURRENT_PACKAGES_DIR ${WORK}/packages)
file(REMOVE_RECURSE ${WORK})

# Configures an archive, as vcpkg does on Linux, and refuses options that the project does not know.
function(vcpkg_cmake_configure)
    cmake_parse_arguments(PARSE_ARGV 0 arg "" SOURCE_PATH OPTIONS)
    execute_process(COMMAND ${CMAKE_COMMAND} -S ${arg_SOURCE_PATH} -B ${WORK}/configured -G Ninja -D CMAKE_CXX_COMPILER=${CXX}
            -D CMAKE_BUILD_TYPE=Release -D BUILD_SHARED_LIBS=OFF ${arg_OPTIONS}
        ERROR_VARIABLE said COMMAND_ERROR_IS_FATAL ANY)
    if(NOT said STREQUAL "")
        message(FATAL_ERROR "Configuring as the port does, cmake complains: ${said}")
    endif()
endfunction()

function(vcpkg_cmake_install)
    execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${CURRENT_PACKAGES_DIR}
        OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
endfunction()

function(vcpkg_cmake_config_fixup)
    cmake_parse_arguments(PARSE_ARGV 0 arg "" CONFIG_PATH "")
    file(RENAME ${CURRENT_PACKAGES_DIR}/${arg_CONFIG_PATH} ${CURRENT_PACKAGES_DIR}/share/kelcl)
endfunction()

function(vcpkg_fixup_pkgconfig)
    if(NOT EXISTS ${CURRENT_PACKAGES_DIR}/lib/pkgconfig/kelcl.pc)
        message(FATAL_ERROR "There is no lib/pkgconfig/kelcl.pc to mend.")
    endif()
endfunction()

function(vcpkg_install_copyright)
    cmake_parse_arguments(PARSE_ARGV 0 arg "" "" FILE_LIST)
    file(INSTALL ${arg_FILE_LIST} DESTINATION ${CURRENT_PACKAGES_DIR}/share/kelcl)
endfunction()

include(${CURRENT_PORT_DIR}/portfile.cmake)

foreach(file IN ITEMS include/kelcl/kelcl.h share/kelcl/kelclConfig.cmake share/kelcl/usage share/kelcl/copyright
        share/locale/en/LC_MESSAGES/kelcl.cat)
    if(NOT EXISTS ${CURRENT_PACKAGES_DIR}/${file})
        message(FATAL_ERROR "The port does not install ${file}.")
    endif()
endforeach()
file(READ ${CURRENT_PORT_DIR}/vcpkg.json manifest)
string(JSON version GET "${manifest}" version-semver)
file(STRINGS ${SOURCE}/CMakeLists.txt lines REGEX "^    VERSION ${version}$")
if(NOT lines)
    message(FATAL_ERROR "vcpkg.json has version ${version}, the library another.")
endif()
