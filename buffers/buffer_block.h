// The heap block of a buffer: its size, and how a buffer is made in it. The room that a text has to grow
// follows from the steps in kelcl/detail/library_buffers.h; which class of buffer is made is decided in
// buffer_factory.
#ifndef KELCL_BUFFERS_BUFFER_BLOCK_H
#define KELCL_BUFFERS_BUFFER_BLOCK_H

#include "buffers/length.h"
#include "bytes/byte_search.h"

#include <kelcl/dbuffer.h>
#include <kelcl/detail/library_buffers.h>

#include <cstddef>
#include <cstring>
#include <functional>
#include <new>
#include <string_view>

namespace kelcl {

/// Bytes of the block for a text of `length` bytes: 8 less than a multiple of 16, which is what common
/// allocators hand out without waste.
constexpr std::size_t blockSize(unsigned int length) {
    std::size_t const needed = bytesNeeded(length);
    return needed + ((0 - needed) & (sizeStep(needed) - 1)) - allocatorHeader;
}

/// A buffer of the given class in a block of its own, its text yet to be filled.
template <class Buffer>
Buffer* construct(unsigned int length) {
    return ::new (::operator new[](blockSize(length))) Buffer(length);
}

/// The text of a buffer.
inline std::string_view bytesOf(DBuffer const& buffer) { return {buffer.contents(), buffer.length}; }

/// Whether a pointer points into the text of a buffer, or to its end.
inline bool pointsInto(DBuffer const& buffer, char const* bytes) {
    std::less_equal<char const*> const notAfter;
    return notAfter(buffer.contents(), bytes) && notAfter(bytes, buffer.contents() + buffer.length);
}

/// The position, counted from 1, of what was found at an offset of the text; 0 for nothing.
inline unsigned int positionOf(std::size_t offset) {
    return offset == notFound ? 0 : static_cast<unsigned int>(offset) + 1;
}

/// The buffer itself, with a reference for the caller.
inline DBuffer* shared(DBuffer& buffer) {
    buffer.take();
    return &buffer;
}

/// The shared empty buffer that suits `like`, with a reference for the caller.
inline DBuffer* sharedEmpty(DBuffer const& like) { return shared(*like.null()); }

/// A new buffer of the class that `like` makes, its text yet to be filled. A subclass may let `allocate`
/// return null, or a buffer of another length; this is never null, and has room for exactly the text.
DBuffer* allocateLike(DBuffer const& like, unsigned int length);

/// A buffer of the class that `like` makes with a copy of the bytes, of which there is at least one:
/// `newBuffer` for one piece.
DBuffer* copyLike(DBuffer const& like, void const* bytes, unsigned int length);

} // namespace kelcl

#endif
