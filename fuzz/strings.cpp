// Operations of strings in a single-byte locale, beside the plain model of the random tests: the input says
// which, on what.
#include "fuzz/target.h"
#include "tests/string/random_operations.h"

#include <clocale>

int LLVMFuzzerInitialize(int*, char***) {
    std::setlocale(LC_ALL, "");
    return 0;
}

int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    ByteChoices choices(data, size);
    auto const operations = operationsOnStrings(choices);
    while (!choices.isAtEnd())
        if (!operations->runOne()) fuzz::fail(operations->report());
    return 0;
}
