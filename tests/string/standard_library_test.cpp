// Strings in hashes, containers and streams of the standard library.
#include "tests/buffers/buffer_support.h"

#include <algorithm>
#include <functional>
#include <map>
#include <numeric>
#include <set>
#include <sstream>
#include <type_traits>
#include <unordered_map>
#include <unordered_set>

namespace {

using namespace support;

TEST(StringHash, GoesByTheBytes) {
    std::hash<DString> const hash;
    EXPECT_EQ(hash(DString("abc")), hash(DString("abc")));
    EXPECT_EQ(hash(DString("a\0b"s)), hash(DString("a\0b"sv)));
    EXPECT_NE(hash(DString("a\0b"s)), hash(DString("a\0c"s))) << "bytes after a NUL count";
    EXPECT_NE(hash(DString("abc")), hash(DString("abd")));
    EXPECT_EQ(hash(DString()), hash(DString("")));
    static_assert(std::is_same_v<decltype(hash(DString())), std::size_t>);
}

TEST(StringHash, ServesUnorderedContainers) {
    std::unordered_map<DString, int> counts;
    for (char const* word : {"one", "two", "one", "three", "one"})
        ++counts[word];
    EXPECT_EQ(counts.size(), 3U);
    EXPECT_EQ(counts["one"], 3);
    std::unordered_set<DString> const words{"a", "b", "a"};
    EXPECT_EQ(words.count("a"), 1U);
    EXPECT_EQ(words.size(), 2U);
}

TEST(StringInContainers, SortsAndMoves) {
    std::vector<DString> words{"pear", "apple", "fig", "banana"};
    std::sort(words.begin(), words.end());
    EXPECT_EQ(words, (std::vector<DString>{"apple", "banana", "fig", "pear"}));
    words.erase(words.begin());
    words.insert(words.begin(), "avocado");
    EXPECT_TRUE(std::is_sorted(words.begin(), words.end()));
    std::map<DString, int> const byName{{"one", 1}, {"two", 2}};
    EXPECT_EQ(byName.at("two"), 2);
    std::set<DString, std::less<>> const names{"one", "two"};
    EXPECT_EQ(names.count("one"sv), 1U);
    EXPECT_EQ(names.count("three"s), 0U);
    DString const joined = std::accumulate(words.begin(), words.end(), DString());
    EXPECT_EQ(textOf(joined), "avocadobananafigpear");
}

TEST(StringInStreams, IsReadAndWrittenThroughTheOperators) {
    std::stringstream stream;
    stream << DString("one") << ' ' << DString(2);
    DString first, second;
    stream >> first >> second;
    EXPECT_EQ(first, "one");
    EXPECT_EQ(second, "2");
    std::ostringstream plain;
    plain << "text" << std::string("standard") << std::string_view("view") << 'c' << 1;
    EXPECT_EQ(plain.str(), "textstandardviewc1") << "the operators of the library are not in the way";
}

} // namespace
