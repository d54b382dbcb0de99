// What the random operations on multi-byte text are called with: texts of characters of the locale, of bytes
// that are none, of truncated characters and NULs, and numbers around their ends.
#ifndef KELCL_TESTS_BUFFERS_RANDOM_INPUTS_H
#define KELCL_TESTS_BUFFERS_RANDOM_INPUTS_H

#include "tests/buffers/model.h"
#include "tests/support/choices.h"

#include <kelcl/dbuffer.h>

#include <iosfwd>
#include <string>
#include <vector>

namespace mb {

/// Characters of this locale.
using Pool = std::vector<std::string>;

Pool makePool(Choices& choices);

/// What one operation may make use of.
struct Inputs {
    std::string text;
    std::string first; ///< The arguments that are sets, patterns or replacements.
    std::string second;
    char pad = ' ';
    unsigned int a = 0; ///< Positions, widths or counts.
    unsigned int b = 0;
    model::Function test = nullptr;
    DStringEnum::StripMode mode = DStringEnum::both;
};

Inputs chooseInputs(Choices& choices, Pool const& pool);

/// Bytes as a literal.
std::string escaped(std::string const& bytes);
std::ostream& operator<<(std::ostream& out, Inputs const& inputs);

} // namespace mb

#endif
