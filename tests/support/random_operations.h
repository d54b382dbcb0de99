// Random operations beside a plain model of them: what the rooms' random tests and the fuzz targets have in
// common.
#ifndef KELCL_TESTS_SUPPORT_RANDOM_OPERATIONS_H
#define KELCL_TESTS_SUPPORT_RANDOM_OPERATIONS_H

#include "tests/support/choices.h"

#include <string>

class RandomOperations {
public:
    RandomOperations() = default;
    RandomOperations(RandomOperations const&) = delete;
    RandomOperations& operator=(RandomOperations const&) = delete;
    virtual ~RandomOperations() = default;

    /// One operation; false when something is not as the model says, told by `report`.
    virtual bool runOne() = 0;
    virtual std::string report() const = 0;
};

#endif
