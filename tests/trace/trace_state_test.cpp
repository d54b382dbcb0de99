// DTrace through a host program: when it reads its settings, and what it says of them.
#include <kelcl/dtrace.h>

#include "tests/trace/trace_calls.h"
#include "tests/trace/trace_support.h"

#include <string>
#include <string_view>
#include <type_traits>

#include <gtest/gtest.h>

namespace {

using namespace tracing;
using ::testing::Test;

using TraceState = Test;

TEST_F(TraceState, IsNotSetUpUntilFirstUse) {
    ProgramRun const run = runHost({{"KORVA_TRACETO", "ERR"}}, {"show-state", "enter-null", "show-state"});
    EXPECT_EQ(run.output, "state 1 to 2 stack 0 sequence 0 indentation 0\n"
                          "state 14 to 1 stack 0 sequence 0 indentation 0\n");
}

TEST_F(TraceState, EveryEntryPointSetsItUp) {
    for (char const* command : {"enter:1:f", "write:x", "write-string:x", "initialize"}) {
        SCOPED_TRACE(command);
        EXPECT_EQ(runHost({}, {command, "show-state"}).output,
                  "state 12 to 2 stack 0 sequence 0 indentation 0\n");
    }
}

TEST_F(TraceState, SaysHowLinesAreWritten) {
    std::string const rest = " to 2 stack 0 sequence 0 indentation 0\n";
    EXPECT_EQ(runHost({{"KORVA_TRACE", "ON"}}, {"initialize", "show-state"}).output, "state 14" + rest);
    EXPECT_EQ(runHost({{"KORVA_TRACE", "NOPREFIX"}}, {"initialize", "show-state"}).output, "state 6" + rest);
    EXPECT_EQ(runHost({{"KORVA_TRACE", "OFF"}}, {"initialize", "show-state"}).output, "state 12" + rest);
}

TEST_F(TraceState, ANewSetUpKeepsWhatNoVariableSays) {
    ProgramRun const run = runHost({{"KORVA_TRACETO", "ERR"}, {"KORVA_CHECKSTACK", "ON"}},
                                   {"enter:1:f", "unset:KORVA_TRACETO", "unset:KORVA_CHECKSTACK",
                                    "initialize", "show-state", "set:KORVA_TRACE:ON", "initialize", "leave"});
    EXPECT_EQ(run.output, "state 12 to 1 stack 1 sequence 1 indentation 2\n");
    EXPECT_EQ(run.errors, prefix(run, 0) + " 0000000 +f(1)\n" + prefix(run, 1) + " 0000000 -f\n");
}

TEST_F(TraceState, AnObjectMadeWhileTracingWasOffWritesNoExitLine) {
    ProgramRun const run =
        runHost({}, {"enter:1:f", "set:KORVA_TRACE:ON", "initialize", "leave", "show-state"});
    EXPECT_EQ(run.output, "state 14 to 2 stack 0 sequence 0 indentation 0\n");
}

TEST_F(TraceState, AnObjectMadeWhileTracingWasOnWritesItsExitLineOnlyIfItStillIs) {
    ProgramRun const run = runHost({{"KORVA_TRACE", "NOPREFIX"}},
                                   {"enter:1:f", "unset:KORVA_TRACE", "initialize", "leave", "show-state"});
    EXPECT_EQ(run.output, "+f(1)\nstate 12 to 2 stack 0 sequence 1 indentation 2\n");
}

TEST_F(TraceState, OnlyTheValueOneAsksForSetUp) {
    // 13 has the flag of a state not set up and no flag of tracing.
    ProgramRun const run =
        runHost({{"KORVA_TRACE", "ON"}}, {"state:13", "enter:1:f", "write:x", "show-state"});
    EXPECT_EQ(run.output, "state 13 to 2 stack 0 sequence 0 indentation 0\n");
}

TEST_F(TraceState, HasOneThreadAndMeasuresNoStack) {
    ProgramRun const run = runHost({}, {"show-process", "show-thread", "show-process"});
    EXPECT_EQ(run.output, "process 0\nthread 1 stack 0\nprocess " + std::to_string(run.process) + '\n');
}

TEST_F(TraceState, ALineReadsTheProcessId) {
    ProgramRun const run = runHost({{"KORVA_TRACETO", "ERR"}}, {"write:x", "show-process"});
    EXPECT_EQ(run.output, "process " + std::to_string(run.process) + '\n');
}

TEST(TraceClass, IsOneOfTheClassTreeAndCannotBeCopied) {
    static_assert(std::is_base_of_v<DVBase, DTrace> && std::has_virtual_destructor_v<DTrace>);
    static_assert(!std::is_copy_constructible_v<DTrace> && !std::is_copy_assignable_v<DTrace>);
    static_assert(sizeof(DTrace) == 2 * sizeof(void*));
    static_assert(std::extent_v<decltype(DTrace::uClIndent)> == 256);
    char marker[] = ">";
    static_assert(std::is_void_v<decltype(DTrace::writeFormattedString("text", marker))>);
    DTrace const trace("name", 1);
    EXPECT_EQ(std::string_view(trace.asString()), "DVBase object");
}

} // namespace
