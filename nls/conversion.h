// Conversion between multi-byte and wide characters: runs of ASCII at once, UTF-8 directly where every C
// library agrees, the C library otherwise. How failures are reported is in dnlsutil.cpp.
#ifndef KELCL_NLS_CONVERSION_H
#define KELCL_NLS_CONVERSION_H

#include "nls/stepping.h"

#include <climits>
#include <cstddef>
#include <cwchar>

namespace kelcl {

/// Widens ASCII bytes up to the first other one, or `n`, and returns how many. ASCII has its own values in
/// the wide encoding of every locale.
std::size_t widenAscii(wchar_t* out, char const* in, std::size_t n);

/// Whether the locale is a UTF-8 one and the text is valid beyond doubt: it then converts to wide and back to
/// itself.
bool isPlainUtf8Text(char const* text, std::size_t n);

/// One wide character after the other as multi-byte bytes.
class NarrowCharacter {
public:
    NarrowCharacter() : isUtf8_(isUtf8Locale()) {}

    /// False for a value that is no character of the locale.
    bool convert(wchar_t value) {
        if (value >= 0 && value < 0x80) {
            bytes_[0] = static_cast<char>(value);
            length_ = 1;
            return true;
        }
        return isUtf8_ && encodeUtf8(value) ? true : askLibrary(value);
    }
    char const* bytes() const { return bytes_; }
    unsigned int length() const { return length_; }

private:
    bool encodeUtf8(wchar_t value);
    bool askLibrary(wchar_t value);

    bool isUtf8_;
    unsigned int length_ = 0;
    char bytes_[MB_LEN_MAX];
    std::mbstate_t state_{};
};

} // namespace kelcl

#endif
