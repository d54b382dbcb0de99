// What the benchmarks of the byte kernels share: texts, and the check that contenders agree before they are
// timed. They time hidden functions, so they are linked from the library's objects.
#ifndef KELCL_BENCH_BYTES_H
#define KELCL_BENCH_BYTES_H

#include "bytes/byte_search.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>

namespace bench {

inline std::size_t sizeOf(benchmark::State const& state) { return static_cast<std::size_t>(state.range(0)); }

inline std::string randomBytes(std::size_t n) {
    std::mt19937 random(7);
    std::string text(n, '\0');
    for (char& byte : text)
        byte = static_cast<char>(random());
    return text;
}

/// Words of two to nine small letters in lines of about 70 bytes.
inline std::string proseOf(std::size_t n) {
    std::mt19937 random(11);
    std::string text;
    while (text.size() < n) {
        for (std::size_t length = 2 + random() % 8; length > 0; --length)
            text.push_back("etaoinshrdlucmfwypvbgk"[std::min(random() % 22, random() % 22)]);
        text.push_back(random() % 12 == 0 ? '\n' : ' ');
    }
    text.resize(n);
    return text;
}

inline void keep(std::size_t value) { benchmark::DoNotOptimize(value); }

/// Times `work(text)`, once `work` and `reference` are seen to agree.
template <class Work, class Reference>
void timeAnswer(benchmark::State& state, std::string const& text, Work work, Reference reference) {
    if (work(text) != reference(text)) {
        state.SkipWithError("the results differ");
        return;
    }
    for (auto step : state) {
        char const* data = text.data();
        benchmark::DoNotOptimize(data);
        keep(work(std::string_view(data, text.size())));
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}

/// Times `work(out, in, n)`, which writes `room` bytes, once it is seen to write what `reference` does.
template <class Work, class Reference>
void timeEdit(benchmark::State& state, std::string const& in, std::size_t room, Work work,
              Reference reference) {
    std::string out(room, '\0');
    std::string expected(room, '\0');
    work(out.data(), in.data(), in.size());
    reference(expected.data(), in.data(), in.size());
    if (out != expected) {
        state.SkipWithError("the results differ");
        return;
    }
    for (auto step : state) {
        char* target = out.data();
        benchmark::DoNotOptimize(target);
        work(target, in.data(), in.size());
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(in.size()));
}

inline void sizes(benchmark::internal::Benchmark* benchmark) {
    for (std::int64_t const size : {64, 1024, 1 << 20})
        benchmark->Arg(size);
}

// Registers the two functions as <work>_kelcl and <work>_<other>, each checked against the other.
#define KELCL_COMPARE_ANSWER(work, other, input)                                                             \
    void work##_kelcl(benchmark::State& state) { timeAnswer(state, input, work##Ours, work##Theirs); }       \
    void work##_##other(benchmark::State& state) { timeAnswer(state, input, work##Theirs, work##Ours); }     \
    BENCHMARK(work##_kelcl)->Apply(sizes);                                                                   \
    BENCHMARK(work##_##other)->Apply(sizes)

#define KELCL_COMPARE_EDIT(work, other, input, room)                                                         \
    void work##_kelcl(benchmark::State& state) { timeEdit(state, input, room, work##Ours, work##Theirs); }   \
    void work##_##other(benchmark::State& state) { timeEdit(state, input, room, work##Theirs, work##Ours); } \
    BENCHMARK(work##_kelcl)->Apply(sizes);                                                                   \
    BENCHMARK(work##_##other)->Apply(sizes)

inline std::size_t offsetOf(void const* found, std::string_view text) {
    return found != nullptr ? static_cast<std::size_t>(static_cast<char const*>(found) - text.data())
                            : kelcl::notFound;
}

} // namespace bench

#endif
