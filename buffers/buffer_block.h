// The heap block of a buffer: its size, how a buffer is made in it, and the room that a text has to grow.
// Which class of buffer is made is decided in buffer_factory.
#ifndef KELCL_BUFFERS_BUFFER_BLOCK_H
#define KELCL_BUFFERS_BUFFER_BLOCK_H

#include "buffers/length.h"

#include <kelcl/dbuffer.h>

#include <bit>
#include <cstddef>
#include <cstring>
#include <new>
#include <string_view>

namespace kelcl {

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
    return std::bit_floor(needed) / (needed < 1024 ? 8 : needed < 65536 ? 4 : 2);
}

/// Bytes of the block for a text of `length` bytes: 8 less than a multiple of 16, which is what common
/// allocators hand out without waste.
constexpr std::size_t blockSize(unsigned int length) {
    std::size_t const needed = bytesNeeded(length);
    return needed + (-needed & (sizeStep(needed) - 1)) - allocatorHeader;
}

/// By how many bytes a text of `length` bytes can grow in its block.
constexpr unsigned int roomAfter(unsigned int length) {
    std::size_t const needed = bytesNeeded(length);
    std::size_t const room = -needed & (sizeStep(needed) - 1);
    std::size_t const limit = lengthLimit - 1 - length;
    return static_cast<unsigned int>(room < limit ? room : limit);
}

/// A buffer of the given class in a block of its own, its text yet to be filled.
template <class Buffer>
Buffer* construct(unsigned int length) {
    return ::new (::operator new[](blockSize(length))) Buffer(length);
}

/// The text of a buffer.
inline std::string_view bytesOf(DBuffer const& buffer) { return {buffer.contents(), buffer.length}; }

/// The buffer itself, with a reference for the caller.
inline DBuffer* shared(DBuffer& buffer) {
    buffer.take();
    return &buffer;
}

/// The shared empty buffer that suits `like`, with a reference for the caller.
inline DBuffer* sharedEmpty(DBuffer const& like) { return shared(*like.null()); }

/// Gives a buffer that came with another length the one that was asked for; throws where its block may be too
/// short.
void fitLength(DBuffer& made, unsigned int length);

/// A new buffer of the class that `like` makes, its text yet to be filled. A subclass may let `allocate`
/// return null, or a buffer of another length; this is never null, and has room for exactly the text.
inline DBuffer* allocateLike(DBuffer const& like, unsigned int length) {
    DBuffer* const result = like.allocate(length);
    if (result == nullptr) throw std::bad_alloc();
    if (result->length != length) fitLength(*result, length);
    return result;
}

/// A buffer of the class that `like` makes with a copy of the bytes, of which there is at least one:
/// `newBuffer` for one piece.
inline DBuffer* copyLike(DBuffer const& like, void const* bytes, unsigned int length) {
    DBuffer* const result = allocateLike(like, length);
    std::memcpy(result->contents(), bytes, length);
    return result;
}

} // namespace kelcl

#endif
