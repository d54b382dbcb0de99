// What the fuzz targets share: how an input says that something is wrong. The reading of an input as a
// program of choices is in tests/support/choices.h.
//
// A target is one source with LLVMFuzzerTestOneInput. With libFuzzer it searches for inputs that fail; with
// replay.cpp it runs those that are kept in corpus/<target>.
#ifndef KELCL_FUZZ_TARGET_H
#define KELCL_FUZZ_TARGET_H

#include "tests/support/choices.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string>
#include <string_view>

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv);
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size);

namespace fuzz {

[[noreturn]] inline void fail(std::string const& what) {
    std::fflush(stdout);
    std::fprintf(stderr, "FAILED: %s\n", what.c_str());
    std::abort();
}

inline std::string shown(std::string_view text) {
    static constexpr char digits[] = "0123456789ABCDEF";
    std::string result = "\"";
    for (char const c : text) {
        auto const byte = static_cast<unsigned char>(c);
        if (byte >= ' ' && byte < 0x7F && c != '\\' && c != '"')
            result += c;
        else
            result += {'\\', 'x', digits[byte >> 4], digits[byte & 15]};
    }
    return result + '"';
}

template <class Value>
std::string shown(Value const& value) {
    if constexpr (std::is_convertible_v<Value const&, std::string_view>) {
        return shown(std::string_view(value));
    } else {
        std::ostringstream out;
        out << value;
        return out.str();
    }
}

/// Fails unless the two are the same; `given` are the values that they were made of.
template <class Is, class ShouldBe, class... Given>
void same(char const* what, Is const& is, ShouldBe const& shouldBe, Given const&... given) {
    if (is == shouldBe) return;
    std::string message = std::string(what) + " is " + shown(is) + ", should be " + shown(shouldBe);
    ((message += "\n  given " + shown(given)), ...);
    fail(message);
}

template <class... Given>
void holds(char const* what, bool condition, Given const&... given) {
    same(what, condition, true, given...);
}

} // namespace fuzz

#endif
