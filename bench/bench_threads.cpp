// What threads cost each other: the same work by one thread and by two, as items of all threads in a second,
// beside std::string; and what a copy costs while a second thread is alive, beside other shared texts.
#include <kelcl/dstring.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#ifdef KELCL_BENCH_QT
#include <QByteArray>
#endif

#include <benchmark/benchmark.h>

namespace {

/// Makes, moves and destroys empty and short strings of the thread's own.
template <class String>
void ownStrings(benchmark::State& state) {
    for (auto _ : state) {
        String first("a short text");
        String second(std::move(first));
        String empty;
        empty = std::move(second);
        first = std::move(empty);
        benchmark::DoNotOptimize(first);
        benchmark::DoNotOptimize(second);
        benchmark::DoNotOptimize(empty);
    }
    state.SetItemsProcessed(state.iterations());
}

template <class String>
void emptyStrings(benchmark::State& state) {
    for (auto _ : state) {
        String empty;
        String copy(empty);
        String moved(std::move(empty));
        benchmark::DoNotOptimize(copy);
        benchmark::DoNotOptimize(moved);
    }
    state.SetItemsProcessed(state.iterations());
}

/// What two threads of this machine can do at most: they share nothing, and wait for no memory.
void arithmetic(benchmark::State& state) {
    unsigned int a = 1, b = 2, c = 3, d = 4;
    for (auto _ : state)
        for (unsigned int i = 0; i < 100; ++i) {
            a += i, b ^= i, c += 7, d ^= 9;
            benchmark::DoNotOptimize(a), benchmark::DoNotOptimize(b);
            benchmark::DoNotOptimize(c), benchmark::DoNotOptimize(d);
        }
    state.SetItemsProcessed(state.iterations());
}

BENCHMARK(arithmetic)->ThreadRange(1, 2)->UseRealTime();
BENCHMARK(ownStrings<DString>)->ThreadRange(1, 2)->UseRealTime();
BENCHMARK(ownStrings<std::string>)->ThreadRange(1, 2)->UseRealTime();
BENCHMARK(emptyStrings<DString>)->ThreadRange(1, 2)->UseRealTime();
BENCHMARK(emptyStrings<std::string>)->ThreadRange(1, 2)->UseRealTime();

/// A thread that sleeps: with it in the process, counts change by atomic instructions.
class SecondThread {
public:
    SecondThread()
        : thread_([this] {
              while (!stop_)
                  std::this_thread::sleep_for(std::chrono::milliseconds(5));
          }) {}
    ~SecondThread() {
        stop_ = true;
        thread_.join();
    }

private:
    std::atomic<bool> stop_ = false;
    std::thread thread_;
};

template <class Value>
void copy(benchmark::State& state, Value const& value) {
    SecondThread const second;
    for (auto _ : state) {
        Value copied(value);
        benchmark::DoNotOptimize(copied);
    }
}

template <class Value>
void copyVector(benchmark::State& state, Value const& value) {
    SecondThread const second;
    std::vector<Value> const values(1000, value);
    for (auto _ : state) {
        std::vector<Value> copied(values);
        benchmark::DoNotOptimize(copied.data());
    }
    state.SetItemsProcessed(state.iterations() * 1000);
}

DString const text("a text of ordinary length");
auto const pointer = std::make_shared<std::string const>("a text of ordinary length");

BENCHMARK_CAPTURE(copy, DString, text);
BENCHMARK_CAPTURE(copy, shared_ptr, pointer);
BENCHMARK_CAPTURE(copyVector, DString, text);
BENCHMARK_CAPTURE(copyVector, shared_ptr, pointer);

#ifdef KELCL_BENCH_QT
QByteArray const bytes("a text of ordinary length");
BENCHMARK_CAPTURE(copy, QByteArray, bytes);
BENCHMARK_CAPTURE(copyVector, QByteArray, bytes);
#endif

} // namespace
