// Counting and changing occurrences, in buffers of the library's class and of classes that a host derives
// from it: what a host overrides is asked, and what it answers never leads outside of the text.
#include "tests/buffers/buffer_support.h"
#include "tests/characters/multi_byte_support.h"

#include <cctype>

namespace {

using support::makeIn;
using support::textOf;

/// A class of a host that leaves the searches alone.
class NamedBuffer : public DDBCSBuffer {
public:
    using DDBCSBuffer::DDBCSBuffer;
    char const* className() const override { return "NamedBuffer"; }
};

/// A class of a host that looks on at the searches.
class WatchedBuffer : public DDBCSBuffer {
public:
    using DDBCSBuffer::DDBCSBuffer;

    static inline std::vector<unsigned int> starts; ///< Of the searches for patterns.

    unsigned int indexOf(char const* pattern, unsigned int size, unsigned int start) const override {
        starts.push_back(start);
        return DDBCSBuffer::indexOf(pattern, size, start);
    }
    using DDBCSBuffer::indexOf;
};

/// A class of a host in which a search begins at odd positions only.
class OddStartBuffer : public DDBCSBuffer {
public:
    using DDBCSBuffer::DDBCSBuffer;
    unsigned int startSearch(unsigned int start, unsigned int size) const override {
        return DDBCSBuffer::startSearch(start | 1, size);
    }
};

/// A class of a host that finds single bytes from the third position on only.
class LateByteBuffer : public DDBCSBuffer {
public:
    using DDBCSBuffer::DDBCSBuffer;
    unsigned int indexOfAnyOf(char const* set, unsigned int size, unsigned int start) const override {
        return DDBCSBuffer::indexOfAnyOf(set, size, std::max(start, 3U));
    }
    unsigned int indexOfAnyOf(DStringTest const& test, unsigned int start) const override {
        return DDBCSBuffer::indexOfAnyOf(test, std::max(start, 3U));
    }
};

/// A class of a host for which no byte begins a character of several ones.
class BytewiseBuffer : public DDBCSBuffer {
public:
    using DDBCSBuffer::DDBCSBuffer;
    unsigned int charType(unsigned int) const override { return 0; }
};

/// A class of a host whose searches answer anything.
template <class Base>
class LyingBuffer : public Base {
public:
    using Base::Base;

    static inline unsigned int answer = 0;

    unsigned int indexOf(char const*, unsigned int, unsigned int) const override { return answer; }
    unsigned int indexOf(DStringTest const&, unsigned int) const override { return answer; }
};

/// Positions of the occurrences that do not overlap and begin together with a character.
std::vector<unsigned int> modelOf(std::string const& text, std::string const& pattern, std::size_t start) {
    std::vector<unsigned int> positions;
    std::size_t from = std::max<std::size_t>(start, 1) - 1;
    for (mb::Character const& character : mb::charactersOf(text))
        if (character.offset >= from && text.compare(character.offset, pattern.size(), pattern) == 0) {
            positions.push_back(static_cast<unsigned int>(character.offset) + 1);
            from = character.offset + pattern.size();
        }
    return positions;
}

std::string modelOfChange(std::string text, std::string const& pattern, std::string const& replacement,
                          std::size_t start, std::size_t most) {
    std::vector<unsigned int> positions = modelOf(text, pattern, start);
    if (positions.size() > most) positions.resize(most);
    for (auto at = positions.rbegin(); at != positions.rend(); ++at)
        text.replace(*at - 1, pattern.size(), replacement);
    return text;
}

unsigned int modelOfTested(std::string const& text, int (*function)(int), std::size_t start) {
    unsigned int count = 0;
    std::size_t from = std::max<std::size_t>(start, 1) - 1;
    for (mb::Character const& character : mb::charactersOf(text)) {
        if (character.offset < from) continue;
        // Every byte is tested, and after one that is found the search goes on at the next character.
        std::size_t at = character.offset;
        std::size_t const end = at + character.bytes.size();
        while (at < end && function(static_cast<signed char>(text[at])) == 0)
            ++at;
        if (at < end) ++count;
        from = end;
    }
    return count;
}

template <class Buffer>
void expectAsModel(std::mt19937& random) {
    auto const parts = mb::parts();
    for (int round = 0; round < 1500; ++round) {
        std::string const text = mb::randomText(random, parts, 40);
        if (text.empty()) continue;
        std::string const pattern = text.substr(random() % text.size(), 1 + random() % 4);
        auto const start = static_cast<unsigned int>(random() % (text.size() + 3));
        std::size_t const most = random() % 4 == 0 ? random() % 4 : 1000;
        std::string const replacement = mb::randomText(random, parts, 3);
        DString const subject(makeIn<Buffer>(text, 64));
        std::string const where = mb::hex(text) + "| " + mb::hex(pattern) + "| " + std::to_string(start);
        ASSERT_EQ(subject.occurrencesOf(pattern.data(), mb::lengthOf(pattern), start),
                  modelOf(text, pattern, start).size())
            << where;
        DString changed(subject);
        changed.change(pattern, replacement, start, static_cast<unsigned int>(most));
        ASSERT_EQ(textOf(changed), modelOfChange(text, pattern, replacement, start, most)) << where;
        mb::SwitchAt const off(0);
        ASSERT_EQ(subject.occurrencesOf(DStringTest(std::isspace), start),
                  modelOfTested(text, std::isspace, start))
            << where;
    }
}

TEST(Occurrences, BeginTogetherWithCharactersAndDoNotOverlap) {
    std::mt19937 random(31);
    expectAsModel<DDBCSBuffer>(random);
}

TEST(Occurrences, AreTheSameInAClassThatLeavesTheSearchesAlone) {
    std::mt19937 random(32);
    expectAsModel<NamedBuffer>(random);
}

TEST(Occurrences, AreTheSameInAClassThatLooksOn) {
    std::mt19937 random(33);
    expectAsModel<WatchedBuffer>(random);
}

TEST(Occurrences, AreEachAskedOfAnOverriddenSearchFromTheEndOfTheOneBefore) {
    DString const text(makeIn<WatchedBuffer>("ab-ab-ab", 64));
    WatchedBuffer::starts.clear();
    EXPECT_EQ(text.occurrencesOf("ab"), 3u);
    EXPECT_EQ(WatchedBuffer::starts, (std::vector<unsigned int>{1, 3, 6, 9}));
    WatchedBuffer::starts.clear();
    EXPECT_EQ(textOf(DString(text).change("ab", "x", 2, 1)), "ab-x-ab");
    EXPECT_EQ(WatchedBuffer::starts, std::vector<unsigned int>{2});
}

TEST(Occurrences, FollowWhatAHostSaysOfStartsAndBytes) {
    EXPECT_EQ(DString(makeIn<OddStartBuffer>("abcabc", 64)).occurrencesOf("abc"), 1u);
    EXPECT_EQ(DString(makeIn<NamedBuffer>("abcabc", 64)).occurrencesOf("abc"), 2u);
    EXPECT_EQ(DString(makeIn<LateByteBuffer>("aaaa", 64)).occurrencesOf('a'), 2u);
    EXPECT_EQ(textOf(DString(makeIn<LateByteBuffer>("aaaa", 64)).change("a", "-")), "aa--");
    mb::SwitchAt const off(0);
    EXPECT_EQ(DString(makeIn<LateByteBuffer>("  a  ", 64)).occurrencesOf(DStringTest(std::isspace)), 2u);
}

TEST(Occurrences, FollowWhatAHostSaysOfTheTypesOfCharacters) {
    std::string const character = mb::samples().two.bytes;
    if (character.empty()) return; // no characters of several bytes
    std::string const pattern = {character[1], 'a'};
    std::string const text = character + "a" + character + "a";
    // From a position inside a character on, its second byte begins what is found.
    EXPECT_EQ(DString(makeIn<BytewiseBuffer>(text, 64)).occurrencesOf(pattern, 2), 1u);
    EXPECT_EQ(DString(makeIn<NamedBuffer>(text, 64)).occurrencesOf(pattern, 2), 0u);
}

template <class Base>
void expectLiesToBeHarmless() {
    using Buffer = LyingBuffer<Base>;
    for (unsigned int const answer : {1U, 2U, 3U, 4U, 5U, 0x7FFFFFFFU, 0xFFFFFFFEU, 0xFFFFFFFFU})
        for (unsigned int const start : {0U, 1U, 3U, 9U})
            for (std::string const& pattern :
                 {std::string(), std::string("a"), std::string("bc"), std::string("longer than the text")})
                for (std::string const& replacement :
                     {std::string(), std::string("x"), std::string("xy"), std::string("xyz")}) {
                    Buffer::answer = answer;
                    bool const isIn = answer >= start && answer + pattern.size() <= 5 && !pattern.empty();
                    DString text(makeIn<Buffer>("abcd", 0));
                    EXPECT_EQ(text.occurrencesOf(pattern, start), isIn ? 1u : 0u);
                    std::string expected = "abcd";
                    if (isIn) expected.replace(answer - 1, pattern.size(), replacement);
                    EXPECT_EQ(textOf(text.change(pattern, replacement, start)), expected)
                        << answer << ' ' << start << ' ' << pattern;
                }
}

TEST(Occurrences, OfASearchThatLiesEndWhereItsAnswersDoNotLieAheadInTheText) {
    expectLiesToBeHarmless<DDBCSBuffer>();
    expectLiesToBeHarmless<DBuffer>();
}

TEST(Occurrences, OfATestInASearchThatLiesEndTooWhereItsAnswersDoNotLieAhead) {
    LyingBuffer<DDBCSBuffer>::answer = 2;
    DString const text(makeIn<LyingBuffer<DDBCSBuffer>>("abcd", 0));
    EXPECT_EQ(text.occurrencesOf(DStringTest(std::isspace)), 1u);
    EXPECT_EQ(text.occurrencesOf(DStringTest(std::isspace), 3), 0u);
    LyingBuffer<DDBCSBuffer>::answer = 0xFFFFFFFF;
    EXPECT_EQ(text.occurrencesOf(DStringTest(std::isspace)), 0u);
}

} // namespace
