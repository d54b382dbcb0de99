// What a DTrace costs with tracing off, beside an empty function and a disabled statement of a logging
// library, and with tracing on. Other rooms have files of their own.
#include <kelcl/dtrace.h>

#include <cstdio>
#include <cstdlib>
#include <memory>

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#if __has_include(<spdlog/spdlog.h>)
#define HAS_SPDLOG
#define FMT_HEADER_ONLY
#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/sinks/null_sink.h>
#include <spdlog/spdlog.h>
#endif

namespace {

constexpr char const* traceFile = "KELCL_BENCH_TRACE.LOG";

[[gnu::noinline]] long plainFunction(long value) {
    benchmark::DoNotOptimize(value);
    return value + 1;
}

[[gnu::noinline]] long tracedFunction(long value) {
    DTrace const trace("tracedFunction", __LINE__);
    benchmark::DoNotOptimize(value);
    return value + 1;
}

void turnTracing(char const* traceSwitch, char const* destination) {
    setenv("KORVA_TRACE", traceSwitch, 1);
    setenv("KORVA_TRACETO", destination, 1);
    setenv("KORVA_TRACEFILE", traceFile, 1);
    DTraceSetup::initialize();
}

/// Discards standard output while this lives.
class OutputNowhere {
public:
    OutputNowhere() : kept_(::dup(STDOUT_FILENO)) {
        std::fflush(stdout);
        int const null = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
        ::dup2(null, STDOUT_FILENO);
        ::close(null);
    }
    OutputNowhere(OutputNowhere const&) = delete;
    OutputNowhere& operator=(OutputNowhere const&) = delete;
    ~OutputNowhere() {
        std::fflush(stdout);
        ::dup2(kept_, STDOUT_FILENO);
        ::close(kept_);
    }

private:
    int kept_;
};

void emptyFunction(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(plainFunction(1));
}
BENCHMARK(emptyFunction);

void traceOff(benchmark::State& state) {
    turnTracing("OFF", "");
    for (auto _ : state)
        benchmark::DoNotOptimize(tracedFunction(1));
}
BENCHMARK(traceOff);

void traceOffWrite(benchmark::State& state) {
    turnTracing("OFF", "");
    for (auto _ : state)
        DTrace::write("a free line");
}
BENCHMARK(traceOffWrite);

#ifdef HAS_SPDLOG
[[gnu::noinline]] long loggedFunction(spdlog::logger& logger, long value) {
    logger.trace("+loggedFunction");
    benchmark::DoNotOptimize(value);
    logger.trace("-loggedFunction");
    return value + 1;
}

void spdlogOff(benchmark::State& state) {
    spdlog::logger logger("off", std::make_shared<spdlog::sinks::null_sink_mt>());
    logger.set_level(spdlog::level::info);
    for (auto _ : state)
        benchmark::DoNotOptimize(loggedFunction(logger, 1));
}
BENCHMARK(spdlogOff);

// Flushed after every line, as trace lines are; the file stays open.
void spdlogOnToAFile(benchmark::State& state) {
    spdlog::logger logger("on", std::make_shared<spdlog::sinks::basic_file_sink_st>(traceFile));
    logger.set_level(spdlog::level::trace);
    logger.flush_on(spdlog::level::trace);
    for (auto _ : state)
        benchmark::DoNotOptimize(loggedFunction(logger, 1));
}
BENCHMARK(spdlogOnToAFile);
#endif

void traceOnToStandardOutput(benchmark::State& state) {
    turnTracing("ON", "STDOUT");
    OutputNowhere const nowhereNow;
    for (auto _ : state)
        benchmark::DoNotOptimize(tracedFunction(1));
    turnTracing("OFF", "");
}
BENCHMARK(traceOnToStandardOutput);

void traceOnToAFile(benchmark::State& state) {
    turnTracing("ON", "FILE");
    for (auto _ : state)
        benchmark::DoNotOptimize(tracedFunction(1));
    turnTracing("OFF", "");
    std::remove(traceFile);
}
BENCHMARK(traceOnToAFile)->Iterations(20000);

// What the two lines of a call cost when the file is opened and closed through streams.
void twoLinesThroughFopen(benchmark::State& state) {
    for (auto _ : state) {
        for (int line = 0; line < 2; ++line) {
            std::FILE* const file = std::fopen(traceFile, "a");
            if (file == nullptr) {
                state.SkipWithError("the file cannot be opened");
                return;
            }
            std::fputs("00000000 004711:01 +tracedFunction(12)\n", file);
            std::fclose(file);
        }
    }
    std::remove(traceFile);
}
BENCHMARK(twoLinesThroughFopen)->Iterations(20000);

} // namespace
