// operator+ of strings.
#include "tests/buffers/buffer_support.h"
#include "tests/string/string_support.h"

namespace {

using namespace support;

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

TEST(StringConcatenation, WithATemporaryOnTheLeftIsWhatItIsWithoutOne) {
    DString const middle("m\0n"s);
    for (std::size_t length = 0; length < 130; ++length) {
        std::string const front(length, 'f');
        DString const left(front);
        expectOwnText(DString(front) + middle, front + "m\0n"s);
        expectOwnText(DString(front) + "cd", front + "cd");
        expectOwnText(DString(front) + 'c', front + 'c');
        expectOwnText(DString(front) + "x\0y"sv, front + "x\0y"s);
        expectOwnText(left + ", " + middle + ": " + left + '.', front + ", m\0n: "s + front + '.');
        EXPECT_EQ(textOf(left), front);
    }
}

TEST(StringConcatenation, TakesOverTheTextOfATemporaryThatHasRoom) {
    DString text("12345678"); // 15 more would fit
    char const* const place = text.c_str();
    DString const longer = std::move(text) + "9";
    EXPECT_EQ(longer.c_str(), place);
    EXPECT_EQ(textOf(longer), "123456789");
    EXPECT_TRUE(text.isEmpty());
    text = "in use again";
    EXPECT_EQ(textOf(text + longer), "in use again123456789");
}

TEST(StringConcatenation, OfATemporaryWithItselfDoublesIt) {
    DString text("abcdefgh");
    EXPECT_EQ(textOf(std::move(text) + text), "abcdefghabcdefgh");
}

TEST(StringConcatenation, LeavesTheCopiesOfATemporaryAlone) {
    DString const kept("12345678");
    expectOwnText(DString(kept) + "9", "123456789");
    EXPECT_EQ(textOf(kept), "12345678");
    EXPECT_EQ(refsOf(kept), 1U);
}

TEST(StringConcatenation, HasTheDefaultClassAlsoWithAHostsTemporary) {
    expectOwnText(DString(makeIn<HostFactoryBuffer>("abc", guardSize)) + "d", "abcd");
    expectOwnText(DString(makeIn<HostFactoryBuffer>("abc", guardSize)) + 'd', "abcd");
    expectOwnText(DString(makeIn<HostFactoryBuffer>("abc", guardSize)) + DString("d"), "abcd");
}

TEST(StringConcatenation, HasTheDefaultClassAlsoWithAPlainTemporary) {
    Owned const plain = plainBuffer("12345678");
    plain->take();
    expectOwnText(DString(plain.get()) + "9", "123456789");
    expectOwnText(DString(makeIn<DBuffer>("12345678", guardSize)) + "a text for which there is no room",
                  "12345678a text for which there is no room");
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

} // namespace
