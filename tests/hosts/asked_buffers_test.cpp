// What empty texts, the making of buffers, and streams ask a class that a host derived, and that they do what
// it answers. The questions are those of the steps that each operation is defined by: fast ways that ask less
// are for the library's own classes.
#include "tests/hosts/asked_support.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <new>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace hosts;
using testing::ElementsAre;

// Empty texts

TYPED_TEST(AnyHost, KeepsItsEmptyTextInD2cUnlessItSaysThatThatIsNoNumber) {
    DString denied = this->text("");
    EXPECT_FALSE(isHosts(denied.d2c())) << "an empty text is not of digits";
    this->host.truth = [](std::string const&) { return std::optional(true); };
    DString accepted = this->text("");
    EXPECT_TRUE(isHosts(accepted.d2c()));
    SwitchAt const on(1);
    DString notAsked = this->text("");
    EXPECT_TRUE(isHosts(notAsked.d2c()));
}

TYPED_TEST(AnyHost, HasAnEmptyComplementOfTheDefaultClass) {
    DString const complement = ~this->text("");
    EXPECT_TRUE(complement.isEmpty());
    EXPECT_FALSE(isHosts(complement));
    EXPECT_EQ(bytesOf(~this->text("a")), "\x9E");
}

TYPED_TEST(AnyHost, IsAskedWhetherItsEmptyTextIsEqualToNothing) {
    EXPECT_TRUE(this->text("").isAbbrevFor("PRINT"));
    EXPECT_TRUE(this->text("").isAbbrevFor(nullptr));
    std::vector<std::string> others;
    this->host.order = [&others](std::string_view other) {
        others.emplace_back(other);
        return std::optional(2);
    };
    EXPECT_FALSE(this->text("").isAbbrevFor("PRINT"));
    EXPECT_FALSE(this->text("").isAbbrevFor(nullptr));
    EXPECT_THAT(others, ElementsAre("", ""));
}

// Making buffers

TYPED_TEST(AnyHost, MayMakeABufferThatIsTooLong) {
    this->host.lengthMade = [](unsigned int size) { return std::optional(size + 5); };
    DString text = this->text("abc");
    EXPECT_EQ(bytesOf(text.leftJustify(5, '.')), "abc..");
    EXPECT_EQ(bytesOf(text += "de"), "abc..de");
    EXPECT_EQ(bytesOf(text.reverse()), "ed..cba");
    EXPECT_EQ(text.c_str()[7], '\0');
}

TYPED_TEST(AnyHost, MakesNoBufferWhereItMakesOneThatIsTooShort) {
    DString text = this->text("abc");
    this->host.lengthMade = [](unsigned int size) { return std::optional(size - 1); };
    EXPECT_THROW(text.leftJustify(5, '.'), std::bad_alloc);
    EXPECT_THROW(text += "de", std::bad_alloc);
    EXPECT_THROW(text.copy(2), std::bad_alloc);
    EXPECT_EQ(bytesOf(text), "abc");
}

// Streams

TYPED_TEST(AnyHost, KeepsItsClassWhenAWordIsReadIntoItsText) {
    for (char const* const word : {"x", "xyz", "xyzuv", "a longer one"}) {
        DString text = this->text("abc");
        std::istringstream in(word);
        in >> text;
        EXPECT_EQ(bytesOf(text), std::string(word).substr(0, std::string(word).find(' ')));
        EXPECT_TRUE(isHosts(text)) << word;
    }
    DString empty = this->text("");
    std::istringstream in("word");
    in >> empty;
    EXPECT_FALSE(isHosts(empty)) << "the work space of an empty text is one of the default class";
}

TYPED_TEST(AnyHost, LeavesTheTextAloneWhenAWordReadCannotBeCut) {
    DString text = this->text("abcd");
    this->host.lengthMade = [](unsigned int) { return std::optional(0U); };
    std::istringstream in("xy");
    EXPECT_THROW(in >> text, std::bad_alloc);
    EXPECT_EQ(bytesOf(text), "abcd");
}

} // namespace
