// Multi-byte text beside what a user would otherwise write or pick: loops of the C library's mbrlen and
// mbrtowc and its conversions of whole texts, ICU and GLib where the build has them. UTF-8 with the
// national-language switch off and on, then the other encodings. The last number of a name is the size in
// bytes; two sizes stand 16 apart, to show how the work grows. Contenders must agree on their results before
// anything is timed.
#include "bench/multi_byte_contest.h"

#include <clocale>
#include <cstddef>
#include <initializer_list>
#include <memory>
#include <vector>

namespace {

using bench::Contest;
using bench::Script;

bool const isRegistered = [] {
    static std::vector<std::unique_ptr<Contest>> contests;
    auto const register_ = [](Script const& script, std::size_t size, std::initializer_list<int> switches) {
        // Buffers are multi-byte ones in a multi-byte locale only.
        if (std::setlocale(LC_ALL, script.locale) == nullptr) return;
        contests.push_back(std::make_unique<Contest>(script, size));
        for (int const state : switches)
            contests.back()->enter(state);
    };
    for (Script const& script : bench::scripts())
        for (std::size_t const size :
             {std::size_t{64}, std::size_t{1} << 10, std::size_t{1} << 16, std::size_t{1} << 20})
            register_(script, size, {0, 1});
    for (Script const& script : bench::otherEncodings())
        for (std::size_t const size : {std::size_t{64}, std::size_t{1} << 10, std::size_t{1} << 20})
            register_(script, size, {0});
    return true;
}();

} // namespace
