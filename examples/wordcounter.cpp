// Counts the words of several files, each in a thread of its own, and prints the most frequent ones. It shows
// strings that one thread makes and another one goes on with, exceptions of threads, words as views, and
// strings as keys of a hash table.
//
//   wordcounter /usr/share/common-licenses/*
#include <kelcl/kelcl.h>

#include <algorithm>
#include <clocale>
#include <exception>
#include <fstream>
#include <future>
#include <iostream>
#include <unordered_map>
#include <utility>
#include <vector>

namespace {

char const* const usage = "Usage: wordcounter FILE...\n"
                          "Counts the words of the FILEs and prints the ten that they have most often.\n";

char const* const punctuation = ".,;:!?'`\"()[]<>*=-_";

using Counts = std::unordered_map<DString, unsigned int>;

/// Counts words in small letters, without the punctuation around them.
/// @throws DAccessError when the file cannot be read.
Counts countWords(char const* fileName) {
    std::ifstream file(fileName);
    if (!file) throw DAccessError(DCLibErrorInfo(fileName)); // with the text for errno
    file.exceptions(std::ios::badbit);                       // reading fails with an exception, too
    Counts counts;
    for (DString const& line : kelcl::lines(file)) {
        for (std::string_view const word : kelcl::words(line)) {
            DString const plain = DString(word).strip(punctuation).lowerCase();
            if (!plain.isEmpty()) ++counts[plain];
        }
    }
    return counts;
}

struct Word {
    DString text;
    unsigned int count;
};

/// The words by their number, those of one number by the alphabet.
std::vector<Word> sorted(Counts const& counts) {
    std::vector<Word> words;
    for (auto const& [text, count] : counts)
        words.push_back({text, count});
    std::sort(words.begin(), words.end(), [](Word const& left, Word const& right) {
        return left.count != right.count ? left.count > right.count : left.text < right.text;
    });
    return words;
}

void printWords(std::vector<Word> const& words) {
    for (Word const& word : words)
        std::cout << kelcl::rightJustifiedInColumns(DString(word.count), 8) << "  "
                  << kelcl::leftJustifiedInColumns(word.text, 12)
                  << DString('#').copy(50 * word.count / words.front().count) << '\n';
}

/// Counts the files at the same time and adds up what they have.
Counts countFiles(std::vector<char const*> const& files) {
    std::vector<std::future<Counts>> results; // an exception of a thread comes out of get()
    results.reserve(files.size());
    for (char const* file : files)
        results.push_back(std::async(std::launch::async, countWords, file));
    Counts total;
    for (std::future<Counts>& result : results)
        for (auto const& [text, count] : result.get())
            total[text] += count;
    return total;
}

} // namespace

int main(int argumentCount, char** arguments) {
    // Before the first string and the first thread: the locale decides what a character is.
    std::setlocale(LC_ALL, "");
    if (argumentCount < 2) {
        std::cerr << usage;
        return 2;
    }
    try {
        std::vector<Word> words = sorted(countFiles({arguments + 1, arguments + argumentCount}));
        std::cout << words.size() << " different words\n";
        words.resize(std::min<std::size_t>(10, words.size()));
        printWords(words);
        return 0;
    } catch (DException const& failure) { // is no std::exception
        std::cerr << "wordcounter: " << DString(failure.text(0)) << '\n';
    } catch (std::exception const& failure) {
        std::cerr << "wordcounter: " << failure.what() << '\n';
    }
    return 2;
}
