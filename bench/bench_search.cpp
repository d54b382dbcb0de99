// The searches of DString beside what a user would otherwise pick. The argument is the number of bytes; two
// of the sizes stand 16 apart, to show how the work grows.
#include "bench/operations.h"

#include <kelcl/dstring.h>

#include <benchmark/benchmark.h>

#if KELCL_BENCH_QT // the build found it, and links it
#include <QByteArray>
#endif

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <cstring>
#include <string>

namespace {

using namespace bench;

constexpr char pattern[] = "taneiset";       // in none of the texts, but its letters are common
constexpr char const strangers[] = "#%&$@!"; // a set without a hit
constexpr char const manyStrangers[] = "#%&$@!0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ<>|~";
constexpr char const letters[] = "abcdefghijklmnopqrstuvwxyz \n";

int isStranger(int c) { return c == '#'; }

void registerSearches() {
    auto const byte = [](string const& text) { return position(text.find('#')); };
    Work("indexOf_byte", texts, proseOf, byte)
        .byKelcl([](DString const& s) { return s.indexOf('#'); })
        .byStandard("memchr",
                    [](string const& t) { return position(std::memchr(t.data(), '#', t.size()), t); })
#if KELCL_BENCH_QT
        .byQt([](QByteArray const& t) { return static_cast<std::size_t>(t.indexOf('#') + 1); })
#endif
        .byStandard("std", byte);

    auto const text = [](string const& t) { return position(t.find(pattern)); };
    Work("indexOf_pattern", texts, proseOf, text)
        .byKelcl([](DString const& s) { return s.indexOf(pattern); })
        .byStandard("memmem",
                    [](string const& t) {
                        return position(memmem(t.data(), t.size(), pattern, sizeof pattern - 1), t);
                    })
#if KELCL_BENCH_QT
        .byQt([](QByteArray const& t) { return static_cast<std::size_t>(t.indexOf(pattern) + 1); })
#endif
        .byStandard("std", text);

    auto const anyOf = [](string const& t) { return position(t.find_first_of(strangers)); };
    Work("indexOfAnyOf", texts, proseOf, anyOf)
        .byKelcl([](DString const& s) { return s.indexOfAnyOf(strangers); })
        .byStandard("strcspn",
                    [](string const& t) {
                        std::size_t const n = std::strcspn(t.c_str(), strangers);
                        return n == t.size() ? 0 : n + 1;
                    })
        .byStandard("std", anyOf);

    auto const anyOfMany = [](string const& t) { return position(t.find_first_of(manyStrangers)); };
    Work("indexOfAnyOf_many", {8, 64, 1024, 1 << 20}, proseOf, anyOfMany)
        .byKelcl([](DString const& s) { return s.indexOfAnyOf(manyStrangers); })
        .byStandard("strcspn",
                    [](string const& t) {
                        std::size_t const n = std::strcspn(t.c_str(), manyStrangers);
                        return n == t.size() ? 0 : n + 1;
                    })
        .byStandard("std", anyOfMany);

    auto const tested = [](string const& t) {
        auto const found = std::find_if(t.begin(), t.end(), [](char c) { return isStranger(c) != 0; });
        return found == t.end() ? 0 : static_cast<std::size_t>(found - t.begin()) + 1;
    };
    Work("indexOf_test", texts, proseOf, tested)
        .byKelcl([](DString const& s) { return s.indexOf(DStringTest(isStranger)); })
        .byStandard("std", tested);

    auto const anyBut = [](string const& t) { return position(t.find_first_not_of(letters)); };
    Work("indexOfAnyBut", texts, proseOf, anyBut)
        .byKelcl([](DString const& s) { return s.indexOfAnyBut(letters); })
        .byStandard("strspn",
                    [](string const& t) {
                        std::size_t const n = std::strspn(t.c_str(), letters);
                        return n == t.size() ? 0 : n + 1;
                    })
        .byStandard("std", anyBut);

    auto const last = [](string const& t) { return position(t.rfind(pattern)); };
    Work("lastIndexOf_pattern", texts, proseOf, last)
        .byKelcl([](DString const& s) { return s.lastIndexOf(pattern); })
#if KELCL_BENCH_QT
        .byQt([](QByteArray const& t) { return static_cast<std::size_t>(t.lastIndexOf(pattern) + 1); })
#endif
        .byStandard("std", last);

    auto const commas = [](string const& t) {
        return static_cast<std::size_t>(std::count(t.begin(), t.end(), ','));
    };
    Work("occurrencesOf", texts, manyCommas, commas)
        .byKelcl([](DString const& s) { return s.occurrencesOf(','); })
#if KELCL_BENCH_QT
        .byQt([](QByteArray const& t) { return static_cast<std::size_t>(t.count(',')); })
#endif
        .byStandard("std", commas);

    auto const digits = [](string const& t) {
        return std::all_of(t.begin(), t.end(), [](unsigned char c) { return std::isdigit(c) != 0; });
    };
    Work("isDigits", texts, decimalDigits, digits)
        .byKelcl([](DString const& s) { return s.isDigits(); })
        .byStandard("strspn", [](string const& t) { return t[std::strspn(t.c_str(), "0123456789")] == '\0'; })
        .byStandard("std", digits);
}

[[maybe_unused]] bool const registered = [] {
    registerSearches();
    return true;
}();

} // namespace
