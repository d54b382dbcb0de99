// What the tests of hosts' classes share: the fixture that runs a test with both classes, and answers from a
// list. No tests are here.
#ifndef KELCL_TESTS_HOSTS_ASKED_SUPPORT_H
#define KELCL_TESTS_HOSTS_ASKED_SUPPORT_H

#include "tests/hosts/host_buffer.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace hosts {

template <class Buffer>
class AnyHost : public testing::Test {
protected:
    static DString text(std::string_view bytes) { return DString(Buffer::make(bytes)); }

    SwitchAt const off{0};
    Host host;
};
using Bases = testing::Types<HostsPlain, HostsMultiByte>;
TYPED_TEST_SUITE(AnyHost, Bases);

/// With `question` it answers from the list, else as the library.
inline auto answers(std::string const& question, std::vector<unsigned int> list) {
    return [=, next = std::size_t{0}](std::string const& asked, unsigned int) mutable {
        return asked == question && next < list.size() ? std::optional(list[next++]) : std::nullopt;
    };
}

inline Questions only(std::string const& question, Questions const& asked) {
    Questions result;
    for (std::string const& one : asked)
        if (one.starts_with(question + " ")) result.push_back(one);
    return result;
}

} // namespace hosts

#endif
