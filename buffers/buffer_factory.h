// Which class of buffer a process makes: the only place of this room that knows the multi-byte class.
#ifndef KELCL_BUFFERS_BUFFER_FACTORY_H
#define KELCL_BUFFERS_BUFFER_FACTORY_H

#include <kelcl/dbuffer.h>

namespace kelcl {

/// A buffer of the class that suits the current locale, its text yet to be filled.
DBuffer* makeBuffer(unsigned int length);

/// Whether the buffer is of exactly one of the library's two classes, not of one that a host derived.
bool isOfLibraryClass(DBuffer const& buffer);

/// Whether the buffer is of exactly the single-byte class, whose searches are those of the byte kernels.
bool isPlain(DBuffer const& buffer);

/// Whether the searches for a text that begins with the byte find the same as the byte kernels: the buffer is
/// of exactly one of the library's classes, and the byte can only be the first one of a character.
bool goesByBytes(DBuffer const& buffer, char first);

/// Whether the text may grow in the block it has by `roomAfter` its length: the buffer is of exactly one
/// of the library's classes, whose blocks have the known sizes, and a new buffer would be of the same class.
bool growsInPlace(DBuffer const& buffer);

} // namespace kelcl

#endif
