// The search for a row of things in a longer one, and how many comparisons it takes.

#include "bytes/sequence_search.h"
#include "tests/bytes/texts.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

using namespace bytes_test;

/// Where the pattern ends in the text, and how many comparisons that took.
struct Found {
    std::vector<std::size_t> ends;
    std::size_t comparisons = 0;
};

Found findAll(std::string_view text, std::string_view pattern) {
    Found result;
    std::vector<std::uint32_t> borders(pattern.size());
    kelcl::SequenceSearch search(pattern.size(), borders.data(), [&](std::size_t i, std::size_t j) {
        ++result.comparisons;
        return pattern[i] == pattern[j];
    });
    for (std::size_t i = 0; i < text.size(); ++i)
        if (search.endsWith([&](std::size_t k) {
                ++result.comparisons;
                return pattern[k] == text[i];
            }))
            result.ends.push_back(i);
    return result;
}

TEST(SequenceSearches, FindWhatIsThereAlsoWhereItOverlaps) {
    std::mt19937 random(701);
    for (int round = 0; round < 20'000; ++round) {
        std::string const text = randomText(random, random() % 40, "aab");
        std::string const pattern = randomText(random, 1 + random() % 6, "aab");
        std::vector<std::size_t> ends;
        for (std::size_t i = pattern.size(); i <= text.size(); ++i)
            if (text.compare(i - pattern.size(), pattern.size(), pattern) == 0) ends.push_back(i - 1);
        ASSERT_EQ(findAll(text, pattern).ends, ends) << pattern << " in " << text;
    }
}

TEST(SequenceSearches, CompareAtMostTwiceForEachThingOfBothRows) {
    for (std::size_t const n : {1000U, 16'000U}) {
        std::string const same(n, 'a');
        for (std::string const& pattern :
             {same.substr(n / 2), same.substr(n / 2) + "b", "b" + same.substr(n / 2),
              same.substr(n / 2) + "b" + same.substr(n / 2)})
            EXPECT_LE(findAll(same, pattern).comparisons, 2 * (same.size() + pattern.size()));
    }
}

} // namespace
