// The searches for bytes and patterns against plain ones. Set searches are in byte_set_test.cpp.

#include "bytes/byte_search.h"
#include "bytes/byte_walk.h"
#include "bytes/pattern_matches.h"
#include "tests/bytes/texts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <vector>

namespace {

using namespace bytes_test;
using kelcl::notFound;

static_assert(notFound == std::string_view::npos, "the plain forms below return npos");

void expectByteSearchesAsPlain(std::string_view text, char byte) {
    ASSERT_EQ(kelcl::findByte(text, byte), text.find(byte));
    ASSERT_EQ(kelcl::findLastByte(text, byte), text.rfind(byte));
    ASSERT_EQ(kelcl::findByteOtherThan(text, byte), text.find_first_not_of(byte));
    ASSERT_EQ(kelcl::findLastByteOtherThan(text, byte), text.find_last_not_of(byte));
    ASSERT_EQ(kelcl::countByte(text, byte),
              static_cast<std::size_t>(std::count(text.begin(), text.end(), byte)));
    kelcl::OccurrencesOf occurrences(byte, text);
    for (std::size_t at = text.find(byte); at != notFound; at = text.find(byte, at + 1))
        ASSERT_EQ(occurrences.next(), at);
    ASSERT_EQ(occurrences.next(), notFound);
    ASSERT_EQ(occurrences.next(), notFound) << "again";
}

TEST(ByteSearch, FindsTheSingleHitAtEveryOffsetOfEveryLength) {
    for (std::size_t n = 0; n <= longest; ++n) {
        atEveryPlace(std::string(n, '.'), 'x',
                     [](std::string_view text) { expectByteSearchesAsPlain(text, 'x'); });
        for (std::size_t hit = 0; hit < n; ++hit) {
            std::string text(n, '.');
            text[hit] = 'x';
            GuardedPages static pages;
            expectByteSearchesAsPlain(pages.atEnd(text), 'x');
            expectByteSearchesAsPlain(pages.atEnd(text), '.');
            expectByteSearchesAsPlain(pages.atBegin(text), 'x');
            expectByteSearchesAsPlain(pages.atBegin(text), '.');
        }
    }
}

TEST(ByteSearch, AgreesWithPlainSearchesOnRandomTextAtEveryAlignment) {
    std::mt19937 random(101);
    for (std::size_t n = 0; n <= longest; ++n) {
        std::string const text = randomText(random, n, std::string_view("aaaaaaab\0\x80\xFF", 11));
        for (char const byte : {'a', 'b', '\0', '\x80', '\xFF', 'c'})
            atEveryPlace(text, byte,
                         [=](std::string_view placed) { expectByteSearchesAsPlain(placed, byte); });
    }
}

TEST(ByteSearch, FindsAndCountsEveryByteValueInALongText) {
    std::mt19937 random(102);
    std::string const text = randomBytes(random, 5000);
    for (char const byte : allBytes())
        expectByteSearchesAsPlain(text, byte);
}

TEST(ByteSearch, CountsMoreHitsThanAByteHolds) {
    EXPECT_EQ(kelcl::countByte(std::string(100'003, 'x'), 'x'), 100'003U);
}

/// Where the steps of the long searches begin and end: near either end, and at every place between.
TEST(ByteSearch, FindsTheHitsAtEveryOffsetOfLongTextsAtEveryAlignment) {
    GuardedPages pages(9);
    for (std::size_t const n : {kelcl::longForByte - 1, kelcl::longForByte, kelcl::longForByte + 1,
                                kelcl::longForByte + 63, kelcl::longForByte + 700})
        for (std::size_t back = 0; back < 70; ++back) {
            std::string text(n, '.');
            text[back] = text[n - 1 - back] = text[n / 2 + 5 * back] = 'x';
            std::size_t const first = back;
            std::size_t const last = n - 1 - back;
            for (bool const atEnd : {true, false}) {
                std::string_view const placed = atEnd ? pages.atEnd(text) : pages.atBegin(text);
                EXPECT_EQ(kelcl::findByte(placed, 'x'), first);
                EXPECT_EQ(kelcl::findLastByte(placed, 'x'), last);
                EXPECT_EQ(kelcl::findByte(placed.substr(back + 1), 'x'), n / 2 + 4 * back - 1);
                EXPECT_EQ(kelcl::findLastByte(placed.substr(0, last), 'x'), n / 2 + 5 * back);
                EXPECT_EQ(kelcl::findByte(placed, 'y'), notFound);
                EXPECT_EQ(kelcl::findLastByte(placed, 'y'), notFound);
            }
        }
}

TEST(ByteSearch, FindsTheSingleHitAtEveryOffsetAroundThoseThatAreNearInALongText) {
    static GuardedPages pages(9);
    std::size_t const n = kelcl::longForByte + 77;
    for (std::size_t hit = 900; hit < 1700; ++hit) {
        std::string text(n, '.');
        text[hit] = 'x';
        EXPECT_EQ(kelcl::findByte(pages.atEnd(text), 'x'), hit);
        text[hit] = '.';
        text[n - 1 - hit] = 'x';
        EXPECT_EQ(kelcl::findLastByte(pages.atEnd(text), 'x'), n - 1 - hit);
    }
}

TEST(ByteSearch, AcceptsANullPointerAsAnEmptyText) {
    expectByteSearchesAsPlain(std::string_view(), 'x');
    EXPECT_TRUE(kelcl::isAscii(std::string_view()));
    EXPECT_EQ(kelcl::findPattern(std::string_view(), "ab"), notFound);
    EXPECT_EQ(kelcl::findLastPattern(std::string_view(), "ab"), notFound);
    EXPECT_EQ(kelcl::countPattern(std::string_view(), "ab"), 0U);
}

TEST(AsciiCheck, SeesASingleHighByteAtEveryOffsetOfEveryLength) {
    for (std::size_t n = 0; n <= longest; ++n) {
        atEveryPlace(std::string(n, '\x7F'), '\x80',
                     [](std::string_view text) { ASSERT_TRUE(kelcl::isAscii(text)); });
        for (std::size_t hit = 0; hit < n; ++hit) {
            std::string text(n, '\0');
            text[hit] = '\x80';
            ASSERT_FALSE(kelcl::isAscii(text));
        }
    }
}

std::size_t plainCount(std::string_view text, std::string_view pattern) {
    std::size_t result = 0;
    for (std::size_t at = text.find(pattern); at != notFound; at = text.find(pattern, at + pattern.size()))
        ++result;
    return result;
}

std::vector<std::uint32_t> plainList(std::string_view text, std::string_view pattern, std::size_t most) {
    std::vector<std::uint32_t> result;
    for (std::size_t at = text.find(pattern); at != std::string_view::npos && result.size() < most;
         at = text.find(pattern, at + pattern.size()))
        result.push_back(static_cast<std::uint32_t>(at));
    return result;
}

std::vector<std::uint32_t> listed(std::string_view text, std::string_view pattern, std::size_t most) {
    std::vector<std::uint32_t> result(most + 1, 12345);
    std::size_t const count = kelcl::listPattern(text, pattern, result.data(), most);
    EXPECT_EQ(result.back(), 12345U);
    result.resize(count);
    return result;
}

void expectPatternSearchesAsPlain(std::string_view text, std::string_view pattern) {
    for (std::size_t const most : {0U, 1U, 3U, 400U})
        ASSERT_EQ(listed(text, pattern, most), plainList(text, pattern, most)) << pattern;
    ASSERT_EQ(kelcl::findPattern(text, pattern), text.find(pattern)) << pattern;
    ASSERT_EQ(kelcl::findLastPattern(text, pattern), text.rfind(pattern)) << pattern;
    ASSERT_EQ(kelcl::countPattern(text, pattern), plainCount(text, pattern)) << pattern;
}

TEST(PatternSearch, FindsTheSingleHitAtEveryOffsetOfEveryLength) {
    static GuardedPages pages;
    static GuardedPages patternPages;
    for (std::string const word : {"xy", "xyz", "x234567890", "x234567890123456789012345678901234567890y"}) {
        for (std::size_t n = 0; n <= longest; ++n) {
            atEveryPlace(std::string(n, '.'), 'x',
                         [&](std::string_view text) { expectPatternSearchesAsPlain(text, word); });
            for (std::size_t hit = 0; hit + word.size() <= n; ++hit) {
                std::string text(n, '.');
                text.replace(hit, word.size(), word);
                expectPatternSearchesAsPlain(pages.atEnd(text), patternPages.atEnd(word));
                expectPatternSearchesAsPlain(pages.atBegin(text), patternPages.atBegin(word));
            }
        }
    }
}

TEST(PatternSearch, FindsTheSingleHitAtEveryOffsetOfLongTexts) {
    static GuardedPages pages;
    for (std::string const word :
         {"xy", "x2y", "x234567y", "\xE4\xB8\x96\xE7\x95\x8C", "x234567890123456789012345678901234567890y"})
        for (std::size_t const n : {319U, 320U, 383U, 513U, 700U})
            for (std::size_t hit = 0; hit + word.size() <= n; ++hit) {
                std::string text(n, '.');
                for (std::size_t at = hit % 50; at + 1 < n; at += 50) // what looks like the pattern in part
                    text[at] = at % 100 < 50 ? 'x' : 'y';
                text.replace(hit, word.size(), word);
                std::string_view const placed = pages.atEnd(text);
                ASSERT_EQ(kelcl::findPattern(placed, word), text.find(word));
                ASSERT_EQ(kelcl::countPattern(placed, word), plainCount(text, word));
            }
}

TEST(PatternSearch, AgreesWithPlainSearchesOnLongTextsOfFewBytes) {
    std::mt19937 random(105);
    for (int round = 0; round < 3'000; ++round) {
        std::string text = randomText(random, 300 + random() % 1500, "..................................ab");
        for (std::size_t more = random() % 4; more > 0; --more)
            text.replace(random() % (text.size() - 9), 9, "abab.abab");
        for (std::string_view const pattern : {"ab", "a.b", "abab", "b.abab", "bab.aba"})
            expectPatternSearchesAsPlain(text, pattern);
    }
}

TEST(PatternSearch, AgreesWithPlainSearchesWhereNearlyEveryPlaceIsACandidate) {
    std::mt19937 random(103);
    for (int round = 0; round < 20'000; ++round) {
        std::string const text = randomText(random, random() % longest, "aab");
        expectPatternSearchesAsPlain(text, randomText(random, 1 + random() % 12, "aab"));
    }
}

TEST(PatternSearch, FindsPiecesOfTheTextItself) {
    std::mt19937 random(104);
    for (int round = 0; round < 20'000; ++round) {
        std::string const text = randomBytes(random, 1 + random() % 500);
        std::size_t const start = random() % text.size();
        expectPatternSearchesAsPlain(text, std::string_view(text).substr(start, 1 + random() % 60));
    }
}

TEST(PatternSearch, FindsAPatternAsLongAsTheTextAndNoneThatIsLonger) {
    std::string const text(100, 'a');
    EXPECT_EQ(kelcl::findPattern(text, text), 0U);
    EXPECT_EQ(kelcl::findLastPattern(text, text), 0U);
    EXPECT_EQ(kelcl::findPattern(text, text + 'a'), notFound);
    EXPECT_EQ(kelcl::findLastPattern(text, text + 'a'), notFound);
}

// Texts of these kinds make a search that only compares candidates take text times pattern.
TEST(PatternSearch, StaysLinearAndRightOnTextsFullOfNearMatches) {
    std::size_t const n = 400'000;
    std::string const half(n / 2, 'a');
    std::string const early = std::string(11, 'a') + "b" + half;
    std::string const late = half + "b" + std::string(11, 'a');
    std::string const text(n, 'a');
    for (std::string const& pattern : {early, late}) {
        EXPECT_EQ(kelcl::findPattern(text, pattern), notFound);
        EXPECT_EQ(kelcl::findLastPattern(text, pattern), notFound);
        EXPECT_EQ(kelcl::findPattern(text + pattern, pattern), text.size());
        EXPECT_EQ(kelcl::findLastPattern(pattern + text, pattern), 0U);
    }
}

TEST(PatternSearch, TakesTheLastOfManyMatchesAfterManyNearMatches) {
    std::string const word = "a" + std::string(20, 'b') + "ca";
    std::string const nearMatch = "a" + std::string(20, 'b') + "da";
    std::string text;
    for (int i = 0; i < 1000; ++i)
        text += i == 7 || i == 300 || i == 301 ? word : nearMatch;
    EXPECT_EQ(kelcl::findPattern(text, word), 7 * word.size());
    EXPECT_EQ(kelcl::findLastPattern(text, word), 301 * word.size());
    EXPECT_EQ(kelcl::countPattern(text, word), 3U);
    EXPECT_EQ(listed(text, word, 9), plainList(text, word, 9));
    EXPECT_EQ(listed(text, word, 2), plainList(text, word, 2));
}

TEST(PatternCount, DoesNotCountOverlappingMatches) {
    EXPECT_EQ(kelcl::countPattern("aaaa", "aa"), 2U);
    EXPECT_EQ(kelcl::countPattern("aaaaa", "aa"), 2U);
    EXPECT_EQ(kelcl::countPattern("abababa", "aba"), 2U);
    EXPECT_EQ(kelcl::countPattern("aaaa", "a"), 4U);
}

/// Texts in which patterns overlap themselves in every way: a part repeated, with other bytes here and there.
std::string almostPeriodicText(std::mt19937& random, std::size_t n) {
    std::string const part = randomText(random, 1 + random() % 40, "ab");
    std::string text;
    while (text.size() < n)
        text += part;
    for (std::size_t changes = random() % 4; changes > 0; --changes)
        text[random() % text.size()] ^= '\x03';
    return text;
}

TEST(OverlappingMatches, AreThoseOfPlainSearchesFromLeftToRight) {
    std::mt19937 random(111);
    for (int round = 0; round < 4000; ++round) {
        std::string const text = almostPeriodicText(random, 300 + random() % 300);
        std::string const pattern =
            text.substr(random() % text.size() / 2, 2 + random() % (round % 2 == 0 ? 12 : 250));
        kelcl::RisingMatches matches(text, pattern);
        std::size_t const most = 1 + random() % 5 * (random() % 100);
        for (std::size_t from = 0; from <= text.size(); from += 1 + random() % most) {
            ASSERT_EQ(matches.at(from), text.find(pattern, from)) << text << ' ' << pattern << ' ' << from;
            if (text.find(pattern, from) == notFound) break;
        }
    }
}

TEST(OverlappingMatches, AreThoseOfPlainSearchesFromRightToLeft) {
    std::mt19937 random(112);
    for (int round = 0; round < 4000; ++round) {
        std::string const text = almostPeriodicText(random, 300 + random() % 300);
        std::string const pattern =
            text.substr(random() % text.size() / 2, 2 + random() % (round % 2 == 0 ? 12 : 250));
        kelcl::FallingMatches matches(text, pattern);
        std::size_t const most = 1 + random() % 5 * (random() % 100);
        for (std::size_t from = text.size();;) {
            ASSERT_EQ(matches.at(from), text.rfind(pattern, from)) << text << ' ' << pattern << ' ' << from;
            std::size_t const less = 1 + random() % most;
            if (text.rfind(pattern, from) == notFound || from < less) break;
            from -= less;
        }
    }
}

TEST(ShortPeriods, AreTheSmallestOnesUpToAQuarterOfThePattern) {
    std::mt19937 random(113);
    for (int round = 0; round < 4000; ++round) {
        std::string const pattern = almostPeriodicText(random, 1 + random() % 200);
        std::size_t period = 1; // the smallest, by comparing the pattern with itself
        while (pattern.compare(period, std::string::npos, pattern, 0, pattern.size() - period) != 0)
            ++period;
        ASSERT_EQ(kelcl::shortPeriodOf(pattern), period <= pattern.size() / 4 ? period : 0) << pattern;
    }
}

} // namespace
