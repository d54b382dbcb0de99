// Texts in buffers of a host's own class: the operations ask its virtual searches what to edit and to count.
#include "tests/buffers/buffer_support.h"

#include <gtest/gtest.h>

namespace {

using support::HostBuffer;
using support::makeIn;
using support::Owned;
using support::textOf;

TEST(HostBuffers, AreTranslatedInPlaceWhereTheyHaveOneOwner) {
    Owned const text(makeIn<HostBuffer>("abcab", 64));
    Owned const edited(text->translate("ab", 2, "xy", 2, ' '));
    EXPECT_EQ(textOf(edited.get()), "xycxy");
    EXPECT_EQ(edited.get(), text.get());
}

TEST(HostBuffers, AreTranslatedInACopyWhereTheyAreShared) {
    Owned const text(makeIn<HostBuffer>("abcab", 64));
    ++text->refs;
    Owned const edited(text->translate("ab", 2, "x", 1, '-'));
    --text->refs;
    EXPECT_EQ(textOf(edited.get()), "x-cx-");
    EXPECT_EQ(textOf(text.get()), "abcab");
}

TEST(HostBuffers, AreMappedToTheOtherCase) {
    Owned const text(makeIn<HostBuffer>("aB-cD", 64));
    Owned const upper(text->upperCase());
    EXPECT_EQ(textOf(upper.get()), "AB-CD");
    Owned const lower(text->lowerCase());
    EXPECT_EQ(textOf(lower.get()), "ab-cd");
}

TEST(HostBuffers, HaveTheirWordsCountedThroughTheirOwnSearches) {
    EXPECT_EQ(DString(makeIn<HostBuffer>(" a bc\t\n d ", 64)).numWords(), 3U);
    EXPECT_EQ(DString(makeIn<HostBuffer>(" \t\n ", 64)).numWords(), 0U);
}

TEST(HostBuffers, HaveTheirWordsSpacedAsTheirOwnSearchesFindThem) {
    DString text(makeIn<HostBuffer>("  a bc\t\n d ", 64));
    EXPECT_EQ(std::string(text.space(2, '-')), "a--bc--d");
    DString blank(makeIn<HostBuffer>(" \t\n ", 64));
    EXPECT_TRUE(blank.space().isEmpty());
}

TEST(HostBuffers, AreClassifiedThroughTheirOwnSearches) {
    EXPECT_TRUE(Owned(makeIn<HostBuffer>("1209", 64))->isDigits());
    EXPECT_FALSE(Owned(makeIn<HostBuffer>("12a9", 64))->isDigits());
    EXPECT_TRUE(Owned(makeIn<HostBuffer>("12aF", 64))->isHexDigits());
    EXPECT_FALSE(Owned(makeIn<HostBuffer>("12aG", 64))->isHexDigits());
}

} // namespace
