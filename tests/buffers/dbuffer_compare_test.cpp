// Comparison of single-byte text: the codes of the buffers and the operators of strings, by bytes with the
// switch off and by the locale's collation with it on. Failing collation is tested with a collation of the
// test's own.
#include "tests/buffers/operation_support.h"

#include <cerrno>
#include <clocale>
#include <functional>
#include <random>
#include <string_view>

namespace {

using operations::bytes;
using operations::fresh;
using operations::Owned;
using operations::switchIsOn;

constexpr int equal = 0;
constexpr int after = 1;
constexpr int before = 2;

int compared(std::string_view receiver, std::string_view other) {
    return Owned(receiver)->compare(other.data(), operations::lengthOf(other));
}

TEST(BufferCompare, TellsEqualAfterAndBefore) {
    EXPECT_EQ(compared("abc", "abc"), equal);
    EXPECT_EQ(compared("abc", "abd"), before);
    EXPECT_EQ(compared("abd", "abc"), after);
}

TEST(BufferCompare, SortsAProperPrefixFirst) {
    EXPECT_EQ(compared("ab", "abc"), before);
    EXPECT_EQ(compared("abc", "ab"), after);
}

TEST(BufferCompare, SortsTheEmptyTextFirst) {
    EXPECT_EQ(compared("", ""), equal);
    EXPECT_EQ(compared("", "a"), before);
    EXPECT_EQ(compared("a", ""), after);
    EXPECT_EQ(compared("", bytes("\0")), before);
    EXPECT_EQ(compared(bytes("\0"), ""), after);
}

TEST(BufferCompare, SortsAnyTextAfterANullPointer) {
    EXPECT_EQ(Owned("abc")->compare(nullptr, 3), after);
    EXPECT_EQ(Owned("abc")->compare(nullptr, 0), after);
    EXPECT_EQ(Owned("")->compare(nullptr, 0), after);
    EXPECT_EQ(Owned("")->compare(nullptr, 5), after);
}

TEST(BufferCompare, FindsItsOwnTextEqual) {
    Owned const text(bytes("a\0\xFFz"));
    EXPECT_EQ(text->compare(text->contents(), text->length), equal);
    EXPECT_EQ(text->compare(text->contents(), text->length - 1), after);
    EXPECT_EQ(Owned("")->compare(DBuffer::defaultBuffer()->contents(), 0), equal);
}

TEST(BufferCompare, ComparesUnsignedBytesUnlessALocaleCollates) {
    bool const german = operations::localeModeIs("latin1") && switchIsOn();
    EXPECT_EQ(compared("z", "\xE4"), german ? after : before);
    EXPECT_EQ(compared("a", "B"), german ? before : after);
    EXPECT_EQ(compared(bytes("a\0b"), bytes("a\0c")), before);
    EXPECT_EQ(compared(bytes("a\0c"), bytes("a\0b")), after);
    EXPECT_EQ(compared(bytes("a\0"), "a"), after);
    EXPECT_EQ(compared(bytes("\0\0a"), bytes("\0a\0")), before);
}

/// The comparison with the switch on, by its steps, over std::string.
int collated(std::string const& receiver, std::string const& other) {
    if (receiver.empty()) return other.empty() ? equal : before;
    if (other.empty()) return after;
    std::size_t const m = std::min(receiver.size(), other.size());
    std::string const a = receiver.substr(0, m);
    std::string const b = other.substr(0, m);
    int result = -1;
    for (std::size_t at = 0; at < m;) {
        std::size_t nulsOfA = 0;
        std::size_t nulsOfB = 0;
        while (at + nulsOfA < m && a[at + nulsOfA] == '\0')
            ++nulsOfA;
        while (at + nulsOfB < m && b[at + nulsOfB] == '\0')
            ++nulsOfB;
        if (nulsOfA != nulsOfB) {
            if (nulsOfA < nulsOfB) result = 1;
            break;
        }
        at += nulsOfA;
        if (at >= m) {
            result = 0;
            break;
        }
        result = std::strcoll(a.c_str() + at, b.c_str() + at);
        if (result != 0) break;
        at += std::strlen(a.c_str() + at) + 1;
    }
    if (result != 0) return result < 0 ? before : after;
    if (receiver.size() == other.size()) return equal;
    return receiver.size() < other.size() ? before : after;
}

TEST(BufferCompare, CollatesThroughTheLocaleWithTheSwitchOn) {
    bool const german = operations::localeModeIs("latin1") && switchIsOn();
    // In German text small and capital letters stand together, and umlauts by their base letters.
    EXPECT_EQ(compared("a", "B"), german ? before : after);
    EXPECT_EQ(compared("B", "a"), german ? after : before);
    EXPECT_EQ(compared("\xE4hnlich", "zebra"), german ? before : after);
    EXPECT_EQ(compared("zebra", "\xE4hnlich"), german ? after : before);
    EXPECT_EQ(compared("\xC4", "b"), german ? before : after);
}

TEST(BufferCompare, CollatesOnlyTheCommonLengthAndThenComparesLengths) {
    EXPECT_EQ(compared("abc", "abcdef"), before);
    EXPECT_EQ(compared("abcdef", "abc"), after);
    EXPECT_EQ(compared("abd", "abcdef"), after);
    EXPECT_EQ(compared("abbdef", "abc"), before);
}

TEST(BufferCompare, WithTheSwitchOnComparesSegmentBySegment) {
    EXPECT_EQ(compared(bytes("a\0b"), "ab"), before);
    EXPECT_EQ(compared("ab", bytes("a\0b")), after);
    EXPECT_EQ(compared(bytes("a\0b"), bytes("a\0c")), before);
    EXPECT_EQ(compared(bytes("a\0c"), bytes("a\0b")), after);
    EXPECT_EQ(compared(bytes("a\0b"), bytes("a\0b")), equal);
    EXPECT_EQ(compared(bytes("a\0b\0c"), bytes("a\0b\0d")), before);
    EXPECT_EQ(compared(bytes("a\0b\0d"), bytes("a\0b\0c")), after);
    EXPECT_EQ(compared(bytes("a\0"), bytes("a\0")), equal);
    EXPECT_EQ(compared(bytes("a\0"), "a"), after);
    EXPECT_EQ(compared("a", bytes("a\0")), before);
}

TEST(BufferCompare, FindsTwoEqualRunsOfNulsEqual) {
    EXPECT_EQ(compared(bytes("\0"), bytes("\0")), equal);
    EXPECT_EQ(compared(bytes("\0\0\0"), bytes("\0\0\0")), equal);
    EXPECT_EQ(compared(bytes("a\0\0"), bytes("a\0\0")), equal);
    EXPECT_EQ(compared(bytes("\0\0"), bytes("\0\0\0")), before);
    EXPECT_EQ(compared(bytes("\0\0\0"), bytes("\0\0")), after);
}

TEST(BufferCompare, WithTheSwitchOnSortsMoreNulsInFrontBeforeFewer) {
    EXPECT_EQ(compared(bytes("\0a"), "aa"), before);
    EXPECT_EQ(compared("aa", bytes("\0a")), after);
    EXPECT_EQ(compared(bytes("\0\0"), bytes("\0a")), before);
    EXPECT_EQ(compared(bytes("\0a"), bytes("\0\0")), after);
}

TEST(BufferCompare, WithTheSwitchOnMoreNulsAfterAnEqualSegmentLeaveTheLengthsToDecideButFewerSortAfter) {
    bool const on = switchIsOn();
    EXPECT_EQ(compared(bytes("a\0\0b"), bytes("a\0cb")), on ? equal : before);
    EXPECT_EQ(compared(bytes("a\0cb"), bytes("a\0\0b")), after);
    EXPECT_EQ(compared(bytes("a\0\0bx"), bytes("a\0cb")), on ? after : before);
    EXPECT_EQ(compared(bytes("a\0\0b"), bytes("a\0cbx")), before);
    EXPECT_EQ(compared(bytes("a\0cb"), bytes("a\0\0bx")), after);
}

TEST(BufferCompare, AgreesWithAPlainWalkOverRandomTexts) {
    std::mt19937 random(20240607);
    std::string_view const alphabet("\0\0ab\xE4-", 6);
    for (int i = 0; i < 20000; ++i) {
        auto const text = [&] {
            std::string made(random() % 7, '\0');
            for (char& c : made)
                c = alphabet[random() % alphabet.size()];
            return made;
        };
        std::string const a = text();
        std::string const b = text();
        int expected = collated(a, b);
        if (!switchIsOn()) {
            int const order = a.compare(b);
            expected = order == 0 ? equal : order < 0 ? before : after;
        }
        ASSERT_EQ(compared(a, b), expected) << ::testing::PrintToString(a) << ::testing::PrintToString(b);
    }
}

TEST(BufferCompare, DoesNotTakeAStaleErrorNumberForItsOwn) {
    errno = EDOM;
    EXPECT_EQ(compared("abc", "abd"), before);
    errno = EDOM;
    EXPECT_EQ(compared(bytes("a\0b"), bytes("a\0b")), equal);
}

// The operators of strings

template <class Left, class Right>
void expectOrder(Left const& left, Right const& right, int order) {
    EXPECT_EQ(left == right, order == 0);
    EXPECT_EQ(left != right, order != 0);
    EXPECT_EQ(left < right, order < 0);
    EXPECT_EQ(left <= right, order <= 0);
    EXPECT_EQ(left > right, order > 0);
    EXPECT_EQ(left >= right, order >= 0);
}

template <class Text>
void expectOrderOnBothSides(DString const& string, Text const& text, int order) {
    expectOrder(string, text, order);
    expectOrder(text, string, -order);
}

TEST(StringComparison, WorksWithEveryKindOfTextOnEitherSide) {
    DString const b("b");
    expectOrder(b, DString("b"), 0);
    expectOrder(b, DString("c"), -1);
    expectOrder(b, DString("a"), 1);
    expectOrderOnBothSides(b, "a", 1);
    expectOrderOnBothSides(b, "b", 0);
    expectOrderOnBothSides(b, "c", -1);
    expectOrderOnBothSides(b, std::string("a"), 1);
    expectOrderOnBothSides(b, std::string("b"), 0);
    expectOrderOnBothSides(b, std::string_view("c"), -1);
    expectOrderOnBothSides(b, std::string_view("bb").substr(1), 0);
}

TEST(StringComparison, CountsANullTextAsEmpty) {
    char const* const none = nullptr;
    expectOrderOnBothSides(DString("b"), none, 1);
    expectOrderOnBothSides(DString(), none, 0);
    expectOrderOnBothSides(DString(), nullptr, 0);
    expectOrderOnBothSides(DString("b"), nullptr, 1);
    expectOrderOnBothSides(DString(), std::string_view(), 0);
    expectOrderOnBothSides(DString("b"), std::string_view(), 1);
}

TEST(StringComparison, CountsEmbeddedNulsInAllButACharacterPointer) {
    std::string const text = bytes("a\0b");
    DString const string(text);
    EXPECT_TRUE(string == text);
    EXPECT_TRUE(string == std::string_view(text));
    EXPECT_FALSE(string == text.c_str());
    EXPECT_TRUE(string > text.c_str());
}

TEST(StringComparison, CollatesWhereTheSwitchSaysSo) {
    bool const german = operations::localeModeIs("latin1") && switchIsOn();
    EXPECT_EQ(DString("a") < "B", german);
    EXPECT_EQ("a" < DString("B"), german);
    EXPECT_EQ(DString("\xE4") < std::string("z"), german);
}

TEST(StringComparison, MirrorsTheUnevenRuleWhenTheTextStandsOnTheLeft) {
    bool const on = switchIsOn();
    std::string const fewer = bytes("a\0cb");
    DString const more(std::string_view(bytes("a\0\0b")));
    EXPECT_EQ(more == fewer, on);
    EXPECT_EQ(fewer == more, on);
    EXPECT_EQ(fewer > more, !on);
    EXPECT_TRUE(DString(fewer) > more);
    EXPECT_TRUE(std::string_view(more) < DString(fewer));
}

TEST(StringHash, GoesByBytes) {
    std::hash<DString> const hash;
    EXPECT_EQ(hash(DString("abc")), hash(DString(std::string("abc"))));
    EXPECT_NE(hash(fresh(bytes("a\0b"))), hash(fresh("a")));
    EXPECT_NE(hash(fresh("abc")), hash(fresh("abd")));
}

/// Says of everything that it sorts before.
class AlwaysBefore : public DBuffer {
public:
    using DBuffer::DBuffer;
    int compare(void const*, unsigned int) const override { return before; }
};

TEST(StringComparison, AsksTheBufferItself) {
    auto* const buffer = ::new (::operator new[](sizeof(AlwaysBefore) + 4)) AlwaysBefore(3);
    std::memcpy(buffer->contents(), "abc", 3);
    DString const text(buffer);
    EXPECT_TRUE(text < "abc");
    EXPECT_FALSE(text == "abc");
    EXPECT_TRUE("abc" > text);
    EXPECT_FALSE(text.isAbbrevFor("abcdef"));
    EXPECT_TRUE(text.isLike("a*"));
}

} // namespace
