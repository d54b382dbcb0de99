// DException: what an exception carries and how it is copied.
#include "tests/except/except_support.h"
#include "tests/except/exception_support.h"

#include <kelcl/dstring.h>

#include <string>
#include <type_traits>

TEST(Exception, WithNullTextHasNoText) {
    DException const exception(nullptr, 7, DException::recoverable);
    EXPECT_EQ(exception.textCount(), 0u);
    EXPECT_EQ(exception.text(0), nullptr);
    EXPECT_EQ(exception.errorId(), 7u);
    EXPECT_TRUE(exception.isRecoverable());
    EXPECT_STREQ(exception.errorCodeGroup(), "Kel Class Library");
    EXPECT_EQ(exception.locationCount(), 0u);
}

TEST(Exception, DefaultsToErrorIdZeroAndUnrecoverable) {
    DException const exception("text");
    EXPECT_EQ(exception.errorId(), 0u);
    EXPECT_FALSE(exception.isRecoverable());
}

TEST(Exception, KeepsAPrivateCopyOfItsText) {
    char text[] = "first";
    DException const exception(text, 1, DException::recoverable);
    text[0] = 'X';
    EXPECT_EQ(exception.textCount(), 1u);
    EXPECT_STREQ(exception.text(0), "first");
}

TEST(Exception, TakesTextsOfOtherClasses) {
    DString const file("letter");
    DAccessError exception(file + " is lost", 2, DException::recoverable);
    EXPECT_STREQ(exception.text(0), "letter is lost");
    EXPECT_EQ(exception.errorId(), 2u);
    EXPECT_TRUE(exception.isRecoverable());
    exception.setText(std::string("at")).appendText(DString(" noon"));
    EXPECT_STREQ(exception.text(0), "at noon");
    EXPECT_EQ(exception.textCount(), 2u);
}

TEST(Exception, TakesATextOfAnotherClassUpToItsFirstNul) {
    EXPECT_STREQ(DException(std::string("abc\0def", 7)).text(0), "abc");
}

TEST(Exception, EmptyTextIsAText) {
    DException const exception("", 1, DException::recoverable);
    EXPECT_EQ(exception.textCount(), 1u);
    EXPECT_STREQ(exception.text(0), "");
}

TEST(Exception, SetTextPushesInsteadOfReplacing) {
    DException exception(nullptr);
    exception.setText("a").setText("b");
    EXPECT_EQ(Facts(exception).texts, (Texts{"b", "a"}));
    exception.appendText("c");
    EXPECT_EQ(Facts(exception).texts, (Texts{"bc", "a"}));
}

TEST(Exception, SetTextWithNullChangesNothing) {
    DException exception("a");
    EXPECT_EQ(&exception.setText(nullptr), &exception);
    EXPECT_EQ(Facts(exception).texts, Texts{"a"});
}

TEST(Exception, SetTextTakesATextOfItsOwn) {
    DException exception("a");
    exception.setText(exception.text(0));
    EXPECT_EQ(Facts(exception).texts, (Texts{"a", "a"}));
}

TEST(Exception, AppendTextWithoutTextSetsTheFirst) {
    DException exception(nullptr);
    EXPECT_EQ(&exception.appendText("x"), &exception);
    EXPECT_EQ(Facts(exception).texts, Texts{"x"});
}

TEST(Exception, AppendTextWithNullChangesNothing) {
    DException empty(nullptr);
    empty.appendText(nullptr);
    EXPECT_EQ(empty.textCount(), 0u);
    DException exception("a");
    exception.appendText(nullptr);
    EXPECT_EQ(Facts(exception).texts, Texts{"a"});
}

TEST(Exception, AppendTextTakesATextOfItsOwn) {
    DException exception("ab");
    exception.appendText(exception.text(0));
    EXPECT_EQ(Facts(exception).texts, Texts{"abab"});
    exception.appendText(exception.text(0) + 3);
    EXPECT_EQ(Facts(exception).texts, Texts{"ababb"});
}

TEST(Exception, TextBeyondTheLastIsNull) {
    DException exception("a");
    exception.setText("b");
    EXPECT_EQ(exception.text(2), nullptr);
    EXPECT_EQ(exception.text(~0ul), nullptr);
}

TEST(Exception, KeepsTheFirstFourLocationsAndTheLatest) {
    DException exception("text");
    for (unsigned long line = 1; line <= 7; ++line)
        EXPECT_EQ(&exception.addLocation({"file", "function", line}), &exception);
    EXPECT_EQ(exception.locationCount(), 5u);
    EXPECT_EQ(linesOf(exception), (Lines{1, 2, 3, 4, 7}));
    EXPECT_EQ(exception.locationAtIndex(5), nullptr);
    EXPECT_EQ(exception.locationAtIndex(~0ul), nullptr);
}

TEST(Exception, AddsALocationOfItsOwn) {
    DException exception("text");
    for (unsigned long line = 1; line <= 5; ++line)
        exception.addLocation({"file", "function", line});
    exception.addLocation(*exception.locationAtIndex(0));
    exception.addLocation(*exception.locationAtIndex(4));
    EXPECT_EQ(linesOf(exception), (Lines{1, 2, 3, 4, 1}));
}

TEST(Exception, LocationsShareTheirNames) {
    char const file[] = "unit";
    DException exception("text");
    exception.addLocation({file, nullptr, 1});
    DException const copy(exception);
    EXPECT_EQ(copy.locationAtIndex(0)->fileName(), file);
    EXPECT_STREQ(copy.locationAtIndex(0)->functionName(), "Unknown");
}

TEST(Exception, SettersReturnTheExceptionAndAreReadBack) {
    DException exception("text");
    char const group[] = "Document Store";
    DException& result =
        exception.setErrorId(0x1'0000'0001ul).setErrorCodeGroup(group).setSeverity(DException::recoverable);
    EXPECT_EQ(&result, &exception);
    EXPECT_EQ(exception.errorId(), 0x1'0000'0001ul);
    EXPECT_EQ(exception.errorCodeGroup(), group);
    EXPECT_TRUE(exception.isRecoverable());
    exception.setErrorCodeGroup(nullptr).setSeverity(DException::unrecoverable);
    EXPECT_EQ(exception.errorCodeGroup(), nullptr);
    EXPECT_FALSE(exception.isRecoverable());
}

TEST(Exception, EveryNonzeroSeverityIsRecoverable) {
    EXPECT_TRUE(DException("", 0, static_cast<DException::Severity>(2)).isRecoverable());
    EXPECT_TRUE(DException("", 0, static_cast<DException::Severity>(0x8000'0000u)).isRecoverable());
    EXPECT_FALSE(DException("", 0, static_cast<DException::Severity>(0)).isRecoverable());
}

TEST(Exception, SeveritiesAreAlsoConstantsOfTheRootClass) {
    EXPECT_EQ(static_cast<unsigned int>(DBase::unrecoverable), 0u);
    EXPECT_EQ(static_cast<unsigned int>(DBase::recoverable), 1u);
    EXPECT_TRUE(DException("", 0, DBase::recoverable).isRecoverable());
    EXPECT_TRUE((std::is_same_v<std::underlying_type_t<DException::Severity>, unsigned int>));
}

TEST(Exception, GroupsHaveTheirTexts) {
    EXPECT_STREQ(DException::baseLibrary, "Kel Class Library");
    EXPECT_STREQ(DException::CLibrary, "Standard C Library");
    EXPECT_STREQ(DException::operatingSystem, "Operating System");
    EXPECT_STREQ(DException::presentationSystem, "Presentation System");
    EXPECT_STREQ(DException::other, "Other Error Group");
}

TEST(ExceptionCopy, HasEverythingAndItsOwnTexts) {
    DInvalidRequest source("old", 12, DException::recoverable);
    source.setText("new").setErrorCodeGroup(DException::other);
    source.addLocation({"a", "f", 1}).addLocation({"b", "g", 2});
    DInvalidRequest copy(source);
    Facts const facts(copy);
    expectClass<DInvalidRequest>(facts, "DInvalidRequest");
    EXPECT_EQ(facts.texts, (Texts{"new", "old"}));
    EXPECT_EQ(facts.errorId, 12u);
    EXPECT_TRUE(facts.recoverable);
    EXPECT_EQ(copy.errorCodeGroup(), DException::other);
    EXPECT_EQ(linesOf(copy), (Lines{1, 2}));
    EXPECT_NE(copy.text(0), source.text(0));
    EXPECT_NE(copy.text(1), source.text(1));

    copy.appendText("!").setText("newest");
    source.appendText("?");
    EXPECT_EQ(Facts(copy).texts, (Texts{"newest", "new!", "old"}));
    EXPECT_EQ(Facts(source).texts, (Texts{"new?", "old"}));
}

TEST(ExceptionCopy, OfAnExceptionWithoutTextHasNone) {
    DException const source(nullptr, 3);
    DException const copy(source);
    EXPECT_EQ(copy.textCount(), 0u);
    EXPECT_EQ(copy.text(0), nullptr);
}

TEST(ExceptionCopy, OutlivesItsSource) {
    auto* const source = new DException("old");
    source->setText("new");
    DException const copy(*source);
    delete source;
    EXPECT_EQ(Facts(copy).texts, (Texts{"new", "old"}));
}

TEST(ExceptionCopy, CannotFail) {
    EXPECT_TRUE(std::is_nothrow_copy_constructible_v<DException>);
    EXPECT_TRUE(std::is_nothrow_copy_constructible_v<DOutOfMemory>);
    EXPECT_TRUE(std::is_nothrow_copy_assignable_v<DOutOfMemory>);
}

TEST(ExceptionAssignment, CopiesAsTheCopyConstructorDoes) {
    DAccessError source("s1", 5, DException::recoverable);
    source.setText("s2").setErrorCodeGroup(DException::CLibrary).addLocation({"s", "f", 9});
    DAccessError target("t1", 6);
    target.setText("t2").setText("t3").addLocation({"t", "g", 1}).addLocation({"t", "g", 2});
    target = source;
    Facts const facts(target);
    EXPECT_EQ(facts.texts, (Texts{"s2", "s1"}));
    EXPECT_EQ(facts.errorId, 5u);
    EXPECT_TRUE(facts.recoverable);
    EXPECT_EQ(facts.group, "Standard C Library");
    EXPECT_EQ(linesOf(target), Lines{9});
    source.appendText("x");
    EXPECT_STREQ(target.text(0), "s2");
}

TEST(ExceptionAssignment, ToItselfChangesNothing) {
    DException exception("a", 4);
    exception.setText("b").addLocation({"file", nullptr, 1});
    char const* const text = exception.text(0);
    DException const& itself = exception;
    exception = itself;
    EXPECT_EQ(exception.text(0), text);
    EXPECT_EQ(Facts(exception).texts, (Texts{"b", "a"}));
    EXPECT_EQ(linesOf(exception), Lines{1});
}

TEST(ExceptionChain, OfAMillionTextsIsCopiedAndFreedWithoutRecursion) {
    constexpr unsigned long count = 1'000'000;
    DException exception(nullptr);
    for (unsigned long i = 0; i < count; ++i)
        exception.setText("t");
    exception.appendText("op");
    ASSERT_EQ(exception.textCount(), count);
    DException const copy(exception);
    EXPECT_EQ(copy.textCount(), count);
    EXPECT_STREQ(copy.text(0), "top");
    EXPECT_STREQ(copy.text(count - 1), "t");
    EXPECT_EQ(copy.text(count), nullptr);
    exception = DException("short");
    EXPECT_EQ(Facts(exception).texts, Texts{"short"});
}
