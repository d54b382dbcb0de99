// Operations of strings on texts of hosts' classes that lie: the input says which, on what, and what the
// classes answer.
#include "fuzz/target.h"
#include "tests/hosts/random_operations.h"

#include <clocale>

int LLVMFuzzerInitialize(int*, char***) {
    std::setlocale(LC_ALL, "");
    return 0;
}

int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    ByteChoices choices(data, size);
    auto const operations = operationsOnLyingBuffers(choices);
    while (!choices.isAtEnd())
        if (!operations->runOne()) fuzz::fail(operations->report());
    return 0;
}
