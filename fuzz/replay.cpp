// Runs a fuzz target over the inputs that are kept for it, as a test.
#include "fuzz/target.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <vector>

int main(int argc, char** argv) {
    std::filesystem::path const folder = KELCL_FUZZ_CORPUS;
    std::vector<std::filesystem::path> inputs;
    for (auto const& entry : std::filesystem::directory_iterator(folder))
        inputs.push_back(entry.path());
    std::sort(inputs.begin(), inputs.end());

    LLVMFuzzerInitialize(&argc, &argv);
    for (std::filesystem::path const& input : inputs) {
        std::cerr << input << std::endl; // the last one shown is the one that failed
        std::ifstream in(input, std::ios::binary);
        std::string const bytes{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
        // Without a byte after them, for sanitizers to notice who reads further.
        std::vector<std::uint8_t> const exact(bytes.begin(), bytes.end());
        LLVMFuzzerTestOneInput(exact.data(), exact.size());
    }
    if (inputs.empty())
        std::cerr << "There is no input in " << folder << ": a target without one tests nothing.\n";
    return inputs.empty() ? EXIT_FAILURE : EXIT_SUCCESS;
}
