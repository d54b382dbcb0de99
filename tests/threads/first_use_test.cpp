// What is made once is made by eight threads at the same moment, in a fresh process for each case: this
// program starts itself again with the name of the case, and exits with 0 if all went well.
#include "tests/support/program_run.h"
#include "tests/threads/together.h"

#include <kelcl/kelcl.h>

#include <array>
#include <atomic>
#include <clocale>
#include <cstdio>
#include <ctime>
#include <functional>
#include <map>
#include <string>
#include <tuple>

#include <gtest/gtest.h>

namespace {

constexpr int threads = 8;

/// Whether what `make` returns is the same in all threads, and `isRight` of it.
template <class Make, class IsRight>
bool allGetTheSame(Make const& make, IsRight const& isRight) {
    using Made = decltype(make());
    std::array<Made, threads> made{};
    together(threads, [&](int number) { made[static_cast<std::size_t>(number)] = make(); });
    for (Made const& one : made)
        if (one != made[0] || !isRight(one)) return false;
    return true;
}

bool emptyBuffers() {
    return allGetTheSame([] { return DBuffer::defaultBuffer(); },
                         [](DBuffer* buffer) {
                             return buffer->length == 0 && buffer == DBuffer::nullBuffer &&
                                    (MB_CUR_MAX > 1) == (DBuffer::nullDBuffer != nullptr);
                         });
}

bool emptyStrings() {
    return allGetTheSame(
        [] { return DString(); },
        [](DString const& text) { return text.isEmpty() && text.c_str() == DString::nullBuf(); });
}

bool strings() {
    std::atomic<int> right = 0;
    together(threads, [&](int number) {
        DString text("a text of thread " + DString(number));
        DString const moved(std::move(text));
        if (moved.length() == 18 && text.isEmpty()) ++right;
    });
    return right == threads;
}

bool emptyPlainBuffers() {
    return allGetTheSame([] { return DBuffer::defaultBuffer()->null(); },
                         [](DBuffer* buffer) { return buffer->length == 0; });
}

bool catalogName() {
    return allGetTheSame([] { return DBase::messageFile(); },
                         [](char const* name) { return std::string(name) == "kelcl.cat"; });
}

bool messages() {
    return allGetTheSame(
        [] { return std::string(DBase::messageText(1011)); },
        [](std::string const& text) { return text == "The index lies outside of the string."; });
}

bool traceFunction() {
    return allGetTheSame([] { return DExceptStaticPtr::traceFunction(); },
                         [](DException::TraceFn* function) {
                             return function != nullptr && function == DExceptStaticPtr::defaultFunction;
                         });
}

/// Each thread writes one line; the test counts them.
bool traceLines() {
    together(threads, [](int number) { DTrace::write("line of thread " + DString(number)); });
    return DTrace::ulSequence == threads;
}

bool reports() {
    std::atomic<int> caught = 0;
    together(threads, [&](int) {
        try {
            std::ignore = static_cast<DString const&>(DString("abc"))[4];
        } catch (DInvalidRequest const& error) {
            if (error.errorId() == 1011) ++caught;
        }
    });
    return caught == threads;
}

/// The class of characters beyond ASCII is asked of the C library, and encodings are tabulated, on first use.
bool characters() {
    std::atomic<int> right = 0;
    together(threads, [&](int) {
        DString const mine("abcdefgh");
        if (mine.charType(3) == 0 && mine.isAlphabetic() && mine.subString(3, 2) == "cd" &&
            DString(mine).reverse() == "hgfedcba" && findBytePos(mine.c_str(), mine.length(), 4) == 4)
            ++right;
    });
    return right == threads;
}

bool dates() {
    ::tzset();
    std::atomic<int> right = 0;
    together(threads, [&](int) {
        if (DDate(DDate::March, 1, 2024).asString("%Y-%m-%d") == "2024-03-01" &&
            DTime(9, 5, 7).asString("%H:%M:%S") == "09:05:07")
            ++right;
    });
    return right == threads;
}

/// There and back again, through products that take the roots of the transform.
bool longNumbers() {
    std::atomic<int> right = 0;
    together(threads, [&](int) {
        DString const digits(nullptr, 30000, '7');
        if (DString(digits).d2c().c2d() == digits) ++right;
    });
    return right == threads;
}

std::map<std::string, std::function<bool()>> const cases = {{"empty-buffers", emptyBuffers},
                                                            {"empty-strings", emptyStrings},
                                                            {"strings", strings},
                                                            {"plain-empties", emptyPlainBuffers},
                                                            {"catalog-name", catalogName},
                                                            {"messages", messages},
                                                            {"trace-function", traceFunction},
                                                            {"trace-lines", traceLines},
                                                            {"reports", reports},
                                                            {"characters", characters},
                                                            {"dates", dates},
                                                            {"long-numbers", longNumbers}};

std::string program;

// AddressSanitizer makes a process slow to start and to end, and looks for no race.
#ifdef KELCL_ADDRESS_SANITIZER
constexpr int runs = 5;
#else
constexpr int runs = 20;
#endif

/// Runs the case in many processes, as the race is a different one each time. It prints `outputLines` lines,
/// and reports on standard error only where that is what it is about.
void expectOften(std::string const& name, std::size_t outputLines = 0, bool reports = false) {
    for (int run = 0; run < runs; ++run) {
        ProgramRun const done = runProgram(program, {name});
        ASSERT_EQ(done.status, 0) << done.output << done.errors;
        EXPECT_EQ(linesOf(done.output).size(), outputLines) << done.output;
        EXPECT_EQ(!done.errors.empty(), reports) << done.errors;
    }
}

TEST(FirstUseByEightThreads, MakesOneEmptyBuffer) { expectOften("empty-buffers"); }
TEST(FirstUseByEightThreads, MakesOneEmptyString) { expectOften("empty-strings"); }
TEST(FirstUseByEightThreads, MakesOneEmptyBufferThatSuitsEachClass) { expectOften("plain-empties"); }
TEST(FirstUseByEightThreads, MakesStrings) { expectOften("strings"); }
TEST(FirstUseByEightThreads, MakesOneCatalogName) { expectOften("catalog-name"); }
TEST(FirstUseByEightThreads, FindsMessages) { expectOften("messages"); }
TEST(FirstUseByEightThreads, TakesOneTraceFunction) { expectOften("trace-function"); }
TEST(FirstUseByEightThreads, ReportsEachException) { expectOften("reports", 0, true); }
TEST(FirstUseByEightThreads, LearnsTheEncoding) { expectOften("characters"); }
TEST(FirstUseByEightThreads, FormatsDates) {
    Environment const environment{{"TZ", "UTC"}};
    expectOften("dates");
}

// Without TZ the C library takes its zone anew each time, under a lock that ThreadSanitizer does not see.
#ifndef __SANITIZE_THREAD__
TEST(FirstUseByEightThreads, FormatsDatesInTheMachinesZone) { expectOften("dates"); }
#endif

TEST(FirstUseByEightThreads, ConvertsLongNumbers) { expectOften("long-numbers"); }

TEST(FirstUseByEightThreads, SetsTracingUpWithoutLosingALine) {
    Environment const environment{{"KORVA_TRACE", "ON"}};
    expectOften("trace-lines", threads);
}

} // namespace

int main(int argc, char** argv) {
    std::setlocale(LC_ALL, "");
    if (argc == 2 && cases.count(argv[1]) != 0) return cases.at(argv[1])() ? 0 : 1;
    ::testing::InitGoogleTest(&argc, argv);
    program = argv[0];
    return RUN_ALL_TESTS();
}
