// What happens when the locale's collation fails. This program brings a strcoll of its own, which the library
// calls in place of the C library's.
#include "tests/buffers/operation_support.h"
#include "tests/support/failing_allocations.h"

#include <cerrno>

namespace {

int errorToSet = 0;
unsigned int calls = 0;

} // namespace

extern "C" int strcoll(char const* left, char const* right) {
    ++calls;
    if (errorToSet != 0) errno = errorToSet;
    return std::strcmp(left, right);
}

namespace {

/// Lets the next collations set errno, while it lives.
class FailingCollation {
public:
    explicit FailingCollation(int error) {
        errorToSet = error;
        calls = 0;
    }
    FailingCollation(FailingCollation const&) = delete;
    FailingCollation& operator=(FailingCollation const&) = delete;
    ~FailingCollation() { errorToSet = 0; }
};

template <class Action>
operations::Failure collationFailure(int error, Action action) {
    FailingCollation const failing(error);
    return operations::failureOf(action);
}

operations::Failure nothing() { return operations::Failure(); }

TEST(Collation, IsAskedOnlyWithTheSwitchOn) {
    FailingCollation const none(0);
    EXPECT_EQ(DString("abc") < "abd", true);
    EXPECT_EQ(calls, operations::switchIsOn() ? 1u : 0u);
}

TEST(Collation, ThatSetsErrnoRaisesAnInvalidRequestWithThatNumberAsItsId) {
    for (int const error : {EINVAL, EILSEQ, 1}) {
        DString const text("abc");
        operations::Failure const failure = collationFailure(error, [&] { (void)(text < "abd"); });
        if (operations::switchIsOn()) {
            EXPECT_EQ(failure,
                      operations::invalidRequest(static_cast<unsigned long>(error), "dbuffer2", 247));
            EXPECT_EQ(failure.text, "strcoll errno = " + std::to_string(error) + "\n");
        } else {
            EXPECT_EQ(failure, nothing());
        }
        EXPECT_EQ(operations::contentsOf(text), "abc");
        EXPECT_EQ(operations::refsOf(text), 1u);
    }
}

TEST(Collation, ThatSetsErrnoRaisesAlsoWhenItFindsTheTextsEqual) {
    DString const text("abc");
    operations::Failure const failure = collationFailure(EINVAL, [&] { (void)(text == std::string("abc")); });
    EXPECT_EQ(failure,
              operations::switchIsOn() ? operations::invalidRequest(EINVAL, "dbuffer2", 247) : nothing());
}

TEST(Collation, ThatFailsFreesItsCopiesOfTheTexts) {
    DString const text("abc");
    std::string const other = "abdef";
    {
        operations::Failure const warmUp = collationFailure(EINVAL, [&] { (void)(text < other); });
        EXPECT_EQ(warmUp.timesLogged, operations::switchIsOn() ? 1u : 0u);
    }
    long const before = allocations.live;
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(collationFailure(EINVAL, [&] { (void)(text < other); }).timesLogged,
                  operations::switchIsOn() ? 1u : 0u);
    EXPECT_EQ(allocations.live, before);
}

TEST(Collation, IsNotBlamedForAnErrnoThatWasThereBefore) {
    DString const text("abc");
    errno = EINVAL;
    EXPECT_EQ(collationFailure(0, [&] { EXPECT_TRUE(text < "abd"); }), nothing());
    errno = EINVAL;
    EXPECT_EQ(collationFailure(0, [&] { EXPECT_TRUE(text == std::string("abc")); }), nothing());
}

TEST(Collation, ThatIsNotAskedLeavesAStaleErrnoWithoutEffect) {
    // The first bytes decide by their NULs alone.
    DString const text(std::string_view("\0\0ab", 4));
    errno = EINVAL;
    EXPECT_EQ(collationFailure(EINVAL, [&] { EXPECT_TRUE(text < std::string_view("\0abc", 4)); }), nothing());
    EXPECT_EQ(calls, 0u);
    errno = EINVAL;
    EXPECT_EQ(collationFailure(EINVAL, [&] { EXPECT_TRUE(DString() < "abc"); }), nothing());
    EXPECT_EQ(calls, 0u);
}

TEST(Collation, IsAskedOnceForEachSegment) {
    FailingCollation const none(0);
    DString const text(std::string_view("a\0b\0\0c", 6));
    EXPECT_TRUE(text == std::string_view(std::string("a\0b\0\0c", 6)));
    EXPECT_EQ(calls, operations::switchIsOn() ? 3u : 0u);
}

TEST(Collation, IsNotAskedForATextAndItself) {
    FailingCollation const failing(EINVAL);
    DString const text("abc");
    EXPECT_TRUE(text == text);
    EXPECT_EQ(calls, 0u);
}

TEST(Collation, FailsForEveryOperationThatCompares) {
    DString const text("abc");
    operations::Failure const expected =
        operations::switchIsOn() ? operations::invalidRequest(EDOM, "dbuffer2", 247) : nothing();
    EXPECT_EQ(collationFailure(EDOM, [&] { (void)text.isAbbrevFor("abcdef"); }), expected);
    EXPECT_EQ(collationFailure(EDOM, [&] { (void)text.isLike("a*"); }), expected);
    EXPECT_EQ(collationFailure(EDOM, [&] { (void)("abd" > text); }), expected);
}

} // namespace
