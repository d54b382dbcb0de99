// The classes of exceptions: names, bases, constructors, the order of the virtual operations, and the
// functions that throw or end the program.
#include "tests/except/except_support.h"
#include "tests/except/exception_support.h"

#include <type_traits>

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
