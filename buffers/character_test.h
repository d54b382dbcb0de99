// How searches ask what a test of characters says.
#ifndef KELCL_BUFFERS_CHARACTER_TEST_H
#define KELCL_BUFFERS_CHARACTER_TEST_H

#include <kelcl/detail/library_buffers.h>

namespace kelcl {

/// Calls `search(accepts)`, where `accepts(value)` says what the test does: without a virtual call where it
/// is no more than a function.
template <class Search>
auto withTest(DStringTest const& test, Search search) {
    if (TestFunction const function = functionOf(test); function != nullptr)
        return search([function](int value) { return function(value) != 0; });
    return search([&test](int value) { return test.test(value) != 0; });
}

} // namespace kelcl

#endif
