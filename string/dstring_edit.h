// The protocol of every editing operation of DString: keep the buffer, call its operation, install the
// result.
#ifndef KELCL_STRING_DSTRING_EDIT_H
#define KELCL_STRING_DSTRING_EDIT_H

#include <kelcl/detail/library_buffers.h>
#include <kelcl/dstring.h>

/// Calls `operation` with the string's buffer and installs the buffer that it returns. If it throws the
/// string stays what it was. Until the result is installed the string itself keeps the old buffer, and with
/// it arguments that are part of the text.
///
/// A buffer of a host's class may call the host back, which may change this very string: it is held alive by
/// a reference of its own. That reference would make a sole owner look like one of two, so operations that
/// edit in place do without it.
template <DString::During during, class Operation>
DString& DString::edit(Operation operation) {
    if constexpr (during == During::heldAlive)
        if (!kelcl::isLibraryClass(*buffer())) {
            DString const held(*this);
            return install(operation(*held.buffer()));
        }
    return install(operation(*buffer()));
}

#endif
