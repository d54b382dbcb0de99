// Every operation of DString on texts of hosts' classes that lie.
#ifndef KELCL_TESTS_HOSTS_RANDOM_OPERATIONS_H
#define KELCL_TESTS_HOSTS_RANDOM_OPERATIONS_H

#include "tests/support/random_operations.h"

#include <memory>

/// The choices also decide what the classes answer.
std::unique_ptr<RandomOperations> operationsOnLyingBuffers(Choices& choices);

#endif
