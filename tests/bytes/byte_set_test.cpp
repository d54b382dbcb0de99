// Sets of bytes and the searches with them against plain ones.

#include "bytes/byte_set.h"
#include "bytes/byte_walk.h"
#include "bytes/word_separators.h"
#include "tests/bytes/texts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <vector>

namespace {

using namespace bytes_test;
using kelcl::ByteSet;

std::vector<std::string_view> plainRuns(std::string_view text, std::string_view members) {
    std::vector<std::string_view> result;
    for (std::size_t at = text.find_first_not_of(members); at != std::string_view::npos;
         at = text.find_first_not_of(members, at)) {
        std::size_t const end = std::min(text.find_first_of(members, at), text.size());
        result.push_back(text.substr(at, end - at));
        at = end;
    }
    return result;
}

std::vector<std::string_view> walkedRuns(std::string_view text, ByteSet const& set) {
    std::vector<std::string_view> result;
    kelcl::RunsNotIn runs(text, set);
    for (std::string_view run = runs.next(); !run.empty(); run = runs.next())
        result.push_back(run);
    return result;
}

std::uint64_t plainMaskNotIn(std::string_view text, std::string_view members) {
    std::uint64_t mask = 0;
    for (std::size_t i = 0; i < text.size() && i < 64; ++i)
        if (members.find(text[i]) == std::string_view::npos) mask |= std::uint64_t{1} << i;
    return mask;
}

void expectSetSearchesAsPlain(std::string_view text, std::string_view members) {
    ByteSet const set(members);
    ASSERT_EQ(kelcl::findFirstIn(text, set), text.find_first_of(members));
    ASSERT_EQ(kelcl::findFirstNotIn(text, set), text.find_first_not_of(members));
    ASSERT_EQ(kelcl::findLastIn(text, set), text.find_last_of(members));
    ASSERT_EQ(kelcl::findLastNotIn(text, set), text.find_last_not_of(members));
    if (!members.empty()) {
        ASSERT_EQ(kelcl::findFirstIn(text, members), text.find_first_of(members));
        ASSERT_EQ(kelcl::findFirstNotIn(text, members), text.find_first_not_of(members));
        ASSERT_EQ(kelcl::findLastIn(text, members), text.find_last_of(members));
        ASSERT_EQ(kelcl::findLastNotIn(text, members), text.find_last_not_of(members));
    }
    ASSERT_EQ(kelcl::maskOfStartNotIn(text, set), plainMaskNotIn(text, members));
    ASSERT_EQ(kelcl::countIn(text, set),
              static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [&](char c) {
                  return members.find(c) != std::string_view::npos;
              })));
    std::vector<std::string_view> const runs = plainRuns(text, members);
    ASSERT_EQ(kelcl::countRunsNotIn(text, set), runs.size());
    for (std::size_t i = 0; i < runs.size(); ++i)
        ASSERT_EQ(text.data() + kelcl::findRunNotIn(text, i + 1, set), runs[i].data());
    ASSERT_EQ(kelcl::findRunNotIn(text, runs.size() + 1, set), kelcl::notFound);
    std::vector<std::string_view> const walked = walkedRuns(text, set);
    ASSERT_EQ(walked, runs);
    for (std::size_t i = 0; i < runs.size(); ++i)
        ASSERT_EQ(walked[i].data(), runs[i].data());
}

TEST(ByteSet, HoldsExactlyItsMembers) {
    std::mt19937 random(201);
    for (std::size_t n = 0; n < 300; ++n) {
        std::string const members = randomBytes(random, n);
        ByteSet const set(members);
        for (char const byte : allBytes())
            ASSERT_EQ(set.contains(byte), members.find(byte) != std::string::npos);
    }
}

TEST(ByteSet, IsMadeFromAPredicateThatIsAskedForUnsignedValues) {
    ByteSet const set = ByteSet::where([](unsigned char byte) { return byte >= 0xF0 || byte == 'q'; });
    for (char const byte : allBytes())
        ASSERT_EQ(set.contains(byte), static_cast<unsigned char>(byte) >= 0xF0 || byte == 'q');
}

TEST(ByteSet, TakesFurtherMembers) {
    ByteSet set;
    EXPECT_FALSE(set.contains('\xE9'));
    set.insert('\xE9');
    EXPECT_TRUE(set.contains('\xE9'));
    EXPECT_FALSE(set.contains('\x69'));
}

TEST(ByteSet, OfWordSeparatorsHoldsTheSixAndIsAConstant) {
    static_assert(kelcl::wordSeparators.contains('\t') && !kelcl::wordSeparators.contains('\0'));
    for (char const byte : allBytes())
        EXPECT_EQ(kelcl::wordSeparators.contains(byte),
                  std::string_view("\t\n\v\f\r ").find(byte) != std::string_view::npos);
}

TEST(SetSearch, TellsEveryByteValueFromEveryOther) {
    std::string const all = allBytes();
    for (char const member : all) {
        std::string const text = std::string(40, static_cast<char>(member + 1)) + all;
        expectSetSearchesAsPlain(text, std::string_view(&member, 1));
    }
}

TEST(SetSearch, FindsTheSingleHitAtEveryOffsetOfEveryLength) {
    static GuardedPages pages;
    for (std::size_t n = 0; n <= longest; ++n)
        for (std::size_t hit = 0; hit < n; ++hit) {
            std::string text(n, '.');
            text[hit] = '\xC3';
            for (std::string_view const members : {"abc\xC3", "abc."}) {
                expectSetSearchesAsPlain(pages.atEnd(text), members);
                expectSetSearchesAsPlain(pages.atBegin(text), members);
            }
        }
}

TEST(SetSearch, AgreesWithPlainSearchesOnRandomTextAtEveryAlignment) {
    std::mt19937 random(202);
    for (std::size_t n = 0; n <= longest; ++n) {
        std::string const text = randomText(random, n, std::string_view("aaaaaaaaaab\0\x80\xFF", 14));
        for (std::string const members : {"a", "b\x80", "xyz", "ab", ""})
            atEveryPlace(text, 'b',
                         [&](std::string_view placed) { expectSetSearchesAsPlain(placed, members); });
    }
}

TEST(SetSearch, AgreesWithPlainSearchesForSetsOfEverySize) {
    std::mt19937 random(203);
    for (std::size_t members = 0; members <= 256; ++members)
        for (int round = 0; round < 20; ++round)
            expectSetSearchesAsPlain(randomBytes(random, random() % 300), randomBytes(random, members));
}

TEST(SetSearch, ReadsNoByteBeyondTextOrMembers) {
    static GuardedPages ofText;
    static GuardedPages ofMembers;
    std::mt19937 random(204);
    for (std::size_t n = 0; n <= 70; ++n)
        for (std::size_t m = 1; m <= 70; ++m) {
            std::string const text = randomText(random, n, "abcd\xE4");
            std::string members = randomText(random, m, "cdefghijklmnopqrstuvwxyz\xE4");
            expectSetSearchesAsPlain(ofText.atEnd(text), ofMembers.atEnd(members));
            expectSetSearchesAsPlain(ofText.atBegin(text), ofMembers.atBegin(members));
        }
}

TEST(SetSearch, TellsMembersAbove127InLongTexts) {
    std::mt19937 random(205);
    for (std::size_t n = 60; n <= 300; ++n) {
        std::string const text = randomText(random, n, "ab\x61\xE1\xE2");
        for (std::string_view const members : {"ab", "a\xE1", "\xE1\xE2", "ab\xE1\xE2", "xyz"})
            expectSetSearchesAsPlain(text, members);
    }
}

/// Both searches from the front of a text of one byte over and over but for another one, by sets that have
/// the one, the other, and neither.
void expectFirstSearchesAsPlain(std::string_view text) {
    for (std::string_view const members : {"#", "abc", "#\xE1\xE2\xE3", "abc\xE4", "\xE1", "xyz"}) {
        ASSERT_EQ(kelcl::findFirstIn(text, ByteSet(members)), text.find_first_of(members));
        ASSERT_EQ(kelcl::findFirstNotIn(text, ByteSet(members)), text.find_first_not_of(members));
        ASSERT_EQ(kelcl::findFirstIn(text, members), text.find_first_of(members));
        ASSERT_EQ(kelcl::findFirstNotIn(text, members), text.find_first_not_of(members));
    }
}

TEST(SetSearch, FindsTheSingleHitInLongTexts) {
    static GuardedPages pages(2);
    for (std::size_t const n : {4095U, 4096U, 4097U, 4159U, 4352U, 4415U}) {
        std::string text(n, 'a');
        for (std::size_t hit = n % 13; hit < n; hit += 13)
            for (char const other : {'#', '\xE4'}) {
                text[hit] = other;
                expectFirstSearchesAsPlain(pages.atEnd(text));
                text[hit] = 'a';
            }
        expectFirstSearchesAsPlain(pages.atEnd(text));
        expectFirstSearchesAsPlain(pages.atBegin(text));
    }
}

TEST(SetSearch, FindsTheSingleHitInLongTextsAtEveryAlignment) {
    std::vector<char> room(5000, '#');
    for (std::size_t alignment = 0; alignment < 64; ++alignment)
        for (std::size_t const hit : {0U, 1U, 255U, 256U, 319U, 320U, 321U, 1000U, 4100U, 4499U}) {
            std::fill_n(room.data() + alignment, 4500, 'a');
            room[alignment + hit] = '#';
            expectFirstSearchesAsPlain({room.data() + alignment, 4500});
            room[alignment + hit] = '\xE4';
            expectFirstSearchesAsPlain({room.data() + alignment, 4500});
        }
}

TEST(SetSearch, TellsEveryByteValueFromEveryOtherInLongTexts) {
    for (char const value : allBytes()) {
        std::string text(4200, static_cast<char>(value ^ 0x55));
        text[3500] = value;
        std::string const others = {value, static_cast<char>(value + 1), static_cast<char>(value ^ 0x80)};
        ASSERT_EQ(kelcl::findFirstIn(text, ByteSet(others)), 3500U);
        ASSERT_EQ(kelcl::findFirstNotIn(text, ByteSet({text.data(), 1})), 3500U);
    }
}

TEST(RunCount, CountsWordsAcrossTheSeamsOfBlocks) {
    using namespace std::string_view_literals;
    auto const words = [](std::string_view text) {
        return kelcl::countRunsNotIn(text, kelcl::wordSeparators);
    };
    EXPECT_EQ(words(""), 0U);
    EXPECT_EQ(words("  \t\n "), 0U);
    EXPECT_EQ(words("  alpha\tbeta  "), 2U);
    EXPECT_EQ(words("a\0b"sv), 1U);
    for (std::size_t n = 1; n <= longest; ++n) {
        std::string text(n, 'w');
        EXPECT_EQ(words(text), 1U);
        for (std::size_t gap = 1; gap + 1 < n; ++gap) {
            text[gap] = ' ';
            ASSERT_EQ(words(text), 2U);
            text[gap] = 'w';
        }
    }
}

} // namespace
