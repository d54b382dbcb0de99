// What inline members of DString know of the library's own buffers: their class, when bytes alone compare
// them, and the room after their text. Included by dstring.h; not for hosts. Programs keep what they compiled
// of it: a later library may let blocks have more room after a text, never less.
#ifndef KELCL_DETAIL_LIBRARY_BUFFERS_H
#define KELCL_DETAIL_LIBRARY_BUFFERS_H

#include <kelcl/dbuffer.h>
#include <kelcl/ddbcsbuffer.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <typeinfo>

namespace kelcl {

/// Whether the buffer is of exactly that class of the library's, not of one that a host derived. By the
/// address of the type, as comparing its name would be noticeable. A program without type information is told
/// no, and takes the general way.
template <class Buffer>
bool isExactly([[maybe_unused]] DBuffer const& buffer) noexcept {
#ifdef __cpp_rtti
    return &typeid(buffer) == &typeid(Buffer);
#else
    return false;
#endif
}

/// Whether the buffer is of exactly one of the library's two classes.
inline bool isLibraryClass(DBuffer const& buffer) noexcept {
    return isExactly<DBuffer>(buffer) || isExactly<DDBCSBuffer>(buffer);
}

/// Whether both buffers are of one class, whichever it is.
inline bool haveOneClass([[maybe_unused]] DBuffer const& left,
                         [[maybe_unused]] DBuffer const& right) noexcept {
#ifdef __cpp_rtti
    return &typeid(left) == &typeid(right);
#else
    return false;
#endif
}

/// Every text is shorter than this: with header, NUL and spare bytes its block stays below 4 GiB.
inline constexpr unsigned int lengthLimit = 0xFFFFFFE7;

/// What common allocators keep in front of a block.
inline constexpr std::size_t allocatorHeader = 8;

/// Bytes that a text of `length` bytes takes of the heap: header, text and terminating NUL.
constexpr std::size_t bytesNeeded(unsigned int length) {
    return allocatorHeader + sizeof(DBuffer) + length + 1;
}

/// How far apart the sizes of blocks are where a text takes that many bytes; a power of two. The room after a
/// text follows from its length alone, so it need not be stored. Sizes are 16 bytes apart below 128 bytes;
/// from there on there are eight per doubling, from 1 KB four, and from 64 KB, where pages that nobody
/// touches cost nothing, two.
constexpr std::size_t sizeStep(std::size_t needed) {
    if (needed < 128) return 16;
    int const doubling = 63 - __builtin_clzll(needed);
    return std::size_t{1} << (doubling - (needed < 1024 ? 3 : needed < 65536 ? 2 : 1));
}

/// By how many bytes a text of `length` bytes can grow in its block.
constexpr unsigned int roomAfter(unsigned int length) {
    std::size_t const needed = bytesNeeded(length);
    std::size_t const room = (0 - needed) & (sizeStep(needed) - 1);
    std::size_t const limit = lengthLimit - 1 - length;
    return static_cast<unsigned int>(room < limit ? room : limit);
}

/// Whether a text can grow by `count` bytes, at least one, in its block. Blocks are multiples of 16 bytes,
/// which tells it for a few bytes in most cases.
constexpr bool hasRoomFor(unsigned int length, unsigned int count) {
    unsigned int const toMultiple = static_cast<unsigned int>((0 - bytesNeeded(length)) % 16);
    return count < toMultiple || count <= roomAfter(length);
}

/// Whether the text may grow in the block it has by `roomAfter` its length: the buffer is of exactly one
/// of the library's classes, whose blocks have the known sizes, and a new buffer would be of the same class.
/// That is asked each time of a plain buffer, which a multi-byte one takes the place of when it grows in a
/// multi-byte locale.
inline bool growsInPlace(DBuffer const& buffer) noexcept {
    return isExactly<DDBCSBuffer>(buffer) || (isExactly<DBuffer>(buffer) && MB_CUR_MAX < 2);
}

/// Bytes that can never be part of a longer character, whatever the encoding: below 0x30, where the trail
/// bytes of every multi-byte encoding of the C library begin.
constexpr bool standsAloneAnywhere(char byte) noexcept { return static_cast<unsigned char>(byte) < 0x30; }

/// Whether the bytes alone tell where a byte stands as a character: no host's class is asked, and in
/// multi-byte text the byte can be no part of a longer character, whatever the encoding.
inline bool standsForItself(DBuffer const& buffer, char byte) noexcept {
    return isExactly<DBuffer>(buffer) || (isExactly<DDBCSBuffer>(buffer) && standsAloneAnywhere(byte));
}

/// Asks the buffer's class for a byte. Apart, so that searches in line need not have the byte in memory.
template <unsigned int (DBuffer::*search)(char const*, unsigned int, unsigned int) const>
[[gnu::noinline]] unsigned int askForByte(DBuffer const& buffer, char byte, unsigned int start) {
    return (buffer.*search)(&byte, 1, start);
}

/// From so many bytes on the library searches memory for one byte faster than the C library.
inline constexpr unsigned int longSearch = 32768;

/// The same as firstPositionOf in a long text and past the end. What is near is found without the library.
[[gnu::noinline]] inline unsigned int firstPositionInLong(DBuffer const& buffer, char byte,
                                                          unsigned int from) {
    constexpr unsigned int nearby = 4096;
    if (from >= buffer.length) return 0;
    char const* const text = buffer.contents();
    void const* const found = std::memchr(text + from, byte, nearby);
    if (found == nullptr) return buffer.indexOf(&byte, 1, from + nearby + 1);
    return static_cast<unsigned int>(static_cast<char const*>(found) - text) + 1;
}

/// The first position of such a byte from `start` on, else 0.
inline unsigned int firstPositionOf(DBuffer const& buffer, char byte, unsigned int start) {
    unsigned int const from = start == 0 ? 0 : start - 1;
    unsigned int const count = buffer.length - from; // 0 or, wrapped round, large past the end
    if (count - 1 >= longSearch || from > buffer.length) return firstPositionInLong(buffer, byte, from);
    char const* const text = buffer.contents();
    void const* const found = std::memchr(text + from, byte, count);
    return found == nullptr ? 0 : static_cast<unsigned int>(static_cast<char const*>(found) - text) + 1;
}

/// The last place of a byte in a word, counted from 1, else 0.
inline unsigned int lastPlaceInWord(char const* text, char byte) noexcept {
    constexpr std::uint64_t all = 0x0101010101010101;
    std::uint64_t word;
    std::memcpy(&word, text, sizeof word);
    word ^= all * static_cast<unsigned char>(byte);
    // The top bit of each byte that is 0 now, and of no other one.
    std::uint64_t const found = ~(((word & all * 0x7F) + all * 0x7F) | word | all * 0x7F);
    return found == 0 ? 0 : static_cast<unsigned int>(63 - __builtin_clzll(found)) / 8 + 1;
}

/// The last position of such a byte up to `start`, else 0. The nearest bytes, where it often is, are looked
/// at without a call.
inline unsigned int lastPositionOf(DBuffer const& buffer, char byte, unsigned int start) {
    unsigned int const end = start < buffer.length ? start : buffer.length;
    char const* const text = buffer.contents();
#if __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
    constexpr unsigned int word = sizeof(std::uint64_t);
    if (end >= word)
        if (unsigned int const place = lastPlaceInWord(text + end - word, byte); place != 0)
            return end - word + place;
#endif
    if (end > longSearch) return askForByte<&DBuffer::lastIndexOf>(buffer, byte, end);
#ifdef _GNU_SOURCE
    void const* const found = memrchr(text, byte, end);
    return found == nullptr ? 0 : static_cast<unsigned int>(static_cast<char const*>(found) - text) + 1;
#else
    return static_cast<unsigned int>(std::string_view(text, end).rfind(byte) + 1);
#endif
}

/// An object of another kind, or of a class that a host derived, may answer as it likes: null for it.
inline TestFunction functionOf([[maybe_unused]] DStringTest const& test) noexcept {
#ifdef __cpp_rtti
    bool const isFunction = &typeid(test) == &typeid(DStringTest) && test.kind_ == DStringTest::plainFunction;
    return isFunction ? test.function_ : nullptr;
#else
    return nullptr;
#endif
}

/// The first position of a byte that the function accepts, else 0. Compiled into programs, as the function
/// is: a call from one shared object into another takes longer than one within.
inline unsigned int firstPositionAccepted(DBuffer const& buffer, TestFunction accepts) {
    auto const* const text = reinterpret_cast<signed char const*>(buffer.contents());
    auto const* const end = text + buffer.length;
    auto const* at = text;
    for (; end - at >= 4; at += 4) { // at once, as the jump back would be noticeable
        if (accepts(at[0]) != 0) return static_cast<unsigned int>(at - text) + 1;
        if (accepts(at[1]) != 0) return static_cast<unsigned int>(at - text) + 2;
        if (accepts(at[2]) != 0) return static_cast<unsigned int>(at - text) + 3;
        if (accepts(at[3]) != 0) return static_cast<unsigned int>(at - text) + 4;
    }
    for (; at != end; ++at)
        if (accepts(*at) != 0) return static_cast<unsigned int>(at - text) + 1;
    return 0;
}

/// Copies bytes, which may overlap. Those of a word are read at once and then written at once.
inline void moveBytes(char* to, char const* from, std::size_t count) noexcept {
    using Word = std::uint64_t;
    if (count - sizeof(Word) > sizeof(Word)) {
        std::memmove(to, from, count);
        return;
    }
    Word front, back;
    std::memcpy(&front, from, sizeof(Word));
    std::memcpy(&back, from + count - sizeof(Word), sizeof(Word));
    std::memcpy(to, &front, sizeof(Word));
    std::memcpy(to + count - sizeof(Word), &back, sizeof(Word));
}

} // namespace kelcl

#endif
