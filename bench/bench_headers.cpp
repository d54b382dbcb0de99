// What a compiler takes for the library's headers, beside those of the standard library that programs include
// anyway. Each turn is one run of the compiler that built this program.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <string>

namespace {

void compile(benchmark::State& state, std::string const& header, std::string const& dialect) {
    std::string const command = "echo '#include <" + header +
                                ">' | '" KELCL_BENCH_COMPILER "' -std=" + dialect +
                                " -fsyntax-only -x c++ -I'" KELCL_BENCH_INCLUDE_DIR "' -";
    for ([[maybe_unused]] auto turn : state) {
        if (std::system(command.c_str()) != 0) {
            state.SkipWithError("the compiler failed");
            break;
        }
    }
}

[[maybe_unused]] int const registered = [] {
    for (std::string const dialect : {"c++17", "c++20"})
        for (std::string const header :
             {"string", "iostream", "functional", "kelcl/dstring.h", "kelcl/kelcl.h"})
            benchmark::RegisterBenchmark(("compile/" + dialect + "/" + header).c_str(), compile, header,
                                         dialect)
                ->UseRealTime()
                ->Unit(benchmark::kMillisecond);
    return 0;
}();

} // namespace
