// DBuffer: what class it is, and what is asked of single characters. How buffers are made is in
// buffer_factory.
#include "buffers/buffer_factory.h"
#include "buffers/length.h"

#include <kelcl/dbuffer.h>

char const* DBuffer::className() const { return "DBuffer"; }

unsigned int DBuffer::charType(unsigned int) const { return 0; }

// The address of the following byte would be more useful, but callers rely on getting the same address.
char* DBuffer::next(char const* p) { return const_cast<char*>(p); }
char const* DBuffer::next(char const* p) const { return p; }

DBuffer* DBuffer::allocate(unsigned int size) const {
    if (size >= kelcl::lengthLimit) overflow();
    return kelcl::makeBuffer(size);
}
