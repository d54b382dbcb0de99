// Set searches: each is one of the walks of byte_scan.h with membership of a set as its test. What is a set
// there may be compared with member by member, or be known to hold ASCII characters only.

#include "bytes/byte_set.h"

#include "bytes/byte_scan.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace kelcl {

namespace {

#if KELCL_HAS_BLOCKS

/// The rows of each set of one member.
constexpr auto rowsOfMember = [] {
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

KELCL_BLOCKS bool joinRows(unsigned char* rows, std::string_view members) {
    Block even = Block::load(rows);
    Block odd = even;
    std::size_t i = 0;
    for (; members.size() - i >= 2; i += 2) {
        even = even | rowsOf(members[i]);
        odd = odd | rowsOf(members[i + 1]);
    }
    if (i < members.size()) odd = odd | rowsOf(members[i]);
    (even | odd).store(rows);
    return true;
}

#endif

/// A walk through a text so short that each of its bytes is looked up among the members.
template <bool wanted>
struct ByByte {
    static std::size_t findFirstPlain(std::string_view text, std::string_view members) {
        return wanted ? text.find_first_of(members) : text.find_first_not_of(members);
    }
    static std::size_t findLastPlain(std::string_view text, std::string_view members) {
        return wanted ? text.find_last_of(members) : text.find_last_not_of(members);
    }
#if KELCL_HAS_BLOCKS
    KELCL_BLOCKS static std::size_t findFirst(std::string_view text, std::string_view members) {
        for (std::size_t i = 0; i < text.size(); ++i)
            if (isAmong(members, text[i]) == wanted) return i;
        return notFound;
    }
    KELCL_BLOCKS static std::size_t findLast(std::string_view text, std::string_view members) {
        for (std::size_t i = text.size(); i > 0; --i)
            if (isAmong(members, text[i - 1]) == wanted) return i - 1;
        return notFound;
    }

private:
    /// Whether the byte is one of the members, of which there are at least 32: all at once.
    KELCL_BLOCKS_INLINE static bool isAmong(std::string_view members, char byte) {
        EqualTo const same{byte};
        Block found = same.matches(Block::load(members.data() + members.size() - blocks::blockSize));
        for (std::size_t i = 0; i + blocks::blockSize < members.size(); i += blocks::blockSize)
            found = found | same.matches(Block::load(members.data() + i));
        return found.anyTopBit();
    }
#endif
};

template <bool wanted>
std::size_t findFirstByByte(std::string_view text, std::string_view members) {
    return KELCL_DISPATCH(ByByte<wanted>::findFirst(text, members),
                          ByByte<wanted>::findFirstPlain(text, members));
}

template <bool wanted>
std::size_t findLastByByte(std::string_view text, std::string_view members) {
    return KELCL_DISPATCH(ByByte<wanted>::findLast(text, members),
                          ByByte<wanted>::findLastPlain(text, members));
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

template <class Search>
std::size_t withTest(std::string_view text, std::string_view members, Search search) {
    // A member that is compared costs about as much for 32 bytes as one that is put into a set.
    constexpr std::size_t comparisonsOfASet = 32;
    if (std::max<std::size_t>(text.size(), 32) * members.size() <= 32 * comparisonsOfASet)
        return search(AmongFew{members});
    return withTest(text, ByteSet(members), search);
}

/// Whether to look each byte of the text up in a list of members, rather than each member in the text.
bool isShorter(std::string_view text, std::string_view members) {
    constexpr std::size_t shortText = 16;
    constexpr std::size_t manyMembers = 32;
    return text.size() <= shortText && members.size() > manyMembers;
}

} // namespace

void ByteSet::insertAll(std::string_view members) {
    bool const done = KELCL_DISPATCH(joinRows(rows_.data(), members), false);
    if (done) return;
    for (char const member : members)
        insert(member);
}

std::size_t findFirstIn(std::string_view text, ByteSet const& set) {
    return withTest(text, set, [text](auto test) { return findFirst(text, test); });
}

std::size_t findFirstIn(std::string_view text, std::string_view members) {
    if (isShorter(text, members)) return findFirstByByte<true>(text, members);
    return withTest(text, members, [text](auto test) { return findFirst(text, test); });
}

std::size_t findFirstNotIn(std::string_view text, ByteSet const& set) {
    return withTest(text, set, [text](auto test) { return findFirst(text, Not{test}); });
}

std::size_t findFirstNotIn(std::string_view text, std::string_view members) {
    if (isShorter(text, members)) return findFirstByByte<false>(text, members);
    return withTest(text, members, [text](auto test) { return findFirst(text, Not{test}); });
}

std::size_t findLastIn(std::string_view text, ByteSet const& set) {
    return withTest(text, set, [text](auto test) { return findLast(text, test); });
}

std::size_t findLastIn(std::string_view text, std::string_view members) {
    if (isShorter(text, members)) return findLastByByte<true>(text, members);
    return withTest(text, members, [text](auto test) { return findLast(text, test); });
}

std::size_t findLastNotIn(std::string_view text, ByteSet const& set) {
    return withTest(text, set, [text](auto test) { return findLast(text, Not{test}); });
}

std::size_t findLastNotIn(std::string_view text, std::string_view members) {
    if (isShorter(text, members)) return findLastByByte<false>(text, members);
    return withTest(text, members, [text](auto test) { return findLast(text, Not{test}); });
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
