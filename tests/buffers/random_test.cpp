// The operations of multi-byte text agree with their plain model on random texts. The operations are in
// random_operations.cpp, the seed and how many of them in tests/support/random_run.h.
#include "tests/buffers/random_operations.h"
#include "tests/support/random_run.h"

TEST(RandomMultiByteOperations, AgreeWithAPlainModelThatStepsThroughTheCharacters) {
    runRandomOperations(operationsOnMultiByteText);
}
