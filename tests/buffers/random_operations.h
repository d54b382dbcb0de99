// Every operation of the multi-byte buffer on random texts, beside a plain model.
#ifndef KELCL_TESTS_BUFFERS_RANDOM_OPERATIONS_H
#define KELCL_TESTS_BUFFERS_RANDOM_OPERATIONS_H

#include "tests/support/random_operations.h"

#include <memory>

/// For multi-byte locales. `poolSeed` decides which characters of the locale the texts are made of; it is
/// that of the first call in a process.
std::unique_ptr<RandomOperations> operationsOnMultiByteText(Choices& choices, unsigned int poolSeed);

#endif
