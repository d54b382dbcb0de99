// Searches for single bytes: the C library's where it is fast, the walks of byte_scan.h for the rest.
// The searches for patterns are in byte_pattern.cpp.

#include "bytes/byte_search.h"

#include "bytes/byte_scan.h"

#include <cstring>

namespace kelcl {

std::size_t findByte(std::string_view text, char byte) {
    if (text.empty()) return notFound;
    auto const* const found = static_cast<char const*>(std::memchr(text.data(), byte, text.size()));
    return found != nullptr ? static_cast<std::size_t>(found - text.data()) : notFound;
}

std::size_t findByteFrom(std::string_view text, char byte, std::size_t from) {
    std::size_t const found = from < text.size() ? findByte(text.substr(from), byte) : notFound;
    return found == notFound ? notFound : from + found;
}

std::size_t findLastByte(std::string_view text, char byte) { return findLast(text, EqualTo{byte}); }

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
