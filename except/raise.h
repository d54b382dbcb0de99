// The one way to fail: every throw of the library goes through here.
#ifndef KELCL_EXCEPT_RAISE_H
#define KELCL_EXCEPT_RAISE_H

#include <kelcl/dexception.h>

namespace kelcl {

/// Adds the location, logs the exception, and throws a copy of it.
template <class Exception>
[[noreturn]] void raise(Exception exception, DExceptionLocation const& location) {
    exception.addLocation(location);
    exception.logExceptionData();
    throw Exception(exception);
}

} // namespace kelcl

#endif
