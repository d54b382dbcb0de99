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
#include <typeinfo>

namespace kelcl {

/// Whether the buffer is of exactly that class of the library's, not of one that a host derived. By the
/// address of the type, as comparing its name would be felt. A program without type information is told no,
/// and takes the general way.
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

/// Whether the text may grow in the block it has by `roomAfter` its length: the buffer is of exactly one
/// of the library's classes, whose blocks have the known sizes, and a new buffer would be of the same class.
/// That is asked each time of a plain buffer, which a multi-byte one takes the place of when it grows in a
/// multi-byte locale.
inline bool growsInPlace(DBuffer const& buffer) noexcept {
    return isExactly<DDBCSBuffer>(buffer) || (isExactly<DBuffer>(buffer) && MB_CUR_MAX < 2);
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
