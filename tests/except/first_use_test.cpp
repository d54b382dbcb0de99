// What is made once, on first use: the name of the message catalog and the default trace function. The
// program runs itself again for each case; with the argument --first-use it only says what it found.
#include <kelcl/dbase.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

namespace {

std::string program;

std::string outputWith(std::string const& environment) {
    std::string const command =
        "env -u 'KORVA MSGFILE' -u KORVA_MSGFILE " + environment + " '" + program + "' --first-use 2>&1";
    FILE* const pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) return "(no pipe)";
    std::string output;
    for (int c; (c = std::fgetc(pipe)) != EOF;)
        output += static_cast<char>(c);
    EXPECT_EQ(pclose(pipe), 0) << command;
    return output;
}

std::string const report = "\nDException exception thrown.\n   Location information is unavailable.\n"
                           "   Error Id is unavailable.\n   Error Code group is Kel Class Library\n"
                           "   Exception text is:\n      text\n";

/// The name is asked for, the environment changed, and the name asked for again.
void showFirstUse() {
    std::fprintf(stderr, "%s\n", DBase::messageFile());
    setenv("KORVA MSGFILE", "changed.cat", 1);
    std::fprintf(stderr, "%s\n", DBase::messageFile());
    DException("text").logExceptionData();
}

} // namespace

TEST(FirstUse, TakesTheCatalogNameFromTheEnvironmentOnce) {
    EXPECT_EQ(outputWith("'KORVA MSGFILE=/opt/my.cat'"), "/opt/my.cat\n/opt/my.cat\n" + report);
}

TEST(FirstUse, TakesTheDefaultCatalogNameWithoutTheVariable) {
    EXPECT_EQ(outputWith(""), "kelcl.cat\nkelcl.cat\n" + report);
}

TEST(FirstUse, TakesAnEmptyCatalogNameAsItIs) { EXPECT_EQ(outputWith("'KORVA MSGFILE='"), "\n\n" + report); }

TEST(FirstUse, DoesNotReadTheCatalogNameUnderAnUnderscore) {
    EXPECT_EQ(outputWith("KORVA_MSGFILE=/opt/my.cat"), "kelcl.cat\nkelcl.cat\n" + report);
}

int main(int argc, char** argv) {
    if (argc == 2 && std::strcmp(argv[1], "--first-use") == 0) {
        showFirstUse();
        return 0;
    }
    ::testing::InitGoogleTest(&argc, argv);
    program = argv[0];
    return RUN_ALL_TESTS();
}
