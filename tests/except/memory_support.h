// What the tests of exceptions without memory share: actions run while allocations fail. No tests are here.
#ifndef KELCL_TESTS_EXCEPT_MEMORY_SUPPORT_H
#define KELCL_TESTS_EXCEPT_MEMORY_SUPPORT_H

#include "tests/except/except_support.h"
#include "tests/support/failing_allocations.h"

#include <limits>
#include <new>

/// Which allocation from now on fails (1 is the next, 0 none), whether all after it do, and all from a size
/// on. A failure calls the new-handler, as the standard prescribes.
struct Plan {
    long failing = 0;
    bool alsoAllLater = false;
    std::size_t failingSize = std::numeric_limits<std::size_t>::max();
};

inline void follow(Plan const& plan) {
    allocations.countdown = plan.failing - 1;
    allocations.onlyOnce = !plan.alsoAllLater;
    allocations.failingSize = plan.failingSize;
    allocations.failing = Failing::byHandler;
}

inline void countedHandler() { throw std::bad_alloc(); }

/// Writes nowhere, and allocates nothing.
class Silent final : public DException::TraceFn {
public:
    void write(char const*) override {}
};

/// Runs `action` under a plan, with a new-handler in place, and tells what it did.
struct Outcome {
    long failures;
    long handlerCalls;
    bool handlerIsBack;
};

template <class Action>
Outcome runUnder(Plan const& plan, Action const& action) {
    std::new_handler const before = std::set_new_handler(countedHandler);
    long const failures = allocations.failures;
    long const handlerCalls = allocations.handlerCalls;
    follow(plan);
    action();
    follow({});
    bool const handlerIsBack = std::set_new_handler(before) == countedHandler;
    return {allocations.failures - failures, allocations.handlerCalls - handlerCalls, handlerIsBack};
}

/// Makes the first, the second, … allocation of `action` fail, then that one and all later ones, until none
/// fails any more. `action` throws nothing itself and frees all that it takes; it returns what must hold.
template <class Action>
void sweep(char const* what, Action const& action) {
    for (bool const alsoAllLater : {false, true})
        for (long nth = 1;; ++nth) {
            bool holds = false;
            long const before = allocations.live;
            Outcome const outcome = runUnder({nth, alsoAllLater}, [&] { holds = action(); });
            EXPECT_EQ(allocations.live, before) << what << ": leak when allocation " << nth << " fails";
            EXPECT_TRUE(holds) << what << ": allocation " << nth;
            EXPECT_EQ(outcome.handlerCalls, 0) << what << ": allocation " << nth;
            EXPECT_TRUE(outcome.handlerIsBack) << what << ": allocation " << nth;
            if (outcome.failures == 0) break;
            ASSERT_LT(nth, 1000) << what;
        }
}

inline bool isSame(char const* left, char const* right) {
    return left == right || (left != nullptr && right != nullptr && std::string_view(left) == right);
}

inline bool isEither(char const* text, char const* one, char const* other) {
    return isSame(text, one) || isSame(text, other);
}

/// The chain is as long as the count says, and null follows it.
inline bool isWhole(DException const& exception) {
    for (unsigned long i = 0; i < exception.textCount(); ++i)
        if (exception.text(i) == nullptr) return false;
    return exception.text(exception.textCount()) == nullptr;
}

inline DExceptionLocation const here("unit", "function", 77);

#endif
