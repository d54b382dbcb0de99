// DString beside std::string: copying, making, appending, concatenating and reading lines, each on the same
// bytes, and beside the C library's primitive where there is one. The argument is a number of bytes, or of
// appends. Results are compared before anything is timed.
#include <kelcl/dstring.h>

#include <benchmark/benchmark.h>

#include <cstring>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

std::size_t sizeOf(benchmark::State const& state) { return static_cast<std::size_t>(state.range(0)); }

std::string textOf(std::size_t size) {
    std::string text(size, ' ');
    for (std::size_t i = 0; i < size; ++i)
        text[i] = static_cast<char>('a' + i % 26);
    return text;
}

/// Whether both forms have the same text; the benchmark is given up when not.
bool agree(benchmark::State& state, DString const& ours, std::string const& theirs) {
    if (ours == theirs) return true;
    state.SkipWithError("the results differ");
    return false;
}

void countBytes(benchmark::State& state, std::size_t bytes) {
    state.SetBytesProcessed(static_cast<std::int64_t>(bytes) * static_cast<std::int64_t>(state.iterations()));
}

// Copying
// ----------------------------------------------------------------------------------------------------

template <class String>
void copy(benchmark::State& state) {
    std::string const bytes = textOf(sizeOf(state));
    String const text(bytes);
    if (!agree(state, DString(text), bytes)) return;
    for (auto _ : state) {
        String const made(text);
        benchmark::DoNotOptimize(made.data());
    }
}

void copyByMemcpy(benchmark::State& state) {
    std::string const bytes = textOf(sizeOf(state));
    std::vector<char> target(bytes.size() + 1);
    for (auto _ : state) {
        std::memcpy(target.data(), bytes.data(), bytes.size() + 1);
        benchmark::DoNotOptimize(target.data());
        benchmark::ClobberMemory();
    }
}

template <class String>
void assign(benchmark::State& state) {
    std::string const bytes = textOf(sizeOf(state));
    String const one(bytes);
    String const other(bytes + 'x');
    String text;
    text = one;
    if (!agree(state, DString(text), bytes)) return;
    bool odd = false;
    for (auto _ : state) {
        odd = !odd;
        text = odd ? other : one;
        benchmark::DoNotOptimize(text.data());
    }
}

template <class String>
[[gnu::noinline]] std::size_t lengthByValue(String text) {
    benchmark::DoNotOptimize(text.data());
    return text.size();
}

template <class String>
void passByValue(benchmark::State& state) {
    std::string const bytes = textOf(sizeOf(state));
    String const text(bytes);
    if (!agree(state, DString(text), bytes)) return;
    for (auto _ : state) {
        std::size_t length = lengthByValue(text);
        benchmark::DoNotOptimize(length);
    }
}

template <class String>
void makeAndDestroy(benchmark::State& state) {
    std::string const bytes = textOf(sizeOf(state));
    if (!agree(state, DString(String(bytes.data())), bytes)) return;
    for (auto _ : state) {
        String const made(bytes.data());
        benchmark::DoNotOptimize(made.data());
    }
    countBytes(state, bytes.size());
}

template <class String>
void makeAndDestroyEmpty(benchmark::State& state) {
    for (auto _ : state) {
        String const made;
        benchmark::DoNotOptimize(made.data());
    }
}

#define KELCL_SIZES Arg(8)->Arg(64)->Arg(1024)->Arg(1 << 20)

BENCHMARK_TEMPLATE(copy, DString)->KELCL_SIZES;
BENCHMARK_TEMPLATE(copy, std::string)->KELCL_SIZES;
BENCHMARK(copyByMemcpy)->KELCL_SIZES;
BENCHMARK_TEMPLATE(assign, DString)->KELCL_SIZES;
BENCHMARK_TEMPLATE(assign, std::string)->KELCL_SIZES;
BENCHMARK_TEMPLATE(passByValue, DString)->KELCL_SIZES;
BENCHMARK_TEMPLATE(passByValue, std::string)->KELCL_SIZES;
BENCHMARK_TEMPLATE(makeAndDestroy, DString)->KELCL_SIZES;
BENCHMARK_TEMPLATE(makeAndDestroy, std::string)->KELCL_SIZES;
BENCHMARK_TEMPLATE(makeAndDestroyEmpty, DString);
BENCHMARK_TEMPLATE(makeAndDestroyEmpty, std::string);

// Appending
// --------------------------------------------------------------------------------------------------

constexpr char const piece[] = "item 42;";
constexpr std::size_t pieceLength = sizeof piece - 1;

template <class String>
String appended(std::size_t times) {
    String text;
    for (std::size_t i = 0; i < times; ++i)
        text += piece;
    return text;
}

template <class String>
void append(benchmark::State& state) {
    std::size_t const times = sizeOf(state);
    if (!agree(state, appended<DString>(times), appended<std::string>(times))) return;
    for (auto _ : state) {
        String const text = appended<String>(times);
        benchmark::DoNotOptimize(text.data());
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(times) * static_cast<std::int64_t>(state.iterations()));
}

/// What is least: the bytes written into one array that is large enough.
void appendByMemcpy(benchmark::State& state) {
    std::size_t const times = sizeOf(state);
    for (auto _ : state) {
        std::vector<char> text(times * pieceLength + 1);
        char* out = text.data();
        for (std::size_t i = 0; i < times; ++i, out += pieceLength)
            std::memcpy(out, piece, pieceLength);
        benchmark::DoNotOptimize(text.data());
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(times) * static_cast<std::int64_t>(state.iterations()));
}

template <class String>
String appendedCharacters(std::size_t times) {
    String text;
    for (std::size_t i = 0; i < times; ++i)
        text += static_cast<char>('a' + i % 26);
    return text;
}

template <class String>
void appendCharacters(benchmark::State& state) {
    std::size_t const times = sizeOf(state);
    if (!agree(state, appendedCharacters<DString>(times), appendedCharacters<std::string>(times))) return;
    for (auto _ : state) {
        String const text = appendedCharacters<String>(times);
        benchmark::DoNotOptimize(text.data());
    }
    state.SetItemsProcessed(static_cast<std::int64_t>(times) * static_cast<std::int64_t>(state.iterations()));
}

// The time for one append must not grow with their number: compare items_per_second of n and 16 n.
#define KELCL_APPENDS Arg(100000)->Arg(1600000)->Unit(benchmark::kMillisecond)

BENCHMARK_TEMPLATE(append, DString)->KELCL_APPENDS;
BENCHMARK_TEMPLATE(append, std::string)->KELCL_APPENDS;
BENCHMARK(appendByMemcpy)->KELCL_APPENDS;
BENCHMARK_TEMPLATE(appendCharacters, DString)->KELCL_APPENDS;
BENCHMARK_TEMPLATE(appendCharacters, std::string)->KELCL_APPENDS;

// Concatenation
// ----------------------------------------------------------------------------------------------

template <class String>
String concatenated(String const& text) {
    return "[" + text + "] = " + text + ", " + text + ";";
}

template <class String>
void concatenate(benchmark::State& state) {
    std::string const bytes = textOf(sizeOf(state));
    String const text(bytes);
    if (!agree(state, DString(concatenated(text)), concatenated(bytes))) return;
    for (auto _ : state) {
        String const made = concatenated(text);
        benchmark::DoNotOptimize(made.data());
    }
    countBytes(state, 3 * bytes.size());
}

BENCHMARK_TEMPLATE(concatenate, DString)->KELCL_SIZES;
BENCHMARK_TEMPLATE(concatenate, std::string)->KELCL_SIZES;

// Reading lines
// ----------------------------------------------------------------------------------------------

constexpr std::size_t tenMegabytes = 10U << 20;

/// Ten megabytes in lines of `length` bytes.
std::string linesOf(std::size_t length) {
    std::string text = textOf(tenMegabytes);
    for (std::size_t i = length; i < text.size(); i += length + 1)
        text[i] = '\n';
    return text;
}

DString nextLine(std::istream& in, DString const&) { return DString::lineFrom(in); }

std::string nextLine(std::istream& in, std::string const&) {
    std::string line;
    std::getline(in, line);
    return line;
}

/// Reads all lines, each into a new string. Answers with their number and total length.
template <class String>
std::pair<std::size_t, std::size_t> readAll(std::istream& in) {
    in.clear();
    in.seekg(0);
    std::pair<std::size_t, std::size_t> read{0, 0};
    for (String const kind; in.good();) {
        String const line = nextLine(in, kind);
        ++read.first;
        read.second += line.size();
    }
    return read;
}

template <class String>
void readLines(benchmark::State& state) {
    std::istringstream in(linesOf(sizeOf(state)));
    if (readAll<DString>(in) != readAll<std::string>(in)) {
        state.SkipWithError("the results differ");
        return;
    }
    for (auto _ : state) {
        auto read = readAll<String>(in);
        benchmark::DoNotOptimize(read);
    }
    countBytes(state, tenMegabytes);
}

/// What is least: the ends of the lines found.
void readLinesByMemchr(benchmark::State& state) {
    std::string const text = linesOf(sizeOf(state));
    for (auto _ : state) {
        std::size_t lines = 0;
        for (char const *at = text.data(), *const end = at + text.size(); at < end; ++lines) {
            void const* const found = std::memchr(at, '\n', static_cast<std::size_t>(end - at));
            at = found == nullptr ? end : static_cast<char const*>(found) + 1;
        }
        benchmark::DoNotOptimize(lines);
    }
    countBytes(state, tenMegabytes);
}

#define KELCL_LINES Arg(8)->Arg(64)->Arg(1024)->Arg(1 << 20)->Unit(benchmark::kMillisecond)

BENCHMARK_TEMPLATE(readLines, DString)->KELCL_LINES;
BENCHMARK_TEMPLATE(readLines, std::string)->KELCL_LINES;
BENCHMARK(readLinesByMemchr)->KELCL_LINES;

/// Reads all words, each into the same string.
template <class String>
std::pair<std::size_t, std::size_t> readAllWords(std::istream& in) {
    in.clear();
    in.seekg(0);
    std::pair<std::size_t, std::size_t> read{0, 0};
    for (String word; in >> word;) {
        ++read.first;
        read.second += word.size();
    }
    return read;
}

template <class String>
void readWords(benchmark::State& state) {
    std::istringstream in(linesOf(sizeOf(state)));
    if (readAllWords<DString>(in) != readAllWords<std::string>(in)) {
        state.SkipWithError("the results differ");
        return;
    }
    for (auto _ : state) {
        auto read = readAllWords<String>(in);
        benchmark::DoNotOptimize(read);
    }
    countBytes(state, tenMegabytes);
}

BENCHMARK_TEMPLATE(readWords, DString)->KELCL_LINES;
BENCHMARK_TEMPLATE(readWords, std::string)->KELCL_LINES;

} // namespace
