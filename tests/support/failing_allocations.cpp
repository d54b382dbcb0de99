// The allocation functions of a test program that counts its allocations and makes them fail.
#include "tests/support/failing_allocations.h"

#include <cstdlib>
#include <new>

Allocations allocations;

namespace {

// Out of line, so that the compiler sees new and delete as a pair, not malloc and delete.
[[gnu::noinline]] void* allocateOrFail(std::size_t size) {
    while (!allocations.next(size)) {
        std::new_handler const handler = std::get_new_handler();
        if (allocations.failing == Failing::byBadAlloc || handler == nullptr) throw std::bad_alloc();
        ++allocations.handlerCalls;
        handler();
    }
    void* const block = std::malloc(size == 0 ? 1 : size);
    if (block == nullptr) throw std::bad_alloc();
    ++allocations.made;
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
void operator delete(void* block) noexcept { release(block); }
void operator delete[](void* block) noexcept { release(block); }
void operator delete(void* block, std::size_t) noexcept { release(block); }
void operator delete[](void* block, std::size_t) noexcept { release(block); }
void operator delete(void* block, std::nothrow_t const&) noexcept { release(block); }
void operator delete[](void* block, std::nothrow_t const&) noexcept { release(block); }
