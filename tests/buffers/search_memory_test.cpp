// Searches and changes take no more memory than the text once over, besides the text that they make.
#include "tests/characters/multi_byte_support.h"
#include "tests/support/failing_allocations.h"

namespace {

std::string repeated(std::string const& part, std::size_t bytes) {
    std::string text;
    while (text.size() < bytes)
        text += part;
    return text;
}

constexpr std::size_t size = 1 << 18;

/// Texts of one character each.
std::vector<std::string> texts() {
    std::vector<std::string> all;
    for (mb::Sample const& sample : mb::samples().characters())
        all.push_back(repeated(sample.bytes, size));
    return all;
}

/// Bytes of the blocks that are allocated while something is done.
template <class Work>
std::size_t allocatedBy(Work work) {
    std::size_t const before = allocations.bytes;
    work();
    return allocations.bytes - before;
}

TEST(Memory, OfABackwardSearchIsAtMostThatOfTheText) {
    for (std::string const& bytes : texts()) {
        DString const text(bytes);
        std::string const shifted = bytes.substr(1, size / 2);
        for (std::string const& pattern : {shifted, shifted.substr(0, 2), std::string("!")}) {
            EXPECT_LE(allocatedBy([&] { text.lastIndexOf(pattern, text.length()); }), size);
            EXPECT_LE(allocatedBy([&] { text.lastIndexOfAnyBut(bytes.substr(0, 8)); }), size);
        }
    }
}

TEST(Memory, OfAForwardSearchAndOfCountingIsNone) {
    for (std::string const& bytes : texts()) {
        DString const text(bytes);
        std::string const pattern = bytes.substr(1, size / 2);
        EXPECT_EQ(allocatedBy([&] { text.indexOf(pattern); }), 0u);
        EXPECT_EQ(allocatedBy([&] { text.occurrencesOf(pattern); }), 0u);
    }
}

TEST(Memory, OfAChangeInPlaceIsAtMostThatOfTheText) {
    for (std::string const& bytes : texts())
        for (std::size_t length = 1; length <= 4; ++length) {
            DString text(bytes);
            std::string const replacement(length, '-');
            std::string const pattern = bytes.substr(0, length);
            // At most a chunk more than the text, so that the list need not move when it grows.
            EXPECT_LE(allocatedBy([&] { text.change(pattern, replacement); }), size + size / 32);
        }
}

TEST(Memory, OfAChangeOfTheLengthIsAtMostThatOfTheTextBesidesTheResult) {
    for (std::string const& bytes : texts())
        for (std::size_t length = 1; length <= 4; ++length) {
            DString text(bytes);
            std::string const replacement(length + 1, '-');
            std::string const pattern = bytes.substr(0, length);
            std::size_t const used = allocatedBy([&] { text.change(pattern, replacement); });
            std::size_t const ofResult =
                allocatedBy([&] { DString const copy(text.c_str(), text.length()); });
            EXPECT_LE(used, ofResult + size + size / 32);
        }
}

} // namespace
