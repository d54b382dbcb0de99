// The report of an exception, line by line.
#include "tests/except/except_support.h"
#include "tests/except/logging_support.h"

#include <limits>
#include <new>
#include <stdexcept>
#include <thread>

TEST(Report, OfAnExceptionWithNothingHasFourLines) {
    DException exception(nullptr, 0, DException::unrecoverable);
    exception.setErrorCodeGroup(nullptr);
    EXPECT_EQ(reportOf(exception),
              (Lines{"\nDException exception thrown.\n   Location information is unavailable.",
                     "   Error Id is unavailable.", "    Error Code group is unavailable.",
                     "   Exception text is unavailable."}));
}

TEST(Report, MissingGroupIsIndentedByFourBlanksAsHostsExpect) {
    DException exception("text");
    exception.setErrorCodeGroup(nullptr);
    EXPECT_EQ(reportOf(exception).at(2), "    Error Code group is unavailable.");
}

TEST(Report, OfAFullExceptionNamesEverything) {
    DInvalidRequest exception("first", 1011, DException::recoverable);
    exception.addLocation({"dstring5", "operator[]", 42});
    EXPECT_EQ(
        reportOf(exception),
        (Lines{"DInvalidRequest exception thrown.\n   function: operator[]\n   file: dstring5\n   line: 42",
               "   Error Id is 1011", "   Error Code group is Kel Class Library",
               "   Exception text is:", "      first"}));
}

TEST(Report, ListsTextsFromTheOldestToTheNewest) {
    DException exception("first");
    exception.setText("second");
    Lines const lines = reportOf(exception);
    ASSERT_EQ(lines.size(), 6u);
    EXPECT_EQ(lines[3], "   Exception text is:");
    EXPECT_EQ(lines[4], "      first");
    EXPECT_EQ(lines[5], "      second");
}

TEST(Report, NamesTheMostRecentLocation) {
    DException exception("text");
    for (unsigned long line = 1; line <= 3; ++line)
        exception.addLocation({"file", "function", line});
    EXPECT_EQ(reportOf(exception).at(0),
              "DException exception thrown.\n   function: function\n   file: file\n   line: 3");
    for (unsigned long line = 4; line <= 7; ++line)
        exception.addLocation({"file", "function", line});
    EXPECT_EQ(reportOf(exception).at(0),
              "DException exception thrown.\n   function: function\n   file: file\n   line: 7");
}

TEST(Report, ShowsNullNamesAsUnknown) {
    DException exception("text");
    exception.addLocation({nullptr, nullptr, 0});
    EXPECT_EQ(reportOf(exception).at(0),
              "DException exception thrown.\n   function: Unknown\n   file: Unknown\n   line: 0");
}

TEST(Report, ShowsTheNullNameOfAHostsExceptionAsUnknown) {
    class Nameless : public DException {
    public:
        using DException::DException;
        char const* name() const override { return nullptr; }
    } exception("text");
    EXPECT_EQ(reportOf(exception).at(0),
              "\nUnknown exception thrown.\n   Location information is unavailable.");
}

TEST(Report, LineNumberIsShownAsAnIntThoughItIsLonger) {
    DException exception("text");
    std::string const head = "DException exception thrown.\n   function: f\n   file: u\n   line: ";
    exception.addLocation({"u", "f", 0x1'0000'0005ul});
    EXPECT_EQ(reportOf(exception).at(0), head + "5");
    exception.addLocation({"u", "f", 0xFFFF'FFFFul});
    EXPECT_EQ(reportOf(exception).at(0), head + "-1");
    exception.addLocation({"u", "f", 0x8000'0000ul});
    EXPECT_EQ(reportOf(exception).at(0), head + "-2147483648");
}

TEST(Report, ErrorIdIsShownWhole) {
    DException exception("text", std::numeric_limits<unsigned long>::max());
    EXPECT_EQ(reportOf(exception).at(1), "   Error Id is 18446744073709551615");
}

TEST(Report, PercentSignsAreShownAsTheyAre) {
    DException exception("100%s %n");
    exception.setErrorCodeGroup("%s%s").addLocation({"%d", "%s", 1});
    Lines const lines = reportOf(exception);
    EXPECT_EQ(lines.at(0), "DException exception thrown.\n   function: %s\n   file: %d\n   line: 1");
    EXPECT_EQ(lines.at(2), "   Error Code group is %s%s");
    EXPECT_EQ(lines.at(4), "      100%s %n");
}

TEST(Report, CutsNoLineOfAnyLength) {
    for (std::size_t length : {193u, 194u, 195u, 200u, 5000u, 100'000u}) {
        std::string const longText(length, 'x');
        DException exception(longText.c_str(), 5);
        exception.setText("short").setErrorCodeGroup(longText.c_str());
        exception.addLocation({longText.c_str(), longText.c_str(), 0xFFFF'FFFFul});
        Lines const lines = reportOf(exception);
        ASSERT_EQ(lines.size(), 6u);
        EXPECT_EQ(lines[0], "DException exception thrown.\n   function: " + longText +
                                "\n   file: " + longText + "\n   line: -1");
        EXPECT_EQ(lines[2], "   Error Code group is " + longText);
        EXPECT_EQ(lines[4], "      " + longText);
        EXPECT_EQ(lines[5], "      short");
    }
}

TEST(Report, CutsNoLongNameWithoutLocation) {
    static std::string const longName(1000, 'N');
    class LongName : public DException {
    public:
        using DException::DException;
        char const* name() const override { return longName.c_str(); }
    } exception(nullptr);
    EXPECT_EQ(reportOf(exception).at(0),
              "\n" + longName + " exception thrown.\n   Location information is unavailable.");
}

// Around the sizes at which the walk through the texts is divided.
TEST(Report, ListsChainsOfAnyLengthInOrder) {
    for (unsigned long count : {1ul, 2ul, 255ul, 256ul, 257ul, 511ul, 512ul, 513ul, 65536ul, 70001ul}) {
        DException exception(nullptr);
        Lines expected;
        for (unsigned long i = 0; i < count; ++i) {
            exception.setText(std::to_string(i).c_str());
            expected.push_back("      " + std::to_string(i));
        }
        Lines const lines = reportOf(exception);
        ASSERT_EQ(lines.size(), count + 4);
        EXPECT_EQ(Lines(lines.begin() + 4, lines.end()), expected) << count;
    }
}

TEST(Report, OfAMillionTextsTakesNoQuadraticTimeAndLittleStack) {
    class Counting final : public DException::TraceFn {
    public:
        void write(char const*) override { ++lines; }
        unsigned long lines = 0;
    };
    DException exception(nullptr);
    for (int i = 0; i < 1'000'000; ++i)
        exception.setText("t");
    RecordingTrace restoring;
    Counting counting;
    DException::setTraceFunction(counting);
    exception.logExceptionData();
    EXPECT_EQ(counting.lines, 1'000'004u);
}

TEST(Report, StaysWholeWhenTheTraceFunctionChangesTheException) {
    class Meddling : public RecordingTrace {
    public:
        void write(char const* line) override {
            RecordingTrace::write(line);
            exception->appendText("!").setText("pushed");
        }
        DException* exception = nullptr;
    } trace;
    DException exception("old");
    exception.setText("new");
    trace.exception = &exception;
    exception.logExceptionData();
    ASSERT_EQ(trace.lines.size(), 6u);
    EXPECT_EQ(trace.lines[4], "      old");
    EXPECT_EQ(trace.lines[5], "      new");
    EXPECT_EQ(exception.textCount(), 8u);
}

TEST(Report, GoesToStandardErrorByDefaultLineByLine) {
    std::string const output = standardErrorOf([] {
        DExceptStaticPtr::userFunction = nullptr;
        DAccessError exception("first", 5, DException::recoverable);
        exception.setText("second").addLocation({"unit", "open", 12});
        exception.logExceptionData();
    });
    EXPECT_EQ(output, "DAccessError exception thrown.\n   function: open\n   file: unit\n   line: 12\n"
                      "   Error Id is 5\n"
                      "   Error Code group is Kel Class Library\n"
                      "   Exception text is:\n"
                      "      first\n"
                      "      second\n");
}

TEST(Report, OfAnEmptyExceptionOnStandardErrorBeginsWithAnEmptyLine) {
    std::string const output = standardErrorOf([] {
        DExceptStaticPtr::userFunction = nullptr;
        DException exception(nullptr);
        exception.setErrorCodeGroup(nullptr);
        exception.logExceptionData();
    });
    EXPECT_EQ(output, "\nDException exception thrown.\n   Location information is unavailable.\n"
                      "   Error Id is unavailable.\n"
                      "    Error Code group is unavailable.\n"
                      "   Exception text is unavailable.\n");
}

TEST(Report, TakesTheNewHandlerOutAndPutsItBack) {
    class Looking : public RecordingTrace {
    public:
        void write(char const*) override { sawHandler |= std::get_new_handler() != nullptr; }
        void exceptionLogged() override { sawHandler |= std::get_new_handler() != nullptr; }
        bool sawHandler = false;
    } trace;
    NewHandler const handler(ownHandler);
    DException("text").logExceptionData();
    EXPECT_FALSE(trace.sawHandler);
    EXPECT_EQ(std::get_new_handler(), &ownHandler);
}

TEST(Report, WhenTheHostsWriteThrowsItPassesThroughAndTheNewHandlerIsBack) {
    class Throwing : public RecordingTrace {
    public:
        void write(char const*) override { throw std::runtime_error("disk full"); }
    } trace;
    NewHandler const handler(ownHandler);
    DException exception("text");
    EXPECT_THROW(exception.logExceptionData(), std::runtime_error);
    EXPECT_EQ(std::get_new_handler(), &ownHandler);
    EXPECT_EQ(trace.completed, 0);
}

TEST(Report, ThreadsThatThrowAtTheSameTimeDoNotLoseTheNewHandler) {
    class Silent final : public DException::TraceFn {
    public:
        void write(char const*) override {}
    } silent;
    RecordingTrace restoring;
    DException::setTraceFunction(silent);
    NewHandler const handler(ownHandler);
    auto const throwing = [] {
        for (int i = 0; i < 5000; ++i)
            EXPECT_THROW(DException::assertParameter("text", {}), DAssertionFailure);
    };
    std::thread other(throwing);
    throwing();
    other.join();
    EXPECT_EQ(std::get_new_handler(), &ownHandler);
}
