// A program that runs with more rights than its caller takes none of the library's variables from it. As root
// the tests run a set-user-id copy of the host program as another user; elsewhere they can only show that an
// ordinary program does take them.
#include "tests/trace/trace_support.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr uid_t anotherUser = 65534;
bool const isRoot = geteuid() == 0;

/// Runs the host as a program of another user that has root's rights, if that can be had here.
std::string outputOf(std::vector<std::string> const& commands) {
    namespace fs = std::filesystem;
    std::string const copy = fs::absolute("set_user_id_host").string();
    fs::copy_file(KELCL_TEST_TRACE_HOST, copy, fs::copy_options::overwrite_existing);
    if (isRoot) fs::permissions(copy, fs::perms::set_uid, fs::perm_options::add);
    std::vector<std::string> words{copy};
    words.insert(words.end(), commands.begin(), commands.end());
    std::vector<char*> arguments;
    for (std::string& word : words)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);

    pid_t const child = fork();
    if (child == 0) {
        if (isRoot && setresuid(anotherUser, 0, 0) != 0) std::_Exit(2);
        if (std::freopen("output.txt", "w", stdout) == nullptr) std::_Exit(3);
        execv(copy.c_str(), arguments.data());
        std::_Exit(4);
    }
    int status = 0;
    EXPECT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
    fs::remove(copy);
    return readFile("output.txt");
}

TEST(ProgramWithMoreRightsThanItsCaller, OpensNoTraceFileOfTheCallersChoice) {
    std::remove("CHOSEN");
    Environment const environment{
        {"KORVA_TRACE", "ON"}, {"KORVA_TRACETO", "FILE"}, {"KORVA_TRACEFILE", "chosen"}};
    EXPECT_EQ(outputOf({"write:line", "print:done"}), "done");
    EXPECT_EQ(exists("CHOSEN"), !isRoot);
    std::remove("CHOSEN");
}

TEST(ProgramWithMoreRightsThanItsCaller, OpensNoTraceFileEvenIfItTracesToOneItself) {
    std::remove("CHOSEN");
    Environment const environment{{"KORVA TRACEFILE", "chosen"}};
    outputOf({"destination:3", "send:line"});
    EXPECT_EQ(exists("CHOSEN"), !isRoot);
    std::remove("CHOSEN");
}

TEST(ProgramWithMoreRightsThanItsCaller, TakesItsOwnCatalog) {
    Environment const environment{{"KORVA MSGFILE", "/tmp/chosen.cat"}};
    EXPECT_EQ(outputOf({"show-catalog"}), isRoot ? "kelcl.cat\n" : "/tmp/chosen.cat\n");
}

TEST(ProgramWithMoreRightsThanItsCaller, ComparesByBytesWhateverTheCallersSwitch) {
    Environment const environment{{"KORVA_I18N", "ON"}};
    EXPECT_EQ(outputOf({"show-switch"}), isRoot ? "0\n" : "1\n");
}

} // namespace
