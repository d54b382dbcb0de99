// The walk from one occurrence to the next in a buffer's text: what counting and changing ask. It finds them
// by bytes where these tell all, by characters where the searches are the multi-byte buffer's own, and else
// by the buffer's virtual search, and it holds what it has learnt on the way.
#ifndef KELCL_BUFFERS_OCCURRENCES_H
#define KELCL_BUFFERS_OCCURRENCES_H

#include "buffers/host_classes.h"
#include "bytes/pattern_matches.h"
#include "characters/stepping.h"

#include <kelcl/dbuffer.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string_view>

namespace kelcl {

/// The occurrences of a pattern that do not overlap, from left to right.
class Occurrences {
public:
    /// From position `start` on, where 0 counts as 1. Text and pattern must stay as they are meanwhile.
    Occurrences(DBuffer const& text, std::string_view pattern, unsigned int start);
    Occurrences(Occurrences const&) = delete;
    Occurrences& operator=(Occurrences const&) = delete;

    /// Calls `visit(position)` with the next ones, `most` of them or as many as there are. All lie in the
    /// text, each after the one before, whatever a host's search answers.
    template <class Visit>
    void forEach(unsigned int most, Visit visit) {
        unsigned int from = from_;
        auto const bytes = static_cast<unsigned int>(pattern_.size());
        for (; most != 0 && way_ != Way::bytes; --most) {
            unsigned int const position = otherwise(from);
            if (position == 0) break;
            visit(position);
            from = position + bytes;
        }
        from_ = way_ == Way::bytes ? forEachInBytes(from, most, visit) : from;
    }

    /// Whether the bytes alone tell all of them.
    static bool areFoundByBytes(DBuffer const& text, std::string_view pattern) {
        return !pattern.empty() && findsByBytes(text, pattern.front());
    }
    /// How many there are.
    static unsigned int count(DBuffer const& text, std::string_view pattern, unsigned int start);

private:
    enum class Way { bytes, characters, search };

    Occurrences(DBuffer const& text, std::string_view pattern, unsigned int start, Way known);

    /// By bytes, from a position on; returns the one after the last.
    template <class Visit>
    unsigned int forEachInBytes(unsigned int from, unsigned int most, Visit& visit) const {
        // Batches keep the search and what is done with the positions out of each other's way.
        std::uint32_t batch[32];
        while (most != 0 && from <= text_.size()) {
            std::size_t const wanted = std::min<std::size_t>(most, std::size(batch));
            std::size_t const count = listPattern(text_.substr(from - 1), pattern_, batch, wanted);
            for (std::size_t i = 0; i < count; ++i)
                visit(from + batch[i]);
            if (count != 0) from += batch[count - 1] + static_cast<unsigned int>(pattern_.size());
            if (count != wanted) break;
            most -= static_cast<unsigned int>(count);
        }
        return from;
    }
    unsigned int atStart(unsigned int from);
    unsigned int bySearch(unsigned int from) const;
    unsigned int otherwise(unsigned int from);

    DBuffer const& buffer_;
    std::string_view text_;
    std::string_view pattern_;
    Way way_;
    unsigned int from_; ///< Where to search on, as a position.
    RisingMatches matches_;
    std::optional<BufferSteps> steps_; ///< From the first match on, where it steps by characters.
    std::optional<RisingStarts> starts_;
};

/// How often searches for what a test accepts, each from the position after the one before, find something.
unsigned int countTested(DBuffer const& text, DStringTest const& test, unsigned int start);

} // namespace kelcl

#endif
