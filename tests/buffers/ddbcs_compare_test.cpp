// Comparison of multi-byte text.
#include "tests/buffers/ddbcsbuffer_support.h"
#include "tests/characters/multi_byte_support.h"

namespace {

using namespace mb;
using namespace std::string_literals;
using mb::buffer;
using mb::lengthOf;

int compared(std::string const& a, std::string const& b) { return buffer(a)->compare(b.data(), lengthOf(b)); }

TEST(Comparison, GoesByBytesWithTheSwitchOff) {
    mb::SwitchAt const off(0);
    std::mt19937 random(7);
    for (int round = 0; round < 3000; ++round) {
        std::string const a = mb::randomText(random, mb::parts(), 3);
        std::string const b = mb::randomText(random, mb::parts(), 3);
        int const order = a.compare(b);
        EXPECT_EQ(compared(a, b), order == 0 ? 0 : order > 0 ? 1 : 2) << hex(a) << ", " << hex(b);
    }
}

/// The wide string of a segment up to what does not convert.
std::wstring wideSegment(std::string const& bytes) {
    std::wstring wide;
    for (std::size_t at = 0; at < bytes.size();) {
        std::mbstate_t state{};
        wchar_t value = 0;
        std::size_t const length = std::mbrtowc(&value, bytes.data() + at, bytes.size() - at, &state);
        if (length == mb::invalidSequence || length == mb::incompleteSequence) break;
        wide += value;
        at += length;
        if (std::mbsinit(&state) != 0) continue;
        std::mbrtowc(&value, "", 1, &state); // the second of two wide characters
        wide += value;
    }
    return wide;
}

/// The steps of the collating comparison: each side is a position in a text that ends in a NUL.
int collated(std::string const& a, std::string const& b) {
    if (a.empty()) return b.empty() ? 0 : 2;
    if (b.empty()) return 1;
    int const byLength = a.size() == b.size() ? 0 : a.size() < b.size() ? 2 : 1;
    std::size_t i = 0;
    std::size_t j = 0;
    for (bool isFirst = true;; isFirst = false) {
        std::size_t const iFrom = i;
        std::size_t const jFrom = j;
        while (i < a.size() && a[i] == '\0')
            ++i;
        while (j < b.size() && b[j] == '\0')
            ++j;
        if (i - iFrom > j - jFrom) return 1;
        if (i - iFrom < j - jFrom) return isFirst ? 2 : byLength;
        if (i == a.size()) return byLength;
        std::size_t const iEnd = std::min(a.find('\0', i), a.size());
        std::size_t const jEnd = std::min(b.find('\0', j), b.size());
        int const order =
            std::wcscoll(wideSegment(a.substr(i, iEnd - i)).c_str(),
                         wideSegment(b.substr(std::min(j, b.size()), jEnd - std::min(j, jEnd))).c_str());
        if (order != 0) return order < 0 ? 2 : 1;
        i = iEnd + 1;
        j = jEnd + 1;
        if (i >= a.size() || j >= b.size()) return i > a.size() && j > b.size() ? 0 : byLength;
    }
}

TEST(Comparison, FollowsTheLocalesCollationWithTheSwitchOn) {
    mb::SwitchAt const on(1);
    std::mt19937 random(8);
    std::vector<std::string> some = mb::wholeParts();
    some.insert(some.end(), {"\0"s, "\0"s, "b", "b", "A"});
    for (int round = 0; round < 5000; ++round) {
        std::string const a = mb::randomText(random, some, 5);
        std::string const b =
            round % 4 == 0 ? a + mb::randomText(random, some, 2) : mb::randomText(random, some, 5);
        ASSERT_EQ(compared(a, b), collated(a, b)) << hex(a) << ", " << hex(b);
        ASSERT_EQ(compared(b, a), collated(b, a)) << hex(b) << ", " << hex(a);
    }
}

TEST(Comparison, EndsASegmentAtBytesThatDoNotConvert) {
    mb::SwitchAt const on(1);
    std::mt19937 random(9);
    for (int round = 0; round < 3000; ++round) {
        std::string const a = mb::randomText(random, mb::parts(), 4);
        std::string const b = mb::randomText(random, mb::parts(), 4);
        ASSERT_EQ(compared(a, b), collated(a, b)) << hex(a) << ", " << hex(b);
    }
    std::string const& bad = mb::samples().invalid;
    if (bad.empty()) return;
    EXPECT_EQ(compared("a" + bad + "x", "a" + bad + "y"), 0) << "nothing after the bad byte counts";
}

TEST(Comparison, OfTextsOfDifferentLengthThatConvertToTheSameFindsThemEqualByDesign) {
    mb::SwitchAt const on(1);
    std::string const& bad = mb::samples().invalid;
    EXPECT_EQ(compared("a" + bad + "xyz", "a"), bad.empty() ? 1 : 0);
    EXPECT_EQ(compared("a", "a" + bad + "xyz"), bad.empty() ? 2 : 0);
    EXPECT_EQ(compared("a" + bad + "xyz\0"s, "a"), 1) << "a NUL at the end makes the lengths decide";
    EXPECT_EQ(compared("a", "a" + bad + "xyz\0"s), 2);
}

TEST(Comparison, OfTextsThatDifferInTheirNulsOnly) {
    mb::SwitchAt const on(1);
    EXPECT_EQ(compared("a\0b"s, "a\0c"s), 2);
    EXPECT_EQ(compared("a\0c"s, "a\0b"s), 1);
    EXPECT_EQ(compared("\0\0a"s, "\0a"s), 1);
    EXPECT_EQ(compared("\0a"s, "\0\0a"s), 2);
    EXPECT_EQ(compared("a\0\0b"s, "a\0b"s), 1);
    EXPECT_EQ(compared("a\0b"s, "a\0\0b"s), 2);
    EXPECT_EQ(compared("\0\0"s, "\0\0"s), 0);
    EXPECT_EQ(compared("\0\0"s, "\0"s), 1);
    EXPECT_EQ(compared("a\0"s, "a"s), 1);
    EXPECT_EQ(compared("a"s, "a\0"s), 2);
    EXPECT_EQ(compared("a\0b\0c"s, "a\0b\0c"s), 0);
}

TEST(Comparison, LetsTheLengthsDecideWhereTheOtherHasMoreNulsLaterByDesign) {
    mb::SwitchAt const on(1);
    EXPECT_EQ(compared("a\0bbb"s, "a\0\0b"s), 1) << "longer, although the other has more NULs";
    EXPECT_EQ(compared("a\0bz"s, "a\0\0b"s), 0) << "of one length, so equal";
}

TEST(Comparison, OfNullTextOfItselfAndOfNothing) {
    for (int const state : {0, 1}) {
        mb::SwitchAt const at(state);
        operations::Owned const text = buffer("abc");
        EXPECT_EQ(text->compare(nullptr, 3), 1);
        EXPECT_EQ(text->compare(text->contents(), 3), 0);
        EXPECT_EQ(text->compare(text->contents(), 2), 1);
        EXPECT_EQ(text->compare("", 0), 1);
        EXPECT_EQ(buffer("")->compare("", 0), 0);
        EXPECT_EQ(buffer("")->compare("a", 1), 2);
    }
}

TEST(Comparison, ReadsNoBytePastTheOtherText) {
    mb::SwitchAt const on(1);
    for (std::string const& part : mb::parts()) {
        mb::AtMemoryEnd const other("a" + part);
        EXPECT_EQ(buffer("a" + part)->compare(other.data(), 1 + lengthOf(part)), 0) << hex(part);
    }
}

} // namespace
