// Conversion between multi-byte and wide characters.
#include "nls/conversion.h"

#include "string/byte_search.h"

namespace kelcl {

namespace {

constexpr ByteSet noBytes;
constexpr ByteSet asciiBytes = ByteSet::where([](unsigned char byte) { return byte < 0x80; });

} // namespace

ByteSet const& bytesOfTheirOwnValue(Encoding const& encoding) {
    if (encoding.isUtf8) return asciiBytes;
    return encoding.table != nullptr ? encoding.table->bytesOfTheirOwnValue() : noBytes;
}

namespace {

Stretch widenByTable(wchar_t* out, char const* in, std::size_t n, EncodingTable const& table) {
    Stretch done{0, 0};
    while (done.bytes < n) {
        wchar_t value;
        std::size_t const length = table.decode(in + done.bytes, n - done.bytes, value);
        if (length == 0) break;
        out[done.characters++] = value;
        done.bytes += length;
    }
    return done;
}

} // namespace

Stretch widenKnown(wchar_t* out, char const* in, std::size_t n, Encoding const& encoding) {
    if (encoding.isUtf8) return widenUtf8(out, in, n);
    if (encoding.table != nullptr) return widenByTable(out, in, n, *encoding.table);
    return {0, 0};
}

bool isPlainUtf8Text(char const* text, std::size_t n) {
    return isUtf8Locale() && plainUtf8Run(text, n).bytes == n;
}

bool NarrowCharacter::askLibrary(wchar_t value) {
    std::size_t const length = std::wcrtomb(bytes_, value, &state_);
    if (length == static_cast<std::size_t>(-1)) return false;
    length_ = static_cast<unsigned int>(length);
    return true;
}

} // namespace kelcl
