// Where occurrences of a pattern are, kept as the gaps in front of them: the bytes between the end of one and
// the beginning of the next. A gap below 128 takes one byte, and no gap more than the text it stands for
// together with its occurrence; so the list takes no more memory than the text.
#ifndef KELCL_BUFFERS_GAP_LIST_H
#define KELCL_BUFFERS_GAP_LIST_H

#include <cstddef>
#include <cstdint>
#include <forward_list>

namespace kelcl {

/// Short lists are kept without allocating.
class GapList {
public:
    GapList() = default;
    GapList(GapList const&) = delete;
    GapList& operator=(GapList const&) = delete;

    void add(unsigned int gap) {
        if (end_ - at_ < longestGap) enterChunk();
        for (; gap >= more; gap >>= bitsInByte)
            *at_++ = static_cast<std::uint8_t>(gap | more); // the lowest bits first
        *at_++ = static_cast<std::uint8_t>(gap);
        ++count_;
    }
    unsigned int count() const { return count_; }

    /// Calls `visit(gap)` with each gap in order.
    template <class Visit>
    void forEach(Visit visit) const {
        bool const isShort = chunks_.empty();
        visitEach(room_, isShort ? at_ : room_ + usedRoom_, visit);
        for (Chunk const& chunk : chunks_)
            visitEach(chunk.bytes, &chunk == &*last_ ? at_ : chunk.bytes + chunk.used, visit);
    }

private:
    static constexpr unsigned int more = 0x80; ///< In each byte of a gap but the last.
    static constexpr unsigned int bitsInByte = 7;
    static constexpr std::ptrdiff_t longestGap = 5;

    struct Chunk {
        Chunk() : used(0) {} // no byte is zeroed: each is written before it is read
        std::size_t used;
        std::uint8_t bytes[4096];
    };

    template <class Visit>
    static void visitEach(std::uint8_t const* at, std::uint8_t const* end, Visit& visit) {
        while (at != end) {
            unsigned int gap = *at++;
            if (gap >= more) {
                gap -= more;
                unsigned int shift = bitsInByte;
                for (; *at >= more; shift += bitsInByte)
                    gap |= (*at++ - more) << shift;
                gap |= static_cast<unsigned int>(*at++) << shift;
            }
            visit(gap);
        }
    }

    /// Leaves what is full, so that no gap is in two pieces.
    [[gnu::noinline]] void enterChunk() {
        if (chunks_.empty())
            usedRoom_ = static_cast<std::size_t>(at_ - room_);
        else
            last_->used = static_cast<std::size_t>(at_ - last_->bytes);
        last_ = chunks_.emplace_after(last_);
        at_ = last_->bytes;
        end_ = at_ + sizeof last_->bytes;
    }

    std::uint8_t room_[512];
    std::size_t usedRoom_ = 0;
    std::forward_list<Chunk> chunks_;
    std::forward_list<Chunk>::iterator last_ = chunks_.before_begin();
    std::uint8_t* at_ = room_;
    std::uint8_t* end_ = room_ + sizeof room_;
    unsigned int count_ = 0;
};

} // namespace kelcl

#endif
