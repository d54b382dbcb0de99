// Private copies of texts, made without calling the new-handler.
#ifndef KELCL_EXCEPT_TEXT_COPY_H
#define KELCL_EXCEPT_TEXT_COPY_H

#include "except/new_handler_suspension.h"

#include <kelcl/detail/owned_text.h>

#include <cstring>
#include <new>

namespace kelcl {

/// Room for `size` characters, null when there is no memory.
inline OwnedText roomForText(std::size_t size) noexcept {
    NewHandlerSuspension const suspension;
    return OwnedText(new (std::nothrow) char[size]);
}

/// A copy of the text; null of null, and when there is no memory.
inline OwnedText copyText(char const* text) noexcept {
    if (text == nullptr) return nullptr;
    std::size_t const size = std::strlen(text) + 1;
    OwnedText copy = roomForText(size);
    if (copy != nullptr) std::memcpy(copy.get(), text, size);
    return copy;
}

} // namespace kelcl

#endif
