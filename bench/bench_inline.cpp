// What programs do with DString most often, much of it compiled into them, beside std::string: single bytes,
// comparing, hashing, numbers. The argument is a number of bytes. Results are compared before anything is
// timed.
#include <kelcl/dstring.h>

#include <benchmark/benchmark.h>

#include <charconv>
#include <cstdio>
#include <functional>
#include <random>
#include <string>
#include <type_traits>
#include <vector>

namespace {

std::string textOf(benchmark::State const& state) {
    std::string text(static_cast<std::size_t>(state.range(0)), ' ');
    for (std::size_t i = 0; i < text.size(); ++i)
        text[i] = static_cast<char>('a' + i % 26);
    return text;
}

// Single bytes
// ----------------------------------------------------------------------------------------------------

unsigned int sumOf(DString const& text) {
    unsigned int sum = 0;
    for (unsigned int i = 1; i <= text.length(); ++i)
        sum += static_cast<unsigned char>(text[i]);
    return sum;
}
unsigned int sumOf(std::string const& text) {
    unsigned int sum = 0;
    for (std::size_t i = 0; i < text.size(); ++i)
        sum += static_cast<unsigned char>(text.at(i));
    return sum;
}

void fill(DString& text) {
    for (unsigned int i = 1; i <= text.length(); ++i)
        text[i] = static_cast<char>('a' + (i & 15));
}
void fill(std::string& text) {
    for (std::size_t i = 0; i < text.size(); ++i)
        text.at(i) = static_cast<char>('a' + ((i + 1) & 15));
}

template <class String>
void readEach(benchmark::State& state) {
    String const text(textOf(state));
    if (sumOf(text) != sumOf(textOf(state))) state.SkipWithError("the results differ");
    for (auto _ : state)
        benchmark::DoNotOptimize(sumOf(text));
}

template <class String>
void writeEach(benchmark::State& state) {
    String text(textOf(state));
    std::string expected(textOf(state));
    fill(text);
    fill(expected);
    if (DString(text) != expected) state.SkipWithError("the results differ");
    for (auto _ : state) {
        fill(text);
        benchmark::DoNotOptimize(text.data());
    }
}

BENCHMARK_TEMPLATE(readEach, DString)->Arg(64)->Arg(1024);
BENCHMARK_TEMPLATE(readEach, std::string)->Arg(64)->Arg(1024);
BENCHMARK_TEMPLATE(writeEach, DString)->Arg(64)->Arg(1024);
BENCHMARK_TEMPLATE(writeEach, std::string)->Arg(64)->Arg(1024);

// Comparing and hashing
// ----------------------------------------------------------------------------------------------------

/// What is measured, on a text, its copy elsewhere, and one that is longer by a byte.
template <class String, class Operation>
void onPairs(benchmark::State& state, bool sameLength, Operation operation) {
    String left(textOf(state));
    String right(sameLength ? textOf(state) : textOf(state) + 'x');
    for (auto _ : state) {
        benchmark::DoNotOptimize(left);
        benchmark::DoNotOptimize(right);
        benchmark::DoNotOptimize(operation(left, right));
    }
}

template <class String>
void equal(benchmark::State& state) {
    onPairs<String>(state, true, [](String const& left, String const& right) { return left == right; });
}
template <class String>
void equalOfOtherLength(benchmark::State& state) {
    onPairs<String>(state, false, [](String const& left, String const& right) { return left == right; });
}
template <class String>
void less(benchmark::State& state) {
    onPairs<String>(state, true, [](String const& left, String const& right) { return left < right; });
}
template <class String>
void hash(benchmark::State& state) {
    onPairs<String>(state, true, [](String const& left, String const&) { return std::hash<String>()(left); });
}

#define KELCL_PAIRS(operation)                                                                               \
    BENCHMARK_TEMPLATE(operation, DString)->Arg(8)->Arg(24)->Arg(64)->Arg(1024)->Arg(65536);                 \
    BENCHMARK_TEMPLATE(operation, std::string)->Arg(8)->Arg(24)->Arg(64)->Arg(1024)->Arg(65536)
KELCL_PAIRS(equal);
KELCL_PAIRS(equalOfOtherLength);
KELCL_PAIRS(less);
KELCL_PAIRS(hash);

// Numbers
// ----------------------------------------------------------------------------------------------------

std::vector<double> const& numbers() {
    static std::vector<double> const made = [] {
        std::mt19937_64 random(1); // NOLINT: the same numbers each time
        std::vector<double> result(1000);
        for (double& number : result)
            number = static_cast<double>(random() >> 20) / static_cast<double>(1 + random() % 100000);
        return result;
    }();
    return made;
}

std::string printed(double number) {
    char text[64];
    return {text, static_cast<std::size_t>(std::snprintf(text, sizeof text, "%.15g", number))};
}
std::string byToChars(double number) {
    char text[64];
    return {text, std::to_chars(text, text + sizeof text, number, std::chars_format::general, 15).ptr};
}

template <auto textOfNumber>
void thousandNumbers(benchmark::State& state) {
    for (double const number : numbers())
        if (textOfNumber(number) != printed(number)) state.SkipWithError("the results differ");
    for (auto _ : state)
        for (double const number : numbers())
            benchmark::DoNotOptimize(textOfNumber(number));
}

void fromDouble(benchmark::State& state) {
    thousandNumbers<[](double number) { return DString(number); }>(state);
}
void fromDoubleByToChars(benchmark::State& state) { thousandNumbers<byToChars>(state); }
void fromDoubleByPrintf(benchmark::State& state) { thousandNumbers<printed>(state); }

BENCHMARK(fromDouble);
BENCHMARK(fromDoubleByToChars);
BENCHMARK(fromDoubleByPrintf);

} // namespace
