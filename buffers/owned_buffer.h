// A new buffer until it is handed out: released if an exception passes.
#ifndef KELCL_BUFFERS_OWNED_BUFFER_H
#define KELCL_BUFFERS_OWNED_BUFFER_H

#include "buffers/buffer_block.h"

#include <memory>

namespace kelcl {

struct ReleaseBuffer {
    void operator()(DBuffer* buffer) const noexcept { buffer->release(); }
};

using OwnedBuffer = std::unique_ptr<DBuffer, ReleaseBuffer>;

} // namespace kelcl

#endif
