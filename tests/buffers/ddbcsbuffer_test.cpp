// Multi-byte buffers: which class new buffers have, and how characters are measured.
#include "tests/buffers/ddbcsbuffer_support.h"
#include "tests/characters/multi_byte_support.h"

#include <climits>

namespace {

using namespace mb;
using namespace std::string_literals;
using mb::asMultiByte;
using mb::buffer;
using mb::lengthOf;

TEST(MultiByteBuffer, IsTheClassOfNewBuffersWhereTheLocaleHasLongCharacters) {
    EXPECT_STREQ(operations::Owned("abc")->className(), mb::isMultiByte() ? "DDBCSBuffer" : "DBuffer");
    EXPECT_STREQ(buffer("abc")->className(), "DDBCSBuffer");
    static_assert(sizeof(DDBCSBuffer) == sizeof(DBuffer));
}

TEST(MultiByteBuffer, AllocatesItsOwnKind) {
    operations::Owned const made(buffer("abc")->allocate(5));
    EXPECT_STREQ(made->className(), "DDBCSBuffer");
    EXPECT_EQ(made->length, 5u);
    EXPECT_EQ(made->refs, 1u);
    EXPECT_EQ(made->contents()[5], '\0');
    operations::Owned const copy(buffer("abc")->newBuffer("xyz", 3));
    EXPECT_STREQ(copy->className(), "DDBCSBuffer");
    EXPECT_EQ(copy.text(), "xyz");
}

TEST(MultiByteBuffer, RefusesLengthsThatNoBlockCanHave) {
    operations::Owned const some = buffer("abc");
    for (unsigned int const length : {0xFFFFFFE7u, 0xFFFFFFE8u, UINT_MAX})
        EXPECT_EQ(operations::failureOf([&] { some->allocate(length); }), operations::lengthOverflow());
    EXPECT_EQ(some.text(), "abc");
}

TEST(CharacterType, IsThePlaceOfTheByteInItsCharacter) {
    forRandomTexts(1, 3000, [](std::string const& text) {
        operations::Owned const owned = buffer(text);
        std::vector<unsigned int> const places = mb::placesOf(text);
        for (unsigned int index = 1; index <= lengthOf(text); ++index)
            EXPECT_EQ(owned->charType(index), places[index - 1]) << index;
        EXPECT_EQ(owned->charType(0), 0u);
    });
}

TEST(CharacterType, OfATextOfSamples) {
    for (mb::Sample const& sample : mb::samples().longCharacters()) {
        operations::Owned const owned = buffer("a" + sample.bytes + "b");
        EXPECT_EQ(owned->charType(1), 0u);
        for (unsigned int place = 1; place <= sample.bytes.size(); ++place)
            EXPECT_EQ(owned->charType(1 + place), place);
        EXPECT_EQ(owned->charType(owned->length), 0u);
        EXPECT_EQ(asMultiByte(owned).prevCharLength(owned->length), sample.bytes.size());
    }
}

TEST(CharacterLength, IsThatOfTheSplitterByEveryWayToAsk) {
    forRandomTexts(2, 3000, [](std::string const& text) {
        operations::Owned const owned = buffer(text);
        DDBCSBuffer const& b = asMultiByte(owned);
        for (unsigned int index = 1; index <= lengthOf(text); ++index) {
            auto const expected = static_cast<int>(mb::lengthAt(text, index - 1));
            char* const p = owned->contents() + index - 1;
            std::mbstate_t state{};
            EXPECT_EQ(DDBCSBuffer::charLength(p, &state), expected) << index;
            EXPECT_NE(std::mbsinit(&state), 0) << "ready for the next character";
            EXPECT_EQ(b.charLength(index, &state), expected) << index;
            EXPECT_EQ(DDBCSBuffer::isSBC(p, &state) != 0, expected == 1) << index;
            EXPECT_EQ(owned->next(p), p + expected) << index;
            EXPECT_EQ(b.next(static_cast<char const*>(p)), p + expected) << index;
        }
    });
}

TEST(CharacterLength, OfTheCharacterBeforeAPosition) {
    forRandomTexts(3, 2000, [](std::string const& text) {
        operations::Owned const owned = buffer(text);
        DDBCSBuffer const& b = asMultiByte(owned);
        std::mbstate_t state{};
        for (mb::Character const& character : mb::charactersOf(text)) {
            auto const past = static_cast<unsigned int>(character.offset + character.bytes.size()) + 1;
            EXPECT_EQ(b.prevCharLength(past), character.bytes.size());
            EXPECT_EQ(b.prevCharLength(past, &state), character.bytes.size());
        }
        EXPECT_EQ(b.prevCharLength(1), 1u);
        EXPECT_EQ(b.prevCharLength(1, &state), 1u);
    });
}

TEST(CharacterLength, OfATextThatEndsInACutCharacterIsOneForEachByte) {
    for (mb::Sample const& sample : mb::samples().longCharacters()) {
        operations::Owned const owned = buffer("a" + sample.bytes.substr(0, 1));
        EXPECT_EQ(owned->charType(2), 0u);
        EXPECT_EQ(owned->next(owned->contents() + 1), owned->contents() + 2);
    }
}

TEST(CharacterInSet, IsOneOfTheWholeCharactersOfTheSet) {
    std::mt19937 random(4);
    for (int round = 0; round < 4000; ++round) {
        std::string const text = mb::randomText(random, mb::parts(), 5);
        std::string const set = mb::randomText(random, mb::parts(), 4);
        operations::Owned const owned = buffer(text);
        for (mb::Character const& character : mb::charactersOf(text)) {
            bool expected = false;
            for (mb::Character const& member : mb::charactersOf(set))
                expected = expected || member.bytes == character.bytes;
            mb::AtMemoryEnd const setBytes(set + '\0');
            EXPECT_EQ(asMultiByte(owned).isCharValid(static_cast<unsigned int>(character.offset) + 1,
                                                     setBytes.data(), lengthOf(set)) != 0,
                      expected)
                << hex(character.bytes) << "in " << hex(set);
        }
    }
}

TEST(CharacterInSet, IsNotFoundInsideAnotherCharacter) {
    mb::Sample const& trail = mb::samples().asciiTrail;
    std::string const set = trail.bytes + "xy";
    std::string const last = trail.exists() ? std::string(1, trail.bytes.back()) : "a";
    operations::Owned const owned = buffer(last + "x");
    EXPECT_EQ(asMultiByte(owned).isCharValid(1, set.data(), lengthOf(set)), 0);
    EXPECT_EQ(asMultiByte(owned).isCharValid(2, set.data(), lengthOf(set)), 1);
    EXPECT_EQ(asMultiByte(owned).isCharValid(2, set.data(), lengthOf(set) - 2), 0);
    EXPECT_EQ(asMultiByte(owned).isCharValid(2, set.data(), 0), 0);
}

} // namespace
