// The environment variables that configure the library.
#ifndef KELCL_EXCEPT_ENVIRONMENT_H
#define KELCL_EXCEPT_ENVIRONMENT_H

#include <cstdlib>

namespace kelcl {

/// The value of the variable; null when there is none. A program that runs with more rights than its caller
/// has, set-user-id for instance, takes none: the caller must not choose which files it opens.
inline char const* environmentVariable(char const* name) noexcept { return ::secure_getenv(name); }

} // namespace kelcl

#endif
