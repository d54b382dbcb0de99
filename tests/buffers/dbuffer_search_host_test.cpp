// What the searches of single-byte buffers ask a class that a host derived.
#include "tests/buffers/dbuffer_search_support.h"
#include "tests/buffers/operation_support.h"

namespace {

using namespace searching;

/// A host's own buffer class, which answers some searches in its own way.
class HostsBuffer : public DBuffer {
public:
    using DBuffer::DBuffer;
    using DBuffer::indexOf;
    using DBuffer::indexOfAnyBut;
    using DBuffer::indexOfAnyOf;
    using DBuffer::lastIndexOfAnyBut;
    using DBuffer::lastIndexOfAnyOf;

    unsigned int indexOfAnyOf(char const*, unsigned int, unsigned int start) const override {
        return 1000 + start;
    }
    unsigned int indexOfAnyOf(DStringTest const&, unsigned int start) const override { return 2000 + start; }
    unsigned int lastIndexOfAnyOf(DStringTest const&, unsigned int start) const override {
        return 3000 + start;
    }
};

template <class Buffer>
Owned make(std::string_view text) {
    Buffer* const buffer =
        ::new (::operator new[](sizeof(Buffer) + text.size() + 1)) Buffer(operations::lengthOf(text));
    std::memcpy(buffer->contents(), text.data(), text.size());
    return Owned(buffer);
}

TEST(HostsOwnBufferClass, IsAskedForOneBytePatternsAsForASetOfOne) {
    Owned const text = make<HostsBuffer>("abcabc");
    EXPECT_EQ(text->indexOf("c", 1, 4), 1004u);
    EXPECT_EQ(text->indexOf("ca", 2, 1), 3u);
}

TEST(HostsOwnBufferClass, IsAskedForTestsAsForAnyOfTheTest) {
    Owned const text = make<HostsBuffer>("abcabc");
    DStringTest const test(isVowel);
    EXPECT_EQ(text->indexOf(test, 4), 2004u);
    EXPECT_EQ(text->lastIndexOf(test, 4), 3004u);
}

TEST(HostsOwnBufferClass, SaysWhereSearchesStart) {
    class Starts : public DBuffer {
    public:
        using DBuffer::DBuffer;
        unsigned int startSearch(unsigned int start, unsigned int n) const override {
            return DBuffer::startSearch(start + 1, n);
        }
        unsigned int startBackwardsSearch(unsigned int start, unsigned int n) const override {
            return start == 0 ? 0 : DBuffer::startBackwardsSearch(start - 1, n);
        }
    };
    static_assert(sizeof(Starts) == sizeof(DBuffer), "the text stands directly after a buffer");
    Owned const text = make<Starts>("abcabc");
    DStringTest const vowel(isVowel);
    EXPECT_EQ(text->indexOf("abc", 3, 1), 4u);
    EXPECT_EQ(text->indexOf("a", 1, 1), 4u);
    EXPECT_EQ(text->indexOfAnyOf("ax", 2, 1), 4u);
    EXPECT_EQ(text->indexOfAnyBut("b", 1, 1), 3u);
    EXPECT_EQ(text->indexOfAnyBut("", 0, 1), 2u);
    EXPECT_EQ(text->indexOfAnyOf(vowel, 1), 4u);
    EXPECT_EQ(text->indexOfAnyBut(vowel, 3), 5u);
    EXPECT_EQ(text->lastIndexOf("abc", 3, 4), 1u);
    EXPECT_EQ(text->lastIndexOf("a", 1, 4), 1u);
    EXPECT_EQ(text->lastIndexOfAnyOf("ax", 2, 4), 1u);
    EXPECT_EQ(text->lastIndexOfAnyBut("b", 1, 5), 4u);
    EXPECT_EQ(text->lastIndexOfAnyBut("", 0, 5), 4u);
    EXPECT_EQ(text->lastIndexOfAnyOf(vowel, 4), 1u);
    EXPECT_EQ(text->lastIndexOfAnyBut(vowel, 4), 3u);
}

} // namespace
