// The state of the library as a host sees it that is not linked with the library and loads it when it needs
// it.
#include "tests/base/start_up_state.h"

#include <dlfcn.h>
#include <new>

namespace {

template <class Value>
Value valueOf(void* library, char const* symbol) {
    return *static_cast<Value const*>(dlsym(library, symbol));
}

void handlerOfTheHost() { throw std::bad_alloc(); }

} // namespace

std::string observedState() {
    std::set_new_handler(handlerOfTheHost);
    void* const library = dlopen(KELCL_TEST_LIBRARY_FILE, RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) return dlerror();
    auto const handler = reinterpret_cast<std::new_handler>(dlsym(library, "_ZN11DKORVA_Init10newHandlerEv"));
    return describedState(handler != nullptr && std::get_new_handler() == handler,
                          valueOf<void*>(library, "_ZN16DExceptStaticPtr15defaultFunctionE"),
                          valueOf<void*>(library, "_ZN16DExceptStaticPtr12userFunctionE"),
                          valueOf<int>(library, "_ZN7DString11fgI18NStateE"));
}
