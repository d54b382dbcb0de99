// What an exception costs beside std::runtime_error, what of it the report takes, and what a message look-up
// takes.
#include <kelcl/dbase.h>
#include <kelcl/dexception.h>

#include <benchmark/benchmark.h>

#include <cstdio>
#include <stdexcept>
#include <string>

namespace {

/// A trace function that drops what it is given.
class Null final : public DException::TraceFn {
public:
    void write(char const* line) override { benchmark::DoNotOptimize(line); }
};

/// The same, asked for no report either.
class NoReport final : public DException::TraceFn {
public:
    void write(char const* line) override { benchmark::DoNotOptimize(line); }
    TraceFn& logData(DException&) override { return *this; }
};

template <class Trace>
void useTrace() {
    static Trace trace;
    DException::setTraceFunction(trace);
}

char const* const text = "The index lies outside of the string.";

[[gnu::noinline]] void throwStandard() { throw std::runtime_error(text); }

[[gnu::noinline]] void throwLogged() { DException::assertParameter(text, {"dstring5", nullptr, 1}); }

void throwRuntimeError(benchmark::State& state) {
    for (auto _ : state)
        try {
            throwStandard();
        } catch (std::runtime_error const& error) {
            benchmark::DoNotOptimize(error.what());
        }
}
BENCHMARK(throwRuntimeError);

template <class Trace>
void throwException(benchmark::State& state) {
    useTrace<Trace>();
    for (auto _ : state)
        try {
            throwLogged();
        } catch (DException const& exception) {
            benchmark::DoNotOptimize(exception.text(0));
        }
}
BENCHMARK_TEMPLATE(throwException, NoReport);
BENCHMARK_TEMPLATE(throwException, Null);

void report(benchmark::State& state) {
    useTrace<Null>();
    DInvalidRequest exception(text, 1011, DException::recoverable);
    exception.addLocation({"dstring5", nullptr, 1});
    for (long i = 1; i < state.range(0); ++i)
        exception.setText(text);
    for (auto _ : state)
        exception.logExceptionData();
}
BENCHMARK(report)->Arg(1)->Arg(1000)->Arg(16000);

/// What a report would cost with the C library's formatting, for comparison.
void formattedBySnprintf(benchmark::State& state) {
    char line[300];
    for (auto _ : state) {
        std::snprintf(line, sizeof line, "%s exception thrown.\n   function: %s\n   file: %s\n   line: %d",
                      "DInvalidRequest", "Unknown", "dstring5", 1);
        benchmark::DoNotOptimize(line);
        std::snprintf(line, sizeof line, "   Error Id is %lu", 1011ul);
        benchmark::DoNotOptimize(line);
        std::snprintf(line, sizeof line, "   Error Code group is %s", "Kel Class Library");
        benchmark::DoNotOptimize(line);
        std::snprintf(line, sizeof line, "   Exception text is:");
        benchmark::DoNotOptimize(line);
        std::snprintf(line, sizeof line, "      %s", text);
        benchmark::DoNotOptimize(line);
    }
}
BENCHMARK(formattedBySnprintf);

void copyException(benchmark::State& state) {
    DInvalidRequest source(nullptr, 1011, DException::recoverable);
    for (long i = 0; i < state.range(0); ++i)
        source.setText(text);
    for (auto _ : state) {
        DInvalidRequest copy(source);
        benchmark::DoNotOptimize(copy);
    }
}
BENCHMARK(copyException)->Arg(1)->Arg(16)->Arg(256);

void copyRuntimeErrorAnew(benchmark::State& state) {
    for (auto _ : state) {
        std::runtime_error copy(text);
        benchmark::DoNotOptimize(copy);
    }
}
BENCHMARK(copyRuntimeErrorAnew);

void messageOfAMissingCatalog(benchmark::State& state) {
    DBase::setMessageFile("/there/is/no/such.cat");
    for (auto _ : state)
        benchmark::DoNotOptimize(DBase::messageText(1, "value").text());
}
BENCHMARK(messageOfAMissingCatalog);

void substitution(benchmark::State& state) {
    std::string pattern;
    for (long i = 0; i < state.range(0); ++i)
        pattern += "text %1 and %2; ";
    char const* const values[] = {"one", "another"};
    for (auto _ : state) {
        char* const result = DMessageText::replaceVars(pattern.c_str(), values, 2);
        benchmark::DoNotOptimize(result);
        delete[] result;
    }
}
BENCHMARK(substitution)->Arg(1)->Arg(16)->Arg(256)->Arg(4096);

} // namespace
