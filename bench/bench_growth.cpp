// How work grows: each row is done at a size and at 16 times that size. Read the column `growth`: 16 is
// linear, 256 is quadratic, and less than 16 has a fixed part. A new row is all that another work needs.
#include <kelcl/dstring.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <clocale>
#include <cstddef>
#include <functional>
#include <limits>
#include <string>
#include <vector>

namespace {

using std::size_t;
using std::string;

/// What is timed; it returns something that depends on all of the work.
using Work = std::function<size_t()>;

struct Row {
    char const* name;
    char const* locale;
    size_t size;                      ///< The smaller one; `make` may count anything in it.
    std::function<Work(size_t)> make; ///< Makes the inputs of a size, which are not timed.
};

string repeated(string const& part, size_t bytes) {
    string text;
    while (text.size() + part.size() <= bytes)
        text += part;
    return text;
}

/// The same again without the first byte and all after its half: it stands inside the characters only.
string shiftedHalf(string const& text) { return text.substr(1, text.size() / 2); }

Row indexInside(char const* name, char const* locale, string const& character) {
    return {name, locale, size_t{1} << 14, [character](size_t n) -> Work {
                string const characters = repeated(character, n);
                DString const text(characters);
                DString const pattern(shiftedHalf(characters));
                return [=] { return text.indexOf(pattern); };
            }};
}

Row lastIndexInside(char const* name, char const* locale, string const& character) {
    return {name, locale, size_t{1} << 14, [character](size_t n) -> Work {
                string const characters = repeated(character, n);
                DString const text(characters);
                DString const pattern(shiftedHalf(characters));
                return [=] { return text.lastIndexOf(pattern, text.length()); };
            }};
}

Row changeInside(char const* name, char const* locale, string const& character) {
    return {name, locale, size_t{1} << 14, [character](size_t n) -> Work {
                string const characters = repeated(character, n);
                DString const text(characters);
                DString const pattern(shiftedHalf(characters));
                return [=] { return DString(text).change(pattern, DString("x")).length(); };
            }};
}

/// A piece of a pattern that nearly matches at every place of the text.
Row wildcardsInside(char const* name, size_t literals) {
    return {name, "C", size_t{1} << 14, [literals](size_t n) -> Work {
                DString const text(string(n, 'a'));
                string pattern = "*";
                for (size_t i = 0; i < literals; ++i)
                    pattern += string(n / 4 / literals, 'a') + '?';
                pattern += "aQ*";
                return [=] { return size_t{text.isLike(pattern)}; };
            }};
}

Row phraseOfEqualWords() {
    return {"findPhrase/equal words", "C", size_t{1} << 14, [](size_t n) -> Work {
                DString const text(repeated("a ", n));
                DString const phrase(repeated("a ", n / 2) + "b");
                return [=] { return text.findPhrase(phrase); };
            }};
}

/// By the power 1.585 at most, which is 81, as in GMP's middle range.
Row conversion(char const* name, size_t size, char byte, DString& (DString::*convert)()) {
    return {name, "C", size, [byte, convert](size_t n) -> Work {
                DString const text(string(n, byte));
                return [=] {
                    DString copy(text);
                    return (copy.*convert)().length();
                };
            }};
}

std::vector<Row> rows() {
    return {
        wildcardsInside("isLike/near matches/2 literals", 1),
        wildcardsInside("isLike/near matches/9 literals", 8),
        phraseOfEqualWords(),
        conversion("c2d/1 KB", 1 << 10, '\x7F', &DString::c2d),
        conversion("c2d/16 KB", 1 << 14, '\x7F', &DString::c2d),
        conversion("d2c/1 KB", 1 << 10, '7', &DString::d2c),
        conversion("d2c/16 KB", 1 << 14, '7', &DString::d2c),
        indexInside("indexOf/inside/EUC-JP", "ja_JP.EUC-JP", "\xA4\xA2"),
        indexInside("indexOf/inside/SJIS", "ja_JP.SJIS", "\x83\x84"),
        indexInside("indexOf/inside/GB18030", "zh_CN.GB18030", "\xB0\xA1"),
        indexInside("indexOf/inside/UTF-8", "en_US.UTF-8", "\xC3\xA4"),
        lastIndexInside("lastIndexOf/inside/EUC-JP", "ja_JP.EUC-JP", "\xA4\xA2"),
        lastIndexInside("lastIndexOf/inside/SJIS", "ja_JP.SJIS", "\x83\x84"),
        lastIndexInside("lastIndexOf/inside/GB18030", "zh_CN.GB18030", "\xB0\xA1"),
        lastIndexInside("lastIndexOf/inside/UTF-8", "en_US.UTF-8", "\xC3\xA4"),
        changeInside("change/inside/EUC-JP", "ja_JP.EUC-JP", "\xA4\xA2"),
        changeInside("change/inside/UTF-8", "en_US.UTF-8", "\xC3\xA4"),
    };
}

double secondsOf(Work const& work) {
    auto const begin = std::chrono::steady_clock::now();
    benchmark::DoNotOptimize(work());
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

/// The least of several runs, but no more of them than fit into a short while.
double bestSecondsOf(Work const& work) {
    double best = std::numeric_limits<double>::infinity();
    double sum = 0;
    for (int run = 0; run < 20 && sum < 0.2; ++run) {
        double const seconds = secondsOf(work);
        best = std::min(best, seconds);
        sum += seconds;
    }
    return best;
}

void measure(benchmark::State& state, Row const& row) {
    if (std::setlocale(LC_ALL, row.locale) == nullptr) {
        state.SkipWithError("the locale is not there");
        return;
    }
    double const small = bestSecondsOf(row.make(row.size));
    Work const work = row.make(16 * row.size);
    double large = std::numeric_limits<double>::infinity();
    for (auto _ : state) {
        double const seconds = secondsOf(work);
        large = std::min(large, seconds);
        state.SetIterationTime(seconds);
    }
    state.counters["n"] = static_cast<double>(row.size);
    state.counters["us at n"] = small * 1e6;
    state.counters["growth"] = large / small;
}

bool const isRegistered = [] {
    static std::vector<Row> const all = rows();
    for (Row const& row : all)
        benchmark::RegisterBenchmark((string("growth/") + row.name).c_str(),
                                     [&row](benchmark::State& state) { measure(state, row); })
            ->UseManualTime()
            ->MinTime(0.05);
    return true;
}();

} // namespace
