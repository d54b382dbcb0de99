// DTrace through a host program: what its lines look like.
#include <kelcl/dtrace.h>

#include "tests/trace/trace_calls.h"
#include "tests/trace/trace_support.h"

#include <cstdio>
#include <cstdlib>
#include <string>

#include <gtest/gtest.h>

namespace {

using namespace tracing;
using ::testing::Test;

using TraceLines = Test;

TEST_F(TraceLines, LineNumbersBelowOneAreNotWritten) {
    ProgramRun const run =
        runHost({{"KORVA_TRACE", "NOPREFIX"}},
                {"enter:0:f", "leave", "enter:-5:f", "leave", "enter:1:f", "leave",
                 "enter:9223372036854775807:f", "leave", "enter:-9223372036854775808:f", "leave"});
    EXPECT_EQ(run.output, "+f\n-f\n+f\n-f\n+f(1)\n-f\n+f(9223372036854775807)\n-f\n+f\n-f\n");
}

TEST_F(TraceLines, WithoutTheFlagThereAreNoLineNumbers) {
    ProgramRun const run = runHost({}, {"state:2", "enter:12:f", "leave"});
    EXPECT_EQ(run.output, "+f\n-f\n");
}

TEST_F(TraceLines, ANullNameWritesNothing) {
    ProgramRun const run =
        runHost({{"KORVA_TRACE", "ON"}}, {"enter-null", "leave", "enter-null", "show-state"});
    EXPECT_EQ(run.output, "state 14 to 2 stack 0 sequence 0 indentation 0\n");
}

TEST_F(TraceLines, AnEmptyNameIsAName) {
    ProgramRun const run = runHost({{"KORVA_TRACE", "NOPREFIX"}}, {"enter:3:", "leave"});
    EXPECT_EQ(run.output, "+(3)\n-\n");
}

TEST_F(TraceLines, NestedCallsAreIndented) {
    ProgramRun const run = runHost({{"KORVA_TRACE", "ON"}}, {"enter:12:f", "enter:30:g", "leave", "leave"});
    EXPECT_EQ(run.output, prefix(run, 0) + "+f(12)\n" + prefix(run, 1) + "  +g(30)\n" + prefix(run, 2) +
                              "  -g\n" + prefix(run, 3) + "-f\n");
}

TEST_F(TraceLines, TheStackFieldFollowsThePrefix) {
    for (char const* value : {"ON", " on ", "TRUE", "true", "True\t"}) {
        SCOPED_TRACE(value);
        ProgramRun const run =
            runHost({{"KORVA_TRACE", "ON"}, {"KORVA_CHECKSTACK", value}}, {"enter:12:f", "enter:30:g"});
        EXPECT_EQ(run.output, prefix(run, 0) + " 0000000 +f(12)\n" + prefix(run, 1) + " 0000000   +g(30)\n" +
                                  prefix(run, 2) + " 0000000   -g\n" + prefix(run, 3) + " 0000000 -f\n");
    }
}

TEST_F(TraceLines, AnyOtherStackValueGivesNoStackField) {
    for (char const* value : {"O", "1", "YES", "TRUES", "OFF", ""}) {
        SCOPED_TRACE(value);
        ProgramRun const run = runHost({{"KORVA_TRACE", "ON"}, {"KORVA_CHECKSTACK", value}}, {"write:x"});
        EXPECT_EQ(run.output, prefix(run, 0) + ">x\n");
    }
}

TEST_F(TraceLines, EveryLineOfATextHasTheLead) {
    ProgramRun const run = runHost({{"KORVA_TRACE", "ON"}, {"KORVA CHECKSTACK", "ON"}},
                                   {"enter:1:f", "write:a\nb\n\nc\n", "enter:2:g\nh"});
    std::string const lead = prefix(run, 1) + " 0000000   >";
    std::string const entry = prefix(run, 2) + " 0000000   +";
    std::string const exit = prefix(run, 3) + " 0000000   -";
    EXPECT_EQ(run.output, prefix(run, 0) + " 0000000 +f(1)\n" + lead + "a\n" + lead + "b\n" + lead + "\n" +
                              lead + "c\n" + lead + "\n" + entry + "g\n" + entry + "h(2)\n" + exit + "g\n" +
                              exit + "h\n" + prefix(run, 4) + " 0000000 -f\n");
}

TEST_F(TraceLines, FreeLinesTakeEveryKindOfText) {
    ProgramRun const run =
        runHost({{"KORVA_TRACE", "NOPREFIX"}}, {"write:one", "write-string:two", "write:", "write-null"});
    EXPECT_EQ(run.output, ">one\n>two\n>\n>\n");
}

TEST_F(TraceLines, ALineIsCutAtANulByDesign) {
    ProgramRun const run = runHost({{"KORVA_TRACE", "NOPREFIX"}}, {"write-with-nul", "write:next"});
    EXPECT_EQ(run.output, ">ab>next\n");
}

TEST_F(TraceLines, BytesAreWrittenAsTheyAre) {
    ProgramRun const run = runHost({{"KORVA_TRACE", "NOPREFIX"}}, {"write:\x81\xff\n\xe3\x81", "write:\x83"});
    EXPECT_EQ(run.output, ">\x81\xff\n>\xe3\x81\n>\x83\n");
}

TEST_F(TraceLines, LinesOfAnyLengthComeOutWhole) {
    for (std::size_t length : {480u, 490u, 510u, 511u, 512u, 513u, 5000u, 300000u}) {
        ProgramRun const run =
            runHost({{"KORVA_TRACE", "ON"}}, {"write-long:" + std::to_string(length), "write:next"});
        EXPECT_EQ(run.output,
                  prefix(run, 0) + '>' + std::string(length, 'x') + '\n' + prefix(run, 1) + ">next\n");
    }
}

TEST_F(TraceLines, ALineToAFileIsWrittenWholeHoweverLong) {
    ProgramRun const run =
        runHost({{"KORVA_TRACETO", "FILE"}, {"KORVA_TRACEFILE", "LONG.LOG"}}, {"write-long:300000"});
    EXPECT_EQ(contentsOf("LONG.LOG"), prefix(run, 0) + '>' + std::string(300000, 'x') + '\n');
    std::remove("LONG.LOG");
}

TEST_F(TraceLines, OfALongSequenceNumberTheLastEightDigitsAreWritten) {
    ProgramRun const run = runHost({{"KORVA_TRACE", "ON"}}, {"sequence:99999999", "write:a", "write:b",
                                                             "sequence:1234567890", "write:c"});
    std::string const process = ' ' + digits(static_cast<unsigned long>(run.process), 6) + ":01 ";
    EXPECT_EQ(run.output,
              "99999999" + process + ">a\n00000000" + process + ">b\n34567890" + process + ">c\n");
}

TEST_F(TraceLines, MarkersOfTheCallersSetTheIndentation) {
    ProgramRun const run = runHost({{"KORVA_TRACE", "NOPREFIX"}},
                                   {"initialize", "format:+in:a", "format:?:b", "format:++:c", "format:-x:d",
                                    "format::e", "format-null-marker:f", "format:-:g"});
    EXPECT_EQ(run.output, "+ina\n  ?b\n  ++c\n  -xd\n  e\n  f\n-g\n");
}

TEST_F(TraceLines, AnExitLineWithoutIndentationLeavesItAtNothing) {
    ProgramRun const run =
        runHost({{"KORVA_TRACE", "NOPREFIX"}},
                {"initialize", "format:-:a", "format:-:b", "show-state", "indentation:1", "format:-:c"});
    EXPECT_EQ(run.output, "-a\n-b\nstate 6 to 2 stack 0 sequence 2 indentation 0\n -c\n");
}

TEST_F(TraceLines, FormattedLinesAreWrittenEvenWithTracingOff) {
    ProgramRun const run = runHost({}, {"initialize", "format:>:a"});
    EXPECT_EQ(run.output, prefix(run, 0) + ">a\n");
}

TEST_F(TraceLines, AnEntryLineThatCannotBeMadeThrows) {
    ProgramRun const run = runHost({{"KORVA_TRACE", "ON"}}, {"initialize", "indentation:4294967295",
                                                             "enter:1:f", "indentation:0", "show-state"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, "the entry line threw\nstate 14 to 2 stack 0 sequence 0 indentation 0\n");
}

TEST_F(TraceLines, AnExitLineThatCannotBeMadeIsDropped) {
    ProgramRun const run =
        runHost({{"KORVA_TRACE", "ON"}}, {"enter:1:f", "indentation:4294967295", "leave", "show-state"});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output,
              prefix(run, 0) + "+f(1)\nstate 14 to 2 stack 0 sequence 1 indentation 4294967293\n");
}

TEST_F(TraceLines, TracingLeavesErrnoAlone) {
    for (Variables const& variables :
         {Variables{{"KORVA_TRACETO", "FILE"}, {"KORVA_TRACEFILE", "NO/SUCH/FOLDER"}}, Variables{}}) {
        EXPECT_EQ(runHost(variables, {"show-errno"}).output, "errno 4711\n");
    }
}

} // namespace
