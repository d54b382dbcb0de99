// How strings are made: from characters, numbers, pieces and buffers, and made anew from within.
#include "tests/buffers/buffer_support.h"
#include "tests/string/string_support.h"

#include <climits>
#include <cmath>
#include <limits>

namespace {

using namespace support;

// Construction

TEST(StringConstruction, WithoutArgumentsSharesTheEmptyBuffer) {
    DString const first;
    unsigned int const before = refsOf(first);
    {
        DString const second;
        expectSharedEmpty(second);
        EXPECT_EQ(refsOf(first), before + 1);
    }
    EXPECT_EQ(refsOf(first), before);
}

TEST(StringConstruction, FromABufferTakesOverTheCallersReference) {
    DBuffer* const buffer = defaultBuffer("abc").giveUp();
    DString const adopted(buffer);
    EXPECT_EQ(bufferOf(adopted), buffer);
    EXPECT_EQ(buffer->refs, 1U);
    EXPECT_EQ(textOf(adopted), "abc");
}

TEST(StringConstruction, ACopySharesTheBuffer) {
    DString const original("abc");
    DString const copy(original);
    EXPECT_EQ(copy.c_str(), original.c_str());
    EXPECT_EQ(refsOf(original), 2U);
    {
        DString const another(copy);
        EXPECT_EQ(refsOf(original), 3U);
    }
    EXPECT_EQ(refsOf(original), 2U);
}

TEST(StringConstruction, FromCharactersTakesTheBytesUpToTheNul) {
    expectOwnText(DString("abc"), "abc");
    expectOwnText(DString("abc\0def"), "abc");
    expectOwnText(DString(reinterpret_cast<signed char const*>("abc")), "abc");
    expectOwnText(DString(reinterpret_cast<unsigned char const*>("\x80\xFF")), "\x80\xFF");
}

TEST(StringConstruction, FromEmptyOrNullCharactersSharesTheEmptyBuffer) {
    expectSharedEmpty(DString(""));
    expectSharedEmpty(DString(static_cast<char const*>(nullptr)));
    expectSharedEmpty(DString(static_cast<signed char const*>(nullptr)));
    expectSharedEmpty(DString(static_cast<unsigned char const*>(nullptr)));
    expectSharedEmpty(DString(nullptr));
    expectSharedEmpty(DString(reinterpret_cast<unsigned char const*>("")));
}

TEST(StringConstruction, FromOneCharacterHoldsThatByteAndAlsoANul) {
    expectOwnText(DString('c'), "c");
    expectOwnText(DString(static_cast<signed char>(-1)), "\xFF");
    expectOwnText(DString(static_cast<unsigned char>(200)), "\xC8");
    expectOwnText(DString('\0'), "\0"s);
    expectOwnText(DString(static_cast<signed char>(0)), "\0"s);
    expectOwnText(DString(static_cast<unsigned char>(0)), "\0"s);
}

TEST(StringConstruction, FromIntegersWritesThemInDecimal) {
    expectOwnText(DString(0), "0");
    expectOwnText(DString(-5), "-5");
    expectOwnText(DString(65535U), "65535");
    expectOwnText(DString(INT_MIN), "-2147483648");
    expectOwnText(DString(INT_MAX), "2147483647");
    expectOwnText(DString(static_cast<short>(-32768)), "-32768");
    expectOwnText(DString(static_cast<short>(32767)), "32767");
    expectOwnText(DString(static_cast<unsigned short>(65535)), "65535");
    expectOwnText(DString(UINT_MAX), "4294967295");
    expectOwnText(DString(LONG_MIN), "-9223372036854775808");
    expectOwnText(DString(LONG_MAX), "9223372036854775807");
    expectOwnText(DString(ULONG_MAX), "18446744073709551615");
    expectOwnText(DString(LLONG_MIN), "-9223372036854775808");
    expectOwnText(DString(LLONG_MAX), "9223372036854775807");
    expectOwnText(DString(ULLONG_MAX), "18446744073709551615");
    expectOwnText(DString(0ULL), "0");
}

TEST(StringConstruction, FromADoubleWritesFifteenSignificantDigitsAtMost) {
    auto const written = [](double number) {
        std::string text = textOf(DString(number));
        if (std::size_t const comma = text.find(','); comma != std::string::npos) text[comma] = '.';
        return text;
    };
    EXPECT_EQ(written(0.1), "0.1");
    EXPECT_EQ(written(1.0 / 3), "0.333333333333333");
    EXPECT_EQ(written(2.0 / 3), "0.666666666666667");
    EXPECT_EQ(written(0), "0");
    EXPECT_EQ(written(-0.0), "-0");
    EXPECT_EQ(written(5), "5");
    EXPECT_EQ(written(123456789012345), "123456789012345");
    EXPECT_EQ(written(1234567890123456), "1.23456789012346e+15");
    EXPECT_EQ(written(1e300), "1e+300");
    EXPECT_EQ(written(-2.5e-300), "-2.5e-300");
    EXPECT_EQ(written(std::numeric_limits<double>::max()), "1.79769313486232e+308");
    EXPECT_EQ(written(-std::numeric_limits<double>::denorm_min()), "-4.94065645841247e-324");
    EXPECT_EQ(written(HUGE_VAL), "inf");
    EXPECT_EQ(written(-HUGE_VAL), "-inf");
    EXPECT_EQ(written(std::numeric_limits<double>::quiet_NaN()), "nan");
    expectOwnText(DString(-7.0), "-7");
    expectOwnText(DString(7.0F), "7");
}

TEST(StringConstruction, FromADoubleUsesTheDecimalPointOfTheLocale) {
    char const* const set = std::getenv("KELCL_TEST_LOCALE");
    std::string const locale = set == nullptr ? "" : set;
    bool const comma = locale.rfind("de_DE", 0) == 0 || locale.rfind("tr_TR", 0) == 0;
    expectOwnText(DString(0.5), comma ? "0,5" : "0.5");
}

TEST(StringConstruction, FromPiecesConcatenatesTextsAndPads) {
    expectOwnText(DString(nullptr, 5, '*'), "*****");
    expectOwnText(DString("abcdef", 3), "abc");
    expectOwnText(DString("a\0b", 3, '*'), "a\0b"s);
    expectOwnText(DString(nullptr, 2), "  ");
    expectOwnText(DString("ab", 2, nullptr, 3, '-'), "ab---");
    expectOwnText(DString(nullptr, 3, "ab", 2, '-'), "---ab");
    expectOwnText(DString("ab", 2, "cd", 2), "abcd");
    expectOwnText(DString("ab", 2, nullptr, 2, "e\0f", 3, '\0'), "ab\0\0e\0f"s);
    expectOwnText(DString("ab", 2, "cd", 2, nullptr, 1), "abcd ");
    expectOwnText(DString(nullptr, 1, nullptr, 1, nullptr, 1, 'x'), "xxx");
}

TEST(StringConstruction, FromPiecesOfNoLengthSharesTheEmptyBuffer) {
    expectSharedEmpty(DString(nullptr, 0, '*'));
    expectSharedEmpty(DString("abc", 0));
    expectSharedEmpty(DString("abc", 0, "def", 0, '*'));
    expectSharedEmpty(DString(nullptr, 0, nullptr, 0, nullptr, 0, '*'));
}

TEST(StringConstruction, FromPiecesThatAreTooLongOverflows) {
    expectLengthOverflow([] { DString const made(nullptr, lengthLimit, '*'); });
    expectLengthOverflow([] { DString const made(nullptr, 0xFFFFFFFF, '*'); });
    expectLengthOverflow([] { DString const made(nullptr, 0xFFFFFFFE, nullptr, 1, '*'); });
    expectLengthOverflow([] { DString const made(nullptr, 1, nullptr, 1, nullptr, 0xFFFFFFFD, '*'); });
    expectLengthOverflow(
        [] { DString const made(nullptr, 0x80000000, nullptr, 0x80000000, nullptr, 5, '*'); });
}

TEST(StringConstruction, FromStandardStringsKeepsTheirNuls) {
    expectOwnText(DString("a\0b"s), "a\0b"s);
    expectOwnText(DString("a\0b"sv), "a\0b"s);
    expectOwnText(DString("a\0b"sv.substr(1, 1)), "\0"s);
    expectSharedEmpty(DString(""s));
    expectSharedEmpty(DString(""sv));
    expectSharedEmpty(DString(std::string_view()));
}

TEST(StringConstruction, AStandardStringViewThatIsTooLongOverflowsUnread) {
    char const one = 'x';
    for (std::size_t const size : {std::size_t{lengthLimit}, std::size_t{0xFFFFFFFF}, std::size_t{1} << 32,
                                   (std::size_t{1} << 32) + 5, std::numeric_limits<std::size_t>::max() / 2})
        expectLengthOverflow([&] { DString const made(std::string_view(&one, size)); });
}

// Re-initialisers

class Reinitialised : public DString {
public:
    using DString::DString;
    using DString::initBuffer;
};

/// Expects that `initialise` gives `expected` and leaves the old buffer's count alone.
template <class Initialise>
void expectReinitialised(Initialise initialise, std::string const& expected) {
    Owned const old = defaultBuffer("old");
    ++old->refs;
    Reinitialised text(old.get());
    EXPECT_EQ(static_cast<void*>(&initialise(text)), static_cast<void*>(&text));
    expectOwnText(text, expected);
    EXPECT_EQ(old->refs, 2U) << "the old reference is the caller's affair";
    --old->refs;
}

TEST(StringReinitialisation, FormatsNumbersLikeTheConstructors) {
    expectReinitialised([](Reinitialised& text) -> DString& { return text.initBuffer(LONG_MIN); },
                        "-9223372036854775808");
    expectReinitialised([](Reinitialised& text) -> DString& { return text.initBuffer(ULONG_MAX); },
                        "18446744073709551615");
    expectReinitialised([](Reinitialised& text) -> DString& { return text.initBuffer(1e300); }, "1e+300");
}

TEST(StringReinitialisation, TakesPieces) {
    expectReinitialised(
        [](Reinitialised& text) -> DString& { return text.initBuffer("a\0", 2, nullptr, 2, "bc", 2, '.'); },
        "a\0..bc"s);
}

TEST(StringReinitialisation, KeepsTheClassOfTheCurrentBuffer) {
    Owned const host(makeIn<HostFactoryBuffer>("abc", guardSize));
    ++host->refs;
    Reinitialised text(host.get());
    text.initBuffer(12L);
    --host->refs;
    EXPECT_STREQ(bufferOf(text)->className(), "HostFactoryBuffer");
    EXPECT_EQ(textOf(text), "12");
}

TEST(StringReinitialisation, ThatOverflowsLeavesTheStringAsItWas) {
    Reinitialised text("abc");
    char const* const before = text.c_str();
    expectLengthOverflow([&] { text.initBuffer(nullptr, lengthLimit, nullptr, 0, nullptr, 0, ' '); });
    EXPECT_EQ(text.c_str(), before);
    EXPECT_EQ(textOf(text), "abc");
}

} // namespace
