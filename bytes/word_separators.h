// The six bytes that separate words, in every locale: as a set, and as callers of the virtual searches pass
// them.
#ifndef KELCL_BYTES_WORD_SEPARATORS_H
#define KELCL_BYTES_WORD_SEPARATORS_H

#include "bytes/byte_set.h"

#include <string_view>

namespace kelcl {

inline constexpr unsigned int separatorCount = 6;
inline constexpr char separatorBytes[separatorCount + 1] = "\t\n\v\f\r ";

inline constexpr ByteSet wordSeparators{separatorBytes};

/// Calls `search` with the given members, or with the separators' set, which is at hand, if they are meant.
template <class Search>
auto withSet(char const* bytes, unsigned int count, Search search) {
    if (bytes == separatorBytes) return search(wordSeparators);
    return search(std::string_view(bytes, count));
}

} // namespace kelcl

#endif
