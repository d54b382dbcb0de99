// Who answers for a buffer: the kernels, where its class is one of the library's own, or that class itself,
// where a host derived it. What a host overrides is asked through the virtual table each time; what it left
// alone does what the library knows, so that a walk through all of a text need not begin anew for each
// question.
#ifndef KELCL_BUFFERS_HOST_CLASSES_H
#define KELCL_BUFFERS_HOST_CLASSES_H

#include <kelcl/dbuffer.h>
#include <kelcl/detail/library_buffers.h>

namespace kelcl {

/// Whether the buffer is of exactly the single-byte class, whose searches are those of the byte kernels.
inline bool isSingleByteClass(DBuffer const& buffer) { return isExactly<DBuffer>(buffer); }

/// Whether it is of exactly the multi-byte class.
inline bool isMultiByteClass(DBuffer const& buffer) { return isExactly<DDBCSBuffer>(buffer); }

/// Whether searches for a text that begins with the byte find the same as the byte kernels: the buffer is of
/// exactly one of the library's classes, and the byte can only be the first one of a character.
bool findsByBytesInMultiByteClass(DBuffer const& buffer, char first);
inline bool findsByBytes(DBuffer const& buffer, char first) {
    return isSingleByteClass(buffer) || findsByBytesInMultiByteClass(buffer, first);
}

// Of a class that a host derived:

/// Whether searches for patterns (for what a test accepts) are those of exactly DDBCSBuffer, also those that
/// they are defined by: of one byte, of the start, and of the type of a character.
bool hasMultiByteIndexOf(DBuffer const& buffer);
bool hasMultiByteTestedIndexOf(DBuffer const& buffer);
/// Whether it says the same of the types of its characters.
bool hasMultiByteCharType(DBuffer const& buffer);

} // namespace kelcl

#endif
