// DDBCSBuffer: substrings. What is left of cut characters is blanked.
#include "buffers/character_repair.h"
#include "buffers/owned_buffer.h"
#include "buffers/wide_path.h"

#include <kelcl/ddbcsbuffer.h>
#include <kelcl/dnlsutil.h>

#include <algorithm>
#include <cstddef>
#include <memory>

DBuffer* DDBCSBuffer::subString(unsigned int start) const {
    if (start > length) return newBuffer(nullptr, 0);
    std::size_t const room = 2 * (std::size_t{length} - start + 1);
    std::unique_ptr<char[]> const scratch(new char[room]);
    unsigned int const written = getRemainString(contents(), length, start, ' ', scratch.get());
    return newBuffer(scratch.get(), written);
}

DBuffer* DDBCSBuffer::subString(unsigned int start, unsigned int count, char padCharacter) const {
    if (kelcl::isWideMode()) {
        if (count == 0) return newBuffer(nullptr, 0);
        kelcl::OwnedBuffer result(kelcl::allocateLike(*this, count));
        getSubString(contents(), length, start, padCharacter, result->contents(), count);
        return result.release();
    }
    unsigned int const from = start >= 1 && start <= length ? start : 1;
    unsigned int const available = start <= length ? length - from + 1 : 0;
    unsigned int const taken = std::min(count, available);
    kelcl::OwnedBuffer result(
        newBuffer(contents() + from - 1, taken, nullptr, count - taken, nullptr, 0, padCharacter));
    kelcl::blankCutTail(*this, from, *result, 1, padCharacter);
    if (taken == count && count < length - from + 1)
        kelcl::blankCutHead(*this, from + count, *result, count, padCharacter);
    return result.release();
}
