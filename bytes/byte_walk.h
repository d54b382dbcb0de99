// Walks from one thing to the next in a text, 64 bytes at a time, for texts where they are dense: runs of
// bytes outside of a set, and occurrences of a byte.
#ifndef KELCL_BYTES_BYTE_WALK_H
#define KELCL_BYTES_BYTE_WALK_H

#include "bytes/byte_search.h"
#include "bytes/byte_set.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kelcl {

class RunsNotIn {
public:
    /// The set must stay as long as the walk.
    RunsNotIn(std::string_view text, ByteSet const& set) : text_(text), set_(&set) {}

    std::string_view text() const { return text_; }

    /// The next run from left to right; an empty one when there are no more.
    std::string_view next() {
        std::size_t const begin = nextEdge();
        return text_.substr(begin, nextEdge() - begin);
    }

    /// The same in two steps, for a walk that may end at the beginning of a run: the offset where the next
    /// run begins, or notFound, and then the one where it ends.
    std::size_t nextBegin() {
        std::size_t const begin = nextEdge();
        return begin == text_.size() ? notFound : begin;
    }
    std::size_t nextEnd() { return nextEdge(); }

private:
    /// Where a run begins or ends next, in turn; the end of the text when nowhere.
    std::size_t nextEdge() {
        constexpr std::size_t blockSize = 64;
        for (; edges_ == 0; seen_ += blockSize) {
            if (seen_ >= text_.size()) return text_.size();
            std::uint64_t const mask = maskOfStartNotIn(text_.substr(seen_), *set_);
            edges_ = mask ^ (mask << 1U | inside_);
            inside_ = mask >> (blockSize - 1);
        }
        std::size_t const edge = seen_ - blockSize + static_cast<std::size_t>(std::countr_zero(edges_));
        edges_ &= edges_ - 1;
        return edge;
    }

    std::string_view text_;
    ByteSet const* set_;
    std::size_t seen_ = 0;
    std::uint64_t edges_ = 0;  ///< In the last 64 bytes seen, those that are still to come.
    std::uint64_t inside_ = 0; ///< Whether the last byte seen is part of a run.
};

class OccurrencesOf {
public:
    /// From the offset `from` on.
    OccurrencesOf(char byte, std::string_view text, std::size_t from = 0)
        : text_(text), byte_(byte), seen_(from) {}

    /// The offset of the next occurrence from left to right, or notFound.
    std::size_t next() {
        constexpr std::size_t blockSize = 64;
        for (; found_ == 0; seen_ += blockSize) {
            if (seen_ >= text_.size()) return notFound;
            found_ = maskOfStart(text_.substr(seen_), byte_);
        }
        std::size_t const offset = seen_ - blockSize + static_cast<std::size_t>(std::countr_zero(found_));
        found_ &= found_ - 1;
        return offset;
    }

private:
    std::string_view text_;
    char byte_;
    std::size_t seen_;
    std::uint64_t found_ = 0; ///< In the last 64 bytes seen, those that are still to come.
};

} // namespace kelcl

#endif
