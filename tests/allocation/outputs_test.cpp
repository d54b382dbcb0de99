// What writes texts for others without memory: dates, times, trace lines, streams. Exceptions and messages,
// which never fail if memory runs out, are in except/memory_test.cpp.
#include "tests/allocation/sweep.h"
#include "tests/support/failing_allocations.h"

#include <kelcl/ddate.h>
#include <kelcl/dexception.h>
#include <kelcl/dtime.h>
#include <kelcl/dtrace.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <istream>
#include <ostream>
#include <streambuf>

namespace {

using sweep::expectNoHarm;
using sweep::longText;

volatile unsigned int sink;
void use(unsigned int value) { sink = value; }

/// Swallows what is written and gives an endless row of one character, without memory of its own.
class Endless : public std::streambuf {
protected:
    int_type overflow(int_type c) override { return traits_type::not_eof(c); }
    std::streamsize xsputn(char const*, std::streamsize n) override { return n; }
    int_type underflow() override {
        character_ = ++read_ % 700 == 0 ? '\n' : 'w';
        setg(&character_, &character_, &character_ + 1);
        return traits_type::to_int_type(character_);
    }

private:
    char character_ = 'w';
    int read_ = 0;
};

TEST(WithoutMemory, DatesAndTimesDoNoHarm) {
    static std::string const longFormat(400, 'd');
    expectNoHarm({
        {"names",
         [](DString&) {
             DDate const date(DDate::March, 4, 2024);
             use(date.monthName().length() + date.dayName().length() + DDate::monthName(DDate::May).length() +
                 DDate::dayName(DDate::Sunday).length());
         }},
        {"asString of a date",
         [](DString&) {
             DDate const date(DDate::March, 4, 2024);
             use(date.asString().length() + date.asString(DDate::fourDigitYear).length() +
                 date.asString("%d %y").length());
         }},
        {"a long text of a date",
         [](DString&) { use(DDate(DDate::March, 4, 1700).asString(longFormat.c_str()).length()); }},
        {"asString of a time",
         [](DString&) { use(DTime(1, 2).asString().length() + DTime(1, 2).asString("%H").length()); }},
        {"a long text of a time", [](DString&) { use(DTime(1, 2).asString(longFormat.c_str()).length()); }},
    });
}

TEST(WithoutMemory, StreamsDoNoHarm) {
    expectNoHarm({
        {"writing",
         [](DString& s) {
             Endless end;
             std::ostream out(&end);
             out << s << DDate(DDate::March, 4, 2024) << DTime(1, 2);
         }},
        {"lineFrom",
         [](DString& s) {
             Endless end;
             std::istream in(&end);
             s = DString::lineFrom(in);
         }},
        {"reading a word",
         [](DString& s) {
             Endless end;
             std::istream in(&end);
             in >> s;
         }},
    });
}

/// Trace lines that are built and go nowhere, for the time of a test.
class Tracing {
public:
    Tracing() {
        setenv("KORVA_TRACE", "ON", 1);
        DTraceSetup::initialize();
        DTrace::iClTraceLocation = 9;
    }
    Tracing(Tracing const&) = delete;
    Tracing& operator=(Tracing const&) = delete;
    ~Tracing() {
        unsetenv("KORVA_TRACE");
        DTraceSetup::initialize();
    }
};

TEST(WithoutMemory, TraceLinesDoNoHarm) {
    Tracing const tracing;
    expectNoHarm({
        {"an entry and an exit", [](DString& s) { DTrace const trace(s.c_str(), 7); }},
        {"a free text", [](DString& s) { DTrace::write(s), DTrace::write(s.c_str()); }},
        {"a formatted text", [](DString& s) { DTrace::writeFormattedString(s, ">"); }},
        {"several lines",
         [](DString& s) { DTrace::writeFormattedString(DString(s).change("a", "\n"), ">"); }},
        {"set-up",
         [](DString&) {
             DTraceSetup::initialize();
             DTrace::iClTraceLocation = 9;
         }},
    });
    EXPECT_EQ(DTrace::uClIndent[1], 0U) << "an entry line that fails indents nothing";
}

TEST(WithoutMemory, ALineForAFileDoesNoHarm) {
    Tracing const tracing;
    setenv("KORVA_TRACEFILE", "  trace lines of a test without memory, under a name that needs room  ", 1);
    DTrace::iClTraceLocation = 3;
    expectNoHarm({{"writeString", [](DString& s) { DTrace::writeString(s.c_str()); }}});
    unsetenv("KORVA_TRACEFILE");
}

/// A trace object's exit line is left out: a destructor may run while another exception is on its way.
TEST(WithoutMemory, AnExitLineIsLeftOutAndNothingIsThrown) {
    Tracing const tracing;
    unsigned long const before = DTrace::ulSequence;
    {
        DTrace const trace(longText().c_str(), 0);
        allocations.failing = Failing::byHandler;
        allocations.onlyOnce = false;
        allocations.countdown = 0;
    }
    allocations.countdown = -1;
    EXPECT_EQ(DTrace::ulSequence, before + 1) << "the entry line alone";
    EXPECT_EQ(DTrace::uClIndent[1], 0U);
}

} // namespace
