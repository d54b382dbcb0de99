// The wide buffer: what it holds of a text, and its searches.
#include "tests/characters/dnlsutil_support.h"

#include <kelcl/dnlsutil.h>

#include <climits>
#include <type_traits>

namespace {

using namespace std::string_literals;
using mb::badSequence;
using mb::incompleteLine;
using mb::invalidLine;
using mb::lengthOf;
using mb::nothing;

static_assert(!std::is_copy_constructible_v<DWBuffer> && !std::is_copy_assignable_v<DWBuffer>);

std::wstring contentsOf(DWBuffer const& buffer) { return std::wstring(buffer.wide, buffer.length); }

/// A buffer of ASCII text.
DWBuffer wideOf(std::string const& text) { return DWBuffer(text.data(), lengthOf(text)); }

TEST(WideBuffer, HoldsTheCharactersOfTheText) {
    std::string bytes = "\0"s;
    std::wstring values = L"\0"s;
    for (mb::Sample const& sample : mb::samples().characters()) {
        bytes += sample.bytes;
        values += sample.value;
    }
    mb::AtMemoryEnd const text(bytes);
    EXPECT_EQ(contentsOf(DWBuffer(text.data(), lengthOf(bytes))), values);
    EXPECT_EQ(DWBuffer(text.data(), 1).length, 1u);
}

TEST(WideBuffer, OfTextUpToItsNulEndsInAWideNul) {
    std::string const bytes = "ab" + mb::samples().two.bytes;
    DWBuffer const buffer(bytes.c_str());
    EXPECT_EQ(buffer.length, mb::samples().two.exists() ? 3u : 2u);
    EXPECT_EQ(buffer.wide[1], L'b');
    EXPECT_EQ(buffer.wide[buffer.length], L'\0');
    DWBuffer const empty("");
    EXPECT_EQ(empty.length, 0u);
    EXPECT_EQ(empty.wide[0], L'\0');
}

TEST(WideBuffer, OfNoBytesHasAWideNulAndNoLength) {
    DWBuffer const empty("abc", 0);
    EXPECT_EQ(empty.length, 0u);
    EXPECT_EQ(empty.wide[0], L'\0');
}

TEST(WideBuffer, FailsAtBadSequences) {
    EXPECT_EQ(operations::failureOf([] { DWBuffer const buffer("abc", 3); }), nothing());
    if (!mb::isMultiByte()) return;
    std::string const bad = "a" + mb::samples().invalid;
    std::string const cut = "a" + mb::samples().lead;
    EXPECT_EQ(operations::failureOf([&] { DWBuffer const buffer(bad.data(), lengthOf(bad)); }),
              badSequence(invalidLine));
    EXPECT_EQ(operations::failureOf([&] { DWBuffer const buffer(cut.data(), lengthOf(cut)); }),
              badSequence(incompleteLine));
    EXPECT_EQ(operations::failureOf([&] { DWBuffer const buffer(cut.c_str()); }), badSequence(invalidLine))
        << "the NUL is converted with the text";
}

/// wcsncmp as a loop: equal up to a NUL on both sides is equal.
bool isEqualUpToNul(std::wstring_view a, std::wstring_view b) {
    for (std::size_t i = 0; i < b.size(); ++i) {
        if (a[i] != b[i]) return false;
        if (a[i] == L'\0') return true;
    }
    return true;
}

TEST(WideBufferSearch, AgreesWithALoopOverThePositions) {
    std::mt19937 random(6);
    for (int round = 0; round < 3000; ++round) {
        auto const some = [&random](std::size_t most) {
            return mb::randomText(random, {"a", "a", "b", "\0"s, mb::samples().two.bytes + "c"}, most);
        };
        DWBuffer const text = wideOf(some(8));
        DWBuffer const other = wideOf(some(3));
        std::wstring const t = contentsOf(text);
        std::wstring const o = contentsOf(other);
        unsigned int const length = text.length;
        for (unsigned int start = 0; start <= length + 2; ++start) {
            unsigned int first[3] = {};
            unsigned int last[3] = {};
            for (unsigned int p = 1; p <= length; ++p) {
                bool const hit[3] = {!o.empty() && o.size() <= length - p + 1 &&
                                         isEqualUpToNul(std::wstring_view(t).substr(p - 1), o),
                                     o.find(t[p - 1]) != o.npos, o.find(t[p - 1]) == o.npos};
                for (int i = 0; i < 3; ++i) {
                    if (hit[i] && start != 0 && p >= start && first[i] == 0) first[i] = p;
                    if (hit[i] && p <= start) last[i] = p;
                }
            }
            ASSERT_EQ(text.positionOf(other, start), first[0]) << round << ' ' << start;
            ASSERT_EQ(text.positionOfAnyOf(other, start), first[1]) << round << ' ' << start;
            ASSERT_EQ(text.positionOfAnyBut(other, start), first[2]) << round << ' ' << start;
            ASSERT_EQ(text.lastPositionOf(other, start), last[0]) << round << ' ' << start;
            ASSERT_EQ(text.lastPositionOfAnyOf(other, start), last[1]) << round << ' ' << start;
            ASSERT_EQ(text.lastPositionOfAnyBut(other, start), last[2]) << round << ' ' << start;
        }
    }
}

TEST(WideBufferSearch, ComparesAPatternOnlyUpToANulByDesign) {
    EXPECT_EQ(wideOf("xa\0b"s).positionOf(wideOf("a\0c"s), 1), 2u);
    EXPECT_EQ(wideOf("xa\0b"s).lastPositionOf(wideOf("a\0c"s), 4), 2u);
    EXPECT_EQ(wideOf("xa\0"s).positionOf(wideOf("a\0c"s), 1), 0u) << "the whole pattern must fit";
}

TEST(WideBufferSearch, WithAnEmptySetOrPattern) {
    DWBuffer const text = wideOf("abc");
    DWBuffer const none = wideOf("");
    EXPECT_EQ(text.positionOfAnyBut(none, 2), 2u);
    EXPECT_EQ(text.positionOfAnyBut(none, 4), 0u);
    EXPECT_EQ(text.lastPositionOfAnyBut(none, 2), 2u);
    EXPECT_EQ(text.lastPositionOfAnyBut(none, 9), 3u);
    EXPECT_EQ(none.lastPositionOfAnyBut(none, 9), 0u);
    EXPECT_EQ(none.positionOfAnyBut(none, 1), 0u);
    EXPECT_EQ(text.positionOf(none, 1), 0u);
    EXPECT_EQ(text.lastPositionOf(none, 3), 0u);
    EXPECT_EQ(text.positionOfAnyOf(none, 1), 0u);
    EXPECT_EQ(text.lastPositionOfAnyOf(none, 3), 0u);
    EXPECT_EQ(text.positionOf(text, UINT_MAX), 0u);
    EXPECT_EQ(text.lastPositionOf(text, UINT_MAX), 1u);
}

TEST(WideBuffer, KnowsItsCharactersAndReversesThem) {
    DWBuffer const text = wideOf("ab\0c"s);
    EXPECT_TRUE(text.hasWChar(L'c'));
    EXPECT_TRUE(text.hasWChar(L'\0'));
    EXPECT_FALSE(text.hasWChar(L'x'));
    text.reverse();
    EXPECT_EQ(contentsOf(text), L"c\0ba"s);
    DWBuffer const none = wideOf("");
    EXPECT_FALSE(none.hasWChar(L'\0'));
    none.reverse();
    EXPECT_EQ(none.length, 0u);
    EXPECT_EQ(none.wide[0], L'\0');
}

TEST(WideBufferSearch, KnowsTheMembersOfALargeSet) {
    DWBuffer const text("a quick brown fox 12");
    DWBuffer const letters("abcdefghijklmnopqrstuvwxyz");
    EXPECT_EQ(text.positionOfAnyOf(letters, 2), 3U);
    EXPECT_EQ(text.positionOfAnyBut(letters, 1), 2U);
    EXPECT_EQ(text.lastPositionOfAnyOf(letters, 20), 17U);
    EXPECT_EQ(text.lastPositionOfAnyBut(letters, 17), 14U);
}

} // namespace
