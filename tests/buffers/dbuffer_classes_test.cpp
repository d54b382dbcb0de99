// Character classes of single-byte text: which bytes the C library takes for members in the locale of the
// process, and what a text must be to be of a class.
#include "tests/buffers/operation_support.h"

#include <cctype>
#include <clocale>
#include <vector>

namespace {

using operations::bytes;
using operations::fresh;
using operations::Owned;

struct Class {
    char const* name;
    bool (DString::*ofString)() const;
    bool (DBuffer::*ofBuffer)() const;
    char const* members; ///< Below 0x80.
    int (*library)(int);
    bool localeDecides; ///< Whether bytes from 0x80 on can be members.
};

#define KELCL_TEST_DIGITS "0123456789"
#define KELCL_TEST_UPPER "ABCDEFGHIJKLMNOPQRSTUVWXYZ"
#define KELCL_TEST_LOWER "abcdefghijklmnopqrstuvwxyz"
#define KELCL_TEST_PUNCTUATION "!\"#$%&'()*+,-./:;<=>?@[\\]^_`{|}~"

std::vector<Class> const classes = {
    {"isAlphanumeric", &DString::isAlphanumeric, &DBuffer::isAlphanumeric,
     KELCL_TEST_DIGITS KELCL_TEST_UPPER KELCL_TEST_LOWER, std::isalnum, true},
    {"isAlphabetic", &DString::isAlphabetic, &DBuffer::isAlphabetic, KELCL_TEST_UPPER KELCL_TEST_LOWER,
     std::isalpha, true},
    {"isControl", &DString::isControl, &DBuffer::isControl,
     "\x01\x02\x03\x04\x05\x06\x07\x08\x09\x0A\x0B\x0C\x0D\x0E\x0F\x10\x11\x12\x13\x14\x15\x16\x17\x18\x19"
     "\x1A\x1B\x1C\x1D\x1E\x1F\x7F",
     std::iscntrl, true},
    {"isDigits", &DString::isDigits, &DBuffer::isDigits, KELCL_TEST_DIGITS, std::isdigit, false},
    {"isGraphics", &DString::isGraphics, &DBuffer::isGraphics,
     KELCL_TEST_DIGITS KELCL_TEST_UPPER KELCL_TEST_LOWER KELCL_TEST_PUNCTUATION, std::isgraph, true},
    {"isHexDigits", &DString::isHexDigits, &DBuffer::isHexDigits, KELCL_TEST_DIGITS "ABCDEFabcdef",
     std::isxdigit, false},
    {"isLowerCase", &DString::isLowerCase, &DBuffer::isLowerCase, KELCL_TEST_LOWER, std::islower, true},
    {"isPrintable", &DString::isPrintable, &DBuffer::isPrintable,
     " " KELCL_TEST_DIGITS KELCL_TEST_UPPER KELCL_TEST_LOWER KELCL_TEST_PUNCTUATION, std::isprint, true},
    {"isPunctuation", &DString::isPunctuation, &DBuffer::isPunctuation, KELCL_TEST_PUNCTUATION, std::ispunct,
     true},
    {"isUpperCase", &DString::isUpperCase, &DBuffer::isUpperCase, KELCL_TEST_UPPER, std::isupper, true},
    {"isWhiteSpace", &DString::isWhiteSpace, &DBuffer::isWhiteSpace, "\t\n\v\f\r ", std::isspace, true},
};

/// Whether the byte is of the class, by the table below 0x80 and by the C library above.
bool isMember(Class const& c, int byte) {
    if (byte == 0) return std::string_view(c.name) == "isControl";
    if (byte < 0x80) return std::strchr(c.members, byte) != nullptr;
    return c.localeDecides && c.library(static_cast<signed char>(byte)) != 0;
}

TEST(CharacterClasses, HoldEveryByteThatTheLocaleSaysAndNoOther) {
    for (Class const& c : classes) {
        for (int byte = 0; byte < 256; ++byte) {
            DString const text(static_cast<char>(byte));
            EXPECT_EQ((text.*c.ofString)(), isMember(c, byte)) << c.name << " of byte " << byte;
            EXPECT_EQ((operations::bufferOf(text)->*c.ofBuffer)(), isMember(c, byte))
                << c.name << " of byte " << byte;
        }
    }
}

TEST(CharacterClasses, AreTrueOnlyWhereEveryByteIsAMember) {
    for (Class const& c : classes) {
        std::string members;
        int stranger = -1;
        for (int byte = 255; byte >= 0; --byte) {
            if (isMember(c, byte))
                members += static_cast<char>(byte);
            else
                stranger = byte;
        }
        ASSERT_GE(stranger, 0);
        for (std::size_t const n : {2u, 15u, 16u, 17u, 31u, 32u, 33u, 64u, 65u, 300u, 1000u}) {
            std::string text;
            for (std::size_t i = 0; i < n; ++i)
                text += members[i % members.size()];
            EXPECT_TRUE((fresh(text).*c.ofString)()) << c.name << " of " << n << " bytes";
            for (std::size_t const at : {std::size_t{0}, n / 2, n - 1}) {
                std::string changed = text;
                changed[at] = static_cast<char>(stranger);
                EXPECT_FALSE((fresh(changed).*c.ofString)())
                    << c.name << " of " << n << " bytes with a stranger at " << at;
            }
        }
    }
}

TEST(CharacterClasses, AreFalseForAnEmptyText) {
    for (Class const& c : classes) {
        EXPECT_FALSE((DString().*c.ofString)()) << c.name;
        EXPECT_FALSE((Owned("").get()->*c.ofBuffer)()) << c.name;
    }
    EXPECT_FALSE(DString().isASCII());
    EXPECT_FALSE(DString().isBinaryDigits());
}

TEST(CharacterClasses, AnswerForKnownTexts) {
    EXPECT_TRUE(fresh("0123").isDigits());
    EXPECT_FALSE(fresh("12a").isDigits());
    EXPECT_FALSE(fresh("12 ").isDigits());
    EXPECT_TRUE(fresh("beefBEEF09").isHexDigits());
    EXPECT_FALSE(fresh("beefG").isHexDigits());
    EXPECT_TRUE(fresh(" \t \t").isWhiteSpace());
    EXPECT_TRUE(fresh("\v\f\r\n").isWhiteSpace());
    EXPECT_FALSE(fresh(bytes(" \0")).isWhiteSpace());
    EXPECT_TRUE(fresh("abc").isLowerCase());
    EXPECT_FALSE(fresh("abC").isLowerCase());
    EXPECT_TRUE(fresh("ABC").isUpperCase());
    EXPECT_TRUE(fresh("a1B2").isAlphanumeric());
    EXPECT_TRUE(fresh("aB").isAlphabetic());
    EXPECT_FALSE(fresh("aB1").isAlphabetic());
    EXPECT_TRUE(fresh(bytes("\0\x1F\x7F")).isControl());
    EXPECT_TRUE(fresh("a b").isPrintable());
    EXPECT_FALSE(fresh("a b").isGraphics());
    EXPECT_TRUE(fresh("!?.").isPunctuation());
}

TEST(CharacterClasses, AsciiHoldsTextsWithoutAByteAbove127) {
    EXPECT_TRUE(fresh("abc").isASCII());
    EXPECT_TRUE(fresh(bytes("\0\x7F")).isASCII());
    EXPECT_FALSE(fresh("\x80").isASCII());
    EXPECT_FALSE(fresh("abc\xFF").isASCII());
    for (std::size_t n = 1; n < 100; ++n) {
        std::string text(n, 'a');
        EXPECT_TRUE(fresh(text).isASCII());
        text.back() = '\x80';
        EXPECT_FALSE(fresh(text).isASCII());
        text.back() = 'a';
        text.front() = '\x80';
        EXPECT_FALSE(fresh(text).isASCII());
    }
}

TEST(CharacterClasses, HoldGermanLettersInAGermanLocaleAndInNoOther) {
    bool const german = operations::localeModeIs("latin1");
    ASSERT_STREQ(std::setlocale(LC_CTYPE, nullptr), german ? "de_DE.ISO-8859-1" : "C");
    EXPECT_EQ(fresh("gr\xFC\xDF").isAlphabetic(), german);
    EXPECT_EQ(fresh("gr\xFC\xDF").isLowerCase(), german);
    EXPECT_EQ(fresh("\xC4\xD6\xDC").isUpperCase(), german);
    EXPECT_EQ(fresh("\xE9").isAlphanumeric(), german);
    EXPECT_EQ(fresh("\xA7\xE4").isPrintable(), german);
    EXPECT_EQ(fresh("\xA7\xE4").isGraphics(), german);
    EXPECT_FALSE(fresh("\xE4").isUpperCase());
    EXPECT_FALSE(fresh("\xB2").isDigits()) << "a superscript two is no digit";
}

// A byte reaches the C library's function sign-extended, so 0xFF arrives as -1, which is the end of a file.
TEST(CharacterClasses, TakeTheByte0xFFForTheEndOfAFileWhichIsOfNoClass) {
    for (Class const& c : classes)
        EXPECT_FALSE((fresh("\xFF").*c.ofString)()) << c.name;
    EXPECT_FALSE(fresh("gr\xFC\xDF\xFF").isAlphabetic());
}

/// Rejects the third byte, whatever the test is.
class ThirdByteRejected : public DBuffer {
public:
    using DBuffer::DBuffer;
    using DBuffer::indexOfAnyBut;
    unsigned int indexOfAnyBut(DStringTest const&, unsigned int) const override { return 3; }
};

TEST(CharacterClasses, AskTheBuffersOwnSearch) {
    auto* const buffer = ::new (::operator new[](sizeof(ThirdByteRejected) + 4)) ThirdByteRejected(3);
    std::memcpy(buffer->contents(), "123", 3);
    Owned const owned(buffer);
    EXPECT_FALSE(buffer->isDigits());
    EXPECT_FALSE(buffer->isAlphanumeric());
    EXPECT_TRUE(buffer->isASCII()) << "this one looks at the bytes itself";
}

TEST(CharacterClasses, OfKindsOfTextAreConstantInASingleByteLocale) {
    for (std::string_view const text : {"", "abc", "\x80\xFF"}) {
        DString const string(text);
        EXPECT_TRUE(string.isSBCS());
        EXPECT_FALSE(string.isMBCS());
        EXPECT_FALSE(string.isDBCS());
        EXPECT_TRUE(string.isValidMBCS());
        EXPECT_TRUE(string.isValidDBCS());
        EXPECT_TRUE(string.includesSBCS());
        EXPECT_FALSE(string.includesMBCS());
        EXPECT_FALSE(string.includesDBCS());
        EXPECT_EQ(string.charType(1), 0u);
        EXPECT_EQ(string.charType(9), 0u);
    }
}

TEST(CaseMapping, StaysAsciiInEveryLocale) {
    std::string all;
    std::string upper;
    std::string lower;
    for (int c = 0; c < 256; ++c) {
        all += static_cast<char>(c);
        upper += static_cast<char>(c >= 'a' && c <= 'z' ? c - 32 : c);
        lower += static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c);
    }
    EXPECT_EQ(operations::contentsOf(fresh(all).upperCase()), upper);
    EXPECT_EQ(operations::contentsOf(fresh(all).lowerCase()), lower);
    EXPECT_EQ(operations::contentsOf(DString::upperCase(fresh(all))), upper);
}

} // namespace
