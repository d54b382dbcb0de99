// What start-up leaves: the new-handler, nobody registered as trace function, and the
// national-language switch. State is made once for each process, so the program runs itself again for each
// case: with the argument --state it only says in what state it found the library.
#include "tests/base/start_up_state.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstring>

namespace {

std::string program;

/// What a new process says of its state, started with `environment`, which is in the shell's words.
std::string stateWith(std::string const& environment) {
    std::string const command = "env -u KORVA_I18N " + environment + " '" + program + "' --state";
    FILE* const pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) return "(no pipe)";
    std::string output;
    for (int c; (c = std::fgetc(pipe)) != EOF;)
        output += static_cast<char>(c);
    EXPECT_EQ(pclose(pipe), 0) << command;
    return output;
}

std::string const off = "handler=installed default=null user=null switch=0";
std::string const on = "handler=installed default=null user=null switch=1";

} // namespace

TEST(StartUp, LeavesTheNewHandlerInstalledAndTheTraceFunctionHolderEmpty) { EXPECT_EQ(stateWith(""), off); }

TEST(StartUp, SwitchesNationalLanguageOnForTwoLettersInAnyCase) {
    EXPECT_EQ(stateWith("KORVA_I18N=on"), on);
    EXPECT_EQ(stateWith("KORVA_I18N=On"), on);
    EXPECT_EQ(stateWith("KORVA_I18N=oN"), on);
    EXPECT_EQ(stateWith("KORVA_I18N=ON"), on);
}

TEST(StartUp, LeavesNationalLanguageOffForAnythingElse) {
    for (char const* value : {"''", "O", "ON1", "'ON '", "' ON'", "YES", "NO", "OM", "00", "1", "true"})
        EXPECT_EQ(stateWith(std::string("KORVA_I18N=") + value), off) << value;
}

int main(int argc, char** argv) {
    if (argc == 2 && std::strcmp(argv[1], "--state") == 0) {
        std::fputs(observedState().c_str(), stdout);
        return 0;
    }
    ::testing::InitGoogleTest(&argc, argv);
    program = argv[0];
    return RUN_ALL_TESTS();
}
