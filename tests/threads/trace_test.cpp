// Trace lines of several threads: whole, complete, and each with a number of its own. The program traces into
// the file LINES of its folder.
#include "tests/support/program_run.h"
#include "tests/threads/together.h"

#include <kelcl/dtrace.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

constexpr int threads = 4;
constexpr int rounds = 500;

/// Sets tracing up anew: into the file, which does not exist yet.
void traceToFile(char const* traceSwitch) {
    std::remove("LINES");
    setenv("KORVA_TRACE", traceSwitch, 1);
    setenv("KORVA_TRACETO", "FILE", 1);
    setenv("KORVA_TRACEFILE", "lines", 1);
    DTraceSetup::initialize();
}

std::vector<std::string> sortedLines() {
    std::vector<std::string> lines = linesOf(readFile("LINES"));
    std::sort(lines.begin(), lines.end());
    return lines;
}

TEST(TraceOfThreads, HasEveryLineWholeAndNumberedOnce) {
    traceToFile("ON");
    unsigned long const first = DTrace::ulSequence;
    together(threads, [](int number) {
        std::string const text(static_cast<std::size_t>(20 + number), static_cast<char>('a' + number));
        for (int i = 0; i < rounds; ++i)
            DTrace::write(text.c_str());
    });
    std::vector<std::string> const lines = sortedLines(); // by their numbers, which come first
    ASSERT_EQ(lines.size(), static_cast<std::size_t>(threads * rounds));
    std::vector<int> counts(threads);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        EXPECT_EQ(std::stoul(lines[i].substr(0, 8)), first + i);
        std::string const text = lines[i].substr(lines[i].find('>') + 1);
        auto const number = static_cast<std::size_t>(text[0] - 'a');
        ASSERT_LT(number, counts.size()) << lines[i];
        EXPECT_EQ(text, std::string(20 + number, text[0]));
        ++counts[number];
    }
    EXPECT_EQ(counts, std::vector<int>(threads, rounds));
    EXPECT_EQ(DTrace::ulSequence, first + lines.size());
}

TEST(TraceOfThreads, KeepsTheLinesOfALongTextTogether) {
    traceToFile("NOPREFIX");
    std::string const middle(5000, 'm');
    together(threads, [&](int) {
        for (int i = 0; i < 50; ++i)
            DTrace::write(("first\n" + middle + "\nlast").c_str());
    });
    std::string expected;
    for (int i = 0; i < threads * 50; ++i)
        expected += ">first\n>" + middle + "\n>last\n";
    EXPECT_EQ(readFile("LINES"), expected);
}

TEST(TraceOfThreads, SharesOneIndentationThatComesBackToWhatItWas) {
    traceToFile("NOPREFIX");
    together(threads, [](int) {
        for (int i = 0; i < rounds; ++i) {
            DTrace const outer("outer", 0);
            DTrace const inner("inner", 0);
        }
    });
    EXPECT_EQ(DTrace::uClIndent[1], 0U);
    std::vector<std::string> const lines = linesOf(readFile("LINES"));
    EXPECT_EQ(lines.size(), static_cast<std::size_t>(4 * threads * rounds));
    for (std::string const& line : lines) {
        std::size_t const blanks = line.find_first_not_of(' ');
        EXPECT_EQ(blanks % 2, 0U);
        EXPECT_LE(blanks, 4U * threads) << "at most two calls in each thread";
        EXPECT_TRUE(line.compare(blanks + 1, std::string::npos, "outer") == 0 ||
                    line.compare(blanks + 1, std::string::npos, "inner") == 0)
            << line;
    }
}

TEST(TraceOfThreads, IsWholeOnStandardOutputToo) {
    setenv("KORVA_TRACE", "NOPREFIX", 1);
    setenv("KORVA_TRACETO", "STDOUT", 1);
    DTraceSetup::initialize();
    testing::internal::CaptureStdout();
    together(threads, [](int) {
        for (int i = 0; i < rounds; ++i)
            DTrace::write("a line on standard output");
    });
    std::string expected;
    for (int i = 0; i < threads * rounds; ++i)
        expected += ">a line on standard output\n";
    EXPECT_EQ(testing::internal::GetCapturedStdout(), expected);
}

TEST(TraceOfThreads, MayBeSetUpAnewMeanwhile) {
    traceToFile("NOPREFIX");
    together(threads, [](int number) {
        for (int i = 0; i < rounds; ++i) {
            if (number == 0)
                DTraceSetup::initialize();
            else
                DTrace::write("line");
        }
    });
    std::string expected;
    for (int i = 0; i < (threads - 1) * rounds; ++i)
        expected += ">line\n";
    EXPECT_EQ(readFile("LINES"), expected) << "tracing was on all the time";
}

} // namespace
