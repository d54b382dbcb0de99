// What programs do with whole documents, in UTF-8, beside the same by the standard library and by what else
// the build has. The documents are files: the licence that every Debian machine has, or those that
// KELCL_BENCH_DOCUMENTS names, with colons between them; the argument is the number of the file. Pages of the
// manual in other languages are good ones: zcat /usr/share/man/ja/man1/dpkg-split.1.gz > /tmp/ja.txt
#include "bench/operations.h"

#include <kelcl/dstring.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cctype>
#include <clocale>
#include <cstddef>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <unordered_map>
#include <vector>

namespace {

using namespace bench;

std::vector<string> const& documents() {
    static std::vector<string> const read = [] {
        char const* const names = std::getenv("KELCL_BENCH_DOCUMENTS");
        std::istringstream list(names != nullptr ? names : "/usr/share/common-licenses/GPL-3");
        std::vector<string> texts;
        for (string name; std::getline(list, name, ':');) {
            std::ifstream file(name, std::ios::binary);
            texts.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
        }
        return texts;
    }();
    return read;
}

string documentOf(std::size_t n) { return documents()[n]; }

constexpr char const blanks[] = " \t\n\v\f\r";

/// Calls `visit(word)` for each word.
template <class Visit>
void eachWord(string_view text, Visit visit) {
    for (std::size_t at = text.find_first_not_of(blanks); at != none;) {
        std::size_t const end = std::min(text.find_first_of(blanks, at), text.size());
        visit(text.substr(at, end - at));
        at = text.find_first_not_of(blanks, end);
    }
}

std::size_t wordsIn(string const& text) {
    std::size_t count = 0;
    eachWord(text, [&count](string_view) { ++count; });
    return count;
}

std::size_t countOf(string_view text, string_view pattern) {
    std::size_t count = 0;
    for (std::size_t at = text.find(pattern); at != none; at = text.find(pattern, at + pattern.size()))
        ++count;
    return count;
}

string changed(string_view text, string_view from, string_view to) {
    string result;
    std::size_t at = 0;
    for (std::size_t found = text.find(from); found != none; found = text.find(from, at)) {
        result.append(text, at, found - at).append(to);
        at = found + from.size();
    }
    return result.append(text, at);
}

string inUpperCase(string text) {
    for (char& c : text)
        c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
    return text;
}

/// The lines, each without blanks at its ends, sorted and joined.
template <class Text, class Strip>
string sortedLines(string const& text, Strip strip) {
    std::istringstream stream(text);
    std::vector<Text> lines;
    for (string line; std::getline(stream, line);)
        lines.push_back(strip(Text(line)));
    std::sort(lines.begin(), lines.end());
    string joined;
    for (Text const& line : lines)
        joined.append(line.data(), line.size()).push_back('\n');
    return joined;
}

string stripped(string const& line) {
    std::size_t const first = line.find_first_not_of(blanks);
    return first == none ? string() : line.substr(first, line.find_last_not_of(blanks) - first + 1);
}

/// How often the most frequent word occurs.
template <class Text>
std::size_t mostFrequent(string_view text) {
    std::unordered_map<Text, std::size_t> counts;
    std::size_t most = 0;
    eachWord(text, [&](string_view word) { most = std::max(most, ++counts[Text(word)]); });
    return most;
}

void registerDocuments() {
    std::setlocale(LC_ALL, "C.UTF-8");
    Sizes numbers;
    for (std::size_t i = 0; i < documents().size(); ++i)
        numbers.push_back(static_cast<std::int64_t>(i));

    Work("words", numbers, documentOf, wordsIn)
        .byKelcl([](DString const& s) { return s.numWords(); })
        .byStandard("std", wordsIn);

    auto const the = [](string const& t) { return countOf(t, "the"); };
    Work("occurrences", numbers, documentOf, the)
        .byKelcl([](DString const& s) { return s.occurrencesOf("the"); })
#if KELCL_BENCH_QT
        .byQt([](QByteArray const& t) { return static_cast<std::size_t>(t.count("the")); })
#endif
        .byStandard("std", the);

    auto const change = [](string const& t) { return changed(t, "or", "and"); };
    Work("change", numbers, documentOf, change)
        .byKelcl([](DString const& s) { return DString(s).change("or", "and"); })
#if KELCL_BENCH_QT
        .byQt([](QByteArray const& t) { return QByteArray(t).replace("or", "and"); })
#endif
        .byStandard("std", change);

    Work("upperCase", numbers, documentOf, inUpperCase)
        .byKelcl([](DString const& s) { return DString(s).upperCase(); })
        .byStandard("std", [](string const& t) { return inUpperCase(t); });

    auto const sorted = [](string const& t) { return sortedLines<string>(t, stripped); };
    Work("strippedLinesSorted", numbers, documentOf, sorted)
        .by(
            "kelcl", [](string const& t) { return t; },
            [](string const& t) {
                return sortedLines<DString>(t, [](DString line) { return line.strip(); });
            })
        .byStandard("std", sorted);

    Work("wordsInMap", numbers, documentOf, mostFrequent<string>)
        .by(
            "kelcl", [](string const& t) { return t; },
            [](string const& t) { return mostFrequent<DString>(t); })
        .byStandard("std", [](string const& t) { return mostFrequent<string>(t); });
}

[[maybe_unused]] bool const registered = [] {
    registerDocuments();
    return true;
}();

} // namespace
