// Which class of buffer a process makes, and the shared empty buffers.
#include "string/buffer_factory.h"

#include "string/buffer_block.h"

#include <kelcl/ddbcsbuffer.h>

#include <cstdlib>
#include <typeinfo>

namespace kelcl {

bool isMultiByteLocale() { return MB_CUR_MAX >= 2; }

DBuffer* makeBuffer(unsigned int length) {
    if (isMultiByteLocale()) return construct<DDBCSBuffer>(length);
    return construct<DBuffer>(length);
}

bool isPlain(DBuffer const& buffer) { return typeid(buffer) == typeid(DBuffer); }

bool isOfLibraryClass(DBuffer const& buffer) {
    return isPlain(buffer) || typeid(buffer) == typeid(DDBCSBuffer);
}

bool growsInPlace(DBuffer const& buffer) {
    return isPlain(buffer) ? !isMultiByteLocale() : typeid(buffer) == typeid(DDBCSBuffer);
}

} // namespace kelcl

DBuffer* DBuffer::nullBuffer = nullptr;
DBuffer* DBuffer::nullDBuffer = nullptr;

DBuffer* DBuffer::initialize() {
    if (kelcl::isMultiByteLocale()) {
        DBuffer* const plain = kelcl::construct<DBuffer>(0);
        if (nullDBuffer != nullptr && --nullDBuffer->refs == 0) delete nullDBuffer;
        nullDBuffer = plain;
    }
    return kelcl::makeBuffer(0);
}

DBuffer* DBuffer::defaultBuffer() {
    if (nullBuffer == nullptr) nullBuffer = initialize();
    return nullBuffer;
}

DBuffer* DBuffer::null() const {
    if (nullDBuffer != nullptr && nullDBuffer->className() == className()) return nullDBuffer;
    return defaultBuffer();
}
