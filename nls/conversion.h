// Conversion between multi-byte and wide characters: runs of ASCII at once, UTF-8 directly where every C
// library agrees, the C library otherwise. How failures are reported is in dnlsutil.cpp.
#ifndef KELCL_NLS_CONVERSION_H
#define KELCL_NLS_CONVERSION_H

#include "nls/stepping.h"
#include "string/byte_set.h"

#include <climits>
#include <cstddef>
#include <cwchar>
#include <string_view>

namespace kelcl {

/// Whether an ASCII character is itself in every encoding: those that national variants of ASCII replace are
/// not, and SJIS has a yen sign for the backslash.
constexpr bool isInvariant(char byte) {
    return static_cast<signed char>(byte) >= 0 &&
           std::string_view("#$@[\\]^`{|}~").find(byte) == std::string_view::npos;
}

/// The bytes that stand for the wide characters of the same value.
ByteSet const& bytesEqualToTheirWideValue(bool isUtf8);

/// Widens such bytes up to the first other one, or `n`, and returns how many.
std::size_t widenEqualBytes(wchar_t* out, char const* in, std::size_t n, bool isUtf8);

/// Whether the locale is a UTF-8 one and the text is valid beyond doubt: it then converts to wide and back to
/// itself.
bool isPlainUtf8Text(char const* text, std::size_t n);

/// One wide character after the other as multi-byte bytes.
class NarrowCharacter {
public:
    NarrowCharacter() : isUtf8_(isUtf8Locale()) {}

    /// False for a value that is no character of the locale.
    bool convert(wchar_t value) {
        if (value >= 0 && value < 0x80 && (isUtf8_ || isInvariant(static_cast<char>(value)))) {
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
