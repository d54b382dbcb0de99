// The national-language switch: which values of KORVA_I18N turn it on. The switch is read when the library is
// loaded, so this program runs itself once for each value.
#include <kelcl/dstring.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <string>

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr char const* childArgument = "--answer-with-the-switch";
constexpr int answerBase = 10; // so that no failure of the child looks like an answer

int answerOfChild() {
    char self[] = "/proc/self/exe";
    char argument[32];
    std::strcpy(argument, childArgument);
    char* arguments[] = {self, argument, nullptr};
    pid_t child = 0;
    if (posix_spawn(&child, self, nullptr, nullptr, arguments, environ) != 0) return -1;
    int status = 0;
    if (waitpid(child, &status, 0) != child || !WIFEXITED(status)) return -1;
    return WEXITSTATUS(status) - answerBase;
}

int switchWith(char const* value) {
    if (value == nullptr)
        unsetenv("KORVA_I18N");
    else
        setenv("KORVA_I18N", value, 1);
    int const answer = answerOfChild();
    unsetenv("KORVA_I18N");
    return answer;
}

TEST(NationalSwitch, IsOnForTheTwoLettersInAnyCase) {
    for (char const* value : {"ON", "on", "On", "oN"})
        EXPECT_EQ(switchWith(value), 1) << value;
}

TEST(NationalSwitch, IsOffForEverythingElse) {
    for (char const* value : {"", "O", "N", "NO", "ON1", "ON ", " ON", "YES", "1", "OM", "oo", "nn", "0N"})
        EXPECT_EQ(switchWith(value), 0) << '\'' << value << '\'';
}

TEST(NationalSwitch, IsOffWithoutTheVariable) { EXPECT_EQ(switchWith(nullptr), 0); }

TEST(NationalSwitch, IsReadUnderOneNameOnly) {
    setenv("KORVA I18N", "ON", 1);
    EXPECT_EQ(switchWith(nullptr), 0);
    unsetenv("KORVA I18N");
}

TEST(NationalSwitch, IsNotReadAgainAfterLoading) {
    int const before = DString::fgI18NState;
    setenv("KORVA_I18N", before == 1 ? "OFF" : "ON", 1);
    DString const made("abc");
    EXPECT_EQ(DString::fgI18NState, before);
    unsetenv("KORVA_I18N");
}

} // namespace

int main(int argc, char** argv) {
    if (argc == 2 && std::strcmp(argv[1], childArgument) == 0) return answerBase + DString::fgI18NState;
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
