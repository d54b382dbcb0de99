# The warnings that everything in this tree is clean under. Not part of what a consumer of the library sees.
add_library(kelcl_warnings INTERFACE)
target_compile_options(kelcl_warnings INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow
    -Wnon-virtual-dtor)
# With -flto some warnings come from the linker.
target_link_options(kelcl_warnings INTERFACE -Wall -Wextra)
if(KELCL_WERROR)
    target_compile_options(kelcl_warnings INTERFACE -Werror)
    target_link_options(kelcl_warnings INTERFACE -Werror)
endif()
