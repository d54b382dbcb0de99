// The wildcard match against a table of which beginnings of the text match which beginnings of the pattern.

#include "bytes/wildcard.h"
#include "tests/bytes/texts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

namespace {

using namespace bytes_test;
using kelcl::matchesWildcard;

bool plainMatch(std::string_view text, std::string_view pattern, char anyString, char anyChar) {
    // Of the pattern so far with each beginning of the text. Not a vector of bool: those are slow without
    // optimisation.
    std::unique_ptr<bool[]> const matches(new bool[text.size() + 1]());
    bool* const row = matches.get();
    matches[0] = true;
    for (char const wanted : pattern) {
        if (wanted == anyString) {
            std::fill(std::find(row, row + text.size() + 1, true), row + text.size() + 1, true);
            continue;
        }
        for (std::size_t i = text.size(); i > 0; --i)
            row[i] = row[i - 1] && (wanted == anyChar || wanted == text[i - 1]);
        row[0] = false;
    }
    return row[text.size()];
}

bool isLike(std::string_view text, std::string_view pattern) {
    return matchesWildcard(text, pattern, '*', '?');
}

TEST(Wildcards, MatchRunsAndSingleBytes) {
    for (char const* const pattern :
         {"a*", "*c", "a?c", "*", "abc", "***", "a*b*c", "?*?", "*?*?*?*", "abc*"})
        EXPECT_TRUE(isLike("abc", pattern)) << pattern;
    for (char const* const pattern : {"a?", "ab", "", "a*d", "abcd", "*b", "?", "????", "*????*", "abc?"})
        EXPECT_FALSE(isLike("abc", pattern)) << pattern;
}

TEST(Wildcards, MatchTheEmptyTextWithRunsAndTheEmptyPatternOnly) {
    EXPECT_TRUE(isLike("", ""));
    EXPECT_TRUE(isLike("", "*"));
    EXPECT_TRUE(isLike("", "**"));
    EXPECT_FALSE(isLike("", "?"));
    EXPECT_FALSE(isLike("", "a"));
    EXPECT_TRUE(isLike(std::string_view(), std::string_view()));
}

TEST(Wildcards, DoNotLetTheFixedBeginningAndEndOverlap) {
    EXPECT_FALSE(isLike("aba", "ab*ba"));
    EXPECT_TRUE(isLike("abba", "ab*ba"));
    EXPECT_FALSE(isLike("a", "a*a"));
    EXPECT_FALSE(isLike("abcbc", "a*bc*bc*bc"));
}

TEST(Wildcards, ThatAreTheSameByteStandForRuns) {
    EXPECT_TRUE(matchesWildcard("abc", "a%", '%', '%'));
    EXPECT_TRUE(matchesWildcard("a", "a%", '%', '%'));
    EXPECT_TRUE(matchesWildcard("", "%", '%', '%'));
}

TEST(Wildcards, MayBeAnyBytes) {
    using namespace std::string_view_literals;
    EXPECT_TRUE(matchesWildcard("x\0y"sv, "x\xFFy"sv, '\0', '\xFF'));
    EXPECT_TRUE(matchesWildcard("xy"sv, "x\0y"sv, '\0', '\xFF'));
    EXPECT_TRUE(matchesWildcard("a*?b"sv, "a*?b"sv, '\0', '\xFF'));
    EXPECT_FALSE(matchesWildcard("axxb"sv, "a*?b"sv, '\0', '\xFF'));
}

TEST(Wildcards, AgreeWithTheTableOnRandomTexts) {
    std::mt19937 random(601);
    int matched = 0;
    for (int round = 0; round < 200'000; ++round) {
        std::string const text = randomText(random, random() % 14, "aab");
        std::string const pattern = randomText(random, random() % 9, round % 2 == 0 ? "aab*?" : "ab**?");
        bool const wanted = plainMatch(text, pattern, '*', '?');
        matched += wanted ? 1 : 0;
        ASSERT_EQ(isLike(text, pattern), wanted) << text << " like " << pattern;
    }
    EXPECT_GT(matched, 20'000);
}

TEST(Wildcards, AgreeWithTheTableOnPatternsMadeFromTheText) {
    std::mt19937 random(602);
    for (int round = 0; round < 20'000; ++round) {
        std::string const text = randomText(random, 1 + random() % longest, "abcd");
        std::string pattern = text;
        for (std::size_t changes = random() % 8; changes > 0 && !pattern.empty(); --changes) {
            std::size_t const at = random() % pattern.size();
            switch (random() % 4) {
            case 0:
                pattern[at] = '?';
                break;
            case 1:
                pattern.replace(at, random() % 10, 1, '*');
                break;
            case 2:
                pattern.insert(at, 1, '*');
                break;
            default:
                pattern[at] = "abcd"[random() % 4];
            }
        }
        ASSERT_EQ(isLike(text, pattern), plainMatch(text, pattern, '*', '?')) << text << " like " << pattern;
    }
}

TEST(Wildcards, TakeNoExponentialTimeForManyRuns) {
    std::string const text(100'000, 'a');
    std::string pattern;
    for (int i = 0; i < 1000; ++i)
        pattern += "*a";
    EXPECT_TRUE(isLike(text, pattern));
    EXPECT_FALSE(isLike(text, pattern + "*b"));
    EXPECT_FALSE(isLike(text, pattern + "*b*"));
}

TEST(Wildcards, MatchLongPiecesWithSingleByteWildcardsAmidManyNearMatches) {
    std::string piece;
    for (int i = 0; i < 500; ++i)
        piece += "a?";
    std::string const text = std::string(20'000, 'a') + "b" + std::string(2'000, 'a') + "c";
    EXPECT_TRUE(isLike(text, "*" + piece + "b*"));
    EXPECT_TRUE(isLike(text, "*" + piece + "b*" + piece + "c"));
    EXPECT_FALSE(isLike(text, "*" + piece + "b*" + piece + "b*"));
    EXPECT_FALSE(isLike(text, "*" + piece + "d*"));
}

TEST(Wildcards, ReadNothingBeyondTextAndPattern) {
    static GuardedPages textPages;
    static GuardedPages patternPages;
    std::mt19937 random(603);
    for (int round = 0; round < 20'000; ++round) {
        std::string const text = randomText(random, random() % 80, "ab");
        std::string const pattern = randomText(random, random() % 20, "ab*?");
        bool const wanted = plainMatch(text, pattern, '*', '?');
        ASSERT_EQ(isLike(textPages.atEnd(text), patternPages.atEnd(pattern)), wanted);
        ASSERT_EQ(isLike(textPages.atBegin(text), patternPages.atBegin(pattern)), wanted);
    }
}

/// A text, and a pattern that nearly matches it at every place: "*a…a?a…aQ*" in longer and longer forms.
struct NearMatches {
    std::string text;
    std::string pattern;
    std::size_t literals; ///< Of a piece.
};

NearMatches nearMatches(std::size_t n, std::size_t literals) {
    std::string pattern = "*";
    for (std::size_t i = 0; i < literals; ++i)
        pattern += std::string(n / 4 / literals, 'a') + '?';
    return {std::string(n, 'a'), pattern + "Q*", literals + 1};
}

std::uint64_t stepsOf(std::string_view text, std::string_view pattern, bool wanted) {
    std::uint64_t steps = 0;
    EXPECT_EQ(matchesWildcard(text, pattern, '*', '?', steps), wanted);
    return steps;
}

TEST(Wildcards, TakeAtMostTheTextTimesTheLiteralsOfAPieceInSteps) {
    for (std::size_t const literals : {1U, 2U, 3U, 8U})
        for (std::size_t const n : {16'384U, 262'144U}) {
            auto const [text, pattern, count] = nearMatches(n, literals);
            EXPECT_LE(stepsOf(text, pattern, false), 24 * count * n) << n << ' ' << literals;
            EXPECT_LE(stepsOf(text + "Q", pattern, true), 24 * count * n) << n << ' ' << literals;
        }
}

TEST(Wildcards, TakeLinearStepsWithoutSingleByteWildcards) {
    for (std::size_t const n : {16'384U, 262'144U}) {
        std::string const a(n / 4, 'a');
        EXPECT_LE(stepsOf(std::string(n, 'a'), "*" + a + "Q" + a + "*", false), 4 * n);
        EXPECT_LE(stepsOf(std::string(n, 'a'), "*" + a + "*" + a + "*" + a + "*", true), 4 * n);
    }
}

TEST(Wildcards, AgreeWithTheTableWhereAPieceNearlyMatchesAtManyPlaces) {
    std::mt19937 random(604);
    int matched = 0;
    for (int round = 0; round < 24; ++round) {
        // Pieces longer than a block of places as well, and hits on both sides of a block's end.
        std::string piece(30 + random() % 200, 'a');
        for (std::size_t holes = 1 + random() % 4; holes > 0; --holes)
            piece[random() % piece.size()] = '?';
        if (round % 8 == 0) piece = std::string(3000, 'a') + '?' + std::string(2900, 'a') + piece;
        piece[random() % piece.size()] = 'Q';
        std::string text(9000 + random() % 2000, 'a');
        for (std::size_t marks = random() % 3; marks > 0; --marks)
            text[random() % text.size()] = 'Q';
        std::string const pattern = "*" + piece + "*" + (round % 2 == 0 ? "" : "a?a*");
        bool const wanted = plainMatch(text, pattern, '*', '?');
        matched += wanted ? 1 : 0;
        ASSERT_EQ(isLike(text, pattern), wanted) << round;
    }
    EXPECT_GT(matched, 3);
    EXPECT_LT(matched, 20);
}

} // namespace
