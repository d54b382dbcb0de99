// The byte kernels that write beside what a user would otherwise pick: the C library, the standard library,
// an open loop.
#include "bench/bytes.h"
#include "bytes/byte_edit.h"
#include "bytes/digits.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstring>
#include <string>

namespace {

using namespace bench;

// Edits
// -------------------------------------------------------------------------------------------------------

void upperCaseOurs(char* out, char const* in, std::size_t n) { kelcl::copyUpperCase(out, in, n); }
void upperCaseTheirs(char* out, char const* in, std::size_t n) {
    std::transform(in, in + n, out, [](char byte) {
        return static_cast<char>(std::toupper(static_cast<unsigned char>(byte)));
    });
}
KELCL_COMPARE_EDIT(upperCase, toupper, randomBytes(sizeOf(state)), sizeOf(state));

void complementOurs(char* out, char const* in, std::size_t n) { kelcl::copyComplement(out, in, n); }
void complementTheirs(char* out, char const* in, std::size_t n) {
    std::transform(in, in + n, out, [](char byte) { return static_cast<char>(~byte); });
}
KELCL_COMPARE_EDIT(complement, transform, randomBytes(sizeOf(state)), sizeOf(state));

void reverseOurs(char* out, char const* in, std::size_t n) { kelcl::copyReversed(out, in, n); }
void reverseTheirs(char* out, char const* in, std::size_t n) { std::reverse_copy(in, in + n, out); }
KELCL_COMPARE_EDIT(reverse, reverse_copy, randomBytes(sizeOf(state)), sizeOf(state));

// In place, twice: the text is then what it was, whichever of the two is timed.
void reverseInPlaceOurs(char* out, char const*, std::size_t n) {
    kelcl::reverseInPlace(out, n);
    kelcl::reverseInPlace(out, n);
}
void reverseInPlaceTheirs(char* out, char const*, std::size_t n) {
    std::reverse(out, out + n);
    std::reverse(out, out + n);
}
KELCL_COMPARE_EDIT(reverseInPlace, std_reverse_twice, randomBytes(sizeOf(state)), sizeOf(state));

struct Table {
    unsigned char entries[256];
    Table(bool all) {
        for (unsigned int value = 0; value < 256; ++value)
            entries[value] =
                static_cast<unsigned char>(all || value == 'e' || value == ' ' ? value * 7 + 3 : value);
    }
};

template <bool all>
void translateByTable(char* out, char const* in, std::size_t n) {
    static Table const table(all);
    kelcl::copyTranslated(out, in, n, table.entries);
}
template <bool all>
void translateByLoop(char* out, char const* in, std::size_t n) {
    static Table const table(all);
    std::transform(in, in + n, out, [](char byte) {
        return static_cast<char>(table.entries[static_cast<unsigned char>(byte)]);
    });
}
constexpr auto translateAllOurs = translateByTable<true>;
constexpr auto translateAllTheirs = translateByLoop<true>;
KELCL_COMPARE_EDIT(translateAll, transform, randomBytes(sizeOf(state)), sizeOf(state));
constexpr auto translateTwoOurs = translateByTable<false>;
constexpr auto translateTwoTheirs = translateByLoop<false>;
KELCL_COMPARE_EDIT(translateTwo, transform, proseOf(sizeOf(state)), sizeOf(state));

// The key is applied to what is there, twice, for the same reason as above.
void combineThreeOurs(char* out, char const*, std::size_t n) {
    kelcl::combine(out, out, n, "key", 3, kelcl::BitOperation::bitExclusiveOr);
    kelcl::combine(out, out, n, "key", 3, kelcl::BitOperation::bitExclusiveOr);
}
void combineThreeTheirs(char* out, char const*, std::size_t n) {
    for (int round = 0; round < 2; ++round)
        for (std::size_t i = 0; i < n; ++i)
            out[i] = static_cast<char>(out[i] ^ "key"[i % 3]);
}
KELCL_COMPARE_EDIT(combineThree, loop_twice, randomBytes(sizeOf(state)), sizeOf(state));

void combineEqualOurs(char* out, char const* in, std::size_t n) {
    kelcl::combine(out, out, n, in, n, kelcl::BitOperation::bitOr);
}
void combineEqualTheirs(char* out, char const* in, std::size_t n) {
    for (std::size_t i = 0; i < n; ++i)
        out[i] = static_cast<char>(out[i] | in[i]);
}
KELCL_COMPARE_EDIT(combineEqual, loop, randomBytes(sizeOf(state)), sizeOf(state));

void fillOurs(char* out, char const* in, std::size_t n) {
    std::memcpy(out, in, 3);
    kelcl::fillRepeating(out, n, 3);
}
void fillTheirs(char* out, char const* in, std::size_t n) {
    for (std::size_t i = 0; i < n; i += 3)
        std::memcpy(out + i, in, std::min<std::size_t>(3, n - i));
}
KELCL_COMPARE_EDIT(fill, copies, randomBytes(sizeOf(state)), sizeOf(state));

// Digits
// ------------------------------------------------------------------------------------------------------

std::string hexOf(std::string const& bytes) {
    std::string result(2 * bytes.size(), '\0');
    kelcl::writeHex(result.data(), bytes.data(), bytes.size());
    return result;
}

std::string binaryOf(std::string const& bytes) {
    std::string result(8 * bytes.size(), '\0');
    kelcl::writeBinary(result.data(), bytes.data(), bytes.size());
    return result;
}

void writeHexOurs(char* out, char const* in, std::size_t n) { kelcl::writeHex(out, in, n); }
void writeHexTheirs(char* out, char const* in, std::size_t n) {
    for (std::size_t i = 0; i < n; ++i) {
        auto const byte = static_cast<unsigned char>(in[i]);
        out[2 * i] = "0123456789ABCDEF"[byte / 16];
        out[2 * i + 1] = "0123456789ABCDEF"[byte % 16];
    }
}
KELCL_COMPARE_EDIT(writeHex, table, randomBytes(sizeOf(state)), 2 * sizeOf(state));

void readHexOurs(char* out, char const* in, std::size_t n) { kelcl::readHex(out, in, n); }
void readHexTheirs(char* out, char const* in, std::size_t n) {
    auto const value = [](char digit) { return digit <= '9' ? digit - '0' : (digit & 15) + 9; };
    for (std::size_t i = 0; i < n; i += 2)
        out[i / 2] = static_cast<char>(value(in[i]) * 16 + value(in[i + 1]));
}
KELCL_COMPARE_EDIT(readHex, loop, hexOf(randomBytes(sizeOf(state))), sizeOf(state));

void writeBinaryOurs(char* out, char const* in, std::size_t n) { kelcl::writeBinary(out, in, n); }
void writeBinaryTheirs(char* out, char const* in, std::size_t n) {
    for (std::size_t i = 0; i < 8 * n; ++i)
        out[i] = static_cast<char>('0' + (static_cast<unsigned char>(in[i / 8]) >> (7 - i % 8) & 1));
}
KELCL_COMPARE_EDIT(writeBinary, loop, randomBytes(sizeOf(state)), 8 * sizeOf(state));

void readBinaryOurs(char* out, char const* in, std::size_t n) { kelcl::readBinary(out, in, n); }
void readBinaryTheirs(char* out, char const* in, std::size_t n) {
    for (std::size_t i = 0; i < n; i += 8) {
        int value = 0;
        for (std::size_t j = 0; j < 8; ++j)
            value = value * 2 + (in[i + j] - '0');
        out[i / 8] = static_cast<char>(value);
    }
}
KELCL_COMPARE_EDIT(readBinary, loop, binaryOf(randomBytes(sizeOf(state))), sizeOf(state));

} // namespace
