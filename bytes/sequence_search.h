// The search for a row of things, bytes or words, within a longer row, in time linear in both whatever they
// hold (Knuth, Morris and Pratt's). How things are compared is the callers' business.
#ifndef KELCL_BYTES_SEQUENCE_SEARCH_H
#define KELCL_BYTES_SEQUENCE_SEARCH_H

#include <cstddef>
#include <cstdint>

namespace kelcl {

/// Is told the things of the longer row one after the other.
class SequenceSearch {
public:
    /// Searches for `size` things, at least one. `borders` has room for as many numbers, and lives as long as
    /// this. `equal(i, j)` tells whether things i and j of those searched for, from 0, are the same.
    template <class Equal>
    SequenceSearch(std::size_t size, std::uint32_t* borders, Equal equal) : size_(size), borders_(borders) {
        borders_[0] = 0;
        for (std::size_t i = 1; i < size_; ++i)
            borders_[i] = extended(borders_[i - 1], [&](std::size_t k) { return equal(k, i); });
    }

    /// Takes the next thing, and tells whether all that are searched for stand before and with it.
    /// `equal(k)` tells whether it is thing k of those.
    template <class Equal>
    bool endsWith(Equal equal) {
        if (matched_ == size_) matched_ = borders_[matched_ - 1];
        matched_ = extended(matched_, equal);
        return matched_ == size_;
    }

private:
    /// With so many things matched and one more, what is the most that the row ends with?
    template <class Equal>
    std::uint32_t extended(std::uint32_t matched, Equal equal) const {
        while (!equal(matched)) {
            if (matched == 0) return 0;
            matched = borders_[matched - 1];
        }
        return matched + 1;
    }

    std::size_t size_;
    std::uint32_t* borders_; ///< Of each beginning: how long the longest shorter one is that it ends with.
    std::uint32_t matched_ = 0;
};

} // namespace kelcl

#endif
