// Stripping by bytes, for both buffer classes: which bytes stay is found by the searches that are passed in.
#ifndef KELCL_BUFFERS_STRIP_H
#define KELCL_BUFFERS_STRIP_H

#include "buffers/buffer_block.h"

#include <algorithm>

namespace kelcl {

/// The text from the position that `findFirst` finds to the one that `findLast` finds, as far as `mode` wants
/// them looked for. 0 means that nothing stays.
template <class FindFirst, class FindLast>
DBuffer* stripBytes(DBuffer& buffer, DStringEnum::StripMode mode, FindFirst findFirst, FindLast findLast) {
    if (buffer.length == 0) return shared(buffer);
    unsigned int first = 1;
    unsigned int last = buffer.length;
    if (mode != DStringEnum::trailing) {
        first = findFirst();
        if (first == 0) return sharedEmpty(buffer);
    }
    if (mode != DStringEnum::leading) last = findLast();
    if (first == 1 && last == buffer.length) return shared(buffer);
    unsigned int const begin = std::min(first - 1, buffer.length); // the answers may lie outside of the text
    unsigned int const end = std::clamp(last, begin, buffer.length);
    return buffer.newBuffer(buffer.contents() + begin, end - begin);
}

} // namespace kelcl

#endif
