// What happens when the locale's wide collation fails. This program brings a wcscoll of its own, which the
// library calls in place of the C library's.
#include "tests/characters/multi_byte_support.h"
#include "tests/support/failing_allocations.h"

#include <cerrno>

namespace {

using namespace std::string_literals;

int errorToSet = 0;
unsigned int calls = 0;
bool claimsEqual = false;

} // namespace

/// Orders backwards, so that a comparison by wcscmp can be told from this one.
extern "C" int wcscoll(wchar_t const* left, wchar_t const* right) {
    ++calls;
    if (errorToSet != 0) errno = errorToSet;
    return claimsEqual ? 0 : std::wcscmp(right, left);
}

namespace {

/// Lets collations set errno, while it lives.
class CollationSets {
public:
    explicit CollationSets(int error, bool equal = false) {
        errorToSet = error;
        claimsEqual = equal;
        calls = 0;
    }
    CollationSets(CollationSets const&) = delete;
    CollationSets& operator=(CollationSets const&) = delete;
    ~CollationSets() {
        errorToSet = 0;
        claimsEqual = false;
    }
};

int compared(std::string const& a, std::string const& b) {
    return mb::buffer(a)->compare(b.data(), mb::lengthOf(b));
}

TEST(WideCollation, DecidesWithTheSwitchOnOnly) {
    CollationSets const noError(0);
    EXPECT_EQ(compared("abc", "abd"), mb::switchIsOn() ? 1 : 2);
    EXPECT_EQ(calls, mb::switchIsOn() ? 1u : 0u);
}

TEST(WideCollation, IsAskedOnceForEachSegment) {
    mb::SwitchAt const on(1);
    CollationSets const noError(0);
    EXPECT_EQ(compared("a\0b\0\0c"s, "a\0b\0\0c"s), 0);
    EXPECT_EQ(calls, 3u);
}

TEST(WideCollation, ThatReportsAnInvalidArgumentIsReplacedByTheOrderOfTheWideValues) {
    mb::SwitchAt const on(1);
    CollationSets const invalid(EINVAL);
    EXPECT_EQ(compared("abc", "abd"), 2);
    EXPECT_EQ(compared("abd", "abc"), 1);
    EXPECT_EQ(compared("abd", "abd"), 0);
    EXPECT_EQ(compared("a\0x"s, "a\0y"s), 2);
    EXPECT_EQ(errno, 0) << "cleared";
}

TEST(WideCollation, ThatReportsAnotherErrorRaisesAnInvalidRequestWithThatNumberAsItsId) {
    mb::SwitchAt const on(1);
    for (int const error : {EILSEQ, ENOMEM, 1})
        for (bool const equal : {false, true}) {
            operations::Owned const text = mb::buffer("abc");
            CollationSets const failing(error, equal);
            operations::Failure const failure = operations::failureOf([&] { text->compare("abd", 3); });
            EXPECT_EQ(failure, operations::invalidRequest(static_cast<unsigned long>(error), "ddbcsb1", 812));
            EXPECT_EQ(failure.text, "wcscoll errno = " + std::to_string(error) + "\n");
            EXPECT_EQ(text.text(), "abc");
            EXPECT_EQ(text->refs, 1u);
        }
}

TEST(WideCollation, ThatFailsLeaksNoArray) {
    mb::SwitchAt const on(1);
    operations::Owned const text = mb::buffer("abc");
    auto const fail = [&] {
        CollationSets const failing(EILSEQ);
        return operations::failureOf([&] { text->compare("abd", 3); }).timesLogged;
    };
    EXPECT_EQ(fail(), 1u);
    long const before = allocations.live;
    EXPECT_EQ(fail(), 1u);
    EXPECT_EQ(fail(), 1u);
    EXPECT_EQ(allocations.live, before);
}

TEST(WideCollation, IsNotBlamedForAnErrnoThatWasThereBefore) {
    mb::SwitchAt const on(1);
    CollationSets const noError(0);
    operations::Owned const text = mb::buffer("abc");
    errno = EILSEQ;
    EXPECT_EQ(operations::failureOf([&] { EXPECT_EQ(text->compare("abd", 3), 1); }), operations::Failure());
    errno = EILSEQ;
    EXPECT_EQ(operations::failureOf([&] { EXPECT_EQ(text->compare("\0", 1), 2); }), operations::Failure())
        << "the NULs decide alone";
}

TEST(WideCollation, IsNotBlamedForBytesThatDoNotConvert) {
    if (mb::samples().invalid.empty()) return;
    mb::SwitchAt const on(1);
    CollationSets const noError(0);
    std::string const bad = "a" + mb::samples().invalid;
    EXPECT_EQ(operations::failureOf([&] { EXPECT_EQ(compared(bad + "x", bad + "y"), 0); }),
              operations::Failure());
}

TEST(WideCollation, IsNotAskedForATextAndItself) {
    mb::SwitchAt const on(1);
    CollationSets const failing(EILSEQ);
    operations::Owned const text = mb::buffer("abc");
    EXPECT_EQ(text->compare(text->contents(), 3), 0);
    EXPECT_EQ(calls, 0u);
}

} // namespace
