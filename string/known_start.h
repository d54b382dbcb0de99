// The character start that a run of rising searches in one text found last. In some encodings where a
// character starts is known only by a walk from far in front; an operation that searches again and again
// would repeat that walk each time. What a start is, the multi-byte room says.
#ifndef KELCL_STRING_KNOWN_START_H
#define KELCL_STRING_KNOWN_START_H

#include <cstddef>

namespace kelcl {

/// Lives as long as the operation, which must not change the text meanwhile.
class KnownStart {
public:
    explicit KnownStart(char const* text) : text_(text), outer_(current_) { current_ = this; }
    KnownStart(KnownStart const&) = delete;
    KnownStart& operator=(KnownStart const&) = delete;
    ~KnownStart() { current_ = outer_; }

    /// A character start at or before the offset; 0, which always is one, where none is known.
    static std::size_t atOrBefore(char const* text, std::size_t offset) {
        return isOf(text) && current_->offset_ <= offset ? current_->offset_ : 0;
    }
    static void note(char const* text, std::size_t start) {
        if (isOf(text)) current_->offset_ = start;
    }

private:
    static bool isOf(char const* text) { return current_ != nullptr && current_->text_ == text; }

    char const* text_;
    std::size_t offset_ = 0;
    KnownStart* outer_;
    static inline thread_local KnownStart* current_ = nullptr;
};

} // namespace kelcl

#endif
