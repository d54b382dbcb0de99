// The trace variables of the environment, under either form of their names. What their values mean is not
// here.
#ifndef KELCL_TRACE_TRACE_VARIABLES_H
#define KELCL_TRACE_TRACE_VARIABLES_H

#include "except/environment.h"

#include <kelcl/dstring.h>

namespace kelcl {

/// The value of the variable, or null. The name with a blank wins over the one with an underscore, which
/// shells can set.
inline char const* traceVariable(char const* blankName, char const* underscoreName) {
    char const* const value = environmentVariable(blankName);
    return value != nullptr ? value : environmentVariable(underscoreName);
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
