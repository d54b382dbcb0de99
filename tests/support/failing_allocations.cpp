// The allocation functions of a test program that counts its allocations and makes them fail.
#include "tests/support/failing_allocations.h"

#include <cstdlib>
#include <new>

Allocations allocations;

namespace {

// Out of line, so that the compiler sees new and delete as a pair, not malloc and delete.
[[gnu::noinline]] void* allocateOrFail(std::size_t size,
                                       std::size_t alignment = __STDCPP_DEFAULT_NEW_ALIGNMENT__) {
    while (!allocations.next(size)) {
        std::new_handler const handler = std::get_new_handler();
        if (allocations.failing == Failing::byBadAlloc || handler == nullptr) throw std::bad_alloc();
        ++allocations.handlerCalls;
        handler();
    }
    void* block = nullptr;
    if (alignment <= __STDCPP_DEFAULT_NEW_ALIGNMENT__)
        block = std::malloc(size == 0 ? 1 : size);
    else // a multiple of the alignment, and not 0
        block = std::aligned_alloc(alignment, (size / alignment + 1) * alignment);
    if (block == nullptr) throw std::bad_alloc();
    ++allocations.made;
    allocations.bytes += size;
    ++allocations.live;
    return block;
}

void* allocateOrNull(std::size_t size) noexcept {
    try {
        return allocateOrFail(size);
    } catch (...) {
        return nullptr;
    }
}

[[gnu::noinline]] void release(void* block) noexcept {
    if (block == nullptr) return;
    --allocations.live;
    std::free(block);
}

} // namespace

void* operator new(std::size_t size) { return allocateOrFail(size); }
void* operator new[](std::size_t size) { return allocateOrFail(size); }
void* operator new(std::size_t size, std::nothrow_t const&) noexcept { return allocateOrNull(size); }
void* operator new[](std::size_t size, std::nothrow_t const&) noexcept { return allocateOrNull(size); }
void* operator new(std::size_t size, std::align_val_t alignment) {
    return allocateOrFail(size, static_cast<std::size_t>(alignment));
}
void operator delete(void* block) noexcept { release(block); }
void operator delete[](void* block) noexcept { release(block); }
void operator delete(void* block, std::size_t) noexcept { release(block); }
void operator delete[](void* block, std::size_t) noexcept { release(block); }
void operator delete(void* block, std::nothrow_t const&) noexcept { release(block); }
void operator delete[](void* block, std::nothrow_t const&) noexcept { release(block); }
void operator delete(void* block, std::align_val_t) noexcept { release(block); }
void operator delete(void* block, std::size_t, std::align_val_t) noexcept { release(block); }
