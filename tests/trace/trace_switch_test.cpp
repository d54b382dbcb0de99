// DTrace through a host program: which settings turn it on, and where its lines go.
#include <kelcl/dtrace.h>

#include "tests/trace/trace_calls.h"
#include "tests/trace/trace_support.h"

#include <cstdio>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

namespace {

using namespace tracing;
using ::testing::Test;

class TraceSwitch : public Test {
protected:
    static void expectOff(Variables const& variables) {
        ProgramRun const run = runHost(variables, someCalls);
        EXPECT_EQ(run.status, 0);
        EXPECT_EQ(run.output, "");
        EXPECT_EQ(run.errors, "");
    }
    static void expectOnStandardOutput(Variables const& variables) {
        ProgramRun const run = runHost(variables, someCalls);
        EXPECT_EQ(run.status, 0);
        EXPECT_EQ(run.output, linesOfSomeCalls(run));
        EXPECT_EQ(run.errors, "");
    }
    static void expectOnStandardError(Variables const& variables) {
        ProgramRun const run = runHost(variables, someCalls);
        EXPECT_EQ(run.status, 0);
        EXPECT_EQ(run.output, "");
        EXPECT_EQ(run.errors, linesOfSomeCalls(run));
    }
    static void expectWithoutPrefix(Variables const& variables) {
        ProgramRun const run = runHost(variables, someCalls);
        EXPECT_EQ(run.output, "+f(12)\n  >text\n  +g(30)\n  -g\n-f\n");
        EXPECT_EQ(run.errors, "");
    }
};

class TraceDestination : public TraceSwitch {
protected:
    void SetUp() override { removeFiles(); }
    void TearDown() override { removeFiles(); }

private:
    static void removeFiles() {
        for (char const* file : {"T.LOG", "t.log", "T2.LOG", "T  X.LOG"})
            std::remove(file);
    }
};

// The switch
// ----------------------------------------------------------------------------------------------------

TEST_F(TraceSwitch, WithoutVariablesNothingIsWritten) { expectOff({}); }

TEST_F(TraceSwitch, OnTurnsTracingOnInAnyCaseAndWithBlanksAround) {
    expectOnStandardOutput({{"KORVA_TRACE", "ON"}});
    expectOnStandardOutput({{"KORVA_TRACE", " on "}});
    expectOnStandardOutput({{"KORVA_TRACE", "\tOn\n"}});
    expectOnStandardOutput({{"KORVA TRACE", "oN"}});
}

TEST_F(TraceSwitch, AnyOtherValueLeavesTracingOff) {
    for (char const* value : {"yes", "", " ", "1", "O N", "ONN", "OFF", "NOPREFIXES"}) {
        SCOPED_TRACE(value);
        expectOff({{"KORVA_TRACE", value}});
    }
}

TEST_F(TraceSwitch, NoPrefixTurnsTracingOnWithoutThePrefix) {
    expectWithoutPrefix({{"KORVA_TRACE", "NOPREFIX"}});
    expectWithoutPrefix({{"KORVA TRACE", " noprefIx "}});
}

TEST_F(TraceSwitch, NoPrefixHasNoStackFieldEither) {
    expectWithoutPrefix({{"KORVA_TRACE", "NOPREFIX"}, {"KORVA_CHECKSTACK", "ON"}});
}

TEST_F(TraceSwitch, TheNameWithABlankWinsOverTheOneWithAnUnderscore) {
    expectOff({{"KORVA TRACE", "OFF"}, {"KORVA_TRACE", "ON"}});
    expectOff({{"KORVA TRACE", ""}, {"KORVA_TRACE", "ON"}});
    expectOnStandardOutput({{"KORVA TRACE", "ON"}, {"KORVA_TRACE", "OFF"}});
    expectOnStandardError({{"KORVA TRACETO", "ERR"}, {"KORVA_TRACETO", "OUT"}});
    expectOff({{"KORVA TRACETO", "xx"}, {"KORVA_TRACETO", "ERR"}});
    expectOnStandardOutput({{"KORVA_TRACE", "ON"}, {"KORVA CHECKSTACK", "no"}, {"KORVA_CHECKSTACK", "ON"}});
}

TEST_F(TraceSwitch, OfValuesInUpperCaseTheLocaleDecidesWhatUpperCaseIs) {
    // The Turkish upper case of i has a dot.
    if (isTurkishWithTheSwitchOn()) {
        expectOff({{"KORVA_TRACE", "noprefix"}});
    } else {
        expectWithoutPrefix({{"KORVA_TRACE", "noprefix"}});
    }
}

// Destinations
// --------------------------------------------------------------------------------------------------

TEST_F(TraceDestination, ADestinationTurnsTracingOnByItself) {
    expectOnStandardError({{"KORVA_TRACETO", "err"}});
    expectOnStandardError({{"KORVA_TRACETO", " StdErr "}});
    expectOnStandardError({{"KORVA TRACETO", "STDERR"}});
    expectOnStandardError({{"KORVA_TRACETO", "ERR"}, {"KORVA_TRACE", "OFF"}});
    expectOnStandardOutput({{"KORVA_TRACETO", "out"}});
    expectOnStandardOutput({{"KORVA_TRACETO", "STDOUT"}});
}

TEST_F(TraceDestination, QueuesAndUnknownDestinationsAreStandardOutput) {
    for (char const* value : {"QUEUE", "queue", "PMPRINTF", "PRINTER", "xxx", "FILES", "STDERR STDOUT"}) {
        SCOPED_TRACE(value);
        expectOnStandardOutput({{"KORVA_TRACETO", value}});
    }
}

TEST_F(TraceDestination, AValueOfTwoCharactersOrLessIsIgnored) {
    for (char const* value : {"xx", "", "   ", " o ", "ON", "  xx  "}) {
        SCOPED_TRACE(value);
        expectOff({{"KORVA_TRACETO", value}});
        expectOnStandardOutput({{"KORVA_TRACETO", value}, {"KORVA_TRACE", "ON"}});
    }
}

TEST_F(TraceDestination, AFileIsAppendedToUnderItsNameInUpperCaseByDesign) {
    std::ofstream("T.LOG") << "before\n";
    ProgramRun const run = runHost({{"KORVA_TRACETO", "FILE"}, {"KORVA_TRACEFILE", "t.log"}}, someCalls);
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(contentsOf("T.LOG"), "before\n" + linesOfSomeCalls(run));
    EXPECT_FALSE(exists("t.log"));
}

TEST_F(TraceDestination, AFileIsMadeAndItsNameStripped) {
    ProgramRun const run =
        runHost({{"KORVA_TRACETO", " FILE "}, {"KORVA TRACEFILE", "  t  x.log "}}, someCalls);
    EXPECT_EQ(contentsOf("T  X.LOG"), linesOfSomeCalls(run));
}

TEST_F(TraceDestination, TheFilesNameWithABlankWins) {
    ProgramRun const run = runHost(
        {{"KORVA_TRACETO", "FILE"}, {"KORVA TRACEFILE", "T2.LOG"}, {"KORVA_TRACEFILE", "T.LOG"}}, someCalls);
    EXPECT_EQ(contentsOf("T2.LOG"), linesOfSomeCalls(run));
    EXPECT_FALSE(exists("T.LOG"));
}

TEST_F(TraceDestination, TheFilesNameIsReadAgainForEachLine) {
    ProgramRun const run =
        runHost({{"KORVA_TRACETO", "FILE"}, {"KORVA_TRACEFILE", "T.LOG"}},
                {"write:one", "set:KORVA_TRACEFILE:T2.LOG", "write:two", "unset:KORVA_TRACEFILE",
                 "write:three", "set:KORVA TRACEFILE:T.LOG", "write:four"});
    EXPECT_EQ(contentsOf("T.LOG"), prefix(run, 0) + ">one\n" + prefix(run, 3) + ">four\n");
    EXPECT_EQ(contentsOf("T2.LOG"), prefix(run, 1) + ">two\n");
}

TEST_F(TraceDestination, WithoutAFilesNameLinesAreDroppedButCounted) {
    ProgramRun const run = runHost({{"KORVA_TRACETO", "FILE"}}, {"write:one", "write:two", "show-state"});
    EXPECT_EQ(run.output, "state 14 to 3 stack 0 sequence 2 indentation 0\n");
    EXPECT_EQ(run.errors, "");
}

TEST_F(TraceDestination, AFileThatCannotBeOpenedDropsLinesWithoutAReport) {
    for (char const* name : {"NO/SUCH/FOLDER/T.LOG", "", "  ", "."}) {
        SCOPED_TRACE(name);
        ProgramRun const run = runHost({{"KORVA_TRACETO", "FILE"}, {"KORVA_TRACEFILE", name}},
                                       {"enter:1:f", "leave", "show-state"});
        EXPECT_EQ(run.status, 0);
        EXPECT_EQ(run.output, "state 14 to 3 stack 0 sequence 2 indentation 0\n");
        EXPECT_EQ(run.errors, "");
    }
}

TEST_F(TraceDestination, AnUnknownCodeWritesNothing) {
    for (char const* code : {"4", "-1", "99"}) {
        ProgramRun const run =
            runHost({{"KORVA_TRACE", "ON"}},
                    {"initialize", std::string("destination:") + code, "write:one", "show-state"});
        EXPECT_EQ(run.output, std::string("state 14 to ") + code + " stack 0 sequence 1 indentation 0\n");
        EXPECT_EQ(run.errors, "");
    }
}

TEST_F(TraceDestination, LinesStandInOrderWithTheHostsOwnOutput) {
    ProgramRun const run =
        runHost({{"KORVA_TRACE", "NOPREFIX"}}, {"print:a\n", "write:b", "print:c\n", "write:d"});
    EXPECT_EQ(run.output, "a\n>b\nc\n>d\n");
}

TEST_F(TraceDestination, FormattedTextIsSentAsItIs) {
    ProgramRun const run =
        runHost({}, {"send:one", "send-null", "send:two\n", "destination:1", "send:three"});
    EXPECT_EQ(run.output, "onetwo\n");
    EXPECT_EQ(run.errors, "three");
}

} // namespace
