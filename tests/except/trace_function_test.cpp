// Which trace function gets the report of an exception.
#include "tests/except/except_support.h"
#include "tests/except/logging_support.h"

TEST(TraceFunction, DefaultIsTakenOnFirstUseAndKept) {
    DException::TraceFn* const user = DExceptStaticPtr::userFunction;
    DExceptStaticPtr::userFunction = nullptr;
    DExceptStaticPtr::defaultFunction = nullptr;
    DException::TraceFn* const function = DExceptStaticPtr::traceFunction();
    EXPECT_NE(function, nullptr);
    EXPECT_NE(dynamic_cast<DExceptTraceFn*>(function), nullptr);
    EXPECT_EQ(DExceptStaticPtr::defaultFunction, function);
    EXPECT_EQ(DExceptStaticPtr::userFunction, nullptr);
    EXPECT_EQ(DExceptStaticPtr::traceFunction(), function);
    DExceptStaticPtr::userFunction = user;
}

TEST(TraceFunction, SettingAUserFunctionFillsInTheDefaultOneToo) {
    RecordingTrace restoring;
    DExceptStaticPtr::userFunction = nullptr;
    DExceptStaticPtr::defaultFunction = nullptr;
    DExceptTraceFn user;
    DException::setTraceFunction(user);
    EXPECT_EQ(DExceptStaticPtr::userFunction, &user);
    EXPECT_NE(DExceptStaticPtr::defaultFunction, nullptr);
    EXPECT_NE(DExceptStaticPtr::defaultFunction, &user);
    EXPECT_EQ(DExceptStaticPtr::traceFunction(), &user);
}

TEST(TraceFunction, ALaterCallReplacesTheUserFunction) {
    RecordingTrace first;
    RecordingTrace second;
    DException("text").logExceptionData();
    EXPECT_EQ(first.reports, 0);
    EXPECT_EQ(second.reports, 1);
    EXPECT_EQ(second.lines.size(), 5u);
    EXPECT_EQ(second.completed, 1);
}

TEST(TraceFunction, LinesGoToTheCurrentOneThoughAnotherFormatsTheReport) {
    class Formatting final : public DException::TraceFn {
    public:
        void write(char const*) override { ++written; }
        void exceptionLogged() override { ++completed; }
        int written = 0;
        int completed = 0;
    } formatting;
    RecordingTrace current;
    DException exception("text");
    EXPECT_EQ(&formatting.logData(exception), &formatting);
    EXPECT_EQ(formatting.written, 0);
    EXPECT_EQ(formatting.completed, 1);
    EXPECT_EQ(current.lines.size(), 5u);
    EXPECT_EQ(current.completed, 0);
}

TEST(TraceFunction, InstalledAmidAReportGetsTheRestOfIt) {
    RecordingTrace restoring;
    class Second final : public DException::TraceFn {
    public:
        void write(char const* line) override { lines.emplace_back(line); }
        Lines lines;
    } second;
    class First final : public DException::TraceFn {
    public:
        explicit First(DException::TraceFn& next) : next_(next) {}
        void write(char const* line) override {
            lines.emplace_back(line);
            DException::setTraceFunction(next_);
        }
        Lines lines;

    private:
        DException::TraceFn& next_;
    } first(second);
    DException::setTraceFunction(first);
    DException("text").logExceptionData();
    EXPECT_EQ(first.lines.size(), 1u);
    EXPECT_EQ(second.lines.size(), 4u);
}

TEST(TraceFunction, MayItselfReportAnotherException) {
    class Reporting : public RecordingTrace {
    public:
        void write(char const* line) override {
            RecordingTrace::write(line);
            if (reports == 1) DException("inner").logExceptionData();
        }
    } trace;
    DException("outer").logExceptionData();
    EXPECT_EQ(trace.reports, 2);
    EXPECT_EQ(trace.completed, 2);
    EXPECT_EQ(trace.lines.size(), 10u);
    EXPECT_EQ(trace.lines.back(), "      outer");
}

TEST(TraceFunction, BaseWritesTheLineAndALineFeedToStandardError) {
    EXPECT_EQ(standardErrorOf([] { DExceptTraceFn().write("a line"); }), "a line\n");
    EXPECT_EQ(standardErrorOf([] { DExceptTraceFn().write("100%s"); }), "100%s\n");
    EXPECT_EQ(standardErrorOf([] { DExceptTraceFn().write(nullptr); }), "\n");
    EXPECT_EQ(standardErrorOf([] { DExceptTraceFn().exceptionLogged(); }), "");
}

TEST(TraceFunction, HasExactlyThreeVirtualOperations) {
    EXPECT_FALSE(std::has_virtual_destructor_v<DException::TraceFn>);
    EXPECT_EQ(sizeof(DException::TraceFn), sizeof(void*));
    DExceptTraceFn function;
    // In this order: write, logData, exceptionLogged.
    auto const* const table = *reinterpret_cast<void* const* const*>(&function);
    using Write = void (*)(DException::TraceFn*, char const*);
    EXPECT_EQ(standardErrorOf([&] { reinterpret_cast<Write>(table[0])(&function, "slot 0"); }), "slot 0\n");
    RecordingTrace trace;
    DException exception("text");
    using LogData = DException::TraceFn& (*)(DException::TraceFn*, DException&);
    EXPECT_EQ(&reinterpret_cast<LogData>(table[1])(&function, exception), &function);
    EXPECT_EQ(trace.lines.size(), 5u);
    using ExceptionLogged = void (*)(DException::TraceFn*);
    EXPECT_EQ(standardErrorOf([&] { reinterpret_cast<ExceptionLogged>(table[2])(&function); }), "");
}
