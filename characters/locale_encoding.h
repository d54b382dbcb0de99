// What the current locale's encoding is, as far as the rules for bytes depend on it. Asked anew by each
// operation, since the locale may change between two.
#ifndef KELCL_CHARACTERS_LOCALE_ENCODING_H
#define KELCL_CHARACTERS_LOCALE_ENCODING_H

#include <kelcl/detail/library_buffers.h>

#include <cstdlib>
#include <langinfo.h>

namespace kelcl {

/// Whether characters of the current locale may have several bytes.
inline bool isMultiByteLocale() { return MB_CUR_MAX >= 2; }

/// Whether the C library's name of an encoding is that of UTF-8. Written out, as a call for it would be
/// noticeable.
inline bool isUtf8(char const* codeset) {
    for (char const expected : "UTF-8")
        if (*codeset++ != expected) return false;
    return true;
}

/// Whether the characters of the locale are those of UTF-8.
inline bool isUtf8Codeset() { return isUtf8(nl_langinfo(CODESET)); }

/// Whether the C library can be shown all of them: not where MB_CUR_MAX is smaller than the characters, as a
/// character map of one's own can have it. What looks at MB_CUR_MAX bytes finds only pieces of the longer
/// ones there.
inline bool isUtf8Locale() { return MB_CUR_MAX >= 4 && isUtf8Codeset(); }

/// The same as standsAloneAnywhere() where it is known whether the encoding is UTF-8, in which they are all
/// below 0x80.
inline bool standsAlone(char byte, bool isUtf8) {
    return isUtf8 ? static_cast<signed char>(byte) >= 0 : standsAloneAnywhere(byte);
}

} // namespace kelcl

#endif
