// Runs operations with their first, second, third … allocation failing. Which operations there are is in the
// tests.
#ifndef KELCL_TESTS_ALLOCATION_SWEEP_H
#define KELCL_TESTS_ALLOCATION_SWEEP_H

#include "tests/support/owned_buffer.h"

#include <kelcl/dbuffer.h>
#include <kelcl/dstring.h>

#include <initializer_list>
#include <string>

namespace sweep {

using support::Owned;

struct Operation {
    char const* name;
    void (*run)(DString& receiver);
};

/// The texts that the operations are given: of characters of one byte and, where the locale has them, of
/// several; a short one, and one for which no room inside an object is enough.
std::string const& shortText();
std::string const& longText();
/// A character of several bytes, or 'x' where there is none.
std::string const& character();

/// Each allocation of each operation fails, alone and with all later ones, in the way of hosts: the library's
/// new-handler is called. Expects DOutOfMemory, reported once for each call of the handler; the receiver, its
/// copy and their buffer as they were; and no block lost. An operation may also do without the memory, where
/// it says so, and succeed.
void expectNoHarm(std::initializer_list<Operation> operations);

inline DBuffer& bufferOf(DString const& text) { return *DBuffer::fromContents(text.c_str()); }

} // namespace sweep

#endif
