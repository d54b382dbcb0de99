// DBuffer: substrings.
#include "buffers/buffer_block.h"

#include <kelcl/dbuffer.h>

#include <algorithm>

DBuffer* DBuffer::subString(unsigned int start) const {
    unsigned int const from = std::max(start, 1U);
    if (from > length && from - length > 1) overflow();
    return subString(from, length - from + 1, ' ');
}

DBuffer* DBuffer::subString(unsigned int start, unsigned int count, char padCharacter) const {
    unsigned int const before = std::max(start, 1U) - 1;
    unsigned int const available = before < length ? length - before : 0;
    unsigned int const taken = std::min(count, available);
    if (taken == count && count != 0) return kelcl::copyLike(*this, contents() + before, count);
    return newBuffer(contents() + (taken != 0 ? before : 0), taken, nullptr, count - taken, nullptr, 0,
                     padCharacter);
}
