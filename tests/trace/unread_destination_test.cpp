// Trace files that are pipes and terminals: the host goes on, whoever reads them or does not.
#include "tests/trace/trace_support.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <thread>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

Variables const toPipe = {
    {"KORVA_TRACE", "NOPREFIX"}, {"KORVA_TRACETO", "FILE"}, {"KORVA_TRACEFILE", "pipe"}};
Variables const toTerminal = {
    {"KORVA_TRACE", "NOPREFIX"}, {"KORVA_TRACETO", "FILE"}, {"KORVA_TRACEFILE", "terminal"}};

std::vector<std::string> writes(int count) {
    std::vector<std::string> commands(static_cast<std::size_t>(count), "write:" + std::string(1000, 'x'));
    commands.emplace_back("print:done");
    return commands;
}

class TracePipe : public testing::Test {
protected:
    void SetUp() override {
        std::remove("PIPE");
        ASSERT_EQ(mkfifo("PIPE", 0600), 0);
    }
    void TearDown() override { std::remove("PIPE"); }
};

TEST_F(TracePipe, ThatNobodyReadsDropsTheLines) {
    ProgramRun const run = runHost(toPipe, writes(3));
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, "done");
    EXPECT_EQ(run.errors, "");
}

TEST_F(TracePipe, ThatSomebodyReadsGetsEveryLine) {
    int const reader = open("PIPE", O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    ASSERT_GE(reader, 0);
    int const keptOpen =
        open("PIPE", O_WRONLY | O_CLOEXEC); // so that the end of one line is not the end of all
    std::string received;
    std::thread reading([&] {
        fcntl(reader, F_SETFL, 0);
        char buffer[4096];
        for (ssize_t n; received.size() < 200 * 1002 && (n = read(reader, buffer, sizeof buffer)) > 0;)
            received.append(buffer, static_cast<std::size_t>(n));
    });
    ProgramRun const run = runHost(toPipe, writes(200)); // three times what a pipe holds
    EXPECT_EQ(run.output, "done");
    close(keptOpen);
    reading.join();
    close(reader);
    std::string expected;
    for (int i = 0; i < 200; ++i)
        expected += ">" + std::string(1000, 'x') + "\n";
    EXPECT_EQ(received, expected);
}

TEST_F(TracePipe, WhoseReaderIsStuckDropsWhatDoesNotFit) {
    int const reader = open("PIPE", O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    ASSERT_GE(reader, 0);
    auto const begun = std::chrono::steady_clock::now();
    ProgramRun const run = runHost(toPipe, writes(500));
    EXPECT_EQ(run.output, "done");
    EXPECT_LT(std::chrono::steady_clock::now() - begun, std::chrono::seconds(20))
        << "not a wait for each line";
    std::string received(1 << 20, '\0');
    ssize_t const n = read(reader, received.data(), received.size());
    close(reader);
    ASSERT_GT(n, 1002 * 20);
    EXPECT_EQ(n % 1002, 0) << "whole lines";
}

TEST(TraceTerminal, ThatNobodyReadsDropsWhatDoesNotFit) {
    int const master = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
    ASSERT_GE(master, 0);
    ASSERT_EQ(grantpt(master), 0);
    ASSERT_EQ(unlockpt(master), 0);
    std::remove("TERMINAL");
    ASSERT_EQ(symlink(ptsname(master), "TERMINAL"), 0);
    ProgramRun const run = runHost(toTerminal, writes(100));
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.output, "done");
    std::remove("TERMINAL");
    close(master);
}

} // namespace
