// The byte kernels that search beside what a user would otherwise pick: the C library, the standard library,
// an open loop.
#include "bench/bytes.h"
#include "bytes/byte_search.h"
#include "bytes/byte_set.h"
#include "bytes/digits.h"
#include "bytes/wildcard.h"
#include "bytes/word_separators.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

namespace {

using namespace bench;

using kelcl::ByteSet;

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

} // namespace
