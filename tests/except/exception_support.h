// What the tests of exceptions share. No tests are here.
#ifndef KELCL_TESTS_EXCEPT_EXCEPTION_SUPPORT_H
#define KELCL_TESTS_EXCEPT_EXCEPTION_SUPPORT_H

#include "tests/except/except_support.h"

inline std::vector<unsigned long> linesOf(DException const& exception) {
    std::vector<unsigned long> lines;
    for (unsigned long i = 0; i < exception.locationCount(); ++i)
        lines.push_back(exception.locationAtIndex(i)->lineNumber());
    return lines;
}

using Lines = std::vector<unsigned long>;
using Texts = std::vector<std::string>;

#endif
