// The six bytes that separate words, as callers of the virtual searches pass them, and sets made of such
// arguments.
#ifndef KELCL_BYTES_WORD_SEPARATORS_H
#define KELCL_BYTES_WORD_SEPARATORS_H

#include "bytes/byte_set.h"

namespace kelcl {

inline constexpr unsigned int separatorCount = 6;
inline constexpr char separatorBytes[separatorCount + 1] = "\t\n\v\f\r ";

constexpr bool isSeparator(char byte) { return byte == ' ' || (byte >= '\t' && byte <= '\r'); }

/// Calls `search` with the set of the given bytes; the separators' set, which word operations search for all
/// the time, is not made anew.
template <class Search>
auto withSet(char const* bytes, unsigned int count, Search search) {
    if (bytes == separatorBytes) return search(wordSeparators);
    return search(ByteSet({bytes, count}));
}

} // namespace kelcl

#endif
