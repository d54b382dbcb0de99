// What the tests of searches of single-byte buffers share: a text, and tests of a host. No tests are here.
#ifndef KELCL_TESTS_BUFFERS_DBUFFER_SEARCH_SUPPORT_H
#define KELCL_TESTS_BUFFERS_DBUFFER_SEARCH_SUPPORT_H

#include "tests/buffers/operation_support.h"

namespace searching {

using operations::Owned;

inline Owned abcabc() { return Owned("abcabc"); }

inline int isDigit(int c) { return c >= '0' && c <= '9'; }
inline int isVowel(int c) { return c == 'a' || c == 'e' || c == 'i' || c == 'o' || c == 'u' ? 7 : 0; }

} // namespace searching

#endif
