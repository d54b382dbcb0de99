// What converts to a string, what a string converts to, and how its bytes are read.
#include "tests/buffers/buffer_support.h"

#include <algorithm>
#include <iterator>
#include <type_traits>

namespace {

using namespace support;

// Conversions

TEST(StringConversion, ToAStringViewIsImplicitAndKeepsNuls) {
    static_assert(std::is_convertible_v<DString, std::string_view>);
    auto const lengthOf = [](std::string_view view) { return view.size(); };
    DString const text("a\0b"s);
    EXPECT_EQ(lengthOf(text), 3U);
    std::string_view const view = text;
    EXPECT_EQ(view, "a\0b"sv);
    EXPECT_EQ(view.data(), text.c_str()) << "nothing is copied";
}

TEST(StringConversion, ToACharacterPointerIsExplicitOnly) {
    static_assert(!std::is_convertible_v<DString, char const*>);
    static_assert(std::is_constructible_v<char const*, DString const&>);
    static_assert(!std::is_convertible_v<DString, bool>);
    static_assert(!std::is_convertible_v<DString, void const*>);
    DString const text("abc");
    EXPECT_EQ(static_cast<char const*>(text), text.c_str());
}

TEST(StringConversion, ToAStandardStringCopiesTheBytes) {
    DString const text("a\0b"s);
    std::string const copy(text);
    EXPECT_EQ(copy, "a\0b"s);
    std::string assigned;
    assigned = text;
    EXPECT_EQ(assigned, "a\0b"s);
    assigned += text;
    EXPECT_EQ(assigned, "a\0ba\0b"s);
}

TEST(StringConversion, FromEveryTextAndNumberIsImplicit) {
    static_assert(std::is_convertible_v<char const*, DString>);
    static_assert(std::is_convertible_v<char*, DString>);
    static_assert(std::is_convertible_v<signed char const*, DString>);
    static_assert(std::is_convertible_v<unsigned char const*, DString>);
    static_assert(std::is_convertible_v<std::string, DString>);
    static_assert(std::is_convertible_v<std::string_view, DString>);
    static_assert(std::is_convertible_v<std::nullptr_t, DString>);
    static_assert(std::is_convertible_v<char, DString>);
    static_assert(std::is_convertible_v<int, DString>);
    static_assert(std::is_convertible_v<long long, DString>);
    static_assert(std::is_convertible_v<unsigned long long, DString>);
    static_assert(std::is_convertible_v<double, DString>);
    static_assert(std::is_convertible_v<std::size_t, DString>);
    auto const lengthOf = [](DString const& text) { return text.length(); };
    char array[] = "abcd";
    EXPECT_EQ(lengthOf(array), 4U);
    EXPECT_EQ(lengthOf("ab"), 2U);
    EXPECT_EQ(lengthOf("abc"s), 3U);
    EXPECT_EQ(lengthOf(nullptr), 0U);
    EXPECT_EQ(lengthOf(12345), 5U);
}

// Reading

TEST(StringReading, LengthAndSizeCountBytes) {
    DString const text("a\0\xE3\x81\x82"s);
    static_assert(std::is_same_v<decltype(text.length()), unsigned int>);
    EXPECT_EQ(text.length(), 5U);
    EXPECT_EQ(text.size(), 5U);
    EXPECT_FALSE(text.isEmpty());
    EXPECT_FALSE(text.empty());
    EXPECT_TRUE(DString().isEmpty());
    EXPECT_TRUE(DString().empty());
    EXPECT_EQ(DString().size(), 0U);
    EXPECT_FALSE(DString('\0').isEmpty());
}

TEST(StringReading, CharactersAreTerminatedByANul) {
    DString const text("a\0b"s);
    EXPECT_EQ(text.c_str(), text.data());
    EXPECT_EQ(std::memcmp(text.data(), "a\0b\0", 4), 0);
    EXPECT_STREQ(DString().c_str(), "");
}

TEST(StringReading, ARangeForSeesEveryByte) {
    DString const text("a\0b"s);
    std::string seen;
    for (char const c : text)
        seen += c;
    EXPECT_EQ(seen, "a\0b"s);
    for (char const c : DString())
        ADD_FAILURE() << c;
    EXPECT_EQ(std::distance(text.begin(), text.end()), 3);
    EXPECT_EQ(std::count(text.begin(), text.end(), '\0'), 1);
    EXPECT_EQ(std::size(text), 3U);
    EXPECT_EQ(std::data(text), text.c_str());
    static_assert(std::is_same_v<decltype(DString("x").begin()), char const*>);
}

} // namespace
