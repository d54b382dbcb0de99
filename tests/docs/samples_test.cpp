// Runs every sample of the documentation in a process of its own and compares what it prints with what the
// page shows. Where samples come from is the extractor's business.
#include "tests/docs/sample.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <sstream>

#include <gtest/gtest.h>

#include <unistd.h>

namespace {

namespace fs = std::filesystem;

char const* const numberFile = "number of the sample";
char const* const processFile = "id of the process";

/// What a user's shell would hold: a plain locale, the library's catalogs, a fixed time zone.
void setEnvironment() {
    ::unsetenv("LC_ALL");
    ::setenv("LANG", "C", 1);
    ::setenv("TZ", "UTC0", 1);
    std::string const catalogs = KELCL_TEST_CATALOG_DIR;
    ::setenv("NLSPATH", (catalogs + "/%l/LC_MESSAGES/%N:" + catalogs + "/%N").c_str(), 1);
}

// The part that stands in for the host program
// -----------------------------------------------------------------

/// Started as `./host` in a folder that the test has made.
int runSample() {
    std::ofstream(processFile) << ::getpid() << std::flush;
    std::size_t number = 0;
    std::ifstream(numberFile) >> number;
    return allSamples().at(number).run();
}

// The part that tests
// ------------------------------------------------------------------------------------------

/// An empty folder in which `./host` is the sample.
class SampleFolder {
public:
    explicit SampleFolder(std::size_t number)
        : path_(fs::absolute(KELCL_TEST_WORK_DIR) / ("sample" + std::to_string(number))) {
        fs::remove_all(path_);
        fs::create_directories(path_);
        std::ofstream(path_ / numberFile) << number;
        // A link, not a script: a shell would drop the variables whose names have blanks.
        fs::create_symlink(fs::read_symlink("/proc/self/exe"), path_ / "host");
    }
    ~SampleFolder() {
        std::error_code ignored;
        fs::remove_all(path_, ignored);
    }
    SampleFolder(SampleFolder const&) = delete;
    SampleFolder& operator=(SampleFolder const&) = delete;

    /// What the command prints to standard output. A command that fails fails the test.
    std::string run(std::string const& command) const {
        std::string const inFolder = "cd '" + path_.string() + "' && " + command;
        std::FILE* const pipe = ::popen(inFolder.c_str(), "r");
        if (pipe == nullptr) throw std::runtime_error("no process for: " + command);
        std::string output;
        char part[4096];
        for (std::size_t count = 0; (count = std::fread(part, 1, sizeof part, pipe)) != 0;)
            output.append(part, count);
        EXPECT_EQ(::pclose(pipe), 0) << command;
        return withPlainProcessId(output);
    }

private:
    fs::path path_;

    /// Trace lines hold the process id in six digits; pages show 004711 for it.
    std::string withPlainProcessId(std::string text) const {
        unsigned long process = 0;
        std::ifstream(path_ / processFile) >> process;
        std::ostringstream field;
        field << ' ' << std::setw(6) << std::setfill('0') << process % 1000000 << ":01 ";
        std::string const plain = " 004711:01 ";
        for (std::size_t at = 0; (at = text.find(field.str(), at)) != std::string::npos; at += plain.size())
            text.replace(at, field.str().size(), plain);
        return text;
    }
};

class SampleTest : public ::testing::Test {
public:
    explicit SampleTest(std::size_t number) : number_(number) {}

    void TestBody() override {
        Sample const& sample = allSamples().at(number_);
        SampleFolder const folder(number_);
        for (Step const& step : sample.transcript)
            EXPECT_EQ(folder.run(step.command), step.output) << sample.place << ": " << step.command;
    }

private:
    std::size_t number_;
};

void registerSamples() {
    std::vector<Sample> const& samples = allSamples();
    for (std::size_t i = 0; i < samples.size(); ++i) {
        std::string name = "SampleAt_" + samples[i].place + "_PrintsWhatThePageShows";
        std::replace_if(
            name.begin(), name.end(), [](unsigned char c) { return std::isalnum(c) == 0; }, '_');
        ::testing::RegisterTest("Documentation", name.c_str(), nullptr, nullptr, __FILE__, __LINE__,
                                [i]() -> SampleTest* { return new SampleTest(i); });
    }
}

} // namespace

int main(int argc, char** argv) {
    if (fs::path(argv[0]).filename() == "host") return runSample();
    setEnvironment();
    ::testing::InitGoogleTest(&argc, argv);
    registerSamples();
    return RUN_ALL_TESTS();
}
