// operator[] of strings: what counts as which position, when the text is copied, lengthened, and what fails.
#include "tests/buffers/operation_support.h"

#include <type_traits>

namespace {

using operations::contentsOf;
using operations::failureOf;
using operations::farEnd;
using operations::fresh;
using operations::invalidRequest;
using operations::refsOf;

TEST(ElementAccess, CountsFromOneAndTakesZeroAsOneToo) {
    DString text("abc");
    EXPECT_EQ(text[0], 'a');
    EXPECT_EQ(text[1], 'a');
    EXPECT_EQ(text[3], 'c');
    EXPECT_EQ(text[0u], 'a');
    EXPECT_EQ(text[1u], 'a');
    EXPECT_EQ(text[3u], 'c');
    DString const constant("abc");
    EXPECT_EQ(constant[0], 'a');
    EXPECT_EQ(constant[1], 'a');
    EXPECT_EQ(constant[3], 'c');
    EXPECT_EQ(constant[0u], 'a');
    EXPECT_EQ(constant[2u], 'b');
    static_assert(std::is_same_v<decltype(text[1]), char&>);
    static_assert(std::is_same_v<decltype(constant[1]), char const&>);
}

/// The same operators through their addresses, as programs call them that were compiled when they were not
/// inline.
TEST(ElementAccess, OutOfLineIsTheSame) {
    char const& (DString::*volatile readByInt)(int) const = &DString::operator[];
    char const& (DString::*volatile readByUnsigned)(unsigned int) const = &DString::operator[];
    char& (DString::*volatile writeByInt)(int) = &DString::operator[];
    char& (DString::*volatile writeByUnsigned)(unsigned int) = &DString::operator[];
    DString text("abc");
    DString const& constant = text;
    for (int index = 0; index <= 3; ++index) {
        auto const asUnsigned = static_cast<unsigned int>(index);
        EXPECT_EQ(&(constant.*readByInt)(index), &constant[index]);
        EXPECT_EQ(&(constant.*readByUnsigned)(asUnsigned), &constant[index]);
        EXPECT_EQ(&(text.*writeByInt)(index), &text[index]);
        EXPECT_EQ(&(text.*writeByUnsigned)(asUnsigned), &text[index]);
    }
    DString const copy(text);
    (text.*writeByInt)(5) = 'e';
    EXPECT_EQ(contentsOf(text), "abc e");
    EXPECT_EQ(contentsOf(copy), "abc");
}

TEST(ElementAccess, RefersIntoTheTextOfASoleOwner) {
    DString text("abc");
    char const* const data = text.data();
    EXPECT_EQ(&text[2], data + 1);
    EXPECT_EQ(&text[2u], data + 1);
    text[2] = 'X';
    EXPECT_EQ(contentsOf(text), "aXc");
    EXPECT_EQ(text.data(), data);
}

TEST(ElementAccess, ForWritingGivesASharedStringItsOwnCopy) {
    DString text("abc");
    DString const copy(text);
    text[2] = 'X';
    EXPECT_EQ(contentsOf(text), "aXc");
    EXPECT_EQ(contentsOf(copy), "abc");
    EXPECT_EQ(refsOf(copy), 1u);
    EXPECT_EQ(refsOf(text), 1u);
    DString other(copy);
    other[3u] = 'Y';
    EXPECT_EQ(contentsOf(other), "abY");
    EXPECT_EQ(contentsOf(copy), "abc");
}

TEST(ElementAccess, ForReadingLeavesSharingAlone) {
    DString const text("abc");
    DString const copy(text);
    EXPECT_EQ(&text[1], copy.data());
    EXPECT_EQ(refsOf(text), 2u);
}

TEST(ElementAccess, ForWritingPastTheEndLengthensTheStringWithBlanks) {
    DString text("abc");
    DString const copy(text);
    char& last = text[5];
    EXPECT_EQ(contentsOf(text), "abc  ");
    EXPECT_EQ(&last, text.data() + 4);
    EXPECT_EQ(last, ' ');
    last = 'X';
    EXPECT_EQ(contentsOf(text), "abc X");
    EXPECT_EQ(contentsOf(copy), "abc");
    text[6u] = 'Y';
    EXPECT_EQ(contentsOf(text), "abc XY");
}

TEST(ElementAccess, ForWritingLengthensAnEmptyStringEvenAtZero) {
    DString text;
    EXPECT_EQ(text[0], ' ');
    EXPECT_EQ(contentsOf(text), " ");
    DString other;
    other[1u] = 'x';
    EXPECT_EQ(contentsOf(other), "x");
    EXPECT_EQ(DString().length(), 0u) << "the shared empty buffer stays empty";
}

TEST(ElementAccess, PastTheEndOrNegativeFailsEachWithItsOwnLine) {
    DString text("abc");
    DString const copy(text);
    DString const& constant = text;
    EXPECT_EQ(failureOf([&] { (void)constant[4u]; }), invalidRequest(1011, "dstring5", 130));
    EXPECT_EQ(failureOf([&] { (void)constant[farEnd]; }), invalidRequest(1011, "dstring5", 130));
    EXPECT_EQ(failureOf([&] { (void)constant[-1]; }), invalidRequest(1011, "dstring5", 174));
    EXPECT_EQ(failureOf([&] { (void)constant[-2147483647 - 1]; }), invalidRequest(1011, "dstring5", 174));
    EXPECT_EQ(failureOf([&] { (void)constant[4]; }), invalidRequest(1011, "dstring5", 184));
    EXPECT_EQ(failureOf([&] { (void)constant[2147483647]; }), invalidRequest(1011, "dstring5", 184));
    EXPECT_EQ(failureOf([&] { text[-1] = 'x'; }), invalidRequest(1011, "dstring5", 197));
    EXPECT_EQ(text.data(), copy.data());
    EXPECT_EQ(refsOf(text), 2u);
    EXPECT_EQ(contentsOf(text), "abc");
}

TEST(ElementAccess, ForReadingAnEmptyStringFails) {
    DString const text;
    EXPECT_EQ(failureOf([&] { (void)text[0]; }), invalidRequest(1011, "dstring5", 184));
    EXPECT_EQ(failureOf([&] { (void)text[0u]; }), invalidRequest(1011, "dstring5", 130));
    EXPECT_EQ(failureOf([&] { (void)text[1u]; }), invalidRequest(1011, "dstring5", 130));
}

TEST(ElementAccess, FailsWithATextAndWithoutAFunctionName) {
    operations::LogOfExceptions const log;
    try {
        (void)static_cast<DString const&>(fresh("abc"))[9];
        FAIL();
    } catch (DInvalidRequest const& thrown) {
        ASSERT_NE(thrown.text(0), nullptr);
        EXPECT_STRNE(thrown.text(0), "");
        EXPECT_STREQ(thrown.locationAtIndex(0)->functionName(), "Unknown");
    }
}

} // namespace
