// What --help of every example prints.
#include "tests/support/program_run.h"

#include <gtest/gtest.h>

TEST(ExamplesHelp, IsWhatIsCommittedWhateverTheLocale) {
    for (std::string const name :
         {"datecalculator", "demo", "errorcollector", "logfilter", "recordconverter"}) {
        ProgramRun const run = runProgram(KELCL_TEST_EXAMPLES_DIR "/" + name, {"--help"});
        EXPECT_EQ(run.output, readFile(KELCL_TEST_EXPECTED_DIR "/" + name + ".help.txt"));
        EXPECT_EQ(run.errors, "") << name;
        EXPECT_EQ(run.status, 0) << name;
    }
}
