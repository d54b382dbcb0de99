// What both comparisons of buffers share: the result codes, and the failure of the C library's collation.
#ifndef KELCL_BUFFERS_COLLATION_H
#define KELCL_BUFFERS_COLLATION_H

#include "except/raise.h"

#include <kelcl/dexception.h>

#include <cstdio>
#include <cstring>
#include <cwchar>

namespace kelcl {

/// The result codes of the buffers' `compare`: where the receiver sorts.
enum Order : int { equal = 0, after = 1, before = 2 };

/// The order of texts of which the shorter one is the front of the other.
inline Order orderOfLengths(unsigned int length, unsigned int otherLength) {
    if (length == otherLength) return equal;
    return length < otherLength ? before : after;
}

/// The C library's collations as functions that may set errno: it declares them pure, so an optimiser that
/// sees the names may drop what looks at errno afterwards.
inline int (*const volatile collateBytes)(char const*, char const*) = std::strcoll;
inline int (*const volatile collateWide)(wchar_t const*, wchar_t const*) = std::wcscoll;

[[noreturn]] inline void raiseCollationError(char const* function, int error,
                                             DExceptionLocation const& location) {
    char text[48];
    std::snprintf(text, sizeof text, "%s errno = %d\n", function, error);
    raise(DInvalidRequest(text, static_cast<unsigned long>(error), DException::recoverable), location);
}

} // namespace kelcl

#endif
