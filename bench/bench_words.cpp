// The operations on words, and matching, of DString beside what a user would otherwise pick. The argument is
// the number of bytes (for words: of words); two of the sizes stand 16 apart, to show how the work grows.
#include "bench/operations.h"

#include <kelcl/dstring.h>

#include <benchmark/benchmark.h>

#if KELCL_BENCH_ABSEIL // the build found it, and links it
#include <absl/strings/str_split.h>
#endif
#if KELCL_BENCH_QT // the build found it, and links it
#include <QByteArray>
#endif

#include <fnmatch.h>

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace bench;

constexpr char separators[] = "\t\n\v\f\r ";

std::vector<string_view> split(string_view text) {
    std::vector<string_view> words;
    for (std::size_t at = text.find_first_not_of(separators); at != none;) {
        std::size_t const end = std::min(text.find_first_of(separators, at), text.size());
        words.push_back(text.substr(at, end - at));
        at = text.find_first_not_of(separators, end);
    }
    return words;
}

std::size_t phraseIn(string const& text, string_view phrase) {
    std::vector<string_view> const own = split(text);
    std::vector<string_view> const wanted = split(phrase);
    auto const found = std::search(own.begin(), own.end(), wanted.begin(), wanted.end());
    return found == own.end() ? 0 : static_cast<std::size_t>(found - own.begin()) + 1;
}

string joined(string const& text) {
    string result;
    for (string_view const word : split(text)) {
        if (!result.empty()) result += ' ';
        result += word;
    }
    return result;
}

/// The usual greedy matcher with one place to come back to.
bool matches(string_view text, string_view wanted) {
    std::size_t t = 0;
    std::size_t w = 0;
    std::size_t run = none;
    std::size_t runEnd = 0;
    while (t < text.size()) {
        if (w < wanted.size() && wanted[w] == '*') {
            run = w++;
            runEnd = t;
        } else if (w < wanted.size() && (wanted[w] == '?' || wanted[w] == text[t])) {
            ++w;
            ++t;
        } else if (run != none) {
            w = run + 1;
            t = ++runEnd;
        } else {
            return false;
        }
    }
    return wanted.find_first_not_of('*', w) == none;
}

constexpr char manyRuns[] = "*et*ta*in*no*sh*rd*lu*ae*oe*it*zz*";

void registerWords() {
    auto const counted = [](string const& t) { return split(t).size(); };
    Work("numWords", wordCounts, wordsOf, counted)
        .byKelcl([](DString const& s) { return s.numWords(); })
#if KELCL_BENCH_ABSEIL
        .byStandard("abseil",
                    [](string const& t) {
                        std::vector<absl::string_view> const words =
                            absl::StrSplit(t, absl::ByAnyChar(separators), absl::SkipEmpty());
                        return words.size();
                    })
#endif
        .byStandard("std", counted);

    auto const third = [](string const& t) {
        std::vector<string_view> const words = split(t);
        std::size_t const n = words.size() / 3;
        return string(words[n].data(),
                      static_cast<std::size_t>(words[2 * n].data() + words[2 * n].size() - words[n].data()));
    };
    Work("words", wordCounts, wordsOf, third)
        .byKelcl([](DString const& s) {
            unsigned int const n = s.numWords() / 3;
            return s.words(n + 1, n + 1);
        })
        .byStandard("std", third);

    Work("space", wordCounts, wordsOf, joined)
        .byKelcl([](DString const& s) { return DString(s).space(); })
#if KELCL_BENCH_QT
        .byQt([](QByteArray const& t) { return t.simplified(); })
#endif
        .byStandard("std", joined);

    auto const phrase = [](string const& t) { return phraseIn(t, "w17 w18 w18"); };
    Work("findPhrase", wordCounts, wordsOf, phrase)
        .byKelcl([](DString const& s) { return s.findPhrase("w17 w18 w18"); })
        .byStandard("std", phrase);

    auto const like = [](string const& t) { return matches(t, manyRuns); };
    Work("isLike", texts, proseOf, like)
        .byKelcl([](DString const& s) { return s.isLike(manyRuns); })
        .byStandard("greedy", like);
    Work("isLike_fnmatch", {64, 1024}, proseOf, like)
        .byKelcl([](DString const& s) { return s.isLike(manyRuns); })
        .byStandard("fnmatch", [](string const& t) { return fnmatch(manyRuns, t.c_str(), 0) == 0; });
}

[[maybe_unused]] bool const registered = [] {
    registerWords();
    return true;
}();

} // namespace
