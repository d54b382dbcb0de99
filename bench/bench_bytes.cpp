// The byte kernels beside what a user would otherwise pick: the C library, the standard library, and GMP for
// numbers. Every pair works on the same bytes, and their results are compared before anything is timed. The
// argument is the number of bytes that are read.

#include "bytes/byte_edit.h"
#include "bytes/byte_search.h"
#include "bytes/byte_set.h"
#include "bytes/decimal.h"
#include "bytes/digits.h"
#include "bytes/wildcard.h"
#include "bytes/word_separators.h"

#include <benchmark/benchmark.h>

#if KELCL_BENCH_GMP // the build found it
#include <gmp.h>
#endif

#include <algorithm>
#include <cctype>
#include <cstring>
#include <random>
#include <string>
#include <string_view>

namespace {

using kelcl::ByteSet;

std::size_t sizeOf(benchmark::State const& state) { return static_cast<std::size_t>(state.range(0)); }

std::string randomBytes(std::size_t n) {
    std::mt19937 random(7);
    std::string text(n, '\0');
    for (char& byte : text)
        byte = static_cast<char>(random());
    return text;
}

/// Words of two to nine small letters in lines of about 70 bytes.
std::string proseOf(std::size_t n) {
    std::mt19937 random(11);
    std::string text;
    while (text.size() < n) {
        for (std::size_t length = 2 + random() % 8; length > 0; --length)
            text.push_back("etaoinshrdlucmfwypvbgk"[std::min(random() % 22, random() % 22)]);
        text.push_back(random() % 12 == 0 ? '\n' : ' ');
    }
    text.resize(n);
    return text;
}

void keep(std::size_t value) { benchmark::DoNotOptimize(value); }

/// Times `work(text)`, once `work` and `reference` are seen to agree.
template <class Work, class Reference>
void timeAnswer(benchmark::State& state, std::string const& text, Work work, Reference reference) {
    if (work(text) != reference(text)) {
        state.SkipWithError("the results differ");
        return;
    }
    for (auto step : state) {
        char const* data = text.data();
        benchmark::DoNotOptimize(data);
        keep(work(std::string_view(data, text.size())));
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

/// Times `work(out, in, n)`, which writes `room` bytes, once it is seen to write what `reference` does.
template <class Work, class Reference>
void timeEdit(benchmark::State& state, std::string const& in, std::size_t room, Work work,
              Reference reference) {
    std::string out(room, '\0');
    std::string expected(room, '\0');
    work(out.data(), in.data(), in.size());
    reference(expected.data(), in.data(), in.size());
    if (out != expected) {
        state.SkipWithError("the results differ");
        return;
    }
    for (auto step : state) {
        char* target = out.data();
        benchmark::DoNotOptimize(target);
        work(target, in.data(), in.size());
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(in.size()));
}

void sizes(benchmark::internal::Benchmark* benchmark) {
    for (std::int64_t const size : {64, 1024, 1 << 20})
        benchmark->Arg(size);
}

// Registers the two functions as <work>_kelcl and <work>_<other>, each checked against the other.
#define KELCL_COMPARE_ANSWER(work, other, input)                                                             \
    void work##_kelcl(benchmark::State& state) { timeAnswer(state, input, work##Ours, work##Theirs); }       \
    void work##_##other(benchmark::State& state) { timeAnswer(state, input, work##Theirs, work##Ours); }     \
    BENCHMARK(work##_kelcl)->Apply(sizes);                                                                   \
    BENCHMARK(work##_##other)->Apply(sizes)

#define KELCL_COMPARE_EDIT(work, other, input, room)                                                         \
    void work##_kelcl(benchmark::State& state) { timeEdit(state, input, room, work##Ours, work##Theirs); }   \
    void work##_##other(benchmark::State& state) { timeEdit(state, input, room, work##Theirs, work##Ours); } \
    BENCHMARK(work##_kelcl)->Apply(sizes);                                                                   \
    BENCHMARK(work##_##other)->Apply(sizes)

std::size_t offsetOf(void const* found, std::string_view text) {
    return found != nullptr ? static_cast<std::size_t>(static_cast<char const*>(found) - text.data())
                            : kelcl::notFound;
}

// The yardstick
// -----------------------------------------------------------------------------------------------

void copying_memcpy(benchmark::State& state) {
    auto const copy = [](char* out, char const* in, std::size_t n) { std::memcpy(out, in, n); };
    timeEdit(state, randomBytes(sizeOf(state)), sizeOf(state), copy, copy);
}
BENCHMARK(copying_memcpy)->Apply(sizes)->Arg(2048)->Arg(8192);

// Searches
// ----------------------------------------------------------------------------------------------------

std::size_t findByteOurs(std::string_view text) { return kelcl::findByte(text, '#'); }
std::size_t findByteTheirs(std::string_view text) {
    return offsetOf(std::memchr(text.data(), '#', text.size()), text);
}
KELCL_COMPARE_ANSWER(findByte, memchr, proseOf(sizeOf(state)));

std::size_t findLastByteOurs(std::string_view text) { return kelcl::findLastByte(text, '#'); }
std::size_t findLastByteTheirs(std::string_view text) {
    return offsetOf(memrchr(text.data(), '#', text.size()), text);
}
KELCL_COMPARE_ANSWER(findLastByte, memrchr, proseOf(sizeOf(state)));

std::size_t findOtherByteOurs(std::string_view text) { return kelcl::findByteOtherThan(text, ' '); }
std::size_t findOtherByteTheirs(std::string_view text) { return text.find_first_not_of(' '); }
KELCL_COMPARE_ANSWER(findOtherByte, string_view, std::string(sizeOf(state), ' '));

std::size_t countByteOurs(std::string_view text) { return kelcl::countByte(text, 'e'); }
std::size_t countByteTheirs(std::string_view text) {
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), 'e'));
}
KELCL_COMPARE_ANSWER(countByte, std_count, proseOf(sizeOf(state)));

constexpr std::string_view missingWord = "tenfolds";

std::size_t findPatternOurs(std::string_view text) { return kelcl::findPattern(text, missingWord); }
std::size_t findPatternTheirs(std::string_view text) {
    return offsetOf(memmem(text.data(), text.size(), missingWord.data(), missingWord.size()), text);
}
KELCL_COMPARE_ANSWER(findPattern, memmem, proseOf(sizeOf(state)));

std::size_t findInStringOurs(std::string_view text) { return kelcl::findPattern(text, missingWord); }
std::size_t findInStringTheirs(std::string_view text) { return text.find(missingWord); }
KELCL_COMPARE_ANSWER(findInString, string_view, proseOf(sizeOf(state)));

std::size_t findLastPatternOurs(std::string_view text) { return kelcl::findLastPattern(text, missingWord); }
std::size_t findLastPatternTheirs(std::string_view text) { return text.rfind(missingWord); }
KELCL_COMPARE_ANSWER(findLastPattern, string_view, proseOf(sizeOf(state)));

constexpr std::string_view nearMiss = "aaaaaaaaaaaaaaaabaaaaaaaaaaaaaaaa";

std::size_t findNearMissOurs(std::string_view text) { return kelcl::findPattern(text, nearMiss); }
std::size_t findNearMissTheirs(std::string_view text) {
    return offsetOf(memmem(text.data(), text.size(), nearMiss.data(), nearMiss.size()), text);
}
KELCL_COMPARE_ANSWER(findNearMiss, memmem, std::string(sizeOf(state), 'a'));

std::size_t findLastNearMissOurs(std::string_view text) { return kelcl::findLastPattern(text, nearMiss); }
std::size_t findLastNearMissTheirs(std::string_view text) { return text.rfind(nearMiss); }
KELCL_COMPARE_ANSWER(findLastNearMiss, string_view, std::string(sizeOf(state), 'a'));

// Sets
// --------------------------------------------------------------------------------------------------------

constexpr char separators[] = "\t\n\v\f\r ";
// None of these 62 is in the text, so that all of it is gone through.
constexpr char manyBytes[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789!\"#$%&'()*+,-./:;<=>?@[\\]^";

std::size_t findInSixOurs(std::string_view text) { return kelcl::findFirstIn(text, kelcl::wordSeparators); }
std::size_t findInSixTheirs(std::string_view text) {
    std::size_t const n = std::strcspn(text.data(), separators);
    return n == text.size() ? kelcl::notFound : n;
}
KELCL_COMPARE_ANSWER(findInSix, strcspn, std::string(sizeOf(state), 'x'));

std::size_t findInManyOurs(std::string_view text) {
    return kelcl::findFirstIn(text, ByteSet(std::string_view(manyBytes)));
}
std::size_t findInManyTheirs(std::string_view text) {
    std::size_t const n = std::strcspn(text.data(), manyBytes);
    return n == text.size() ? kelcl::notFound : n;
}
KELCL_COMPARE_ANSWER(findInMany, strcspn_made_anew, proseOf(sizeOf(state)));

std::size_t findLastInSixOurs(std::string_view text) {
    return kelcl::findLastIn(text, kelcl::wordSeparators);
}
std::size_t findLastInSixTheirs(std::string_view text) { return text.find_last_of(separators); }
KELCL_COMPARE_ANSWER(findLastInSix, string_view, std::string(sizeOf(state), 'x'));

std::size_t countWordsOurs(std::string_view text) {
    return kelcl::countRunsNotIn(text, kelcl::wordSeparators);
}
std::size_t countWordsTheirs(std::string_view text) {
    std::size_t result = 0;
    for (std::size_t at = std::strspn(text.data(), separators); at < text.size(); ++result) {
        at += std::strcspn(text.data() + at, separators);
        at += std::strspn(text.data() + at, separators);
    }
    return result;
}
KELCL_COMPARE_ANSWER(countWords, strspn, proseOf(sizeOf(state)));

std::size_t isDigitsOurs(std::string_view text) { return kelcl::isDecimalDigits(text) ? 1 : 0; }
std::size_t isDigitsTheirs(std::string_view text) {
    return std::strspn(text.data(), "0123456789") == text.size() ? 1 : 0;
}
KELCL_COMPARE_ANSWER(isDigits, strspn, std::string(sizeOf(state), '7'));

std::size_t isHexOurs(std::string_view text) { return kelcl::isHexDigits(text) ? 1 : 0; }
std::size_t isHexTheirs(std::string_view text) {
    return std::strspn(text.data(), "0123456789ABCDEFabcdef") == text.size() ? 1 : 0;
}
KELCL_COMPARE_ANSWER(isHex, strspn, std::string(sizeOf(state), 'B'));

std::size_t isAsciiOurs(std::string_view text) { return kelcl::isAscii(text) ? 1 : 0; }
std::size_t isAsciiTheirs(std::string_view text) {
    return std::none_of(text.begin(), text.end(), [](char byte) { return byte < 0; }) ? 1 : 0;
}
KELCL_COMPARE_ANSWER(isAscii, none_of, proseOf(sizeOf(state)));

std::size_t isLikeOurs(std::string_view text) {
    return kelcl::matchesWildcard(text, "*nothing*like*th?s*", '*', '?') ? 1 : 0;
}
std::size_t isLikeTheirs(std::string_view text) {
    std::size_t const first = text.find("nothing");
    return first != kelcl::notFound && text.find("like", first) != kelcl::notFound ? 1 : 0;
}
KELCL_COMPARE_ANSWER(isLike, string_view_find, proseOf(sizeOf(state)));

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
    kelcl::combine(out, n, "key", 3, kelcl::BitOperation::bitExclusiveOr);
    kelcl::combine(out, n, "key", 3, kelcl::BitOperation::bitExclusiveOr);
}
void combineThreeTheirs(char* out, char const*, std::size_t n) {
    for (int round = 0; round < 2; ++round)
        for (std::size_t i = 0; i < n; ++i)
            out[i] = static_cast<char>(out[i] ^ "key"[i % 3]);
}
KELCL_COMPARE_EDIT(combineThree, loop_twice, randomBytes(sizeOf(state)), sizeOf(state));

void combineEqualOurs(char* out, char const* in, std::size_t n) {
    kelcl::combine(out, n, in, n, kelcl::BitOperation::bitOr);
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

// Decimal notation
// --------------------------------------------------------------------------------------------

std::string writtenDecimal(std::string_view bytes) {
    std::string result(kelcl::decimalDigitsBound(bytes.size()), '\0');
    result.resize(kelcl::writeDecimal(result.data(), bytes));
    return result;
}

std::string readBytes(std::string_view digits) {
    std::string result(kelcl::bytesBound(digits.size()), '\0');
    result.resize(kelcl::readDecimal(result.data(), digits));
    return result;
}

#if KELCL_BENCH_GMP
class Number {
public:
    Number() { mpz_init(value_); }
    ~Number() { mpz_clear(value_); }
    Number(Number const&) = delete;
    Number& operator=(Number const&) = delete;
    operator mpz_ptr() { return value_; }

private:
    mpz_t value_;
};

std::string gmpWrittenDecimal(std::string_view bytes) {
    Number number;
    mpz_import(number, bytes.size(), 1, 1, 0, 0, bytes.data());
    std::string result(mpz_sizeinbase(number, 10) + 2, '\0');
    mpz_get_str(result.data(), 10, number);
    result.resize(std::strlen(result.c_str()));
    return result;
}

std::string gmpReadBytes(std::string_view digits) {
    Number number;
    mpz_set_str(number, digits.data(), 10);
    std::string result((mpz_sizeinbase(number, 2) + 7) / 8, '\0');
    mpz_export(result.data(), nullptr, 1, 1, 0, 0, number);
    return result;
}
#endif

template <class Work, class Reference>
void timeConversion(benchmark::State& state, std::string const& in, Work work, Reference reference) {
    if (work(in) != reference(in)) {
        state.SkipWithError("the results differ");
        return;
    }
    for (auto step : state) {
        std::string const result = work(in);
        benchmark::DoNotOptimize(result.data());
    }
}

/// A number of so many bytes, none of them led by a zero byte.
std::string numberOf(benchmark::State const& state) {
    std::string bytes = randomBytes(sizeOf(state));
    bytes[0] = '\x7F';
    return bytes;
}

void numberSizes(benchmark::internal::Benchmark* benchmark) {
    for (std::int64_t const size : {8, 64, 1024, 4096, 16384, 65536, 262144})
        benchmark->Arg(size);
}

void writeDecimal_kelcl(benchmark::State& state) {
    timeConversion(state, numberOf(state), writtenDecimal,
                   [](std::string const& bytes) { return writtenDecimal(readBytes(writtenDecimal(bytes))); });
}
BENCHMARK(writeDecimal_kelcl)->Apply(numberSizes);

void readDecimal_kelcl(benchmark::State& state) {
    timeConversion(state, writtenDecimal(numberOf(state)), readBytes,
                   [&](std::string const&) { return numberOf(state); });
}
BENCHMARK(readDecimal_kelcl)->Apply(numberSizes);

#if KELCL_BENCH_GMP
void writeDecimal_gmp(benchmark::State& state) {
    timeConversion(state, numberOf(state), gmpWrittenDecimal, writtenDecimal);
}
BENCHMARK(writeDecimal_gmp)->Apply(numberSizes);

void readDecimal_gmp(benchmark::State& state) {
    timeConversion(state, writtenDecimal(numberOf(state)), gmpReadBytes, readBytes);
}
BENCHMARK(readDecimal_gmp)->Apply(numberSizes);
#endif

} // namespace
