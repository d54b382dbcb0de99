// Checks of multi-byte buffers with random texts. No tests are here.
#ifndef KELCL_TESTS_BUFFERS_DDBCSBUFFER_SUPPORT_H
#define KELCL_TESTS_BUFFERS_DDBCSBUFFER_SUPPORT_H

#include "tests/characters/multi_byte_support.h"

#include <functional>

namespace mb {

using namespace std::string_literals;
using mb::hex;

/// Calls `check` with random texts until one fails, and tells which one that was.
inline void forRandomTexts(unsigned int seed, int rounds,
                           std::function<void(std::string const&)> const& check) {
    std::mt19937 random(seed);
    for (int round = 0; round < rounds; ++round) {
        std::string text = mb::randomText(random, round % 3 == 0 ? mb::wholeParts() : mb::parts(), 9);
        if (round % 5 == 0)
            for (int i = 0; i < 4; ++i)
                text += static_cast<char>(random() % 256);
        check(text);
        if (testing::Test::HasFailure()) {
            ADD_FAILURE() << "with " << hex(text);
            return;
        }
    }
}

} // namespace mb

#endif
