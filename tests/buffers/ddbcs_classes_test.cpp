// Classes of characters in multi-byte text.
#include "tests/buffers/ddbcsbuffer_support.h"
#include "tests/characters/multi_byte_support.h"

#include <algorithm>
#include <climits>
#include <cwchar>
#include <cwctype>

namespace {

using namespace mb;
using namespace std::string_literals;
using mb::buffer;

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
        operations::Owned const owned = buffer(text);
        for (Class const& type : classes) {
            bool expected = !text.empty();
            for (mb::Character const& character : mb::charactersOf(text))
                expected = expected && isInClass(type, mb::valueOf(character.bytes));
            ASSERT_EQ((owned.get()->*type.test)(), expected) << type.name << " of " << hex(text);
        }
    }
}

TEST(Classes, OfEachTwoAsciiBytesAreThoseOfTheCharactersThatTheyAre) {
    for (int first = 1; first < 128; ++first)
        for (int second = 1; second < 128; ++second) {
            std::string const text{static_cast<char>(first), static_cast<char>(second)};
            operations::Owned const owned = buffer(text);
            for (Class const& type : classes) {
                bool expected = true;
                for (mb::Character const& character : mb::charactersOf(text))
                    expected = expected && isInClass(type, mb::valueOf(character.bytes));
                ASSERT_EQ((owned.get()->*type.test)(), expected) << type.name << " of " << hex(text);
            }
        }
}

TEST(Classes, OfAsciiOfEveryLengthHaveNoOtherByteAnywhere) {
    for (std::size_t n = 1; n <= 130; ++n) {
        std::string text(n, '4');
        EXPECT_TRUE(buffer(text)->isDigits());
        EXPECT_TRUE(buffer(text)->isAlphanumeric());
        for (std::size_t other = 0; other < n; ++other) {
            text[other] = 'a';
            EXPECT_FALSE(buffer(text)->isDigits());
            EXPECT_TRUE(buffer(text)->isHexDigits());
            text[other] = '-';
            EXPECT_FALSE(buffer(text)->isAlphanumeric());
            text[other] = '4';
        }
    }
}

/// All characters that come back as themselves, in random order, but for the marks that some encodings join
/// with the letter before them.
std::vector<mb::Character> allCharacters() {
    std::vector<mb::Character> characters;
    constexpr std::wstring_view joined = L"\u02E5\u02E9\u0300\u0301\u0304\u030C\u309A";
    for (long value = 1; value < 0x20000; ++value) {
        if (joined.find(static_cast<wchar_t>(value)) != joined.npos) continue;
        char bytes[MB_LEN_MAX];
        std::mbstate_t state{};
        std::size_t const length = std::wcrtomb(bytes, static_cast<wchar_t>(value), &state);
        if (length == static_cast<std::size_t>(-1)) continue;
        std::string const text(bytes, length);
        if (mb::charactersOf(text).size() == 1 && mb::valueOf(text) == value) characters.push_back({0, text});
    }
    std::shuffle(characters.begin(), characters.end(), std::mt19937(8));
    return characters;
}

TEST(Classes, OfALongTextAreThoseOfEachOfItsCharacters) {
    if (!mb::isMultiByte()) return;
    std::vector<mb::Character> const all = allCharacters();
    ASSERT_GT(all.size(), 1000U);
    for (Class const& type : classes) {
        std::string members;
        std::string other;
        for (mb::Character const& character : all)
            (isInClass(type, mb::valueOf(character.bytes)) ? members : other) += character.bytes;
        if (members.size() < 300) continue; // the class has few members
        std::string const oddOne = mb::charactersOf(other).back().bytes;
        EXPECT_TRUE((buffer(members + members).get()->*type.test)()) << type.name;
        EXPECT_FALSE((buffer(members + oddOne + members).get()->*type.test)()) << type.name;
        EXPECT_FALSE((buffer(members + members + oddOne).get()->*type.test)()) << type.name;
    }
}

TEST(Kinds, OfALongTextAreThoseOfItsCharacters) {
    if (!mb::isMultiByte()) return;
    std::string wide;
    std::string others;
    for (mb::Character const& character : allCharacters())
        (character.bytes.size() >= 2 && wcwidth(mb::valueOf(character.bytes)) >= 2 ? wide : others) +=
            character.bytes;
    std::string const oneWide = mb::charactersOf(wide).back().bytes;
    std::string const oneOther = mb::charactersOf(others).back().bytes;
    EXPECT_TRUE(buffer(wide + wide)->isMBCS());
    EXPECT_FALSE(buffer(wide + oneOther + wide)->isMBCS());
    EXPECT_FALSE(buffer(wide + "a")->isMBCS());
    EXPECT_TRUE(buffer(others + others)->isSBCS());
    EXPECT_FALSE(buffer(others + oneWide + others)->isSBCS());
    EXPECT_TRUE(buffer(wide + wide)->isValidMBCS());
    EXPECT_FALSE(buffer(wide + "a" + wide)->isValidMBCS());
    if (!mb::samples().invalid.empty()) {
        EXPECT_FALSE(buffer(wide + mb::samples().invalid)->isValidMBCS());
    }
}

TEST(Case, OfALongTextIsThatOfEachOfItsCharacters) {
    if (!mb::isMultiByte()) return;
    mb::SwitchAt const on(1);
    std::string text;
    std::string upper;
    std::string lower;
    for (mb::Character const& character : allCharacters()) {
        wchar_t const value = mb::valueOf(character.bytes);
        char bytes[2][MB_LEN_MAX];
        std::mbstate_t state{};
        auto const up = static_cast<wchar_t>(std::towupper(static_cast<std::wint_t>(value)));
        auto const low = static_cast<wchar_t>(std::towlower(static_cast<std::wint_t>(value)));
        std::size_t const upLength = std::wcrtomb(bytes[0], up, &state);
        state = {};
        std::size_t const lowLength = std::wcrtomb(bytes[1], low, &state);
        constexpr auto none = static_cast<std::size_t>(-1);
        if (upLength == none || lowLength == none) continue; // the encoding lacks the other case
        if (upLength == 0 || lowLength == 0) continue;       // or holds it back until the next one
        for (int twice = 0; twice < 2; ++twice) {
            text += character.bytes;
            upper.append(bytes[0], upLength);
            lower.append(bytes[1], lowLength);
        }
    }
    operations::Owned const owned = buffer(text + text);
    EXPECT_EQ(operations::Owned(owned->upperCase()).text(), upper + upper);
    EXPECT_EQ(operations::Owned(owned->lowerCase()).text(), lower + lower);
}

TEST(Classes, HaveNoBytesThatAreNoCharacter) {
    if (mb::samples().invalid.empty()) return;
    for (std::string const& bad : {mb::samples().invalid, "a" + mb::samples().invalid}) {
        operations::Owned const owned = buffer(bad);
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

} // namespace
