// DExceptionLocation, DException and its subclasses: what an exception carries and how it is copied.
#include "tests/except/except_support.h"

#include <cstring>
#include <type_traits>
#include <utility>

namespace {

std::vector<unsigned long> linesOf(DException const& exception) {
    std::vector<unsigned long> lines;
    for (unsigned long i = 0; i < exception.locationCount(); ++i)
        lines.push_back(exception.locationAtIndex(i)->lineNumber());
    return lines;
}

using Lines = std::vector<unsigned long>;
using Texts = std::vector<std::string>;

} // namespace

TEST(ExceptionLocation, WithoutArgumentsHasNullNullAndZero) {
    DExceptionLocation const location;
    EXPECT_EQ(location.fileName(), nullptr);
    EXPECT_STREQ(location.functionName(), "Unknown");
    EXPECT_EQ(location.lineNumber(), 0u);
}

TEST(ExceptionLocation, KeepsPointersAndTheFullLineNumber) {
    char const file[] = "parser";
    char const function[] = "next";
    DExceptionLocation const location(file, function, 0x1'0000'0002ul);
    EXPECT_EQ(location.fileName(), file);
    EXPECT_EQ(location.functionName(), function);
    EXPECT_EQ(location.lineNumber(), 0x1'0000'0002ul);
}

TEST(ExceptionLocation, NullFileNameStaysNullAndNullFunctionNameIsUnknown) {
    DExceptionLocation const location(nullptr, nullptr, 3);
    EXPECT_EQ(location.fileName(), nullptr);
    EXPECT_STREQ(location.functionName(), "Unknown");
}

TEST(ExceptionLocation, IsCopiedBitwise) { EXPECT_TRUE(std::is_trivially_copyable_v<DExceptionLocation>); }

TEST(ExceptionLocation, MacroGivesThePlaceWhereItStands) {
    unsigned long const line = __LINE__ + 1;
    DExceptionLocation const location = DEXCEPTION_LOCATION();
    EXPECT_STREQ(location.fileName(), __FILE__);
    EXPECT_STREQ(location.functionName(), "TestBody");
    EXPECT_EQ(location.lineNumber(), line);
}

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

// Classes
// ------------------------------------------------------------------------------------------------------------

template <class Exception, class Base>
void expectSubclass(char const* name) {
    EXPECT_EQ(sizeof(Exception), sizeof(DException)) << name << " adds a field";
    EXPECT_TRUE((std::is_base_of_v<Base, Exception>));
    Exception const defaults("text");
    EXPECT_EQ(defaults.errorId(), 0u);
    EXPECT_FALSE(defaults.isRecoverable());
    Exception exception("text", 9, DException::recoverable);
    exception.addLocation({"file", "function", 4});
    Exception const copy(exception);
    Exception assigned(nullptr);
    assigned = exception;
    for (DException const* each :
         {static_cast<DException const*>(&exception), static_cast<DException const*>(&copy),
          static_cast<DException const*>(&assigned)}) {
        Facts const facts(*each);
        expectClass<Exception>(facts, name);
        EXPECT_EQ(facts.texts, Texts{"text"});
        EXPECT_EQ(facts.errorId, 9u);
        EXPECT_TRUE(facts.recoverable);
        EXPECT_EQ(facts.group, "Kel Class Library");
        EXPECT_EQ(linesOf(*each), Lines{4});
    }
    EXPECT_THROW(throw Exception("text"), Base);
}

TEST(ExceptionClasses, HaveTheirNamesBasesAndConstructors) {
    EXPECT_STREQ(DException("").name(), "DException");
    expectSubclass<DAccessError, DException>("DAccessError");
    expectSubclass<DAssertionFailure, DException>("DAssertionFailure");
    expectSubclass<DDeviceError, DException>("DDeviceError");
    expectSubclass<DInvalidParameter, DException>("DInvalidParameter");
    expectSubclass<DInvalidRequest, DException>("DInvalidRequest");
    expectSubclass<DResourceExhausted, DException>("DResourceExhausted");
    expectSubclass<DOutOfMemory, DResourceExhausted>("DOutOfMemory");
    expectSubclass<DOutOfSystemResource, DResourceExhausted>("DOutOfSystemResource");
    expectSubclass<DOutOfWindowResource, DResourceExhausted>("DOutOfWindowResource");
}

TEST(ExceptionClasses, OutOfMemoryIsCaughtAsResourceExhausted) {
    try {
        throw DOutOfMemory("no memory", 4);
    } catch (DResourceExhausted& exception) {
        EXPECT_STREQ(exception.name(), "DOutOfMemory");
        EXPECT_STREQ(exception.text(0), "no memory");
    }
}

TEST(ExceptionClasses, OnlyTheOutOfResourceKindsAreResourceExhausted) {
    EXPECT_FALSE((std::is_base_of_v<DResourceExhausted, DInvalidRequest>));
    EXPECT_FALSE((std::is_base_of_v<DResourceExhausted, DDeviceError>));
}

TEST(ExceptionClasses, HandlersAddToTheExceptionAndRethrowItWithoutAnotherReport) {
    RecordingTrace trace;
    try {
        try {
            throw DDeviceError("disk", 8, DException::recoverable);
        } catch (DException& exception) {
            exception.setText("while saving").addLocation({"save", "store", 17});
            throw;
        }
    } catch (DDeviceError& exception) {
        EXPECT_EQ(Facts(exception).texts, (Texts{"while saving", "disk"}));
        EXPECT_EQ(linesOf(exception), Lines{17});
    }
    EXPECT_EQ(trace.reports, 0);
}

namespace {

/// A host's exception that overrides every virtual operation but the destructor.
class HostException : public DException {
public:
    using DException::DException;
    bool isRecoverable() const override { return true; }
    DException& addLocation(DExceptionLocation const& location) override {
        return DException::addLocation({"host", location.functionName(), location.lineNumber()});
    }
    char const* name() const override { return "HostException"; }
    DException& logExceptionData() override { return setErrorId(99); }
    void terminate() override { setErrorId(100); }
};

/// The slots of a class's virtual table, the first operation being number 0.
void const* slot(void const* object, int number) {
    return (*static_cast<void const* const* const*>(object))[number];
}

} // namespace

TEST(ExceptionVirtuals, AreCalledThroughTheBase) {
    HostException exception("text");
    DException& base = exception;
    EXPECT_TRUE(base.isRecoverable());
    base.addLocation({"file", "function", 2});
    EXPECT_STREQ(base.locationAtIndex(0)->fileName(), "host");
    EXPECT_STREQ(base.name(), "HostException");
    base.logExceptionData();
    EXPECT_EQ(base.errorId(), 99u);
    base.terminate();
    EXPECT_EQ(base.errorId(), 100u);
}

// The destructor takes slots 0 and 1. Calls through the raw table show which operation stands where.
TEST(ExceptionVirtuals, StandInTheOrderThatHostsRelyOn) {
    DInvalidRequest const exception("text", 1, DException::recoverable);
    using IsRecoverable = bool (*)(DException const*);
    using Name = char const* (*)(DException const*);
    EXPECT_TRUE(reinterpret_cast<IsRecoverable>(const_cast<void*>(slot(&exception, 2)))(&exception));
    EXPECT_STREQ(reinterpret_cast<Name>(const_cast<void*>(slot(&exception, 4)))(&exception),
                 "DInvalidRequest");

    HostException host("text");
    using AddLocation = DException& (*)(DException*, DExceptionLocation const&);
    using LogExceptionData = DException& (*)(DException*);
    using Terminate = void (*)(DException*);
    DExceptionLocation const location("file", "function", 5);
    reinterpret_cast<AddLocation>(const_cast<void*>(slot(&host, 3)))(&host, location);
    EXPECT_EQ(linesOf(host), Lines{5});
    reinterpret_cast<LogExceptionData>(const_cast<void*>(slot(&host, 5)))(&host);
    EXPECT_EQ(host.errorId(), 99u);
    reinterpret_cast<Terminate>(const_cast<void*>(slot(&host, 6)))(&host);
    EXPECT_EQ(host.errorId(), 100u);
}

TEST(ExceptionTerminate, EndsTheProgramThroughTheTerminateHandler) {
    std::string const output = standardErrorOf([] {
        std::set_terminate([] {
            std::fputs("terminated", stderr);
            _exit(0);
        });
        DException("text").terminate();
    });
    EXPECT_EQ(output, "terminated");
}

TEST(ExceptionAssertParameter, LogsAndThrowsAnAssertionFailure) {
    Facts const facts =
        thrownBy([] { DException::assertParameter("index > 0", DExceptionLocation("unit", "check", 31)); });
    expectClass<DAssertionFailure>(facts, "DAssertionFailure");
    EXPECT_EQ(facts.texts, Texts{"index > 0"});
    EXPECT_EQ(facts.errorId, 0u);
    EXPECT_FALSE(facts.recoverable);
    EXPECT_EQ(facts.group, "Other Error Group");
    ASSERT_EQ(facts.locations.size(), 1u);
    EXPECT_EQ(facts.locations[0], std::make_tuple("unit", "check", 31ul));
}

TEST(ExceptionAssertParameter, WithNullTextThrowsWithoutText) {
    Facts const facts = thrownBy([] { DException::assertParameter(nullptr, {}); });
    EXPECT_TRUE(facts.texts.empty());
    EXPECT_EQ(facts.locations.size(), 1u);
}
