// Whether the class of a buffer has its own form of a virtual operation of DDBCSBuffer. What a host overrides
// is asked through the virtual table each time; what it left alone does what the library knows, so that a
// walk through all of a text need not begin anew for each question.
#ifndef KELCL_BUFFERS_OVERRIDING_H
#define KELCL_BUFFERS_OVERRIDING_H

#include <kelcl/dbuffer.h>

namespace kelcl {

/// Whether searches for patterns (for what a test accepts) are those of exactly DDBCSBuffer, also those that
/// they are defined by: of one byte, of the start, and of the type of a character.
bool hasMultiByteIndexOf(DBuffer const& buffer);
bool hasMultiByteTestedIndexOf(DBuffer const& buffer);
/// Whether it says the same of the types of its characters.
bool hasMultiByteCharType(DBuffer const& buffer);

} // namespace kelcl

#endif
