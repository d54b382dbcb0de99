// What the conversions between notations ask a class that a host derived, and that they do what it answers.
// The questions are those of the steps that each operation is defined by: fast ways that ask less are for the
// library's own classes.
#include "tests/hosts/asked_support.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <optional>
#include <random>
#include <string>
#include <string_view>

namespace {

using namespace hosts;

TYPED_TEST(AnyHost, MayCallAnyTextDigitsAndTheStatedArithmeticHolds) {
    this->host.truth = [](std::string const&) { return std::optional(true); };
    struct Case {
        std::string text;
        std::string_view bytes;
    };
    using namespace std::string_view_literals;
    std::string const seventeenZeros(17, '0');
    for (Case const& c : {Case{"\x2F", "\0"sv}, Case{"\x20\x31", "\x01"}, Case{"12x", "\x0C"},
                          Case{"-5", "\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFB"}, Case{"x", "\0"sv}, Case{"", ""},
                          Case{seventeenZeros + "1F", "\x20"}, // 1 * 10 + 22
                          Case{seventeenZeros + " /", "\xFF"}, Case{"256", "\x01\x00"sv}}) {
        DString text = this->text(c.text);
        EXPECT_EQ(bytesOf(text.d2c()), c.bytes) << c.text;
    }
    for (Case const& c : {Case{"\x09\x30", "\x20"}, Case{"1AB", "\x01\xAB"}, Case{"Zz", "\x73"},
                          Case{"\xFF", "\xC8"}, Case{"/", "\xF8"}, Case{"", ""}}) {
        DString text = this->text(c.text);
        EXPECT_EQ(bytesOf(text.x2c()), c.bytes) << c.text;
    }
}

/// The steps of d2c, one digit after the other.
std::string plainBytes(std::string const& text) {
    auto const head = static_cast<unsigned long>(std::strtol(text.substr(0, 18).c_str(), nullptr, 10));
    std::string bytes;
    for (int shift = 56; shift >= 0; shift -= 8)
        bytes += static_cast<char>(head >> shift & 0xFF);
    for (std::size_t i = 18; i < text.size(); ++i) {
        unsigned int carry = static_cast<unsigned char>(text[i] - '0');
        for (std::size_t j = bytes.size(); j-- > 0;) {
            carry += static_cast<unsigned char>(bytes[j]) * 10U;
            bytes[j] = static_cast<char>(carry & 0xFF);
            carry >>= 8;
        }
        if (carry != 0) bytes.insert(0, 1, static_cast<char>(carry));
    }
    std::size_t const first = bytes.find_first_not_of('\0');
    return first == std::string::npos ? std::string(1, '\0') : bytes.substr(first);
}

TYPED_TEST(AnyHost, MayCallAnyLongTextDigits) {
    this->host.truth = [](std::string const&) { return std::optional(true); };
    std::mt19937 random(1);
    for (int round = 0; round < 2000; ++round) {
        std::string text(random() % 60, '\0');
        for (char& c : text)
            c = static_cast<char>(random() % 3 == 0 ? random() % 256 : '0' + random() % 10);
        if (text.empty()) continue;
        ASSERT_EQ(bytesOf(this->text(text).d2c()), plainBytes(text)) << testing::PrintToString(text);
    }
}

TYPED_TEST(AnyHost, MayDenyThatDigitsAreDigits) {
    this->host.truth = [](std::string const&) { return std::optional(false); };
    EXPECT_EQ(bytesOf(this->text("12").d2c()), "");
    EXPECT_EQ(bytesOf(this->text("12").x2c()), "");
    SwitchAt const on(1);
    EXPECT_EQ(bytesOf(this->text("12").d2c()), "\x0C") << "then it is not asked";
    EXPECT_EQ(bytesOf(this->text("12").x2c()), "\x12");
}

} // namespace
