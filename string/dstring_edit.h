// The protocol of every editing operation of DString: keep the buffer, call its operation, install the
// result.
#ifndef KELCL_STRING_DSTRING_EDIT_H
#define KELCL_STRING_DSTRING_EDIT_H

#include <kelcl/dstring.h>

/// Calls `operation` with the string's buffer and installs the buffer that it returns. If it throws the
/// string stays what it was.
///
/// An operation that calls the host back, or whose arguments may be part of the text, works on a buffer that
/// is held alive by a reference of its own. That reference would make a sole owner look like one of two, so
/// operations that edit in place do without it; they call nobody back, and are done with their arguments when
/// the old buffer is released.
template <DString::During during, class Operation>
DString& DString::edit(Operation operation) {
    if constexpr (during == During::heldAlive) {
        DString const held(*this);
        return install(operation(*held.buffer()));
    } else {
        return install(operation(*buffer()));
    }
}

#endif
