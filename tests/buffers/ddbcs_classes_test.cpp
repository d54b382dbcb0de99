// Classes of characters in multi-byte text.
#include "tests/buffers/ddbcsbuffer_support.h"
#include "tests/characters/multi_byte_support.h"

#include <climits>
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
