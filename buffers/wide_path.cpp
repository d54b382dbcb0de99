// The way back from wide characters into a buffer.
#include "buffers/wide_path.h"

#include "buffers/length.h"
#include "buffers/owned_buffer.h"
#include "characters/stepping.h"

#include <kelcl/dnlsutil.h>

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <memory>

namespace kelcl {

DBuffer* narrowed(DBuffer const& like, wchar_t const* wide, unsigned int count) {
    // MB_CUR_MAX may be less than a character has.
    std::size_t const most = std::max(MB_CUR_MAX, BufferSteps::longestCharacter);
    auto const room =
        static_cast<unsigned int>(std::min<std::size_t>(std::size_t{count} * most, unboundedLength));
    std::unique_ptr<char[]> const scratch(new char[room]);
    return like.newBuffer(scratch.get(), cvtWCS2MBS(wide, count, scratch.get(), room, 0, ' '));
}

DBuffer* narrowedTo(DBuffer const& like, unsigned int width, wchar_t const* wide, unsigned int count,
                    char padCharacter) {
    if (width == 0) return like.newBuffer(nullptr, 0);
    OwnedBuffer result(allocateLike(like, width));
    cvtWCS2MBS(wide, count, result->contents(), width, 1, padCharacter);
    return result.release();
}

} // namespace kelcl
