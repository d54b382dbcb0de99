// DBuffer: the failure of a text that would become too long, from whichever operation. Its reports name this
// file, and hosts match on that.
#include "buffers/length.h"
#include "except/raise.h"

#include <kelcl/dbuffer.h>
#include <kelcl/dexception.h>

namespace {

constexpr unsigned long overflowLine = 557; // hosts match on it

} // namespace

namespace kelcl {

void raiseLengthOverflow() {
    constexpr unsigned long bufferOverflow = 1010;
    raise(
        [] {
            return DInvalidRequest(DBase::messageText(bufferOverflow), bufferOverflow,
                                   DException::recoverable);
        },
        {"dbuffer0", nullptr, overflowLine});
}

} // namespace kelcl

void DBuffer::overflow() const { kelcl::raiseLengthOverflow(); }
