// Conversion between multi-byte and wide characters: runs of ASCII at once, UTF-8 directly where every C
// library agrees, the C library otherwise. How failures are reported is in dnlsutil.cpp.
#ifndef KELCL_NLS_CONVERSION_H
#define KELCL_NLS_CONVERSION_H

#include "nls/stepping.h"
#include "string/byte_set.h"

#include <climits>
#include <cstddef>
#include <cwchar>

namespace kelcl {

/// The bytes that stand for the wide characters of the same value, as far as is known without asking the C
/// library. ASCII for the most part, but SJIS has a yen sign for the backslash.
ByteSet const& bytesOfTheirOwnValue(Encoding const& encoding);

/// Widens the characters at the front of a text up to the first one that is not known without the C library.
Stretch widenKnown(wchar_t* out, char const* in, std::size_t n, Encoding const& encoding);

/// Whether the locale is a UTF-8 one and the text is valid beyond doubt: it then converts to wide and back to
/// itself.
bool isPlainUtf8Text(char const* text, std::size_t n);

/// One wide character after the other as multi-byte bytes.
class NarrowCharacter {
public:
    NarrowCharacter() : NarrowCharacter(Encoding::current()) {}
    explicit NarrowCharacter(Encoding const& encoding)
        : isUtf8_(encoding.isUtf8), ownValues_(bytesOfTheirOwnValue(encoding)) {}

    /// False for a value that is no character of the locale.
    bool convert(wchar_t value) {
        if (value >= 0 && value < 0x80 && ownValues_.contains(static_cast<char>(value))) {
            bytes_[0] = static_cast<char>(value);
            length_ = 1;
            return true;
        }
        std::size_t const length = isUtf8_ ? utf8LengthOf(value) : 0;
        if (length == 0) return askLibrary(value);
        writeUtf8(bytes_, value, length);
        length_ = static_cast<unsigned int>(length);
        return true;
    }
    char const* bytes() const { return bytes_; }
    unsigned int length() const { return length_; }

private:
    bool askLibrary(wchar_t value);

    bool isUtf8_;
    ByteSet const& ownValues_;
    unsigned int length_ = 0;
    char bytes_[MB_LEN_MAX];
    std::mbstate_t state_{};
};

} // namespace kelcl

#endif
