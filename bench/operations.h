// What the benchmarks of the operations of DString share: inputs, and the contenders for a work: the standard
// library, the C library, and where the build has them Qt, Abseil and GMP. Every contender's result is
// compared with a plain one before anything is timed.
#ifndef KELCL_BENCH_OPERATIONS_H
#define KELCL_BENCH_OPERATIONS_H

#include <kelcl/dstring.h>

#include <benchmark/benchmark.h>

#if KELCL_BENCH_QT // the build found it, and links it
#include <QByteArray>
#endif

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace bench {

using std::string;
using std::string_view;

inline constexpr std::size_t none = string_view::npos;

// Inputs

inline string randomBytes(std::size_t n) {
    std::mt19937 random(7);
    string text(n, '\0');
    for (char& byte : text)
        byte = static_cast<char>(random());
    return text;
}

/// Words of two to nine small letters in lines of about 70 bytes.
inline string proseOf(std::size_t n) {
    std::mt19937 random(11);
    string text;
    while (text.size() < n) {
        for (std::size_t length = 2 + random() % 8; length > 0; --length)
            text.push_back("etaoinshrdlucmfwypvbgk"[std::min(random() % 22, random() % 22)]);
        text.push_back(random() % 12 == 0 ? '\n' : ' ');
    }
    text.resize(n);
    return text;
}

/// Prose with a comma in place of every eighth byte.
inline string manyCommas(std::size_t n) {
    string text = proseOf(n);
    for (std::size_t i = 0; i < n; i += 8)
        text[i] = ',';
    return text;
}

inline string blanksAround(std::size_t n) {
    string text(n, ' ');
    text[n / 2] = 'x';
    return text;
}

inline string randomDigits(std::size_t n, string_view digits) {
    std::mt19937 random(13);
    string text(n, '1');
    for (std::size_t i = 1; i < n; ++i)
        text[i] = digits[random() % digits.size()];
    return text;
}
inline string hexDigits(std::size_t n) { return randomDigits(n, "0123456789ABCDEF"); }
inline string binaryDigits(std::size_t n) { return randomDigits(n, "01"); }
inline string decimalDigits(std::size_t n) { return randomDigits(n, "0123456789"); }
inline string numberBytes(std::size_t n) {
    string text = randomBytes(n);
    text[0] = '\x7F';
    return text;
}

/// So many words, each with a number in it, two separators between them.
inline string wordsOf(std::size_t n) {
    string text;
    for (std::size_t i = 0; i < n; ++i) {
        text += 'w';
        text += std::to_string(i % 1009);
        text += i % 3 == 0 ? " \t" : "  ";
    }
    return text;
}

// What results look like

inline string plain(std::size_t number) { return std::to_string(number); }
inline string plain(unsigned int number) { return std::to_string(number); }
inline string plain(bool truth) { return truth ? "yes" : "no"; }
inline string plain(string const& text) { return text; }
inline string plain(DString const& text) { return string(text.data(), text.length()); }
#if KELCL_BENCH_QT
inline string plain(QByteArray const& text) { return text.toStdString(); }
#endif

/// An offset as a 1-based position, 0 for none.
inline std::size_t position(std::size_t offset) { return offset == none ? 0 : offset + 1; }
inline std::size_t position(void const* found, string_view text) {
    return found == nullptr ? 0 : static_cast<std::size_t>(static_cast<char const*>(found) - text.data()) + 1;
}

// Registration

using Sizes = std::vector<std::int64_t>;
using Input = string (*)(std::size_t);
inline Sizes const texts = {64, 1024, 1 << 16, 1 << 20};
inline Sizes const numbers = {64, 1024, 4096, 16384};
inline Sizes const wordCounts = {6250, 100000};

/// One work, done by several contenders on the same input. The first one sets the result.
template <class Reference>
class Work {
public:
    Work(char const* name, Sizes sizes, Input input, Reference reference)
        : name_(name), sizes_(std::move(sizes)), input_(input), reference_(reference) {}

    /// `make` turns the text into what `run` works on, outside of what is timed.
    template <class Make, class Run>
    Work& by(char const* who, Make make, Run run) {
        auto* const benchmark = benchmark::RegisterBenchmark(
            (string(name_) + "/" + who).c_str(),
            [make, run, input = input_, reference = reference_](benchmark::State& state) {
                string const text = input(static_cast<std::size_t>(state.range(0)));
                auto const subject = make(text);
                if (plain(run(subject)) != plain(reference(text))) {
                    state.SkipWithError("the result differs");
                    return;
                }
                for (auto step : state) {
                    auto const* source = &subject;
                    benchmark::DoNotOptimize(source);
                    auto result = run(*source);
                    benchmark::DoNotOptimize(result);
                    benchmark::ClobberMemory();
                }
                state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
            });
        for (std::int64_t const size : sizes_)
            benchmark->Arg(size);
        return *this;
    }
    template <class Run>
    Work& byKelcl(Run run) {
        return by(
            "kelcl", [](string const& text) { return DString(text); }, run);
    }
    template <class Run>
    Work& byStandard(char const* who, Run run) {
        return by(
            who, [](string const& text) { return text; }, run);
    }
#if KELCL_BENCH_QT
    template <class Run>
    Work& byQt(Run run) {
        return by(
            "qt", [](string const& text) { return QByteArray::fromStdString(text); }, run);
    }
#endif

private:
    char const* name_;
    Sizes sizes_;
    Input input_;
    Reference reference_;
};

} // namespace bench

#endif
