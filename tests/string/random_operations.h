// Every operation of strings on random texts, beside a plain model.
#ifndef KELCL_TESTS_STRING_RANDOM_OPERATIONS_H
#define KELCL_TESTS_STRING_RANDOM_OPERATIONS_H

#include "tests/support/random_operations.h"

#include <memory>

/// For single-byte locales.
std::unique_ptr<RandomOperations> operationsOnStrings(Choices& choices);

#endif
