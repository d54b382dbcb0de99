// The kernels of decimal notation beside GMP, where the build has it.
#include "bench/bytes.h"
#include "bytes/decimal.h"

#include <benchmark/benchmark.h>

#if KELCL_BENCH_GMP // the build found it, and links it
#include <gmp.h>
#endif

#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace {

using namespace bench;

std::string writtenDecimal(std::string_view bytes) {
    std::string result(kelcl::decimalDigitsBound(bytes.size()), '\0');
    result.resize(kelcl::writeDecimal(result.data(), bytes));
    return result;
}

std::string readBytes(std::string_view digits) {
    std::string result(kelcl::bytesBound(digits.size()), '\0');
    result.resize(kelcl::readDecimal(result.data(), digits));
    return result;
}

#if KELCL_BENCH_GMP
class Number {
public:
    Number() { mpz_init(value_); }
    ~Number() { mpz_clear(value_); }
    Number(Number const&) = delete;
    Number& operator=(Number const&) = delete;
    operator mpz_ptr() { return value_; }

private:
    mpz_t value_;
};

std::string gmpWrittenDecimal(std::string_view bytes) {
    Number number;
    mpz_import(number, bytes.size(), 1, 1, 0, 0, bytes.data());
    std::string result(mpz_sizeinbase(number, 10) + 2, '\0');
    mpz_get_str(result.data(), 10, number);
    result.resize(std::strlen(result.c_str()));
    return result;
}

std::string gmpReadBytes(std::string_view digits) {
    Number number;
    mpz_set_str(number, digits.data(), 10);
    std::string result((mpz_sizeinbase(number, 2) + 7) / 8, '\0');
    mpz_export(result.data(), nullptr, 1, 1, 0, 0, number);
    return result;
}
#endif

template <class Work, class Reference>
void timeConversion(benchmark::State& state, std::string const& in, Work work, Reference reference) {
    if (work(in) != reference(in)) {
        state.SkipWithError("the results differ");
        return;
    }
    for (auto step : state) {
        std::string const result = work(in);
        benchmark::DoNotOptimize(result.data());
    }
}

/// A number of so many bytes, none of them led by a zero byte.
std::string numberOf(benchmark::State const& state) {
    std::string bytes = randomBytes(sizeOf(state));
    bytes[0] = '\x7F';
    return bytes;
}

void numberSizes(benchmark::internal::Benchmark* benchmark) {
    for (std::int64_t const size : {8, 64, 1024, 4096, 16384, 65536, 262144})
        benchmark->Arg(size);
}

void writeDecimal_kelcl(benchmark::State& state) {
    timeConversion(state, numberOf(state), writtenDecimal,
                   [](std::string const& bytes) { return writtenDecimal(readBytes(writtenDecimal(bytes))); });
}
BENCHMARK(writeDecimal_kelcl)->Apply(numberSizes);

void readDecimal_kelcl(benchmark::State& state) {
    timeConversion(state, writtenDecimal(numberOf(state)), readBytes,
                   [&](std::string const&) { return numberOf(state); });
}
BENCHMARK(readDecimal_kelcl)->Apply(numberSizes);

#if KELCL_BENCH_GMP
void writeDecimal_gmp(benchmark::State& state) {
    timeConversion(state, numberOf(state), gmpWrittenDecimal, writtenDecimal);
}
BENCHMARK(writeDecimal_gmp)->Apply(numberSizes);

void readDecimal_gmp(benchmark::State& state) {
    timeConversion(state, writtenDecimal(numberOf(state)), gmpReadBytes, readBytes);
}
BENCHMARK(readDecimal_gmp)->Apply(numberSizes);
#endif

} // namespace
