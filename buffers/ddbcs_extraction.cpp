// DDBCSBuffer: substrings. What is left of cut characters is blanked.
#include "buffers/character_repair.h"
#include "buffers/owned_buffer.h"
#include "buffers/wide_path.h"

#include <kelcl/ddbcsbuffer.h>
#include <kelcl/dnlsutil.h>

#include <algorithm>

DBuffer* DDBCSBuffer::subString(unsigned int start) const {
    if (start > length || length == 0) return newBuffer(nullptr, 0);
    unsigned int const from = std::max(start, 1U);
    kelcl::CharacterText const text(kelcl::bytesOf(*this));
    return kelcl::written(*this, text.roomForRest(from),
                          [&](char* out) { return text.writeRest(from, ' ', out); });
}

DBuffer* DDBCSBuffer::subString(unsigned int start, unsigned int count, char padCharacter) const {
    if (kelcl::isWideMode())
        return kelcl::written(*this, {count, true}, [&](char* out) {
            getSubString(contents(), length, start, padCharacter, out, count);
            return count;
        });
    unsigned int const from = start >= 1 && start <= length ? start : 1;
    unsigned int const available = start <= length ? length - from + 1 : 0;
    unsigned int const taken = std::min(count, available);
    char const* const bytes = contents() + from - 1;
    kelcl::OwnedBuffer result(taken == count && count != 0 ? kelcl::copyLike(*this, bytes, count)
                                                           : newBuffer(bytes, taken, nullptr, count - taken,
                                                                       nullptr, 0, padCharacter));
    kelcl::CharacterRepair repair(*this, *result);
    repair.blankTail(from, 1, padCharacter);
    if (taken == count && count < length - from + 1) repair.blankHead(from + count, count, padCharacter);
    return result.release();
}
