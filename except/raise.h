// The one way to fail: every throw of the library goes through here.
#ifndef KELCL_EXCEPT_RAISE_H
#define KELCL_EXCEPT_RAISE_H

#include <kelcl/dexception.h>

#include <concepts>

namespace kelcl {

/// The exception that `make` returns, with the location added, logged.
template <std::invocable Make>
auto logged(Make const& make, DExceptionLocation const& location) {
    auto exception = make();
    exception.addLocation(location);
    exception.logExceptionData();
    return exception;
}

/// Makes, logs and throws. Whatever `make` needs for it (a message text, say) is gone before the throw:
/// unwinding then meets nothing to clean up, each of which costs a third of a throw.
template <std::invocable Make>
[[noreturn]] void raise(Make const& make, DExceptionLocation const& location) {
    throw logged(make, location);
}

/// The same for an exception that is there already.
template <std::derived_from<DException> Exception>
[[noreturn]] void raise(Exception const& exception, DExceptionLocation const& location) {
    raise([&] { return Exception(exception); }, location);
}

} // namespace kelcl

#endif
