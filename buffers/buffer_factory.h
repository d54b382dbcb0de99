// Which class of buffer a process makes: the only place of this room that knows the multi-byte class.
#ifndef KELCL_BUFFERS_BUFFER_FACTORY_H
#define KELCL_BUFFERS_BUFFER_FACTORY_H

#include <kelcl/dbuffer.h>

namespace kelcl {

/// A buffer of the class that suits the current locale, its text yet to be filled.
DBuffer* makeBuffer(unsigned int length);

} // namespace kelcl

#endif
