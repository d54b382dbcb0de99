// The texts of an exception: a chain of nodes, the newest first. Nothing here throws or calls the
// new-handler. Which texts an exception gets is decided in exception.cpp.
#ifndef KELCL_EXCEPT_TEXT_CHAIN_H
#define KELCL_EXCEPT_TEXT_CHAIN_H

#include <algorithm>
#include <atomic>
#include <cstddef>
#include <memory>

namespace kelcl {

/// One text of an exception and what is older. A node never changes after it was made, and stands in one
/// block of memory with its characters.
///
/// Chains share a node only if out of memory when copying it: then a chain continues with the node itself,
/// or begins with a node that shows the characters of another one. So a node has owners, and its block has
/// holders, which keep the characters when the node itself is gone. The counts are atomic because the
/// exceptions that share may be in different threads, which cannot know of it.
class DExcText {
public:
    struct Release {
        void operator()(DExcText* chain) const noexcept { release(chain); }
    };
    using Owner = std::unique_ptr<DExcText, Release>;

    /// A node with a copy of `text` before `next`, which it takes over. Null, with `next` untouched,
    /// when there is no memory.
    static DExcText* create(char const* text, DExcText* next) noexcept { return create(text, "", next); }

    /// A deep copy. Null when there is no memory for a first node; what else cannot be copied is shared.
    static DExcText* copyOf(DExcText* chain) noexcept;

    /// The chain with `text` appended to its first text, in place of `chain`, which is given up. Null, with
    /// `chain` untouched, when there is no memory.
    static DExcText* appended(DExcText* chain, char const* text) noexcept;

    /// One more owner for the chain, which may be null.
    static DExcText* share(DExcText* chain) noexcept;

    /// Gives a chain up. Not recursive, so a chain may be of any length.
    static void release(DExcText* chain) noexcept;

    char const* text() const noexcept { return reinterpret_cast<char const*>(characters_ + 1); }
    DExcText* next() const noexcept { return next_; }

private:
    DExcText(DExcText* characters, DExcText* next) noexcept : characters_(characters), next_(next) {}

    static DExcText* create(char const* first, char const* second, DExcText* next) noexcept;
    /// A node with the very same characters and successors.
    static DExcText* borrowing(DExcText* source) noexcept;
    static void releaseCharacters(DExcText* block) noexcept;

    // debugger/printers.py reads the first two, and the characters past the last one.
    DExcText* characters_; // the block in which they stand: this one, or the one that they are borrowed from
    DExcText* next_;
    std::atomic<std::size_t> owners_{1};
    std::atomic<std::size_t> holders_{1};
};

/// Visits the first `count` texts of a chain from the oldest, which stands last, to the newest. Divides and
/// conquers, so that a chain of any length needs no memory, little stack and no quadratic time.
template <class Visit>
void visitOldestFirst(DExcText const* newest, unsigned long count, Visit const& visit) {
    constexpr unsigned long maxParts = 256;
    DExcText const* parts[maxParts];
    unsigned long const partLength = (count + maxParts - 1) / maxParts;
    unsigned long partCount = 0;
    for (unsigned long i = 0; i < count; ++i, newest = newest->next())
        if (i % partLength == 0) parts[partCount++] = newest;
    while (partCount-- > 0)
        if (partLength == 1)
            visit(parts[partCount]->text());
        else
            visitOldestFirst(parts[partCount], std::min(partLength, count - partCount * partLength), visit);
}

} // namespace kelcl

#endif
