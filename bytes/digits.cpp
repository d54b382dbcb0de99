// Hexadecimal and binary digits as plain loops, and the use of the faster forms of digits_blocks.h before
// them.

#include "bytes/digits.h"

#include "bytes/byte_scan.h"
#include "bytes/digits_blocks.h"

namespace kelcl {

namespace {

constexpr ByteSet hexDigits{"0123456789ABCDEFabcdef"};

KELCL_INLINED char hexDigit(unsigned int value) {
    return static_cast<char>(value + (value > 9 ? 'A' - 10 : '0'));
}

KELCL_INLINED void writeHexDigits(char* __restrict out, char const* __restrict in, std::size_t n) {
    for (std::size_t i = 0; i < n; ++i) {
        auto const byte = static_cast<unsigned char>(in[i]);
        out[2 * i] = hexDigit(byte >> 4U);
        out[2 * i + 1] = hexDigit(byte & 15U);
    }
}

/// Letters of either case have the bit 0x40, which digits lack, and their low bits count from 1.
unsigned int hexValue(char digit) {
    auto const code = static_cast<unsigned char>(digit);
    return (code & 15U) + (code >> 6U) * 9U;
}

/// The value of eight binary digits, or of fewer.
char byteOfBits(char const* in, std::size_t digits) {
    unsigned int value = 0;
    for (std::size_t i = 0; i < digits; ++i)
        value = value << 1U | (static_cast<unsigned char>(in[i]) & 1U);
    return static_cast<char>(value);
}

} // namespace

bool isHexDigits(std::string_view text) { return findFirst(text, Not{InSet{hexDigits}}) == notFound; }

bool isDecimalDigits(std::string_view text) { return findFirst(text, Not{InRange{'0', '9'}}) == notFound; }

bool isBinaryDigits(std::string_view text) { return findFirst(text, Not{InRange{'0', '1'}}) == notFound; }

void writeHex(char* out, char const* in, std::size_t n) { multiversioned<writeHexDigits>(out, in, n); }

void readHex(char* out, char const* in, std::size_t digits) {
    if (digits % 2 != 0) {
        *out++ = static_cast<char>(hexValue(*in++));
        --digits;
    }
    std::size_t i = KELCL_DISPATCH(blocks::readHexBlocks(out, in, digits), 0);
    for (; i < digits; i += 2)
        out[i / 2] = static_cast<char>(hexValue(in[i]) << 4U | hexValue(in[i + 1]));
}

void writeBinary(char* out, char const* in, std::size_t n) {
    std::size_t i = KELCL_DISPATCH(blocks::writeBinaryBlocks(out, in, n), 0);
    for (; i < n; ++i)
        for (unsigned int bit = 0; bit < 8; ++bit)
            out[8 * i + bit] = static_cast<char>('0' + (static_cast<unsigned char>(in[i]) >> (7 - bit) & 1U));
}

void readBinary(char* out, char const* in, std::size_t digits) {
    if (std::size_t const shortGroup = digits % 8; shortGroup != 0) {
        *out++ = byteOfBits(in, shortGroup);
        in += shortGroup;
        digits -= shortGroup;
    }
    std::size_t i = KELCL_DISPATCH(blocks::readBinaryBlocks(out, in, digits), 0);
    for (; i < digits; i += 8)
        out[i / 8] = byteOfBits(in + i, 8);
}

} // namespace kelcl
