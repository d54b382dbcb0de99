// The conversions between notations of DString beside what a user would otherwise pick. The argument is the
// number of bytes; two of the sizes stand 16 apart, to show how the work grows.
#include "bench/operations.h"

#include <kelcl/dstring.h>

#include <benchmark/benchmark.h>

#if KELCL_BENCH_GMP // the build found it, and links it
#include <gmp.h>
#endif
#if KELCL_BENCH_QT // the build found it, and links it
#include <QByteArray>
#endif

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <sstream>
#include <string>
#include <vector>

namespace {

using namespace bench;

string hexOf(string const& bytes) {
    string digits;
    digits.reserve(bytes.size() * 2);
    for (char const c : bytes) {
        auto const value = static_cast<unsigned char>(c);
        digits += "0123456789ABCDEF"[value >> 4];
        digits += "0123456789ABCDEF"[value & 15];
    }
    return digits;
}

int valueOf(char digit) { return digit <= '9' ? digit - '0' : digit - 'A' + 10; }

string ofHex(string const& digits) {
    string bytes(digits.size() / 2, '\0');
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = static_cast<char>(valueOf(digits[2 * i]) * 16 + valueOf(digits[2 * i + 1]));
    return bytes;
}

string bitsOf(string const& bytes) {
    string digits(bytes.size() * 8, '0');
    for (std::size_t i = 0; i < digits.size(); ++i)
        if ((static_cast<unsigned char>(bytes[i / 8]) >> (7 - i % 8) & 1) != 0) digits[i] = '1';
    return digits;
}

string ofBits(string const& digits) {
    string bytes(digits.size() / 8, '\0');
    for (std::size_t i = 0; i < digits.size(); ++i)
        bytes[i / 8] = static_cast<char>(bytes[i / 8] * 2 + (digits[i] - '0'));
    return bytes;
}

/// Longhand, nine digits a step: least significant limb first.
string decimalOf(string const& bytes) {
    constexpr std::uint64_t base = 1000000000;
    std::vector<std::uint64_t> limbs;
    for (char const byte : bytes) {
        std::uint64_t carry = static_cast<unsigned char>(byte);
        for (std::uint64_t& limb : limbs) {
            carry += limb * 256;
            limb = carry % base;
            carry /= base;
        }
        if (carry != 0) limbs.push_back(carry);
    }
    std::ostringstream digits;
    digits << (limbs.empty() ? 0 : limbs.back());
    digits.fill('0');
    for (std::size_t i = limbs.size(); i-- > 1;) {
        digits.width(9);
        digits << limbs[i - 1];
    }
    return digits.str();
}

string ofDecimal(string const& digits) {
    std::vector<std::uint64_t> limbs;
    for (char const digit : digits) {
        std::uint64_t carry = static_cast<std::uint64_t>(digit - '0');
        for (std::uint64_t& limb : limbs) {
            carry += limb * 10;
            limb = carry & 0xFFFFFFFF;
            carry >>= 32;
        }
        if (carry != 0) limbs.push_back(carry);
    }
    string bytes;
    for (std::size_t i = limbs.size(); i-- > 0;)
        for (int shift = 24; shift >= 0; shift -= 8)
            bytes += static_cast<char>(limbs[i] >> shift);
    return bytes.substr(std::min(bytes.find_first_not_of('\0'), bytes.size() - 1));
}

#if KELCL_BENCH_GMP
string decimalByGmp(string const& bytes) {
    mpz_t number;
    mpz_init(number);
    mpz_import(number, bytes.size(), 1, 1, 1, 0, bytes.data());
    string digits(mpz_sizeinbase(number, 10) + 2, '\0');
    mpz_get_str(digits.data(), 10, number);
    mpz_clear(number);
    digits.resize(std::strlen(digits.c_str()));
    return digits;
}

string ofDecimalByGmp(string const& digits) {
    mpz_t number;
    mpz_init_set_str(number, digits.c_str(), 10);
    string bytes((mpz_sizeinbase(number, 2) + 7) / 8, '\0');
    mpz_export(bytes.data(), nullptr, 1, 1, 1, 0, number);
    mpz_clear(number);
    return bytes;
}
#endif

void registerNotations() {
    Work("c2x", texts, randomBytes, hexOf)
        .byKelcl([](DString const& s) { return DString(s).c2x(); })
#if KELCL_BENCH_QT
        .byQt([](QByteArray const& t) { return t.toHex().toUpper(); })
#endif
        .byStandard("std", hexOf);
    Work("x2c", texts, hexDigits, ofHex)
        .byKelcl([](DString const& s) { return DString(s).x2c(); })
#if KELCL_BENCH_QT
        .byQt([](QByteArray const& t) { return QByteArray::fromHex(t); })
#endif
        .byStandard("std", ofHex);
    Work("c2b", texts, randomBytes, bitsOf)
        .byKelcl([](DString const& s) { return DString(s).c2b(); })
        .byStandard("std", bitsOf);
    Work("b2c", texts, binaryDigits, ofBits)
        .byKelcl([](DString const& s) { return DString(s).b2c(); })
        .byStandard("std", ofBits);
    Work("c2d", numbers, numberBytes, decimalOf)
        .byKelcl([](DString const& s) { return DString(s).c2d(); })
#if KELCL_BENCH_GMP
        .byStandard("gmp", decimalByGmp)
#endif
        .byStandard("longhand", decimalOf);
    Work("d2c", numbers, decimalDigits, ofDecimal)
        .byKelcl([](DString const& s) { return DString(s).d2c(); })
#if KELCL_BENCH_GMP
        .byStandard("gmp", ofDecimalByGmp)
#endif
        .byStandard("longhand", ofDecimal);
}

[[maybe_unused]] bool const registered = [] {
    registerNotations();
    return true;
}();

} // namespace
