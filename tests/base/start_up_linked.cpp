// The state of the library as a host sees it that is linked with the library: before main, in a static
// object.
#include "tests/base/start_up_state.h"

#include <kelcl/dexception.h>
#include <kelcl/dstring.h>

#include <new>

namespace {

std::string const stateBeforeMain =
    describedState(std::get_new_handler() == &DKORVA_Init::newHandler, DExceptStaticPtr::defaultFunction,
                   DExceptStaticPtr::userFunction, DString::fgI18NState);

} // namespace

std::string observedState() { return stateBeforeMain; }
