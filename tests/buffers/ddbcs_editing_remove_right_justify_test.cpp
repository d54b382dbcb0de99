// remove and rightJustify of multi-byte text, which repair the characters that they cut.
#include "tests/buffers/ddbcsbuffer_support.h"
#include "tests/characters/multi_byte_support.h"

#include <climits>

namespace {

using namespace mb;
using namespace std::string_literals;
using mb::buffer;
using mb::lengthOf;

std::string removed(std::string const& text, std::vector<unsigned int> const& places, unsigned int start,
                    unsigned int count) {
    if (start > text.size() || text.empty()) return text;
    std::size_t const s = std::max(start, 1u);
    std::size_t const n = std::min<std::size_t>(count, text.size() - s + 1);
    std::string result = text.substr(0, s - 1) + text.substr(s - 1 + n);
    for (unsigned int place = places[s - 1]; place >= 2 && s - 1 >= places[s - 1] - place + 1; --place)
        result[s - 2 - (places[s - 1] - place)] = ' ';
    for (std::size_t e = s + n, at = s - 1; e <= text.size() && places[e - 1] >= 2; ++e, ++at)
        result[at] = ' ';
    return result;
}

TEST(Removal, BlanksWhatIsLeftOfCutCharacters) {
    forRandomTexts(10, 1500, [](std::string const& text) {
        std::vector<unsigned int> const places = mb::placesOf(text);
        for (unsigned int start = 0; start <= lengthOf(text) + 1; ++start)
            for (unsigned int count = 0; count <= lengthOf(text) + 1; ++count) {
                operations::Owned const owned = buffer(text);
                operations::Owned const result(owned->remove(start, count));
                std::string const expected = removed(text, places, start, count);
                EXPECT_TRUE(result.text() == expected)
                    << start << ' ' << count << ": " << hex(result.text()) << ", not " << hex(expected);
                EXPECT_TRUE(owned.text() == text) << "the receiver is what it was";
            }
    });
}

TEST(Removal, OfTheFirstByteOfACharacterBlanksTheRest) {
    for (mb::Sample const& sample : mb::samples().longCharacters()) {
        auto const size = lengthOf(sample.bytes);
        std::string const text = "a" + sample.bytes + "b";
        EXPECT_EQ(operations::Owned(buffer(text)->remove(2, 1)).text(),
                  "a" + std::string(size - 1, ' ') + "b");
        EXPECT_EQ(operations::Owned(buffer(text)->remove(1 + size, 1)).text(),
                  "a" + std::string(size - 1, ' ') + "b");
        EXPECT_EQ(operations::Owned(buffer(text)->remove(2, size)).text(), "ab");
        EXPECT_EQ(operations::Owned(buffer(text)->remove(3, UINT_MAX)).text(), "a ");
    }
}

TEST(Removal, PastTheEndReturnsTheSameBuffer) {
    for (std::string const& text : {"abc"s, ""s}) {
        operations::Owned const owned = buffer(text);
        operations::Owned const result(owned->remove(4, 1));
        EXPECT_EQ(result.get(), owned.get());
        EXPECT_EQ(owned->refs, 2u);
    }
}

std::string rightJustified(std::string const& text, unsigned int width, char pad) {
    if (width >= text.size()) return std::string(width - text.size(), pad) + text;
    std::string result = text.substr(text.size() - width);
    std::vector<unsigned int> const places = mb::placesOf(text);
    for (std::size_t at = 0; at < width && places[text.size() - width + at] >= 2; ++at)
        result[at] = pad;
    return result;
}

TEST(RightJustification, PadsOrCutsTheFrontAndPadsCutCharacters) {
    forRandomTexts(11, 1500, [](std::string const& text) {
        for (unsigned int width = 0; width <= lengthOf(text) + 3; ++width) {
            operations::Owned const owned = buffer(text);
            operations::Owned const result(owned->rightJustify(width, '*'));
            EXPECT_EQ(hex(result.text()), hex(rightJustified(text, width, '*'))) << width;
            EXPECT_EQ(hex(owned.text()), hex(text));
        }
    });
}

TEST(RightJustification, PadsTheOrphanedEndOfACharacter) {
    for (mb::Sample const& sample : mb::samples().longCharacters()) {
        auto const size = lengthOf(sample.bytes);
        operations::Owned const owned = buffer(sample.bytes + "b");
        for (unsigned int width = 2; width <= size; ++width)
            EXPECT_EQ(operations::Owned(owned->rightJustify(width, '*')).text(),
                      std::string(width - 1, '*') + "b");
        EXPECT_EQ(operations::Owned(owned->rightJustify(1, '*')).text(), "b");
    }
}

TEST(RightJustification, ToTheSameWidthReturnsTheSameBuffer) {
    operations::Owned const owned = buffer("abc" + mb::samples().two.bytes);
    operations::Owned const result(owned->rightJustify(owned->length, '*'));
    EXPECT_EQ(result.get(), owned.get());
    EXPECT_EQ(owned->refs, 2u);
}

} // namespace
