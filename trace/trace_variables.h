// The trace variables of the environment, under either form of their names. What their values mean is not
// here.
#ifndef KELCL_TRACE_TRACE_VARIABLES_H
#define KELCL_TRACE_TRACE_VARIABLES_H

#include <kelcl/dstring.h>

#include <cstdlib>

namespace kelcl {

/// The value of the variable, or null. The name with a blank wins over the one with an underscore, which
/// shells can set.
inline char const* traceVariable(char const* blankName, char const* underscoreName) {
    char const* const value = std::getenv(blankName);
    return value != nullptr ? value : std::getenv(underscoreName);
}

/// The value as it is compared and used: without white space around it, in upper case. Null gives the empty
/// string.
inline DString normalizedValue(char const* value) {
    DString text(value);
    text.strip().upperCase();
    return text;
}

} // namespace kelcl

#endif
