// The one way to fail: every throw of the library goes through here.
#ifndef KELCL_EXCEPT_RAISE_H
#define KELCL_EXCEPT_RAISE_H

#include <kelcl/dexception.h>

#include <type_traits>

namespace kelcl {

/// Adds the location, logs the exception, and throws a copy of it. The exception belongs to the caller, which
/// gives it no further use.
template <class Exception>
[[noreturn]] void raise(Exception&& exception, DExceptionLocation const& location) {
    exception.addLocation(location);
    exception.logExceptionData();
    throw std::remove_reference_t<Exception>(exception);
}

} // namespace kelcl

#endif
