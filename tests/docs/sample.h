// What the extractor finds in a page or a header and the test runs. The code itself is compiled, not kept
// here.
#ifndef KELCL_TESTS_DOCS_SAMPLE_H
#define KELCL_TESTS_DOCS_SAMPLE_H

#include <string>
#include <vector>

/// A command of a sample's transcript and what it prints.
struct Step {
    std::string command;
    std::string output;
};

struct Sample {
    std::string place; ///< File and line, for example "words.md:34".
    int (*run)();
    std::vector<Step> transcript;
};

/// All samples in the order of the pages; defined in the generated source.
std::vector<Sample> const& allSamples();

#endif
