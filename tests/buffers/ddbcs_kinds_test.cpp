// Kinds of characters in multi-byte text, by their bytes and columns, and the case mapping of characters of
// other sizes.
#include "tests/buffers/ddbcsbuffer_support.h"
#include "tests/characters/multi_byte_support.h"

namespace {

using namespace mb;
using namespace std::string_literals;
using mb::buffer;

TEST(Kinds, OfAnEmptyText) {
    operations::Owned const empty = buffer("");
    EXPECT_TRUE(empty->isMBCS());
    EXPECT_TRUE(empty->isDBCS());
    EXPECT_TRUE(empty->isSBCS());
    EXPECT_TRUE(empty->isValidMBCS());
    EXPECT_TRUE(empty->isValidDBCS());
    EXPECT_FALSE(empty->includesMBCS());
    EXPECT_FALSE(empty->includesDBCS());
    EXPECT_FALSE(empty->includesSBCS());
}

TEST(Kinds, OfOneWideCharacter) {
    mb::Sample const& wide = mb::samples().wide;
    if (!wide.exists()) {
        EXPECT_FALSE(buffer("a")->isMBCS());
        return;
    }
    operations::Owned const owned = buffer(wide.bytes);
    EXPECT_TRUE(owned->isMBCS());
    EXPECT_TRUE(owned->isDBCS());
    EXPECT_FALSE(owned->isSBCS());
    EXPECT_TRUE(owned->includesMBCS());
    EXPECT_TRUE(owned->includesDBCS());
    EXPECT_FALSE(owned->includesSBCS());
    EXPECT_TRUE(owned->isValidMBCS());
    EXPECT_TRUE(owned->isValidDBCS());
}

TEST(Kinds, CountALongCharacterOfOneColumnAsASingleByteOneByDesign) {
    mb::Sample const& narrow = mb::samples().narrow;
    operations::Owned const owned = buffer("a" + narrow.bytes);
    EXPECT_TRUE(owned->isSBCS());
    EXPECT_FALSE(owned->isMBCS());
    EXPECT_FALSE(owned->includesMBCS());
    if (!narrow.exists()) return;
    EXPECT_FALSE(buffer(narrow.bytes)->isMBCS());
    EXPECT_TRUE(buffer(narrow.bytes)->isValidMBCS()) << "this test does not look at the width";
}

TEST(Kinds, AreThoseOfTheCharacters) {
    forRandomTexts(6, 4000, [](std::string const& text) {
        bool isMultiByte = true;
        bool isSingleByte = true;
        bool isValid = true;
        for (mb::Character const& character : mb::charactersOf(text)) {
            bool const isLong = character.bytes.size() >= 2;
            bool const isWide = isLong && wcwidth(mb::valueOf(character.bytes)) >= 2;
            isMultiByte = isMultiByte && isWide;
            isSingleByte = isSingleByte && !isWide;
            isValid = isValid && isLong;
        }
        operations::Owned const owned = buffer(text);
        EXPECT_EQ(owned->isMBCS(), isMultiByte);
        EXPECT_EQ(owned->isDBCS(), isMultiByte);
        EXPECT_EQ(owned->isSBCS(), isSingleByte);
        EXPECT_EQ(owned->isValidMBCS(), isValid);
        EXPECT_EQ(owned->isValidDBCS(), isValid);
        EXPECT_EQ(owned->includesMBCS(), !isSingleByte);
        EXPECT_EQ(owned->includesDBCS(), !isSingleByte);
        EXPECT_EQ(owned->includesSBCS(), !isMultiByte);
    });
}

TEST(CaseMapping, OfALongTextTakesCharactersWhoseOtherCaseIsLonger) {
    if (!mb::isUtf8()) return;
    mb::SwitchAt const on(1);
    for (std::size_t const before : {0U, 1U, 84U, 85U, 86U, 255U, 256U, 1000U}) {
        std::string text;
        for (std::size_t i = 0; i < before; ++i)
            text += "\xE3\x81\x82";
        operations::Owned const owned = buffer(text + "\xC9\x90z");                                // U+0250
        EXPECT_EQ(operations::Owned(owned->upperCase()).text(), text + "\xE2\xB1\xAFZ") << before; // U+2C6F
    }
}

/// A class of a host that overrides the three tests that the others are made of.
class ContraryBuffer : public DDBCSBuffer {
public:
    using DDBCSBuffer::DDBCSBuffer;
    bool isMBCS() const override { return false; }
    bool isSBCS() const override { return false; }
    bool isValidMBCS() const override { return false; }
};

/// A class of a host that finds no character of a set in front of its third byte.
class LateBuffer : public DDBCSBuffer {
public:
    using DDBCSBuffer::DDBCSBuffer;
    unsigned int indexOfAnyOf(char const* set, unsigned int setLength, unsigned int start) const override {
        return DDBCSBuffer::indexOfAnyOf(set, setLength, std::max(start, 3U));
    }
};

TEST(CaseMapping, BeginsWhereTheSearchOfASubclassFindsTheFirstLetter) {
    mb::SwitchAt const off(0);
    alignas(std::max_align_t) char storage[sizeof(LateBuffer) + 64];
    auto* const text = ::new (storage) LateBuffer(5);
    std::memcpy(text->contents(), "ab-cd", 5);
    EXPECT_EQ(text->upperCase(), text);
    EXPECT_EQ(std::string(text->contents(), text->length), "ab-CD");
    --text->refs; // that of the result, so that the next edit is in place too
    EXPECT_EQ(text->lowerCase(), text);
    EXPECT_EQ(std::string(text->contents(), text->length), "ab-cd");
    --text->refs;
    std::memcpy(text->contents(), "Ab-12", 5);
    EXPECT_EQ(text->lowerCase(), text);
    EXPECT_EQ(std::string(text->contents(), text->length), "Ab-12");
}

TEST(Kinds, FollowTheTestsThatASubclassOverrides) {
    alignas(std::max_align_t) char storage[sizeof(ContraryBuffer) + 32];
    auto* const empty = ::new (storage) ContraryBuffer(0);
    DBuffer const& tests = *empty;
    EXPECT_FALSE(tests.isDBCS());
    EXPECT_TRUE(tests.includesMBCS());
    EXPECT_TRUE(tests.includesDBCS());
    EXPECT_TRUE(tests.includesSBCS());
    EXPECT_FALSE(tests.isValidDBCS());
}

} // namespace
