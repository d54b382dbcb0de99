// DBuffer: storage and what is asked of single characters. Which class is made is decided in buffer_factory.
#include "buffers/buffer_block.h"
#include "buffers/buffer_factory.h"
#include "buffers/length.h"
#include "bytes/byte_copy.h"

#include <kelcl/dbuffer.h>

#include <cstring>
#include <new>

namespace {

/// Writes a piece, or pad characters where it has none, and returns the place after it.
char* writePiece(char* out, void const* piece, unsigned int length, char padCharacter) {
    if (length == 0) return out;
    if (piece != nullptr)
        kelcl::copyBytes(out, static_cast<char const*>(piece), length);
    else
        std::memset(out, padCharacter, length);
    return out + length;
}

} // namespace

// The text lies past the object, in the same block. By its address alone, or the optimiser, which sees the
// object only, takes the store for one out of bounds.
DBuffer::DBuffer(unsigned int size) : refs(1), length(size) { *std::launder(contents() + size) = '\0'; }

DBuffer::~DBuffer() = default;

void DBuffer::operator delete(void* block) noexcept { ::operator delete[](block); }

char const* DBuffer::className() const { return "DBuffer"; }

unsigned int DBuffer::charType(unsigned int) const { return 0; }

// The address of the following byte would be more useful, but callers rely on getting the same address.
char* DBuffer::next(char const* p) { return const_cast<char*>(p); }
char const* DBuffer::next(char const* p) const { return p; }

DBuffer* DBuffer::allocate(unsigned int size) const {
    if (size >= kelcl::lengthLimit) overflow();
    return kelcl::makeBuffer(size);
}

DBuffer* DBuffer::newBuffer(void const* p1, unsigned int l1, void const* p2, unsigned int l2, void const* p3,
                            unsigned int l3, char padCharacter) const {
    unsigned int const total = kelcl::lengthSum(kelcl::lengthSum(l1, l2), l3);
    if (total == 0) return kelcl::sharedEmpty(*this);
    DBuffer* const result = kelcl::allocateLike(*this, total);
    char* out = writePiece(result->contents(), p1, l1, padCharacter);
    out = writePiece(out, p2, l2, padCharacter);
    writePiece(out, p3, l3, padCharacter);
    return result;
}
