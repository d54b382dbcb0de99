// How buffers are made and destroyed: of which class, with which text, and the shared empty ones. It stands
// in one place so that all of it becomes part of each function here: short texts cost little more than the
// calls.
#include "buffers/buffer_factory.h"

#include "buffers/buffer_block.h"
#include "buffers/length.h"
#include "bytes/byte_copy.h"
#include "characters/locale_encoding.h"

#include <kelcl/ddbcsbuffer.h>

#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>

// The text lies past the object, in the same block. By its address alone, or the optimiser, which sees the
// object only, takes the store for one out of bounds.
DBuffer::DBuffer(unsigned int size) : refs(1), length(size) { *std::launder(contents() + size) = '\0'; }

DDBCSBuffer::DDBCSBuffer(unsigned int size) : DBuffer(size) {}

void DBuffer::operator delete(void* block) noexcept { ::operator delete[](block); }

DBuffer::~DBuffer() = default;

DDBCSBuffer::~DDBCSBuffer() = default;

namespace kelcl {

namespace {

/// In one block, whichever class.
inline DBuffer* makeOf(bool isMultiByte, unsigned int length) {
    void* const block = ::operator new[](blockSize(length));
    if (isMultiByte) return ::new (block) DDBCSBuffer(length);
    return ::new (block) DBuffer(length);
}

/// Gives a buffer that came with another length the one that was asked for; throws where its block may be too
/// short.
void fitLength(DBuffer& made, unsigned int length) {
    if (made.length < length) {
        made.release();
        throw std::bad_alloc();
    }
    made.length = length;
    made.contents()[length] = '\0';
}

/// As a host's class does it, or a library's class refuses.
[[gnu::noinline]] DBuffer* allocateByClass(DBuffer const& like, unsigned int length) {
    DBuffer* const result = like.allocate(length);
    if (result == nullptr) throw std::bad_alloc();
    if (result->length != length) fitLength(*result, length);
    return result;
}

/// The library's classes need not be asked.
inline DBuffer* allocate(DBuffer const& like, unsigned int length) {
    bool const isMultiByte = isExactly<DDBCSBuffer>(like);
    if (length >= lengthLimit || !(isMultiByte || isExactly<DBuffer>(like)))
        return allocateByClass(like, length);
    return makeOf(isMultiByte || isMultiByteLocale(), length);
}

/// Writes a piece, or pad characters where it has none, and returns the place after it.
inline char* writePiece(char* out, void const* piece, unsigned int length, char padCharacter) {
    if (length == 0) return out; // as most second and third pieces are
    if (piece != nullptr)
        copyBytes(out, static_cast<char const*>(piece), length);
    else
        fillBytes(out, padCharacter, length);
    return out + length;
}

} // namespace

DBuffer* makeBuffer(unsigned int length) { return makeOf(isMultiByteLocale(), length); }

DBuffer* allocateLike(DBuffer const& like, unsigned int length) { return allocate(like, length); }

DBuffer* copyLike(DBuffer const& like, void const* bytes, unsigned int length) {
    DBuffer* const result = allocate(like, length);
    copyBytes(result->contents(), static_cast<char const*>(bytes), length);
    return result;
}

} // namespace kelcl

DBuffer* DBuffer::newBuffer(void const* p1, unsigned int l1, void const* p2, unsigned int l2, void const* p3,
                            unsigned int l3, char padCharacter) const {
    unsigned int const total = kelcl::lengthSum(kelcl::lengthSum(l1, l2), l3);
    if (total == 0) return kelcl::sharedEmpty(*this);
    DBuffer* const result = kelcl::allocate(*this, total);
    char* const second = kelcl::writePiece(result->contents(), p1, l1, padCharacter);
    char* const third = kelcl::writePiece(second, p2, l2, padCharacter);
    kelcl::writePiece(third, p3, l3, padCharacter);
    return result;
}

DBuffer* DBuffer::nullBuffer = nullptr;
DBuffer* DBuffer::nullDBuffer = nullptr;

// The shared empty buffers are published without a lock, so that a process may fork at any time: each thread
// that finds none makes one, and the first to publish its own wins.

namespace {

/// The shared empty buffers of the plain class that were ever made. One that another has replaced stays, as
/// others may hold it without having counted, and comes into use again.
struct PlainEmpty {
    DBuffer* buffer;
    PlainEmpty* next;
};
std::atomic<PlainEmpty*> plainEmpties = nullptr;

/// Memory for a shared empty buffer, apart from all else: every thread reads its count, and would wait for
/// whichever thread last wrote to a neighbour in the same cache line.
constexpr std::align_val_t cacheLines{128}; // two lines, as processors fetch them in pairs
void* memoryApart() {
    constexpr auto size = static_cast<std::size_t>(cacheLines);
    static_assert(kelcl::blockSize(0) <= size);
    return ::operator new[](size, cacheLines);
}

DBuffer* makeEmptyApart() {
    if (kelcl::isMultiByteLocale()) return ::new (memoryApart()) DDBCSBuffer(0);
    return ::new (memoryApart()) DBuffer(0);
}

void destroyApart(DBuffer* empty) {
    empty->~DBuffer();
    ::operator delete[](static_cast<void*>(empty), cacheLines);
}

DBuffer* known(DBuffer*& place) { return std::atomic_ref(place).load(std::memory_order_acquire); }

/// The node is from std::malloc: what a host's operator new sees does not depend on it. If there is no memory
/// for it, the buffer is merely never used again.
DBuffer* kept(DBuffer* buffer) {
    void* const memory = std::malloc(sizeof(PlainEmpty));
    if (memory == nullptr) return buffer;
    auto* const node = ::new (memory) PlainEmpty{buffer, plainEmpties.load()};
    while (!plainEmpties.compare_exchange_weak(node->next, node))
        ;
    return buffer;
}

/// A plain empty buffer that is not the shared one, and whose only reference is its permanent one.
DBuffer* freshPlainEmpty() {
    DBuffer const* const current = known(DBuffer::nullDBuffer);
    for (PlainEmpty const* node = plainEmpties.load(); node != nullptr; node = node->next)
        if (node->buffer != current && node->buffer->hasOneOwner()) return node->buffer;
    return kept(::new (memoryApart()) DBuffer(0));
}

} // namespace

DBuffer* DBuffer::initialize() {
    if (kelcl::isMultiByteLocale()) std::atomic_ref(nullDBuffer).store(freshPlainEmpty());
    return kelcl::makeBuffer(0);
}

DBuffer* DBuffer::defaultBuffer() {
    if (DBuffer* const made = known(nullBuffer)) return made;
    DBuffer* none = nullptr;
    if (kelcl::isMultiByteLocale() && known(nullDBuffer) == nullptr)
        std::atomic_ref(nullDBuffer).compare_exchange_strong(none, freshPlainEmpty());
    DBuffer* winner = nullptr;
    DBuffer* const made = makeEmptyApart();
    if (std::atomic_ref(nullBuffer).compare_exchange_strong(winner, made)) return made;
    destroyApart(made);
    return winner;
}

DBuffer* DBuffer::null() const {
    DBuffer* const plain = known(nullDBuffer);
    if (plain != nullptr && plain->className() == className()) return plain;
    return defaultBuffer();
}
