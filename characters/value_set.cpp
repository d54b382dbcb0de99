// Sets of values, and the searches of UTF-8 for their members.
#include "characters/value_set.h"

#include "bytes/block.h"
#include "characters/utf8.h"

#include <algorithm>

namespace kelcl {

namespace {

struct Members {
    wchar_t const* values;
    std::size_t count;
};

template <bool wanted>
std::size_t findPlain(wchar_t const* values, std::size_t n, Members members) {
    wchar_t const* const end = members.values + members.count;
    for (std::size_t i = 0; i < n; ++i)
        if ((std::find(members.values, end, values[i]) != end) == wanted) return i;
    return n;
}

#if KELCL_HAS_BLOCKS

using blocks::blockSize;
using blocks::lowestBit;

constexpr std::size_t valuesInBlock = blockSize / sizeof(wchar_t);
constexpr std::size_t valuesAtOnce = 2 * valuesInBlock;
static_assert(readablePastPiece >= valuesAtOnce);

/// Four bits for each of `valuesAtOnce`: whether it is a member.
KELCL_BLOCKS_INLINE std::uint64_t maskOfMembers(wchar_t const* values, Members members) {
    Block const first = Block::load(values);
    Block const last = Block::load(values + valuesInBlock);
    Block inFirst = Block::zero();
    Block inLast = Block::zero();
    for (std::size_t i = 0; i < members.count; ++i) {
        Block const member = Block::ofFour(reinterpret_cast<char const*>(members.values + i));
        inFirst = inFirst | equalFours(first, member);
        inLast = inLast | equalFours(last, member);
    }
    return inFirst.topBits() | std::uint64_t{inLast.topBits()} << blockSize;
}

template <bool wanted>
KELCL_BLOCKS std::size_t findInBlocks(wchar_t const* values, std::size_t n, Members members) {
    for (std::size_t i = 0; i < n; i += valuesAtOnce) {
        std::uint64_t const inside = maskOfMembers(values + i, members);
        std::uint64_t const found = wanted ? inside : ~inside;
        if (found != 0) return std::min(n, i + lowestBit(found) / sizeof(wchar_t));
    }
    return n;
}

#endif

template <bool wanted>
std::size_t findAmongFew(wchar_t const* values, std::size_t n, Members members) {
    return KELCL_DISPATCH(findInBlocks<wanted>(values, n, members), findPlain<wanted>(values, n, members));
}

template <bool wanted>
std::size_t findInTable(wchar_t const* values, std::size_t n, CharacterMap const& table) {
    auto const isWanted = [&table](wchar_t value) {
        return table.contains(CharacterMap::keyOf(value)) == wanted;
    };
    return static_cast<std::size_t>(std::find_if(values, values + n, isWanted) - values);
}

} // namespace

bool ValueSet::take(std::string_view list) {
    if (list.size() <= values_.size()) {
        Extent const taken = widenUtf8(values_.data(), list.data(), list.size());
        count_ = taken.characters;
        if (taken.bytes != list.size() || hasFew()) return taken.bytes == list.size();
    }
    return takeMany(list);
}

bool ValueSet::takeMany(std::string_view list) {
    count_ = few + 1;
    while (!list.empty()) {
        Extent const piece = widenUtf8(values_.data(), list.data(), std::min(list.size(), values_.size()));
        if (piece.bytes == 0) return false;
        for (std::size_t i = 0; i < piece.characters; ++i)
            table_.add(CharacterMap::keyOf(values_[i]));
        list.remove_prefix(piece.bytes);
    }
    return true;
}

std::size_t ValueSet::findFirst(wchar_t const* values, std::size_t n) const {
    return hasFew() ? findAmongFew<true>(values, n, {values_.data(), count_})
                    : findInTable<true>(values, n, table_);
}

std::size_t ValueSet::findFirstOther(wchar_t const* values, std::size_t n) const {
    return hasFew() ? findAmongFew<false>(values, n, {values_.data(), count_})
                    : findInTable<false>(values, n, table_);
}

SearchedSoFar findFirstIn(std::string_view text, std::size_t at, ValueSet const& set) {
    return findInPieces(text, at,
                        [&set](wchar_t const* values, std::size_t n) { return set.findFirst(values, n); });
}

SearchedSoFar findFirstNotIn(std::string_view text, std::size_t at, ValueSet const& set) {
    return findInPieces(
        text, at, [&set](wchar_t const* values, std::size_t n) { return set.findFirstOther(values, n); });
}

} // namespace kelcl
