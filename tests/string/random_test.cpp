// The operations of strings agree with their plain model on random texts. The operations are in
// random_operations.cpp, the seed and how many of them in tests/support/random_run.h.
#include "tests/string/random_operations.h"
#include "tests/support/random_run.h"

TEST(RandomOperations, AgreeWithAPlainModel) {
    runRandomOperations([](Choices& choices, std::uint32_t) { return operationsOnStrings(choices); });
}
