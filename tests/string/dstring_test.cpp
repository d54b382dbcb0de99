// DString: construction, assignment, sharing and copy-on-write, concatenation, removal, justification and the
// debug text. Appending in place and streams have programs of their own.
#include "tests/buffers/buffer_support.h"

#include <climits>
#include <cmath>
#include <cstdint>
#include <limits>

namespace {

using namespace core;

constexpr unsigned int lengthLimit = 0xFFFFFFE7;

/// The checks that hold for a string of its own: text, class, one reference.
void expectOwnText(DString const& made, std::string const& expected) {
    EXPECT_EQ(textOf(made), expected);
    EXPECT_EQ(made.c_str()[made.length()], '\0');
    EXPECT_EQ(bufferOf(made)->className(), defaultClass());
    EXPECT_EQ(refsOf(made), 1U);
}

void expectSharedEmpty(DString const& made) {
    EXPECT_EQ(made.c_str(), DString::nullBuf());
    EXPECT_EQ(made.c_str(), DBuffer::defaultBuffer()->contents());
    EXPECT_EQ(made.length(), 0U);
}

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

TEST(StringConstants, HaveTheirTexts) {
    EXPECT_STREQ(DString::null, "");
    EXPECT_STREQ(DString::zero, "0");
    EXPECT_STREQ(DString::maxLong, "0x7fffffffffffffffL");
}

TEST(StringConstants, TheSwitchFollowsTheEnvironment) {
    char const* const set = std::getenv("KORVA_I18N");
    EXPECT_EQ(DString::fgI18NState, set != nullptr && set == "ON"s ? 1 : 0);
}

TEST(StringLayout, AStringIsOnePointerWide) {
    static_assert(sizeof(DString) == sizeof(void*));
    static_assert(alignof(DString) == alignof(void*));
    static_assert(!std::is_polymorphic_v<DString>);
    DString const text("abc");
    char const* stored = nullptr;
    std::memcpy(&stored, static_cast<void const*>(&text), sizeof stored);
    EXPECT_EQ(stored, text.c_str()) << "the pointer is that of the text";
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

// Assignment, move, swap

TEST(StringAssignment, SharesTheOthersBufferAndReleasesItsOwn) {
    DString text("abc");
    DString const witness(text);
    DString const other("def");
    DString& result = text = other;
    EXPECT_EQ(&result, &text);
    EXPECT_EQ(text.c_str(), other.c_str());
    EXPECT_EQ(refsOf(other), 2U);
    EXPECT_EQ(refsOf(witness), 1U);
}

TEST(StringAssignment, ToItselfKeepsTextAndCount) {
    DString text("abc");
    DString& same = text;
    text = same;
    EXPECT_EQ(textOf(text), "abc");
    EXPECT_EQ(refsOf(text), 1U);
    DString const copy(text);
    text = same;
    EXPECT_EQ(refsOf(text), 2U);
    text = copy;
    EXPECT_EQ(refsOf(text), 2U) << "the buffer was shared already";
}

TEST(StringAssignment, FromTextsAndNumbersGoesThroughConstruction) {
    DString text("abc");
    text = "def";
    EXPECT_EQ(textOf(text), "def");
    text = "a\0b"s;
    EXPECT_EQ(textOf(text), "a\0b"s);
    text = "g\0h"sv;
    EXPECT_EQ(textOf(text), "g\0h"s);
    text = 'c';
    EXPECT_EQ(textOf(text), "c");
    text = 12;
    EXPECT_EQ(textOf(text), "12");
    text = nullptr;
    expectSharedEmpty(text);
}

TEST(StringAssignment, FromItsOwnCharactersCopiesThemFirst) {
    DString text("abcdef");
    text = text.c_str() + 2;
    EXPECT_EQ(textOf(text), "cdef");
}

TEST(StringMove, TakesTheBufferAndLeavesAnEmptyString) {
    DString source("abc");
    char const* const characters = source.c_str();
    DString const target(std::move(source));
    EXPECT_EQ(target.c_str(), characters);
    EXPECT_EQ(refsOf(target), 1U);
    expectSharedEmpty(source);
    source += "again";
    EXPECT_EQ(textOf(source), "again") << "the moved-from string is usable";
}

TEST(StringMove, OfASharedStringKeepsTheCount) {
    DString source("abc");
    DString const witness(source);
    DString const target(std::move(source));
    EXPECT_EQ(refsOf(witness), 2U);
    EXPECT_EQ(target.c_str(), witness.c_str());
    expectSharedEmpty(source);
}

TEST(StringMove, ByAssignmentReleasesTheOldBuffer) {
    DString source("abc");
    char const* const characters = source.c_str();
    DString target("def");
    DString const witness(target);
    DString& result = target = std::move(source);
    EXPECT_EQ(&result, &target);
    EXPECT_EQ(target.c_str(), characters);
    EXPECT_EQ(refsOf(target), 1U);
    EXPECT_EQ(refsOf(witness), 1U);
    expectSharedEmpty(source);
}

TEST(StringMove, CountsTheEmptyBufferRight) {
    unsigned int const before = DBuffer::defaultBuffer()->refs;
    {
        DString source("abc");
        DString target(std::move(source));
        EXPECT_EQ(DBuffer::defaultBuffer()->refs, before + 1);
        DString empty(std::move(source));
        EXPECT_EQ(DBuffer::defaultBuffer()->refs, before + 2);
        target = std::move(empty);
        EXPECT_EQ(DBuffer::defaultBuffer()->refs, before + 3);
    }
    EXPECT_EQ(DBuffer::defaultBuffer()->refs, before);
}

TEST(StringMove, ToItselfLeavesAValidString) {
    DString text("abc");
    DString& same = text;
    text = std::move(same);
    EXPECT_TRUE(textOf(text) == "abc" || text.isEmpty());
    text = "def";
    EXPECT_EQ(textOf(text), "def");
}

TEST(StringMove, NeverThrows) {
    static_assert(std::is_nothrow_move_constructible_v<DString>);
    static_assert(std::is_nothrow_move_assignable_v<DString>);
    static_assert(std::is_nothrow_swappable_v<DString>);
}

TEST(StringSwap, ExchangesTheBuffersWithoutCounting) {
    DString left("abc");
    DString right("def");
    DString const shared(right);
    char const* const leftText = left.c_str();
    char const* const rightText = right.c_str();
    using std::swap;
    swap(left, right);
    EXPECT_EQ(left.c_str(), rightText);
    EXPECT_EQ(right.c_str(), leftText);
    EXPECT_EQ(refsOf(left), 2U);
    EXPECT_EQ(refsOf(right), 1U);
    std::swap(left, right);
    EXPECT_EQ(left.c_str(), leftText);
    EXPECT_EQ(right.c_str(), rightText);
    swap(left, left);
    EXPECT_EQ(textOf(left), "abc");
}

TEST(StringSharing, PassingByValueCostsACount) {
    DString const text("abc");
    auto const refsDuring = [](DString byValue) { return refsOf(byValue); };
    EXPECT_EQ(refsDuring(text), 2U);
    EXPECT_EQ(refsOf(text), 1U);
}

// Copy-on-write

TEST(StringCopyOnWrite, ASoleOwnerKeepsItsBuffer) {
    DString text("abc");
    char const* const before = text.c_str();
    EXPECT_EQ(&text.prepareToChange(), &text);
    EXPECT_EQ(text.c_str(), before);
    EXPECT_EQ(refsOf(text), 1U);
}

TEST(StringCopyOnWrite, OneOfTwoOwnersGetsABufferOfItsOwn) {
    DString const original("a\0c"s);
    DString copy(original);
    EXPECT_EQ(&copy.prepareToChange(), &copy);
    EXPECT_NE(copy.c_str(), original.c_str());
    expectOwnText(copy, "a\0c"s);
    expectOwnText(original, "a\0c"s);
}

TEST(StringCopyOnWrite, AnEmptyStringStaysOnTheSharedBuffer) {
    DString text;
    unsigned int const before = refsOf(text);
    text.prepareToChange();
    expectSharedEmpty(text);
    EXPECT_EQ(refsOf(text), before);
}

TEST(StringCopyOnWrite, TheCopyIsOfTheSameClass) {
    DString const original(makeIn<HostFactoryBuffer>("abc", guardSize));
    DString copy(original);
    copy.prepareToChange();
    EXPECT_NE(copy.c_str(), original.c_str());
    EXPECT_STREQ(bufferOf(copy)->className(), "HostFactoryBuffer");
    EXPECT_EQ(textOf(copy), "abc");
}

TEST(StringCopyOnWrite, WritingAnElementNeverShowsInACopy) {
    DString original("abc");
    DString const copy(original);
    original[2U] = 'X';
    EXPECT_EQ(textOf(original), "aXc");
    EXPECT_EQ(textOf(copy), "abc");
    EXPECT_EQ(refsOf(copy), 1U);
}

// Concatenation

TEST(StringConcatenation, OfTwoTextsIsANewStringOfTheDefaultClass) {
    DString const left("a\0b"s);
    DString const right("c\0d"s);
    expectOwnText(left + right, "a\0bc\0d"s);
    expectOwnText(left + "cd", "a\0bcd"s);
    expectOwnText("cd" + left, "cda\0b"s);
    expectOwnText(left + "x\0y"s, "a\0bx\0y"s);
    expectOwnText("x\0y"s + left, "x\0ya\0b"s);
    expectOwnText(left + "x\0y"sv, "a\0bx\0y"s);
    expectOwnText("x\0y"sv + left, "x\0ya\0b"s);
    expectOwnText(left + 'c', "a\0bc"s);
    expectOwnText('c' + left, "ca\0b"s);
    expectOwnText(left + '\0', "a\0b\0"s);
    EXPECT_EQ(textOf(left), "a\0b"s);
    EXPECT_EQ(refsOf(left), 1U);
    EXPECT_EQ(refsOf(right), 1U);
}

TEST(StringConcatenation, NullAndEmptyTextsAddNothing) {
    DString const text("abc");
    char const* const none = nullptr;
    EXPECT_EQ(textOf(text + none), "abc");
    EXPECT_EQ(textOf(none + text), "abc");
    EXPECT_EQ(textOf(text + ""), "abc");
    EXPECT_EQ(textOf(text + DString()), "abc");
    EXPECT_EQ(textOf(DString() + text), "abc");
    EXPECT_EQ(textOf(text + nullptr), "abc");
    EXPECT_EQ(textOf(text + std::string_view()), "abc");
    expectSharedEmpty(DString() + DString());
    expectSharedEmpty(DString() + none);
    expectSharedEmpty("" + DString());
}

TEST(StringConcatenation, HasTheDefaultClassWhateverTheOperands) {
    DString const host(makeIn<HostFactoryBuffer>("abc", guardSize));
    expectOwnText(host + "d", "abcd");
    expectOwnText("d" + host, "dabc");
    expectOwnText(host + host, "abcabc");
    EXPECT_EQ(refsOf(host), 1U);
}

TEST(StringConcatenation, OfAStringWithItselfDoublesIt) {
    DString const text("abc");
    EXPECT_EQ(textOf(text + text), "abcabc");
    EXPECT_EQ(textOf(text + text.c_str()), "abcabc");
}

/// A string whose buffer says that it is very long. Only its length may be looked at.
class ClaimedLength {
public:
    explicit ClaimedLength(unsigned int length) { bufferOf(text)->length = length; }
    ~ClaimedLength() { bufferOf(text)->length = 3; }
    ClaimedLength(ClaimedLength const&) = delete;
    ClaimedLength& operator=(ClaimedLength const&) = delete;

    DString text{"abc"};
};

TEST(StringConcatenation, ThatWouldBeTooLongOverflows) {
    ClaimedLength const almost(lengthLimit - 1);
    DString const one("x");
    expectLengthOverflow([&] { (void)(almost.text + one); });
    expectLengthOverflow([&] { (void)(one + almost.text); });
    expectLengthOverflow([&] { (void)(almost.text + 'x'); });
    expectLengthOverflow([&] { (void)(almost.text + almost.text); });
    EXPECT_EQ(refsOf(one), 1U);
    EXPECT_EQ(refsOf(almost.text), 1U);
}

// Removal and justification

TEST(StringRemoval, TakesOutUpToCountBytes) {
    struct Case {
        unsigned int start, count;
        std::string expected;
    };
    Case const cases[] = {{0, 1, "bc"}, {1, 1, "bc"}, {2, 1, "ac"}, {2, 0xFFFFFFFF, "a"}, {3, 9, "ab"}};
    for (auto const& [start, count, expected] : cases) {
        DString text("abc");
        DString const witness(text);
        EXPECT_EQ(&text.remove(start, count), &text);
        expectOwnText(text, expected);
        expectOwnText(witness, "abc");
        EXPECT_EQ(textOf(DString::remove(witness, start, count)), expected);
        expectOwnText(witness, "abc");
    }
}

TEST(StringRemoval, ToTheEnd) {
    DString text("abcd");
    EXPECT_EQ(&text.remove(3), &text);
    expectOwnText(text, "ab");
    text.remove(0);
    expectSharedEmpty(text);
}

TEST(StringRemoval, WithNothingToDoLeavesTheBufferAlone) {
    DString text("abc");
    DString const witness(text);
    text.remove(4).remove(2, 0).remove(4, 1).remove(0, 0).remove(0xFFFFFFFF, 0xFFFFFFFF).remove(0xFFFFFFFF);
    EXPECT_EQ(text.c_str(), witness.c_str());
    EXPECT_EQ(refsOf(witness), 2U);
    DString empty;
    unsigned int const before = refsOf(empty);
    empty.remove(0).remove(1).remove(0, 5).remove(1, 1);
    expectSharedEmpty(empty);
    EXPECT_EQ(refsOf(empty), before);
}

TEST(StringRemoval, OfASoleOwnerReleasesTheOldBuffer) {
    DString text("abc");
    text.remove(1, 1);
    EXPECT_EQ(refsOf(text), 1U);
    text.remove(1, 2);
    expectSharedEmpty(text);
}

TEST(StringJustification, PadsOrCutsOnTheLeft) {
    DString text("abcd");
    DString const witness(text);
    EXPECT_EQ(&text.rightJustify(6, '.'), &text);
    expectOwnText(text, "..abcd");
    text.rightJustify(2, '.');
    expectOwnText(text, "cd");
    text.rightJustify(3);
    expectOwnText(text, " cd");
    text.rightJustify(0, '.');
    expectSharedEmpty(text);
    text.rightJustify(2, '*');
    expectOwnText(text, "**");
    expectOwnText(witness, "abcd");
}

TEST(StringJustification, ToItsOwnWidthLeavesTheBufferAlone) {
    DString text("abcd");
    DString const witness(text);
    text.rightJustify(4, '.');
    EXPECT_EQ(text.c_str(), witness.c_str());
    EXPECT_EQ(refsOf(witness), 2U);
}

TEST(StringJustification, ThatOverflowsLeavesTheStringAsItWas) {
    DString text("abcd");
    char const* const before = text.c_str();
    for (unsigned int width : {lengthLimit, 0xFFFFFFFEU, 0xFFFFFFFFU})
        expectLengthOverflow([&] { text.rightJustify(width, '.'); });
    EXPECT_EQ(text.c_str(), before);
    EXPECT_EQ(refsOf(text), 1U);
    EXPECT_EQ(textOf(text), "abcd");
}

/// A buffer whose operations tell how many owners it had meanwhile, and fail.
class FailingBuffer : public DBuffer {
public:
    using DBuffer::DBuffer;
    DBuffer* remove(unsigned int, unsigned int) override { throw refs; }
    DBuffer* rightJustify(unsigned int, char) override { throw refs; }
};

TEST(StringProtocol, TheBufferIsHeldByAnotherReferenceWhileItsOperationRuns) {
    DString text(makeIn<FailingBuffer>("abcd", guardSize));
    try {
        text.remove(1, 1);
        ADD_FAILURE() << "did not fail";
    } catch (unsigned int refs) {
        EXPECT_EQ(refs, 2U);
    }
    try {
        text.rightJustify(9, ' ');
        ADD_FAILURE() << "did not fail";
    } catch (unsigned int refs) {
        EXPECT_EQ(refs, 2U);
    }
    EXPECT_EQ(refsOf(text), 1U) << "only the extra reference is released";
    EXPECT_EQ(textOf(text), "abcd");
}

TEST(StringProtocol, OperationsAreCalledThroughTheVirtualTable) {
    class Answering : public DBuffer {
    public:
        using DBuffer::DBuffer;
        DBuffer* remove(unsigned int start, unsigned int count) override {
            return answer("remove " + std::to_string(start) + " " + std::to_string(count));
        }
        DBuffer* rightJustify(unsigned int width, char pad) override {
            return answer("rightJustify " + std::to_string(width) + " " + pad);
        }

    private:
        DBuffer* answer(std::string const& call) const {
            return newBuffer(call.data(), static_cast<unsigned int>(call.size()));
        }
    };
    DString const original(makeIn<Answering>("abcd", guardSize));
    DString text(original);
    EXPECT_EQ(textOf(text.remove(2, 7)), "remove 2 7");
    text = original;
    EXPECT_EQ(textOf(text.remove(3)), "remove 3 4294967295");
    text = original;
    EXPECT_EQ(textOf(text.rightJustify(9, '+')), "rightJustify 9 +");
    EXPECT_EQ(textOf(DString::remove(original, 0, 1)), "remove 0 1");
    EXPECT_EQ(refsOf(original), 1U);
}

// Debug text

TEST(StringDebugText, ShowsTheAddressAndTheBuffer) {
    DString const text("hello");
    DString const copy(text);
    std::string const expected = "DString(@" + std::to_string(reinterpret_cast<std::uintptr_t>(&text)) +
                                 ",pBuffer->" + defaultClass() + "(@" +
                                 std::to_string(reinterpret_cast<std::uintptr_t>(bufferOf(text))) +
                                 ",refs=2,len=5,data=[hello]))";
    EXPECT_EQ(textOf(text.asDebugInfo()), expected);
}

TEST(StringDebugText, AsStringIsACopyThatShares) {
    DString const text("hello");
    DString const copy = text.asString();
    EXPECT_EQ(copy.c_str(), text.c_str());
    EXPECT_EQ(refsOf(text), 2U);
}

} // namespace
