// Texts of hosts' classes whose virtual operations lie. The operations are in random_operations.cpp, the seed
// and how many of them in tests/support/random_run.h.
#include "tests/hosts/random_operations.h"
#include "tests/support/random_run.h"

TEST(LyingHosts, LeadNoOperationOutOfATextOrRoundForEver) {
    runRandomOperations([](Choices& choices, unsigned int) { return operationsOnLyingBuffers(choices); });
}
