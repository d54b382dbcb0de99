// The texts of an exception: a chain of nodes, the newest first. Nothing here throws or calls the
// new-handler.
#ifndef KELCL_EXCEPT_TEXT_CHAIN_H
#define KELCL_EXCEPT_TEXT_CHAIN_H

#include <cstddef>

namespace kelcl {

/// One text of an exception and what is older. A node belongs to one chain, or to several that share it
/// because there was no memory to copy it; it goes with the last of them.
class DExcText {
public:
    /// A node with a copy of `text` in front of `next`, which it takes over. Null, with `next` untouched,
    /// when there is no memory.
    static DExcText* create(char const* text, DExcText* next) noexcept;
    /// A deep copy. Null when there is no memory for the first node; what else cannot be copied is shared.
    static DExcText* copyOf(DExcText const* chain) noexcept;
    /// Gives a chain up. Not recursive, so a chain may be of any length.
    static void release(DExcText* chain) noexcept;

    /// Adds to the text, unless there is no memory.
    void appendText(char const* text) noexcept;

    char const* text() const noexcept { return characters_->text(); }
    DExcText* next() const noexcept { return next_; }

private:
    /// A counted owner of characters: nodes whose text could not be copied hold the same one.
    struct Characters {
        std::size_t owners;

        static Characters* copyOf(char const* first, char const* second) noexcept;
        static void release(Characters* characters) noexcept;
        char* text() noexcept { return reinterpret_cast<char*>(this + 1); }
    };

    DExcText(Characters* characters, DExcText* next) noexcept : characters_(characters), next_(next) {}
    ~DExcText() { Characters::release(characters_); }

    /// A new node with the same text; for a lack of memory with the very same characters and successors, in
    /// which case `isWhole` becomes true: there is nothing more to copy. Null when there is no memory for the
    /// node.
    static DExcText* copyOfNode(DExcText const& node, bool& isWhole) noexcept;

    Characters* characters_;
    DExcText* next_;
    std::size_t owners_ = 1;
};

} // namespace kelcl

#endif
