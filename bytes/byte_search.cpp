// Searches for single bytes that the C library does not have, by the walks of byte_scan.h, and those of long
// texts. The searches for patterns are in byte_pattern.cpp.

#include "bytes/byte_search.h"

#include "bytes/byte_scan.h"
#include "bytes/wide_search.h"

namespace kelcl {

// What is near, as the end of the next line mostly is, the C library finds faster.
constexpr std::size_t nearInLong = 1024;

std::size_t findByteInLong(std::string_view text, char byte) {
    std::size_t passed = nearInLong;
    if (std::size_t const near = findByteByLibrary(text.substr(0, passed), byte); near != notFound)
        return near;
#if KELCL_HAS_WIDE
    if (processorHasWide()) passed += wide::countBefore(text.substr(passed), byte);
#endif
    std::size_t const found = findByteByLibrary(text.substr(passed), byte);
    return found == notFound ? notFound : passed + found;
}

std::size_t findLastByteInLong(std::string_view text, char byte) {
    std::size_t end = text.size() - nearInLong;
    if (std::size_t const near = findLastByteByLibrary(text.substr(end), byte); near != notFound)
        return end + near;
#if KELCL_HAS_WIDE
    if (processorHasWide()) end = wide::countUpTo(text.substr(0, end), byte);
#endif
    return findLastByteByLibrary(text.substr(0, end), byte);
}

std::size_t findByteOtherThan(std::string_view text, char byte) {
    return findFirst(text, Not{EqualTo{byte}});
}

std::size_t findLastByteOtherThan(std::string_view text, char byte) {
    return findLast(text, Not{EqualTo{byte}});
}

std::size_t countByte(std::string_view text, char byte) { return count(text, EqualTo{byte}); }

std::uint64_t maskOfStart(std::string_view text, char byte) { return maskOfStart(text, EqualTo{byte}); }

bool isAscii(std::string_view text) { return findFirst(text, NotAscii{}) == notFound; }

} // namespace kelcl
