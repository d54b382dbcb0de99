// Replacing a few characters by their values, in loops that the compiler turns into vector code.
#include "characters/value_replacement.h"

#include "bytes/dispatch.h"
#include "characters/utf8.h"

#include <algorithm>
#include <cstring>

namespace kelcl {

namespace {

KELCL_INLINED void replaceOne(wchar_t* __restrict made, wchar_t const* __restrict values, std::size_t n,
                              wchar_t from, wchar_t to) {
    for (std::size_t i = 0; i < n; ++i)
        made[i] = values[i] == from ? to : made[i];
}

/// From the last one to the first, which then prevails.
KELCL_INLINED void replaceEach(wchar_t* made, wchar_t const* values, std::size_t n, wchar_t const* from,
                               wchar_t const* to, std::size_t count) {
    while (count-- > 0)
        replaceOne(made, values, n, from[count], to[count]);
}

} // namespace

bool ValueReplacement::take(std::string_view from, std::string_view to, char padCharacter) {
    if (from.size() > from_.size() || to.size() > to_.size() || static_cast<signed char>(padCharacter) < 0)
        return false;
    Extent const searched = widenUtf8(from_.data(), from.data(), from.size());
    Extent const replacements = widenUtf8(to_.data(), to.data(), to.size());
    if (searched.bytes != from.size() || replacements.bytes != to.size() || searched.characters > most)
        return false;
    count_ = searched.characters;
    if (replacements.characters < count_)
        std::fill(to_.begin() + static_cast<std::ptrdiff_t>(replacements.characters),
                  to_.begin() + static_cast<std::ptrdiff_t>(count_), static_cast<wchar_t>(padCharacter));
    return true;
}

bool ValueReplacement::replace(wchar_t* values, std::size_t n) const {
    std::array<wchar_t, 512> old;
    bool areOthers = false;
    for (std::size_t done = 0; done < n; done += old.size()) {
        std::size_t const piece = std::min(n - done, old.size());
        std::memcpy(old.data(), values + done, piece * sizeof *values);
        multiversioned<replaceEach>(values + done, static_cast<wchar_t const*>(old.data()), piece,
                                    from_.data(), to_.data(), count_);
        areOthers = areOthers || std::memcmp(old.data(), values + done, piece * sizeof *values) != 0;
    }
    return areOthers;
}

} // namespace kelcl
