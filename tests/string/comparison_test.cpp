// The comparison operators of strings with every kind of text, on either side.
#include "tests/buffers/buffer_support.h"

namespace {

using namespace support;

/// Checks all six operators in both directions; `order` is negative, 0 or positive.
template <class Left, class Right>
void expectOrder(Left const& left, Right const& right, int order) {
    EXPECT_EQ(left == right, order == 0);
    EXPECT_EQ(left != right, order != 0);
    EXPECT_EQ(left < right, order < 0);
    EXPECT_EQ(left <= right, order <= 0);
    EXPECT_EQ(left > right, order > 0);
    EXPECT_EQ(left >= right, order >= 0);
    EXPECT_EQ(right == left, order == 0);
    EXPECT_EQ(right != left, order != 0);
    EXPECT_EQ(right > left, order < 0);
    EXPECT_EQ(right >= left, order <= 0);
    EXPECT_EQ(right<left, order> 0);
    EXPECT_EQ(right <= left, order >= 0);
}

/// The same with `other` as every kind of text.
void expectOrderWithEveryText(DString const& text, char const* other, int order) {
    expectOrder(text, DString(other), order);
    expectOrder(text, other, order);
    expectOrder(text, std::string(other), order);
    expectOrder(text, std::string_view(other), order);
    std::string buffer(other);
    buffer += '\0';
    expectOrder(text, static_cast<char*>(buffer.data()), order);
}

TEST(StringComparison, MeansTheSameForEveryTextOnEitherSide) {
    expectOrderWithEveryText(DString("abc"), "abc", 0);
    expectOrderWithEveryText(DString("abc"), "abd", -1);
    expectOrderWithEveryText(DString("abd"), "abc", 1);
    expectOrderWithEveryText(DString("ab"), "abc", -1);
    expectOrderWithEveryText(DString("abc"), "ab", 1);
    expectOrderWithEveryText(DString(), "", 0);
    expectOrderWithEveryText(DString(), "a", -1);
    expectOrderWithEveryText(DString("a"), "", 1);
}

TEST(StringComparison, WithALiteralOrAnArray) {
    DString const text("abc");
    EXPECT_TRUE(text == "abc");
    EXPECT_TRUE("abc" == text);
    EXPECT_TRUE("abb" < text);
    EXPECT_TRUE(text <= "abc");
    char array[8] = "abc";
    EXPECT_TRUE(text == array);
    EXPECT_FALSE(array != text);
}

TEST(StringComparison, NullCountsAsEmpty) {
    char const* const none = nullptr;
    expectOrder(DString(), none, 0);
    expectOrder(DString("a"), none, 1);
    expectOrder(DString(), nullptr, 0);
    expectOrder(DString("a"), nullptr, 1);
    expectOrder(DString(), std::string_view(), 0);
    expectOrder(DString("a"), std::string_view(), 1);
}

TEST(StringComparison, LooksPastNuls) {
    DString const text("a\0b"s);
    EXPECT_TRUE(text == "a\0b"s);
    EXPECT_TRUE(text == "a\0b"sv);
    EXPECT_TRUE(text != "a\0c"s);
    EXPECT_TRUE("a\0c"sv != text);
    EXPECT_TRUE(text != "a") << "a character pointer ends at its NUL";
    EXPECT_TRUE(text == DString("a\0b"s));
}

TEST(StringComparison, GoesThroughTheBuffersCompareWithTheStringAsReceiver) {
    class Scripted : public DBuffer {
    public:
        using DBuffer::DBuffer;
        int compare(void const* other, unsigned int otherLength) const override {
            std::string_view const text(static_cast<char const*>(other), otherLength);
            return text == "same" ? 0 : text == "before" ? 1 : 2;
        }
    };
    DString const text(makeIn<Scripted>("anything", guardSize));
    auto const expect = [&text](char const* other, int order) {
        expectOrder(text, other, order);
        expectOrder(text, std::string(other), order);
        expectOrder(text, std::string_view(other), order);
    };
    expect("same", 0);
    expect("before", 1);
    expect("other", -1);
    EXPECT_TRUE(text > DString("before"));
    EXPECT_TRUE(text < DString("other"));
    EXPECT_TRUE("before" < text) << "the result is mirrored";
    EXPECT_FALSE("before" > text);
    EXPECT_TRUE("other"s > text);
}

TEST(StringComparison, LeavesAHostsOwnComparisonsAlone) {
    std::string const standard("abc");
    EXPECT_TRUE(std::string_view("abc") == standard);
    EXPECT_TRUE(standard == std::string_view("abc"));
    EXPECT_TRUE(standard == "abc");
    EXPECT_TRUE("abc" == standard);
    EXPECT_FALSE(std::string_view("abc") < standard);
    EXPECT_FALSE("abc"sv != standard);
    EXPECT_TRUE("abc"sv == "abc");
    EXPECT_EQ(standard + "d", "abcd");
}

/// A host's own string, with nothing of its own about comparing.
class HostString : public DString {
public:
    using DString::DString;
};

TEST(StringComparison, WorksForClassesDerivedFromIt) {
    HostString const left("abc");
    HostString const right("abd");
    expectOrder(left, DString("abd"), -1);
    expectOrder(left, "abd", -1);
    expectOrder(left, "abc"s, 0);
    expectOrder(left, right, -1);
    EXPECT_EQ(textOf(left + right), "abcabd");
    EXPECT_EQ(textOf(left + "x"), "abcx");
    EXPECT_EQ(textOf(DString("x") + left), "xabc");
    HostString grown("abc");
    grown += right;
    EXPECT_EQ(textOf(grown), "abcabd");
    EXPECT_EQ(std::string_view(left), "abc");
}

/// A host's class that is text to whoever asks.
struct ConvertsToView {
    operator std::string_view() const { return "abc"; }
};

TEST(StringComparison, TakesAnythingThatConvertsToAView) {
    expectOrder(DString("abc"), ConvertsToView(), 0);
    EXPECT_EQ(textOf(DString("x") + ConvertsToView()), "xabc");
}

} // namespace
