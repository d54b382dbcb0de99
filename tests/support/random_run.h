// Runs random operations for a test: two seconds of them, or as many as KELCL_RANDOM_OPERATIONS says, from
// the seed that KELCL_RANDOM_SEED says.
#ifndef KELCL_TESTS_SUPPORT_RANDOM_RUN_H
#define KELCL_TESTS_SUPPORT_RANDOM_RUN_H

#include "tests/support/random_operations.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <random>

/// `make(choices, seed)` makes the operations.
template <class Make>
void runRandomOperations(Make make) {
    char const* const wantedSeed = std::getenv("KELCL_RANDOM_SEED");
    char const* const wantedCount = std::getenv("KELCL_RANDOM_OPERATIONS");
    auto const seed = wantedSeed != nullptr
                          ? static_cast<std::uint32_t>(std::strtoul(wantedSeed, nullptr, 10))
                          : std::random_device()();
    unsigned long const count = wantedCount != nullptr ? std::strtoul(wantedCount, nullptr, 10) : 0;
    auto const end = std::chrono::steady_clock::now() + std::chrono::seconds(2);
    std::cout << "KELCL_RANDOM_SEED=" << seed << std::endl;

    SeededChoices choices(seed);
    std::unique_ptr<RandomOperations> const operations = make(choices, seed);
    unsigned long done = 0;
    while (count != 0 ? done < count : done % 64 != 0 || std::chrono::steady_clock::now() < end) {
        ASSERT_TRUE(operations->runOne()) << "operation " << done << ", seed " << seed << '\n'
                                          << operations->report();
        ++done;
    }
    std::cout << done << " operations" << std::endl;
    EXPECT_GT(done, 0U);
}

#endif
