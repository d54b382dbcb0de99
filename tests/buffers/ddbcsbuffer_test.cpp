// The core of the multi-byte buffer: measuring characters, classes and kinds of characters, comparison, and
// the two edits that repair what they cut. Searches and the other edits are not tested here.
#include "tests/characters/multi_byte_support.h"

#include <climits>
#include <cwctype>
#include <functional>

namespace {

using namespace std::string_literals;
using mb::asMultiByte;
using mb::buffer;
using mb::hex;
using mb::lengthOf;

/// Calls `check` with random texts until one fails, and tells which one that was.
void forRandomTexts(unsigned int seed, int rounds, std::function<void(std::string const&)> const& check) {
    std::mt19937 random(seed);
    for (int round = 0; round < rounds; ++round) {
        std::string text = mb::randomText(random, round % 3 == 0 ? mb::wholeParts() : mb::parts(), 9);
        if (round % 5 == 0)
            for (int i = 0; i < 4; ++i)
                text += static_cast<char>(random() % 256);
        check(text);
        if (testing::Test::HasFailure()) {
            ADD_FAILURE() << "with " << hex(text);
            return;
        }
    }
}

// Identity and measurement

TEST(MultiByteBuffer, IsTheClassOfNewBuffersWhereTheLocaleHasLongCharacters) {
    EXPECT_STREQ(ops::Owned("abc")->className(), mb::isMultiByte() ? "DDBCSBuffer" : "DBuffer");
    EXPECT_STREQ(buffer("abc")->className(), "DDBCSBuffer");
    static_assert(sizeof(DDBCSBuffer) == sizeof(DBuffer));
}

TEST(MultiByteBuffer, AllocatesItsOwnKind) {
    ops::Owned const made(buffer("abc")->allocate(5));
    EXPECT_STREQ(made->className(), "DDBCSBuffer");
    EXPECT_EQ(made->length, 5u);
    EXPECT_EQ(made->refs, 1u);
    EXPECT_EQ(made->contents()[5], '\0');
    ops::Owned const copy(buffer("abc")->newBuffer("xyz", 3));
    EXPECT_STREQ(copy->className(), "DDBCSBuffer");
    EXPECT_EQ(copy.text(), "xyz");
}

TEST(MultiByteBuffer, RefusesLengthsThatNoBlockCanHave) {
    ops::Owned const some = buffer("abc");
    for (unsigned int const length : {0xFFFFFFE7u, 0xFFFFFFE8u, UINT_MAX})
        EXPECT_EQ(ops::failureOf([&] { some->allocate(length); }), ops::lengthOverflow());
    EXPECT_EQ(some.text(), "abc");
}

TEST(CharacterType, IsThePlaceOfTheByteInItsCharacter) {
    forRandomTexts(1, 3000, [](std::string const& text) {
        ops::Owned const owned = buffer(text);
        std::vector<unsigned int> const places = mb::placesOf(text);
        for (unsigned int index = 1; index <= lengthOf(text); ++index)
            EXPECT_EQ(owned->charType(index), places[index - 1]) << index;
        EXPECT_EQ(owned->charType(0), 0u);
    });
}

TEST(CharacterType, OfATextOfSamples) {
    for (mb::Sample const& sample : mb::samples().longCharacters()) {
        ops::Owned const owned = buffer("a" + sample.bytes + "b");
        EXPECT_EQ(owned->charType(1), 0u);
        for (unsigned int place = 1; place <= sample.bytes.size(); ++place)
            EXPECT_EQ(owned->charType(1 + place), place);
        EXPECT_EQ(owned->charType(owned->length), 0u);
        EXPECT_EQ(asMultiByte(owned).prevCharLength(owned->length), sample.bytes.size());
    }
}

TEST(CharacterLength, IsThatOfTheSplitterByEveryWayToAsk) {
    forRandomTexts(2, 3000, [](std::string const& text) {
        ops::Owned const owned = buffer(text);
        DDBCSBuffer const& b = asMultiByte(owned);
        for (unsigned int index = 1; index <= lengthOf(text); ++index) {
            auto const expected = static_cast<int>(mb::lengthAt(text, index - 1));
            char* const p = owned->contents() + index - 1;
            std::mbstate_t state{};
            EXPECT_EQ(DDBCSBuffer::charLength(p, &state), expected) << index;
            EXPECT_NE(std::mbsinit(&state), 0) << "ready for the next character";
            EXPECT_EQ(b.charLength(index, &state), expected) << index;
            EXPECT_EQ(DDBCSBuffer::isSBC(p, &state) != 0, expected == 1) << index;
            EXPECT_EQ(owned->next(p), p + expected) << index;
            EXPECT_EQ(b.next(static_cast<char const*>(p)), p + expected) << index;
        }
    });
}

TEST(CharacterLength, OfTheCharacterBeforeAPosition) {
    forRandomTexts(3, 2000, [](std::string const& text) {
        ops::Owned const owned = buffer(text);
        DDBCSBuffer const& b = asMultiByte(owned);
        std::mbstate_t state{};
        for (mb::Character const& character : mb::charactersOf(text)) {
            auto const behind = static_cast<unsigned int>(character.offset + character.bytes.size()) + 1;
            EXPECT_EQ(b.prevCharLength(behind), character.bytes.size());
            EXPECT_EQ(b.prevCharLength(behind, &state), character.bytes.size());
        }
        EXPECT_EQ(b.prevCharLength(1), 1u);
        EXPECT_EQ(b.prevCharLength(1, &state), 1u);
    });
}

TEST(CharacterLength, OfATextThatEndsInACutCharacterIsOneForEachByte) {
    for (mb::Sample const& sample : mb::samples().longCharacters()) {
        ops::Owned const owned = buffer("a" + sample.bytes.substr(0, 1));
        EXPECT_EQ(owned->charType(2), 0u);
        EXPECT_EQ(owned->next(owned->contents() + 1), owned->contents() + 2);
    }
}

TEST(CharacterInSet, IsOneOfTheWholeCharactersOfTheSet) {
    std::mt19937 random(4);
    for (int round = 0; round < 4000; ++round) {
        std::string const text = mb::randomText(random, mb::parts(), 5);
        std::string const set = mb::randomText(random, mb::parts(), 4);
        ops::Owned const owned = buffer(text);
        for (mb::Character const& character : mb::charactersOf(text)) {
            bool expected = false;
            for (mb::Character const& member : mb::charactersOf(set))
                expected = expected || member.bytes == character.bytes;
            mb::AtMemoryEnd const setBytes(set + '\0');
            EXPECT_EQ(asMultiByte(owned).isCharValid(static_cast<unsigned int>(character.offset) + 1,
                                                     setBytes.data(), lengthOf(set)) != 0,
                      expected)
                << hex(character.bytes) << "in " << hex(set);
        }
    }
}

TEST(CharacterInSet, IsNotFoundInsideAnotherCharacter) {
    mb::Sample const& trail = mb::samples().asciiTrail;
    std::string const set = trail.bytes + "xy";
    std::string const last = trail.exists() ? std::string(1, trail.bytes.back()) : "a";
    ops::Owned const owned = buffer(last + "x");
    EXPECT_EQ(asMultiByte(owned).isCharValid(1, set.data(), lengthOf(set)), 0);
    EXPECT_EQ(asMultiByte(owned).isCharValid(2, set.data(), lengthOf(set)), 1);
    EXPECT_EQ(asMultiByte(owned).isCharValid(2, set.data(), lengthOf(set) - 2), 0);
    EXPECT_EQ(asMultiByte(owned).isCharValid(2, set.data(), 0), 0);
}

// Classes

struct Class {
    char const* name;
    bool (DBuffer::*test)() const;
    int (*value)(int);
    char const* ascii; ///< The class in the C locale, by wctype's name.
    int (*wide)(std::wint_t);
};

Class const classes[] = {
    {"alnum", &DBuffer::isAlphanumeric, tql_iswalnum, "alnum", std::iswalnum},
    {"alpha", &DBuffer::isAlphabetic, tql_iswalpha, "alpha", std::iswalpha},
    {"cntrl", &DBuffer::isControl, tql_iswcntrl, "cntrl", std::iswcntrl},
    {"digit", &DBuffer::isDigits, tql_iswdigit, "digit", nullptr},
    {"graph", &DBuffer::isGraphics, tql_iswgraph, "graph", std::iswgraph},
    {"xdigit", &DBuffer::isHexDigits, tql_iswxdigit, "xdigit", nullptr},
    {"lower", &DBuffer::isLowerCase, tql_iswlower, "lower", std::iswlower},
    {"print", &DBuffer::isPrintable, tql_iswprint, "print", std::iswprint},
    {"punct", &DBuffer::isPunctuation, tql_iswpunct, "punct", std::iswpunct},
    {"upper", &DBuffer::isUpperCase, tql_iswupper, "upper", std::iswupper},
    {"space", &DBuffer::isWhiteSpace, tql_iswspace, "space", std::iswspace},
};

/// The class of an ASCII value, from the code table.
bool isAsciiInClass(std::string_view name, int c) {
    bool const lower = c >= 'a' && c <= 'z';
    bool const upper = c >= 'A' && c <= 'Z';
    bool const digit = c >= '0' && c <= '9';
    bool const graph = c > 0x20 && c < 0x7F;
    if (name == "alnum") return lower || upper || digit;
    if (name == "alpha") return lower || upper;
    if (name == "cntrl") return c < 0x20 || c == 0x7F;
    if (name == "digit") return digit;
    if (name == "graph") return graph;
    if (name == "xdigit") return digit || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
    if (name == "lower") return lower;
    if (name == "print") return graph || c == ' ';
    if (name == "punct") return graph && !lower && !upper && !digit;
    if (name == "upper") return upper;
    return c == ' ' || (c >= 9 && c <= 13);
}

bool isInClass(Class const& type, int value) {
    if (value >= 0 && value <= 127) return isAsciiInClass(type.name, value);
    return type.wide != nullptr && type.wide(static_cast<std::wint_t>(value)) != 0;
}

TEST(ClassesOfWideValues, AreTheCodeTableForAsciiAndTheLocalesBeyond) {
    for (Class const& type : classes) {
        for (int value = -300; value < 0x3400; ++value)
            ASSERT_EQ(type.value(value), isInClass(type, value) ? 1 : 0) << type.name << ' ' << value;
        for (int const value :
             {0xAC00, 0xFF10, 0xFF21, 0xFFFF, 0x10400, 0x20000, 0x10FFFF, 0x110000, INT_MAX, INT_MIN})
            EXPECT_EQ(type.value(value), isInClass(type, value) ? 1 : 0) << type.name << ' ' << value;
    }
}

TEST(ClassesOfWideValues, HaveNoDigitsBeyondAscii) {
    for (int const value : {0x660, 0x966, 0xFF10, 0xFF19, 0xFF21, 0xB2}) {
        EXPECT_EQ(tql_iswdigit(value), 0);
        EXPECT_EQ(tql_iswxdigit(value), 0);
    }
    EXPECT_EQ(tql_iswdigit('7'), 1);
    EXPECT_EQ(tql_iswxdigit('f'), 1);
}

TEST(ClassesOfWideValues, KnowLettersOfTheLocale) {
    if (!mb::isMultiByte()) return;
    EXPECT_EQ(tql_iswalpha(0x0416), 1) << "a Cyrillic letter";
    EXPECT_EQ(tql_iswupper(0x0416), 1);
    EXPECT_EQ(tql_iswlower(0x0436), 1);
    EXPECT_EQ(tql_iswalpha(0x3000), 0);
    EXPECT_EQ(tql_iswspace(0x3000), 1) << "the ideographic space";
}

TEST(Classes, AreThoseOfAllCharactersAndOfNoEmptyText) {
    for (Class const& type : classes)
        EXPECT_FALSE((buffer("").get()->*type.test)()) << type.name;
    std::vector<std::string> letters = {"a", "b", "A", "Z", "7", "0", "f", "\t", " ", "\n", ".", "\x7F"};
    for (mb::Sample const& sample : mb::samples().longCharacters())
        letters.push_back(sample.bytes);
    std::mt19937 random(5);
    for (int round = 0; round < 6000; ++round) {
        // Of few different characters, so that many texts are of one class.
        std::vector<std::string> some;
        for (unsigned int i = 0; i < 1 + random() % 2; ++i)
            some.push_back(letters[random() % letters.size()]);
        if (round % 8 == 0) some.push_back(mb::parts()[random() % mb::parts().size()]);
        std::string const text = mb::randomText(random, some, 20);
        ops::Owned const owned = buffer(text);
        for (Class const& type : classes) {
            bool expected = !text.empty();
            for (mb::Character const& character : mb::charactersOf(text))
                expected = expected && isInClass(type, mb::valueOf(character.bytes));
            ASSERT_EQ((owned.get()->*type.test)(), expected) << type.name << " of " << hex(text);
        }
    }
}

TEST(Classes, HaveNoBytesThatAreNoCharacter) {
    if (mb::samples().invalid.empty()) return;
    for (std::string const& bad : {mb::samples().invalid, "a" + mb::samples().invalid}) {
        ops::Owned const owned = buffer(bad);
        for (Class const& type : classes)
            EXPECT_FALSE((owned.get()->*type.test)()) << type.name;
    }
}

TEST(Ascii, IsTestedByBytes) {
    EXPECT_EQ(buffer("abc\x7F")->isASCII(), true);
    EXPECT_EQ(buffer("abc\x80")->isASCII(), false);
    for (std::string const& text : {""s, "a"s, "\0a"s})
        EXPECT_EQ(buffer(text)->isASCII(), buffer(text)->DBuffer::isASCII());
}

// Kinds of characters

TEST(Kinds, OfAnEmptyText) {
    ops::Owned const empty = buffer("");
    EXPECT_TRUE(empty->isMBCS());
    EXPECT_TRUE(empty->isDBCS());
    EXPECT_TRUE(empty->isSBCS());
    EXPECT_TRUE(empty->isValidMBCS());
    EXPECT_TRUE(empty->isValidDBCS());
    EXPECT_FALSE(empty->includesMBCS());
    EXPECT_FALSE(empty->includesDBCS());
    EXPECT_FALSE(empty->includesSBCS());
}

TEST(Kinds, OfOneWideCharacter) {
    mb::Sample const& wide = mb::samples().wide;
    if (!wide.exists()) {
        EXPECT_FALSE(buffer("a")->isMBCS());
        return;
    }
    ops::Owned const owned = buffer(wide.bytes);
    EXPECT_TRUE(owned->isMBCS());
    EXPECT_TRUE(owned->isDBCS());
    EXPECT_FALSE(owned->isSBCS());
    EXPECT_TRUE(owned->includesMBCS());
    EXPECT_TRUE(owned->includesDBCS());
    EXPECT_FALSE(owned->includesSBCS());
    EXPECT_TRUE(owned->isValidMBCS());
    EXPECT_TRUE(owned->isValidDBCS());
}

TEST(Kinds, CountALongCharacterOfOneColumnAsASingleByteOneWhichIsWanted) {
    mb::Sample const& narrow = mb::samples().narrow;
    ops::Owned const owned = buffer("a" + narrow.bytes);
    EXPECT_TRUE(owned->isSBCS());
    EXPECT_FALSE(owned->isMBCS());
    EXPECT_FALSE(owned->includesMBCS());
    if (!narrow.exists()) return;
    EXPECT_FALSE(buffer(narrow.bytes)->isMBCS());
    EXPECT_TRUE(buffer(narrow.bytes)->isValidMBCS()) << "this test does not look at the width";
}

TEST(Kinds, AreThoseOfTheCharacters) {
    forRandomTexts(6, 4000, [](std::string const& text) {
        bool isMultiByte = true;
        bool isSingleByte = true;
        bool isValid = true;
        for (mb::Character const& character : mb::charactersOf(text)) {
            bool const isLong = character.bytes.size() >= 2;
            bool const isWide = isLong && wcwidth(mb::valueOf(character.bytes)) >= 2;
            isMultiByte = isMultiByte && isWide;
            isSingleByte = isSingleByte && !isWide;
            isValid = isValid && isLong;
        }
        ops::Owned const owned = buffer(text);
        EXPECT_EQ(owned->isMBCS(), isMultiByte);
        EXPECT_EQ(owned->isDBCS(), isMultiByte);
        EXPECT_EQ(owned->isSBCS(), isSingleByte);
        EXPECT_EQ(owned->isValidMBCS(), isValid);
        EXPECT_EQ(owned->isValidDBCS(), isValid);
        EXPECT_EQ(owned->includesMBCS(), !isSingleByte);
        EXPECT_EQ(owned->includesDBCS(), !isSingleByte);
        EXPECT_EQ(owned->includesSBCS(), !isMultiByte);
    });
}

TEST(CaseMapping, OfALongTextTakesCharactersWhoseOtherCaseIsLonger) {
    if (!mb::isUtf8()) return;
    mb::SwitchAt const on(1);
    for (std::size_t const before : {0U, 1U, 84U, 85U, 86U, 255U, 256U, 1000U}) {
        std::string text;
        for (std::size_t i = 0; i < before; ++i)
            text += "\xE3\x81\x82";
        ops::Owned const owned = buffer(text + "\xC9\x90z");                                // U+0250
        EXPECT_EQ(ops::Owned(owned->upperCase()).text(), text + "\xE2\xB1\xAFZ") << before; // U+2C6F
    }
}

/// A class of a host that overrides the three tests that the others are made of.
class ContraryBuffer : public DDBCSBuffer {
public:
    using DDBCSBuffer::DDBCSBuffer;
    bool isMBCS() const override { return false; }
    bool isSBCS() const override { return false; }
    bool isValidMBCS() const override { return false; }
};

/// A class of a host that finds no character of a set in front of its third byte.
class LateBuffer : public DDBCSBuffer {
public:
    using DDBCSBuffer::DDBCSBuffer;
    unsigned int indexOfAnyOf(char const* set, unsigned int setLength, unsigned int start) const override {
        return DDBCSBuffer::indexOfAnyOf(set, setLength, std::max(start, 3U));
    }
};

TEST(CaseMapping, BeginsWhereTheSearchOfASubclassFindsTheFirstLetter) {
    mb::SwitchAt const off(0);
    alignas(std::max_align_t) char storage[sizeof(LateBuffer) + 64];
    auto* const text = ::new (storage) LateBuffer(5);
    std::memcpy(text->contents(), "ab-cd", 5);
    EXPECT_EQ(text->upperCase(), text);
    EXPECT_EQ(std::string(text->contents(), text->length), "ab-CD");
    --text->refs; // that of the result, so that the next edit is in place too
    EXPECT_EQ(text->lowerCase(), text);
    EXPECT_EQ(std::string(text->contents(), text->length), "ab-cd");
    --text->refs;
    std::memcpy(text->contents(), "Ab-12", 5);
    EXPECT_EQ(text->lowerCase(), text);
    EXPECT_EQ(std::string(text->contents(), text->length), "Ab-12");
}

TEST(Kinds, FollowTheTestsThatASubclassOverrides) {
    alignas(std::max_align_t) char storage[sizeof(ContraryBuffer) + 32];
    auto* const empty = ::new (storage) ContraryBuffer(0);
    DBuffer const& tests = *empty;
    EXPECT_FALSE(tests.isDBCS());
    EXPECT_TRUE(tests.includesMBCS());
    EXPECT_TRUE(tests.includesDBCS());
    EXPECT_TRUE(tests.includesSBCS());
    EXPECT_FALSE(tests.isValidDBCS());
}

// Comparison

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
    EXPECT_EQ(compared("a" + bad + "x", "a" + bad + "y"), 0) << "nothing behind the bad byte counts";
}

TEST(Comparison, OfTextsOfDifferentLengthThatConvertToTheSameFindsThemEqualWhichIsWanted) {
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

TEST(Comparison, LetsTheLengthsDecideWhereTheOtherHasMoreNulsLaterWhichIsWanted) {
    mb::SwitchAt const on(1);
    EXPECT_EQ(compared("a\0bbb"s, "a\0\0b"s), 1) << "longer, although the other has more NULs";
    EXPECT_EQ(compared("a\0bz"s, "a\0\0b"s), 0) << "of one length, so equal";
}

TEST(Comparison, OfNullTextOfItselfAndOfNothing) {
    for (int const state : {0, 1}) {
        mb::SwitchAt const at(state);
        ops::Owned const text = buffer("abc");
        EXPECT_EQ(text->compare(nullptr, 3), 1);
        EXPECT_EQ(text->compare(text->contents(), 3), 0);
        EXPECT_EQ(text->compare(text->contents(), 2), 1);
        EXPECT_EQ(text->compare("", 0), 1);
        EXPECT_EQ(buffer("")->compare("", 0), 0);
        EXPECT_EQ(buffer("")->compare("a", 1), 2);
    }
}

TEST(Comparison, ReadsNoByteBehindTheOtherText) {
    mb::SwitchAt const on(1);
    for (std::string const& part : mb::parts()) {
        mb::AtMemoryEnd const other("a" + part);
        EXPECT_EQ(buffer("a" + part)->compare(other.data(), 1 + lengthOf(part)), 0) << hex(part);
    }
}

// Repairing edits

std::string removed(std::string const& text, std::vector<unsigned int> const& places, unsigned int start,
                    unsigned int count) {
    if (start > text.size() || text.empty()) return text;
    std::size_t const s = std::max(start, 1u);
    std::size_t const n = std::min<std::size_t>(count, text.size() - s + 1);
    std::string result = text.substr(0, s - 1) + text.substr(s - 1 + n);
    for (unsigned int place = places[s - 1]; place >= 2 && s - 1 >= places[s - 1] - place + 1; --place)
        result[s - 2 - (places[s - 1] - place)] = ' ';
    for (std::size_t e = s + n, at = s - 1; e <= text.size() && places[e - 1] >= 2; ++e, ++at)
        result[at] = ' ';
    return result;
}

TEST(Removal, BlanksWhatIsLeftOfCutCharacters) {
    forRandomTexts(10, 1500, [](std::string const& text) {
        std::vector<unsigned int> const places = mb::placesOf(text);
        for (unsigned int start = 0; start <= lengthOf(text) + 1; ++start)
            for (unsigned int count = 0; count <= lengthOf(text) + 1; ++count) {
                ops::Owned const owned = buffer(text);
                ops::Owned const result(owned->remove(start, count));
                std::string const expected = removed(text, places, start, count);
                EXPECT_TRUE(result.text() == expected)
                    << start << ' ' << count << ": " << hex(result.text()) << ", not " << hex(expected);
                EXPECT_TRUE(owned.text() == text) << "the receiver is what it was";
            }
    });
}

TEST(Removal, OfTheFirstByteOfACharacterBlanksTheRest) {
    for (mb::Sample const& sample : mb::samples().longCharacters()) {
        auto const size = lengthOf(sample.bytes);
        std::string const text = "a" + sample.bytes + "b";
        EXPECT_EQ(ops::Owned(buffer(text)->remove(2, 1)).text(), "a" + std::string(size - 1, ' ') + "b");
        EXPECT_EQ(ops::Owned(buffer(text)->remove(1 + size, 1)).text(),
                  "a" + std::string(size - 1, ' ') + "b");
        EXPECT_EQ(ops::Owned(buffer(text)->remove(2, size)).text(), "ab");
        EXPECT_EQ(ops::Owned(buffer(text)->remove(3, UINT_MAX)).text(), "a ");
    }
}

TEST(Removal, BehindTheEndReturnsTheSameBuffer) {
    for (std::string const& text : {"abc"s, ""s}) {
        ops::Owned const owned = buffer(text);
        ops::Owned const result(owned->remove(4, 1));
        EXPECT_EQ(result.get(), owned.get());
        EXPECT_EQ(owned->refs, 2u);
    }
}

std::string rightJustified(std::string const& text, unsigned int width, char pad) {
    if (width >= text.size()) return std::string(width - text.size(), pad) + text;
    std::string result = text.substr(text.size() - width);
    std::vector<unsigned int> const places = mb::placesOf(text);
    for (std::size_t at = 0; at < width && places[text.size() - width + at] >= 2; ++at)
        result[at] = pad;
    return result;
}

TEST(RightJustification, PadsOrCutsTheFrontAndPadsCutCharacters) {
    forRandomTexts(11, 1500, [](std::string const& text) {
        for (unsigned int width = 0; width <= lengthOf(text) + 3; ++width) {
            ops::Owned const owned = buffer(text);
            ops::Owned const result(owned->rightJustify(width, '*'));
            EXPECT_EQ(hex(result.text()), hex(rightJustified(text, width, '*'))) << width;
            EXPECT_EQ(hex(owned.text()), hex(text));
        }
    });
}

TEST(RightJustification, PadsTheOrphanedEndOfACharacter) {
    for (mb::Sample const& sample : mb::samples().longCharacters()) {
        auto const size = lengthOf(sample.bytes);
        ops::Owned const owned = buffer(sample.bytes + "b");
        for (unsigned int width = 2; width <= size; ++width)
            EXPECT_EQ(ops::Owned(owned->rightJustify(width, '*')).text(), std::string(width - 1, '*') + "b");
        EXPECT_EQ(ops::Owned(owned->rightJustify(1, '*')).text(), "b");
    }
}

TEST(RightJustification, ToTheSameWidthReturnsTheSameBuffer) {
    ops::Owned const owned = buffer("abc" + mb::samples().two.bytes);
    ops::Owned const result(owned->rightJustify(owned->length, '*'));
    EXPECT_EQ(result.get(), owned.get());
    EXPECT_EQ(owned->refs, 2u);
}

} // namespace
