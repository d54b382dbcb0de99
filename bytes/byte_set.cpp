// Set searches: each is one of the walks of byte_scan.h with membership of a set as its test.

#include "bytes/byte_set.h"

#include "bytes/byte_scan.h"

namespace kelcl {

std::size_t findFirstIn(std::string_view text, ByteSet const& set) { return findFirst(text, InSet{set}); }

std::size_t findFirstNotIn(std::string_view text, ByteSet const& set) {
    return findFirst(text, Not{InSet{set}});
}

std::size_t findLastIn(std::string_view text, ByteSet const& set) { return findLast(text, InSet{set}); }

std::size_t findLastNotIn(std::string_view text, ByteSet const& set) {
    return findLast(text, Not{InSet{set}});
}

std::size_t countRunsNotIn(std::string_view text, ByteSet const& set) {
    return countRuns(text, Not{InSet{set}});
}

std::size_t countIn(std::string_view text, ByteSet const& set) { return count(text, InSet{set}); }

std::uint64_t maskOfStartNotIn(std::string_view text, ByteSet const& set) {
    return maskOfStart(text, Not{InSet{set}});
}

} // namespace kelcl
