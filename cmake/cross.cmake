# The toolchain for another machine: Debian's cross compiler for it, and qemu-user to run what it makes, tests among
# them. KELCL_MACHINE is the machine's name as both call it; the presets set it. `./dev cross` installs them, and makes the
# folder in which qemu finds that machine's files.
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES KELCL_MACHINE)

set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR ${KELCL_MACHINE})
set(CMAKE_C_COMPILER ${KELCL_MACHINE}-linux-gnu-gcc) # GoogleTest asks for one
set(CMAKE_CXX_COMPILER ${KELCL_MACHINE}-linux-gnu-g++)
set(CMAKE_CROSSCOMPILING_EMULATOR qemu-${KELCL_MACHINE} -L ${CMAKE_CURRENT_LIST_DIR}/../build/sysroot/${KELCL_MACHINE})

# Headers and libraries that lie on this machine are not for that one; programs are.
set(CMAKE_FIND_ROOT_PATH /usr/${KELCL_MACHINE}-linux-gnu)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
