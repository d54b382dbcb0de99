// Conversion between multi-byte and wide characters as far as it is known without the C library: plain UTF-8,
// and what the tables of other encodings hold. How failures are reported is in dnlsutil.cpp.
#ifndef KELCL_CHARACTERS_CONVERSION_H
#define KELCL_CHARACTERS_CONVERSION_H

#include "bytes/byte_set.h"
#include "characters/stepping.h"

#include <climits>
#include <cstddef>
#include <cwchar>

namespace kelcl {

/// The bytes that stand for the wide characters of the same value, as far as is known without asking the C
/// library. ASCII for the most part, but SJIS has a yen sign for the backslash.
ByteSet const& identityBytes(Encoding const& encoding);

/// Widens the characters at the front of a text up to the first one that is not known without the C library.
Extent widenKnown(wchar_t* out, char const* in, std::size_t n, Encoding const& encoding);

/// Narrows wide characters up to the first one that is not known so, or does not fit whole into `room` bytes.
Extent narrowKnown(char* out, std::size_t room, wchar_t const* in, std::size_t n, Encoding const& encoding);

/// One wide character after the other as multi-byte bytes.
class NarrowCharacter {
public:
    NarrowCharacter() : NarrowCharacter(Encoding::current()) {}
    explicit NarrowCharacter(Encoding const& encoding) : encoding_(encoding) {}

    /// False for a value that is no character of the locale.
    bool convert(wchar_t value) {
        std::size_t length = 0;
        if (encoding_.isUtf8) {
            length = utf8LengthOf(value);
            if (length != 0) writeUtf8(bytes_, value, length);
        } else if (encoding_.table != nullptr) {
            length = encoding_.table->encode(value, bytes_);
        }
        if (length == 0) return askLibrary(value);
        length_ = static_cast<unsigned int>(length);
        return true;
    }
    char const* bytes() const { return bytes_; }
    unsigned int length() const { return length_; }

private:
    bool askLibrary(wchar_t value);

    Encoding encoding_;
    unsigned int length_ = 0;
    char bytes_[MB_LEN_MAX];
};

} // namespace kelcl

#endif
