// Conversion between multi-byte and wide characters.
#include "characters/conversion.h"

#include "bytes/byte_search.h"

namespace kelcl {

namespace {

constexpr ByteSet noBytes;
constexpr ByteSet asciiBytes = ByteSet::where([](unsigned char byte) { return byte < 0x80; });

} // namespace

ByteSet const& identityBytes(Encoding const& encoding) {
    if (encoding.isUtf8) return asciiBytes;
    return encoding.table != nullptr ? encoding.table->identityBytes() : noBytes;
}

namespace {

Extent widenByTable(wchar_t* out, char const* in, std::size_t n, EncodingTable const& table) {
    Extent done{0, 0};
    while (done.bytes < n) {
        wchar_t value;
        std::size_t const length = table.decode(in + done.bytes, n - done.bytes, value);
        if (length == 0) break;
        out[done.characters++] = value;
        done.bytes += length;
    }
    return done;
}

Extent narrowByTable(char* out, std::size_t room, wchar_t const* in, std::size_t n,
                     EncodingTable const& table) {
    constexpr std::size_t most = 2;
    Extent done{0, 0};
    while (done.characters < n && room - done.bytes >= most) {
        std::size_t const length = table.encode(in[done.characters], out + done.bytes);
        if (length == 0) break;
        done.bytes += length;
        ++done.characters;
    }
    return done;
}

} // namespace

Extent widenKnown(wchar_t* out, char const* in, std::size_t n, Encoding const& encoding) {
    if (encoding.isUtf8) return widenUtf8(out, in, n);
    if (encoding.table != nullptr) return widenByTable(out, in, n, *encoding.table);
    return {0, 0};
}

Extent narrowKnown(char* out, std::size_t room, wchar_t const* in, std::size_t n, Encoding const& encoding) {
    if (encoding.isUtf8) return narrowUtf8(out, room, in, n);
    if (encoding.table != nullptr) return narrowByTable(out, room, in, n, *encoding.table);
    return {0, 0};
}

bool NarrowCharacter::askLibrary(wchar_t value) {
    std::size_t const length = writeCharacter(value, bytes_);
    if (length == invalidSequence) return false;
    if (encoding_.table != nullptr) encoding_.table->noteBytes(value, bytes_, length);
    length_ = static_cast<unsigned int>(length);
    return true;
}

} // namespace kelcl
