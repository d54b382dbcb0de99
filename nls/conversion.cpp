// Conversion between multi-byte and wide characters.
#include "nls/conversion.h"

#include "string/byte_search.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace kelcl {

namespace {

constexpr ByteSet asciiBytes = ByteSet::where([](unsigned char byte) { return byte < 0x80; });
constexpr ByteSet invariantBytes =
    ByteSet::where([](unsigned char byte) { return isInvariant(static_cast<char>(byte)); });

} // namespace

ByteSet const& bytesEqualToTheirWideValue(bool isUtf8) { return isUtf8 ? asciiBytes : invariantBytes; }

std::size_t widenEqualBytes(wchar_t* out, char const* in, std::size_t n, bool isUtf8) {
    std::size_t const found = findFirstNotIn({in, n}, bytesEqualToTheirWideValue(isUtf8));
    std::size_t const count = found == notFound ? n : found;
    for (std::size_t i = 0; i < count; ++i)
        out[i] = static_cast<wchar_t>(in[i]);
    return count;
}

bool isPlainUtf8Text(char const* text, std::size_t n) {
    if (!isUtf8Locale()) return false;
    for (std::size_t at = 0; at < n;) {
        if (static_cast<signed char>(text[at]) >= 0 && n - at >= sizeof(std::uint64_t)) {
            std::uint64_t block;
            std::memcpy(&block, text + at, sizeof block);
            if ((block & 0x8080808080808080U) == 0) {
                at += sizeof block;
                continue;
            }
        }
        std::size_t const length = plainUtf8Length(text + at, n - at);
        if (length == 0) return false;
        at += length;
    }
    return true;
}

bool NarrowCharacter::encodeUtf8(wchar_t value) {
    if (value < 0x80 || value > 0x10FFFF || (value >= 0xD800 && value <= 0xDFFF)) return false;
    length_ = value < 0x800 ? 2 : value < 0x10000 ? 3 : 4;
    constexpr unsigned char marks[] = {0, 0, 0xC0, 0xE0, 0xF0};
    for (unsigned int i = length_; i-- > 1; value >>= 6)
        bytes_[i] = static_cast<char>(0x80 | (value & 0x3F));
    bytes_[0] = static_cast<char>(marks[length_] | value);
    return true;
}

bool NarrowCharacter::askLibrary(wchar_t value) {
    std::size_t const length = std::wcrtomb(bytes_, value, &state_);
    if (length == static_cast<std::size_t>(-1)) return false;
    length_ = static_cast<unsigned int>(length);
    return true;
}

} // namespace kelcl
