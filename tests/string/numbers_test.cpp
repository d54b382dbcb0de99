// toNumber() against std::from_chars, for every type that has numbers.
#include <kelcl/dtext.h>

#include <gtest/gtest.h>

#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <system_error>
#include <type_traits>

namespace {

using std::string;

template <class Number>
std::optional<Number> numberByTheStandard(std::string_view text) {
    Number number{};
    char const* const end = text.data() + text.size();
    auto const [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || stop != end) return std::nullopt;
    return number;
}

/// The sign tells zeros apart; a value that is no number does not equal itself.
template <class Number>
bool areSame(std::optional<Number> const& left, std::optional<Number> const& right) {
    if (left.has_value() != right.has_value()) return false;
    if (!left.has_value()) return true;
    if constexpr (std::is_floating_point_v<Number>)
        return std::signbit(*left) == std::signbit(*right) &&
               (std::isnan(*left) ? std::isnan(*right) : *left == *right);
    else
        return *left == *right;
}

template <class Number>
void expectAsTheStandard(string const& text) {
    EXPECT_TRUE(areSame(kelcl::toNumber<Number>(text), numberByTheStandard<Number>(text))) << text;
}

using Integers = testing::Types<char, signed char, unsigned char, short, unsigned short, int, unsigned int,
                                long, unsigned long, long long, unsigned long long>;
template <class Number>
class IntegerOf : public testing::Test {};
TYPED_TEST_SUITE(IntegerOf, Integers, );

using Reals = testing::Types<float, double, long double>;
template <class Number>
class RealOf : public testing::Test {};
TYPED_TEST_SUITE(RealOf, Reals, );

/// A decimal number, one more.
string oneMore(string digits) {
    std::size_t at = digits.size();
    while (at > 0 && digits[at - 1] == '9')
        digits[--at] = '0';
    if (at == 0) return "1" + digits;
    ++digits[at - 1];
    return digits;
}

TYPED_TEST(IntegerOf, FitsUpToItsLimitsAndNoFurther) {
    using Limits = std::numeric_limits<TypeParam>;
    string const largest = std::to_string(Limits::max());
    string const least = std::to_string(Limits::min());
    EXPECT_EQ(kelcl::toNumber<TypeParam>(largest), Limits::max());
    EXPECT_EQ(kelcl::toNumber<TypeParam>(least), Limits::min());
    EXPECT_EQ(kelcl::toNumber<TypeParam>("000000000000000000000000" + largest), Limits::max());
    EXPECT_EQ(kelcl::toNumber<TypeParam>(oneMore(largest)), std::nullopt);
    EXPECT_EQ(kelcl::toNumber<TypeParam>(largest + "0"), std::nullopt);
    EXPECT_EQ(kelcl::toNumber<TypeParam>("-" + oneMore(least.substr(1) + (least.size() == 1 ? "0" : ""))),
              std::nullopt);
}

TYPED_TEST(IntegerOf, IsReadAsTheStandardLibraryDoesNearEachPowerOfTwoAndTen) {
    auto const tryBoth = [](unsigned long long amount) {
        expectAsTheStandard<TypeParam>(std::to_string(amount));
        expectAsTheStandard<TypeParam>("-" + std::to_string(amount));
    };
    for (unsigned long long power = 1, ten = 1, i = 0; i < 64; ++i, power *= 2, ten *= 10)
        for (unsigned long long distance = 0; distance <= 20; ++distance) {
            tryBoth(power - 10 + distance);
            tryBoth(ten - 10 + distance);
        }
    for (unsigned long long amount = 0; amount < 70000; ++amount)
        tryBoth(amount);
}

template <class Number>
void expectRandomTextsAsTheStandard(std::string_view alphabet) {
    std::mt19937 source(20261122);
    for (int turn = 0; turn < 50000; ++turn) {
        string text(source() % 25, ' ');
        for (char& c : text)
            c = alphabet[source() % alphabet.size()];
        expectAsTheStandard<Number>(text);
    }
}

TYPED_TEST(IntegerOf, IsReadFromRandomTextsAsTheStandardLibraryDoes) {
    expectRandomTextsAsTheStandard<TypeParam>("0123456789");
    expectRandomTextsAsTheStandard<TypeParam>("-01289");
    expectRandomTextsAsTheStandard<TypeParam>(std::string_view("-+09 :/xe.\0\xB0\xFF", 13));
}

TYPED_TEST(RealOf, IsReadFromRandomTextsAsTheStandardLibraryDoes) {
    expectRandomTextsAsTheStandard<TypeParam>("0123456789");
    expectRandomTextsAsTheStandard<TypeParam>("-019.e");
    expectRandomTextsAsTheStandard<TypeParam>("0123456789.");
    expectRandomTextsAsTheStandard<TypeParam>(std::string_view("-+09 ,xXeEpP.\0", 14));
}

TYPED_TEST(RealOf, IsReadAsTheStandardLibraryDoesAtItsLimits) {
    using Limits = std::numeric_limits<TypeParam>;
    for (TypeParam const limit : {Limits::max(), Limits::min(), Limits::denorm_min(), Limits::epsilon()})
        for (TypeParam const number : {limit, limit / 2, std::nextafter(limit, TypeParam(0)), -limit}) {
            char text[64];
            char* const end = std::to_chars(text, text + sizeof text, number).ptr;
            expectAsTheStandard<TypeParam>(string(text, end));
        }
    for (char const* const text : {"1e38",
                                   "1e39",
                                   "-1e39",
                                   "1e308",
                                   "1e309",
                                   "-1e309",
                                   "1e4932",
                                   "1e4933",
                                   "1e-45",
                                   "1e-46",
                                   "1e-323",
                                   "1e-324",
                                   "1e-4951",
                                   "1e-4952",
                                   "1e99999",
                                   "1e-99999",
                                   "0e99999",
                                   "-0",
                                   "-0.0",
                                   ".5",
                                   "5.",
                                   ".",
                                   "-.5",
                                   "1e",
                                   "1e+5",
                                   "1e+",
                                   "1E5",
                                   "inf",
                                   "-inf",
                                   "INF",
                                   "infinity",
                                   "infinit",
                                   "nan",
                                   "-nan",
                                   "NaN",
                                   "nan(1)",
                                   "0x1p3",
                                   "1p3",
                                   "16777217",
                                   "9007199254740993",
                                   "0.1000000014901161193847656250000001",
                                   "1,5"})
        expectAsTheStandard<TypeParam>(text);
}

// The types that are no truth values and no wide characters.
using kelcl::detail::isNumber;
static_assert(isNumber<char>() && isNumber<signed char>() && isNumber<unsigned long long>());
static_assert(isNumber<float>() && isNumber<long double>());
static_assert(!isNumber<bool>() && !isNumber<wchar_t>() && !isNumber<char16_t>() && !isNumber<char32_t>());
static_assert(!isNumber<char const*>() && !isNumber<DString>());

} // namespace
