// Which class of buffer a process makes, and the shared empty buffers.
#include "string/buffer_factory.h"

#include "string/buffer_block.h"
#include "string/locale_encoding.h"

#include <kelcl/ddbcsbuffer.h>

#include <typeinfo>

namespace kelcl {

DBuffer* makeBuffer(unsigned int length) {
    if (isMultiByteLocale()) return construct<DDBCSBuffer>(length);
    return construct<DBuffer>(length);
}

bool isPlain(DBuffer const& buffer) { return typeid(buffer) == typeid(DBuffer); }

bool isOfLibraryClass(DBuffer const& buffer) {
    return isPlain(buffer) || typeid(buffer) == typeid(DDBCSBuffer);
}

bool goesByBytes(DBuffer const& buffer, char first) {
    if (isPlain(buffer)) return true;
    if (!isOfLibraryClass(buffer)) return false;
    constexpr unsigned char firstLead = 0xC0; // in UTF-8, where the other bytes of a character are smaller
    return standsAlone(first, false) ||
           (isUtf8Locale() && (standsAlone(first, true) || static_cast<unsigned char>(first) >= firstLead));
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
