// The hash of strings: what it depends on, and how well it spreads texts that are alike.
#include "tests/bytes/texts.h"

#include <kelcl/dstring.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <random>
#include <string>
#include <string_view>
#include <unordered_set>

namespace {

using bytes_test::longest;

std::uint64_t hashOf(std::string_view text) { return kelcl::hashOf(text.data(), text.size()); }

std::string randomText(std::mt19937_64& random, std::size_t length) {
    std::string text(length, '\0');
    for (char& byte : text)
        byte = static_cast<char>(random());
    return text;
}

TEST(Hash, OfAStringIsThatOfItsBytesWhereverTheyAre) {
    std::mt19937_64 random(1); // NOLINT: the same texts each time
    for (std::size_t length = 0; length <= longest; ++length) {
        std::string const text = randomText(random, length);
        std::uint64_t const expected = std::hash<DString>()(DString(text));
        bytes_test::atEveryPlace(text, 'x',
                                 [&](std::string_view copy) { EXPECT_EQ(hashOf(copy), expected); });
    }
}

TEST(Hash, DependsOnEveryBitOfTheTextAndOnItsLength) {
    std::mt19937_64 random(2); // NOLINT: the same texts each time
    for (std::size_t length = 0; length <= 200; ++length) {
        std::string text = randomText(random, length);
        std::unordered_set<std::uint64_t> seen{hashOf(text)};
        for (std::size_t bit = 0; bit < 8 * length; ++bit) {
            char const before = text[bit / 8];
            text[bit / 8] = static_cast<char>(before ^ 1 << bit % 8);
            EXPECT_TRUE(seen.insert(hashOf(text)).second) << "bit " << bit << " of " << length << " bytes";
            text[bit / 8] = before;
        }
    }
    std::unordered_set<std::uint64_t> zeros;
    for (std::size_t length = 0; length <= 300; ++length)
        EXPECT_TRUE(zeros.insert(hashOf(std::string(length, '\0'))).second) << length << " NULs";
}

/// Of many pairs of texts that differ in one bit, each bit of the hash differs in half of them. A share of
/// 400 tosses of a coin is beyond 0.175 of a half once in a million millions.
TEST(Hash, ChangesHalfOfItsBitsWithOneBitOfTheText) {
    std::mt19937_64 random(3); // NOLINT: the same texts each time
    constexpr int tosses = 400;
    for (std::size_t const length : {4U, 7U, 8U, 15U, 16U, 17U, 33U, 65U, 81U, 129U}) {
        for (std::size_t bit = 0; bit<8 * length; bit += length> 8 ? 11 : 1) {
            int changed[64] = {};
            std::string text = randomText(random, length);
            for (int i = 0; i < tosses; ++i) {
                text[random() % length] = static_cast<char>(random());
                text[random() % length] = static_cast<char>(random());
                std::uint64_t const before = hashOf(text);
                text[bit / 8] = static_cast<char>(text[bit / 8] ^ 1 << bit % 8);
                std::uint64_t const difference = before ^ hashOf(text);
                for (int k = 0; k < 64; ++k)
                    changed[k] += static_cast<int>(difference >> k & 1);
            }
            for (int k = 0; k < 64; ++k)
                EXPECT_LT(std::abs(changed[k] - tosses / 2), tosses * 175 / 1000)
                    << "bit " << k << " of the hash, bit " << bit << " of " << length << " bytes";
        }
    }
}

/// Of n values of 32 bits about n * n / 2^33 are the same by chance: one of 100,000.
TEST(Hash, SpreadsTextsThatAreAlike) {
    constexpr std::size_t count = 100000;
    for (std::size_t const width : {1U, 12U, 20U, 70U}) {
        std::unordered_set<std::uint32_t> low, high;
        for (std::size_t i = 0; i < count; ++i) {
            std::string const number = std::to_string(i);
            std::uint64_t const hash =
                hashOf(std::string(number.size() < width ? width - number.size() : 0, '0') + number);
            low.insert(static_cast<std::uint32_t>(hash));
            high.insert(static_cast<std::uint32_t>(hash >> 32));
        }
        EXPECT_GT(low.size(), count - 20) << width;
        EXPECT_GT(high.size(), count - 20) << width;
    }
}

} // namespace
