// Allocations that are counted, and that fail when a test wants it. A program that has
// failing_allocations.cpp among its sources allocates through them.
#ifndef KELCL_TESTS_SUPPORT_FAILING_ALLOCATIONS_H
#define KELCL_TESTS_SUPPORT_FAILING_ALLOCATIONS_H

#include <cstddef>
#include <limits>

/// How an allocation fails that is to fail.
enum class Failing {
    byBadAlloc, ///< with std::bad_alloc, whatever handler there is
    byHandler,  ///< as the standard says: the handler is called, until there is none or it throws
};

struct Allocations {
    long made = 0;         ///< So many succeeded.
    std::size_t bytes = 0; ///< Of all these together.
    long live = 0;         ///< So many of them were not given back yet.
    long countdown = -1;   ///< So many still succeed before one fails; negative: all do.
    bool onlyOnce = true;
    std::size_t failingSize =
        std::numeric_limits<std::size_t>::max(); ///< Blocks of that size and larger fail.
    Failing failing = Failing::byBadAlloc;
    long failures = 0;
    long handlerCalls = 0;

    bool next(std::size_t size) {
        if (size < failingSize && countdown != 0) {
            if (countdown > 0) --countdown;
            return true;
        }
        if (onlyOnce && countdown == 0) countdown = -1;
        ++failures;
        return false;
    }
};

extern Allocations allocations;

#endif
