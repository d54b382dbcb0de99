// Searches for single bytes and for byte patterns, forwards and backwards, and the counting of both.
// Offsets count from 0. Positions that count from 1, search starts and empty patterns are the callers'
// business.
#ifndef KELCL_BYTES_BYTE_SEARCH_H
#define KELCL_BYTES_BYTE_SEARCH_H

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace kelcl {

/// What every search returns when there is nothing to be found.
inline constexpr std::size_t notFound = static_cast<std::size_t>(-1);

/// The same as findByte and findLastByte below, by the C library.
inline std::size_t findByteByLibrary(std::string_view text, char byte) {
    if (text.empty()) return notFound;
    auto const* const found = static_cast<char const*>(std::memchr(text.data(), byte, text.size()));
    return found != nullptr ? static_cast<std::size_t>(found - text.data()) : notFound;
}
inline std::size_t findLastByteByLibrary(std::string_view text, char byte) {
    if (text.empty()) return notFound;
    auto const* const found = static_cast<char const*>(memrchr(text.data(), byte, text.size()));
    return found != nullptr ? static_cast<std::size_t>(found - text.data()) : notFound;
}

/// From this length on, texts nearly fill the fastest cache, and the C library's searches are not the fastest
/// everywhere: the same once more.
inline constexpr std::size_t longForByte = 32768;
std::size_t findByteInLong(std::string_view text, char byte);
std::size_t findLastByteInLong(std::string_view text, char byte);

/// The offset of the first (last) occurrence of `byte`, or notFound.
inline std::size_t findByte(std::string_view text, char byte) {
    return text.size() < longForByte ? findByteByLibrary(text, byte) : findByteInLong(text, byte);
}
inline std::size_t findLastByte(std::string_view text, char byte) {
    return text.size() < longForByte ? findLastByteByLibrary(text, byte) : findLastByteInLong(text, byte);
}

/// The offset of the first occurrence of `byte` at or after the offset `from`, or notFound.
inline std::size_t findByteFrom(std::string_view text, char byte, std::size_t from) {
    std::size_t const found = from < text.size() ? findByte(text.substr(from), byte) : notFound;
    return found == notFound ? notFound : from + found;
}

/// The offset of the first (last) byte that differs from `byte`, or notFound.
std::size_t findByteOtherThan(std::string_view text, char byte);
std::size_t findLastByteOtherThan(std::string_view text, char byte);

/// The offset at which the first (last) occurrence of `pattern` begins, or notFound.
/// The pattern must not be empty. Linear in text plus pattern, whatever they hold.
std::size_t findPattern(std::string_view text, std::string_view pattern);
std::size_t findLastPattern(std::string_view text, std::string_view pattern);

/// How often `byte` occurs.
std::size_t countByte(std::string_view text, char byte);

/// Writes the offsets of the first occurrences of `pattern`, which must not be empty, from left to right
/// without overlapping: `most` of them or, if there are fewer, all. Returns how many. They must fit 32 bits.
std::size_t listPattern(std::string_view text, std::string_view pattern, std::uint32_t* offsets,
                        std::size_t most);

/// How often `pattern`, which must not be empty, occurs from left to right without overlapping itself.
std::size_t countPattern(std::string_view text, std::string_view pattern);

/// One bit for each of the first 64 bytes, or for fewer, the first one lowest: whether it is `byte`.
std::uint64_t maskOfStart(std::string_view text, char byte);

/// Whether no byte exceeds 127; true for the empty text.
bool isAscii(std::string_view text);

} // namespace kelcl

#endif
