// Set searches: each is one of the walks of byte_scan.h with membership of a set as its test. What is a set
// there may be compared with member by member, or be known to hold ASCII characters only.

#include "bytes/byte_set.h"

#include "bytes/byte_scan.h"
#include "bytes/wide_search.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace kelcl {

namespace {

#if KELCL_HAS_BLOCKS

/// The rows of each set of one member.
alignas(32) constexpr auto rowsOfMember = [] {
    std::array<std::array<unsigned char, 32>, 256> result{};
    for (unsigned int value = 0; value < 256; ++value) {
        ByteSet set;
        set.insert(static_cast<char>(value));
        std::copy_n(set.rows(), 32, result[value].begin());
    }
    return result;
}();

KELCL_BLOCKS_INLINE Block rowsOf(char member) {
    return Block::load(rowsOfMember[static_cast<unsigned char>(member)].data());
}

/// The rows of the set of all the members.
KELCL_BLOCKS_INLINE Block rowsOfAll(std::string_view members) {
    Block even = Block::zero();
    Block odd = Block::zero();
    std::size_t i = 0;
    for (; members.size() - i >= 2; i += 2) {
        even = even | rowsOf(members[i]);
        odd = odd | rowsOf(members[i + 1]);
    }
    if (i < members.size()) odd = odd | rowsOf(members[i]);
    return even | odd;
}

KELCL_BLOCKS bool joinRows(unsigned char* rows, std::string_view members) {
    (Block::load(rows) | rowsOfAll(members)).store(rows);
    return true;
}

// The searches for members of a list. All is done in one function for each, so that the set that a short text
// is searched for never leaves the registers.

/// In the set of some members, whose rows are in registers.
struct InRows {
    Block low;
    Block high;
    std::string_view members;
    bool matches(char byte) const { return members.find(byte) != std::string_view::npos; }
    KELCL_BLOCKS_INLINE Block matches(Block block) const { return isInRows(block, low, high); }
};

struct InAsciiRows {
    Block low;
    std::string_view members;
    bool matches(char byte) const { return members.find(byte) != std::string_view::npos; }
    KELCL_BLOCKS_INLINE Block matches(Block block) const { return isInAsciiRows(block, low); }
};

/// Whether a byte is one of the members, of which there are at least 32: all are compared at once.
KELCL_BLOCKS_INLINE bool isAmong(std::string_view members, char byte) {
    EqualTo const same{byte};
    Block found = same.matches(Block::load(members.data() + members.size() - blocks::blockSize));
    for (std::size_t i = 0; i + blocks::blockSize < members.size(); i += blocks::blockSize)
        found = found | same.matches(Block::load(members.data() + i));
    return found.anyTopBit();
}

/// Calls Search's `byTest` with the test of membership that is fastest for the text.
template <class Search>
KELCL_BLOCKS std::size_t findByMembers(std::string_view text, std::string_view members) {
    // A member that is compared costs about as much for 32 bytes as two that are put into a set.
    constexpr std::size_t comparisonsOfASet = 16;
    if (std::max(text.size(), blocks::blockSize) * members.size() <= blocks::blockSize * comparisonsOfASet)
        return Search::byTest(text, AmongFew{members});
    constexpr std::size_t shortText = 16;
    if (text.size() <= shortText && members.size() >= blocks::blockSize)
        return Search::oneByOne(text, members);
    Block const rows = rowsOfAll(members);
    Block const low = Block::twice(rows.half<0>());
    Block const high = Block::twice(rows.half<1>());
    if (high.isZero()) return Search::byTest(text, InAsciiRows{low, members});
    return Search::byTest(text, InRows{low, high, members});
}

#endif

template <bool wanted, class Test>
KELCL_INLINED auto wantedBy(Test const& test) {
    if constexpr (wanted)
        return test;
    else
        return Not{test};
}

/// The search for the first byte that is (that is not) a member.
template <bool wanted>
struct First {
    static std::size_t plain(std::string_view text, std::string_view members) {
        ByteSet const set(members);
        return portable::findFirst(text, wantedBy<wanted>(InSet{set}));
    }
#if KELCL_HAS_BLOCKS
    template <class Test>
    KELCL_BLOCKS_INLINE static std::size_t byTest(std::string_view text, Test const& test) {
        return blocks::findFirst(text, wantedBy<wanted>(test));
    }
    KELCL_BLOCKS_INLINE static std::size_t oneByOne(std::string_view text, std::string_view members) {
        for (std::size_t i = 0; i < text.size(); ++i)
            if (isAmong(members, text[i]) == wanted) return i;
        return notFound;
    }
#endif
};

template <bool wanted>
struct Last {
    static std::size_t plain(std::string_view text, std::string_view members) {
        ByteSet const set(members);
        return portable::findLast(text, wantedBy<wanted>(InSet{set}));
    }
#if KELCL_HAS_BLOCKS
    template <class Test>
    KELCL_BLOCKS_INLINE static std::size_t byTest(std::string_view text, Test const& test) {
        return blocks::findLast(text, wantedBy<wanted>(test));
    }
    KELCL_BLOCKS_INLINE static std::size_t oneByOne(std::string_view text, std::string_view members) {
        for (std::size_t i = text.size(); i > 0; --i)
            if (isAmong(members, text[i - 1]) == wanted) return i - 1;
        return notFound;
    }
#endif
};

template <class Search>
std::size_t byMembers(std::string_view text, std::string_view members) {
    return KELCL_DISPATCH(findByMembers<Search>(text, members), Search::plain(text, members));
}

bool isAscii(ByteSet const& set) {
    std::uint64_t upper[2];
    std::memcpy(upper, set.rows() + 16, sizeof upper);
    return (upper[0] | upper[1]) == 0;
}

/// Calls `search` with the membership test that is fastest for the text.
template <class Search>
std::size_t withTest(std::string_view text, ByteSet const& set, Search search) {
    constexpr std::size_t worthAsking = 64;
    if (text.size() >= worthAsking && isAscii(set)) return search(InAsciiSet{set});
    return search(InSet{set});
}

template <bool wanted>
std::size_t findFirstByBlocks(std::string_view text, ByteSet const& set) {
    return withTest(text, set, [text](auto test) { return findFirst(text, wantedBy<wanted>(test)); });
}

/// From this length on it pays to make tables for a text.
constexpr std::size_t longText = 4096;

template <bool wanted>
std::size_t findFirstBySet(std::string_view text, ByteSet const& set) {
    std::size_t passed = 0;
#if KELCL_HAS_WIDE
    constexpr std::size_t nearby = 256; // where a search often ends
    if (text.size() >= longText && processorHasWide()) {
        std::size_t const found = findFirstByBlocks<wanted>(text.substr(0, nearby), set);
        if (found != notFound) return found;
        std::string_view const rest = text.substr(nearby);
        passed = nearby + (isAscii(set) ? wide::countBefore<wide::InAscii, wanted>(rest, set)
                                        : wide::countBefore<wide::Anywhere, wanted>(rest, set));
    }
#endif
    std::size_t const found = findFirstByBlocks<wanted>(text.substr(passed), set);
    return found == notFound ? notFound : passed + found;
}

/// Of long texts by a set, which then pays.
template <bool wanted>
std::size_t findFirstByMembers(std::string_view text, std::string_view members) {
    if (text.size() >= longText) return findFirstBySet<wanted>(text, ByteSet(members));
    return byMembers<First<wanted>>(text, members);
}

} // namespace

void ByteSet::insertAll(std::string_view members) {
    bool const done = KELCL_DISPATCH(joinRows(rows_.data(), members), false);
    if (done) return;
    for (char const member : members)
        insert(member);
}

std::size_t findFirstIn(std::string_view text, ByteSet const& set) { return findFirstBySet<true>(text, set); }

std::size_t findFirstIn(std::string_view text, std::string_view members) {
    if (members.size() == 1) return findByte(text, members.front());
    return findFirstByMembers<true>(text, members);
}

std::size_t findFirstNotIn(std::string_view text, ByteSet const& set) {
    return findFirstBySet<false>(text, set);
}

std::size_t findFirstNotIn(std::string_view text, std::string_view members) {
    return findFirstByMembers<false>(text, members);
}

std::size_t findLastIn(std::string_view text, ByteSet const& set) {
    return withTest(text, set, [text](auto test) { return findLast(text, test); });
}

std::size_t findLastIn(std::string_view text, std::string_view members) {
    if (members.size() == 1) return findLastByte(text, members.front());
    return byMembers<Last<true>>(text, members);
}

std::size_t findLastNotIn(std::string_view text, ByteSet const& set) {
    return withTest(text, set, [text](auto test) { return findLast(text, Not{test}); });
}

std::size_t findLastNotIn(std::string_view text, std::string_view members) {
    return byMembers<Last<false>>(text, members);
}

std::size_t countRunsNotIn(std::string_view text, ByteSet const& set) {
    return countRuns(text, Not{InSet{set}});
}

std::size_t findRunNotIn(std::string_view text, std::size_t number, ByteSet const& set) {
    return findRun(text, number, Not{InSet{set}});
}

std::size_t countIn(std::string_view text, ByteSet const& set) { return count(text, InSet{set}); }

std::uint64_t maskOfStartNotIn(std::string_view text, ByteSet const& set) {
    return maskOfStart(text, Not{InSet{set}});
}

} // namespace kelcl
