// Turns the samples of the documentation into one C++ source. How a sample is written, tests/docs/README.md
// tells. Compiling and running them is the business of the test.
#include "tests/docs/lines.h"

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

/// The lines between two fences of a page, or between `@code` and `@endcode` of a comment.
struct Block {
    std::string language;
    std::size_t line; ///< Of the first line of the block.
    Lines text;
};

struct FoundSample {
    std::string file;
    std::size_t line;
    Lines code;
    Lines shown; ///< What it prints, commands included.
};

std::string_view withoutIndentation(std::string_view line) {
    std::size_t const first = line.find_first_not_of(' ');
    return first == std::string_view::npos ? std::string_view() : line.substr(first);
}

std::string fileNameOf(std::string const& path) { return path.substr(path.rfind('/') + 1); }

// Reading
// -----------------------------------------------------------------------------------------------------

std::vector<Block> blocksOfPage(Lines const& lines, std::string const& path) {
    std::vector<Block> blocks;
    bool isOpen = false;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        bool const isFence = startsWith(lines[i], "```");
        if (isFence && !isOpen)
            blocks.push_back({lines[i].substr(3), i + 2, {}});
        else if (!isFence && isOpen)
            blocks.back().text.push_back(lines[i]);
        if (isFence) isOpen = !isOpen;
    }
    if (isOpen) fail(path, blocks.back().line, "the block has no end");
    return blocks;
}

std::vector<Block> blocksOfHeader(Lines const& lines, std::string const& path) {
    std::vector<Block> blocks;
    bool isOpen = false;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        std::string_view comment = withoutIndentation(lines[i]);
        bool const isDocumentation = startsWith(comment, "///");
        if (isOpen && !isDocumentation) fail(path, blocks.back().line, "the @code block has no @endcode");
        if (!isDocumentation) continue;
        comment.remove_prefix(startsWith(comment, "/// ") ? 4 : 3);
        if (startsWith(comment, "@code")) {
            blocks.push_back({"cpp", i + 2, {}});
            isOpen = true;
        } else if (startsWith(comment, "@endcode")) {
            isOpen = false;
        } else if (isOpen) {
            blocks.back().text.emplace_back(comment);
        }
    }
    return blocks;
}

/// The comments that follow code.
Lines trailingComments(Lines const& code) {
    Lines comments;
    for (std::string const& line : code) {
        std::size_t const comment = line.rfind(" // ");
        if (comment != std::string::npos && line.find_first_not_of(' ') < comment)
            comments.push_back(line.substr(comment + 4));
    }
    return comments;
}

std::vector<FoundSample> samplesOf(std::string const& path) {
    std::string const file = fileNameOf(path);
    Lines const lines = readLines(path);
    std::vector<Block> const blocks =
        endsWith(path, ".md") ? blocksOfPage(lines, path) : blocksOfHeader(lines, path);
    std::vector<FoundSample> samples;
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        if (blocks[i].language != "cpp") continue;
        bool const hasOutput = i + 1 < blocks.size() && blocks[i + 1].language == "text";
        Lines shown = hasOutput ? blocks[i + 1].text : trailingComments(blocks[i].text);
        if (shown.empty()) fail(path, blocks[i].line, "the sample does not show what it prints");
        samples.push_back({file, blocks[i].line, blocks[i].text, std::move(shown)});
    }
    return samples;
}

// Writing
// -----------------------------------------------------------------------------------------------------

std::string const endOfLiteral = ")sample\"";

std::string literal(std::string const& text) { return "R\"sample(" + text + endOfLiteral; }

std::string nameOf(FoundSample const& sample) {
    std::string name = sample.file + "_" + std::to_string(sample.line);
    for (char& c : name)
        if (c == '.' || c == '-') c = '_';
    return name;
}

bool isWholeProgram(FoundSample const& sample) {
    for (std::string const& line : sample.code)
        if (startsWith(line, "int main()")) return true;
    return false;
}

/// What stands at file scope even if the sample is inside of a function.
void writeIncludes(std::ostream& out, std::vector<FoundSample> const& samples) {
    out << "#include \"tests/docs/sample.h\"\n#include <kelcl/fmt.h>\n#include <kelcl/kelcl.h>\n";
    for (char const* header :
         {"algorithm", "cctype",  "cerrno",      "chrono",   "clocale",       "cstdio", "cstdlib",
          "exception", "fstream", "iomanip",     "iostream", "map",           "new",    "optional",
          "sstream",   "string",  "string_view", "thread",   "unordered_set", "vector"})
        out << "#include <" << header << ">\n";
    for (FoundSample const& sample : samples)
        for (std::string const& line : sample.code)
            if (startsWith(line, "#include")) out << line << '\n';
}

/// The code in a namespace of its own that is named for the place, so that a compiler's message leads there.
/// Lines are counted from the sample's first one, in a file that every host of the guide is called: reports
/// and traces show both.
void writeCode(std::ostream& out, FoundSample const& sample) {
    bool const isWhole = isWholeProgram(sample);
    out << "\nnamespace " << nameOf(sample) << " {\n";
    if (!isWhole) out << "int main() {\n";
    out << "#line 1 \"host.cpp\"\n";
    for (std::string const& line : sample.code) {
        // Only the main function that starts a program may end without a return.
        bool const isEnd = isWhole && &line == &sample.code.back();
        if (isEnd && line != "}")
            fail(sample.file, sample.line, "a whole program ends with its main function");
        out << (startsWith(line, "#include") ? "" : isEnd ? "return 0; }" : line) << '\n';
    }
    if (!isWhole) out << "return 0;\n}\n";
    out << "}\n";
}

/// One entry for each command; without a command the text is what `./host` prints.
void writeTranscript(std::ostream& out, Lines const& shown) {
    bool isFirst = true;
    std::ostringstream output;
    auto const endStep = [&] { out << literal(output.str()) << "}"; };
    for (std::string const& line : shown) {
        bool const isCommand = startsWith(line, "$ ");
        if (isCommand || isFirst) {
            if (!isFirst) {
                endStep();
                out << ", ";
            }
            out << "{" << literal(isCommand ? line.substr(2) : "./host") << ", ";
            output.str("");
            isFirst = false;
        }
        if (!isCommand) output << line << '\n';
    }
    endStep();
}

void writeTable(std::ostream& out, std::vector<FoundSample> const& samples) {
    out << "\nstd::vector<Sample> const& allSamples() {\n    static std::vector<Sample> const samples{\n";
    for (FoundSample const& sample : samples) {
        out << "        {" << literal(sample.file + ":" + std::to_string(sample.line)) << ", &"
            << nameOf(sample) << "::main, {";
        writeTranscript(out, sample.shown);
        out << "}},\n";
    }
    out << "    };\n    return samples;\n}\n";
}

void extract(std::string const& output, Lines const& inputs) {
    std::vector<FoundSample> samples;
    for (std::string const& input : inputs)
        for (FoundSample& sample : samplesOf(input))
            samples.push_back(std::move(sample));
    std::ostringstream source;
    writeIncludes(source, samples);
    for (FoundSample const& sample : samples)
        writeCode(source, sample);
    source << "#line 1 \"table of samples\"\n";
    writeTable(source, samples);
    std::ofstream file(output);
    file << source.str();
    if (!file.flush()) throw std::runtime_error(output + ": cannot be written");
}

} // namespace

int main(int argc, char** argv) {
    Lines const arguments(argv + 1, argv + argc);
    if (arguments.size() < 2) {
        std::cerr << "usage: extract_samples OUTPUT.cpp PAGE.md|HEADER.h...\n";
        return EXIT_FAILURE;
    }
    try {
        extract(arguments.front(), Lines(arguments.begin() + 1, arguments.end()));
    } catch (std::exception const& problem) {
        std::cerr << problem.what() << '\n';
        return EXIT_FAILURE;
    }
    return EXIT_SUCCESS;
}
