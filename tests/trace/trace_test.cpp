// DTrace through a host program: which settings turn it on, what its lines look like, where they go.
#include <kelcl/dtrace.h>

#include "tests/trace/trace_support.h"

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>
#include <type_traits>

#include <gtest/gtest.h>

namespace {

using ::testing::Test;

std::string digits(unsigned long number, std::size_t width) {
    std::string const all = std::string(width, '0') + std::to_string(number);
    return all.substr(all.size() - width);
}

/// What stands in front of every line with the number `sequence` of the run.
std::string prefix(ProgramRun const& run, unsigned long sequence) {
    return digits(sequence, 8) + ' ' + digits(static_cast<unsigned long>(run.process), 6) + ":01 ";
}

/// Some calls with lines between them; without line numbers or prefix where tracing is off.
std::vector<std::string> const someCalls = {"enter:12:f", "write:text", "enter:30:g", "leave", "leave"};

std::string linesOfSomeCalls(ProgramRun const& run) {
    return prefix(run, 0) + "+f(12)\n" + prefix(run, 1) + "  >text\n" + prefix(run, 2) + "  +g(30)\n" +
           prefix(run, 3) + "  -g\n" + prefix(run, 4) + "-f\n";
}

std::string contentsOf(char const* file) {
    std::ifstream in(file, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

bool isTurkishWithTheSwitchOn() {
    return std::string_view(std::setlocale(LC_ALL, nullptr)) == "tr_TR.UTF-8" && DString::fgI18NState == 1;
}

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

using TraceLines = Test;
using TraceState = Test;

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

TEST_F(TraceDestination, AFileIsAppendedToUnderItsNameInUpperCaseAsWanted) {
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

// Lines
// ---------------------------------------------------------------------------------------------------------

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

TEST_F(TraceLines, ALineIsCutAtANulAsWanted) {
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

// The state
// -----------------------------------------------------------------------------------------------------

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
