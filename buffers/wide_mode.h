// Whether the national-language switch is on.
#ifndef KELCL_BUFFERS_WIDE_MODE_H
#define KELCL_BUFFERS_WIDE_MODE_H

#include <kelcl/dstring.h>

namespace kelcl {

/// Whether operations on multi-byte text take their wide paths, and comparisons the locale's collation.
inline bool isWideMode() { return DString::fgI18NState == 1; }

} // namespace kelcl

#endif
