// A text on the heap and its one owner: what `std::unique_ptr<char[]>` is, without the header of that, which
// costs a compiler more than all of this library. Included by public headers; not for hosts.
#ifndef KELCL_DETAIL_OWNED_TEXT_H
#define KELCL_DETAIL_OWNED_TEXT_H

#include <cstddef>

namespace kelcl {

class OwnedText {
public:
    OwnedText(std::nullptr_t = nullptr) noexcept : text_(nullptr) {}
    /// Takes over a text from `new char[]`, which may be null.
    explicit OwnedText(char* text) noexcept : text_(text) {}
    OwnedText(OwnedText&& other) noexcept : text_(other.release()) {}
    OwnedText& operator=(OwnedText&& other) noexcept {
        char* const taken = other.release(); // first: it may be this one
        delete[] text_;
        text_ = taken;
        return *this;
    }
    ~OwnedText() { delete[] text_; }

    char* get() const noexcept { return text_; }
    char& operator[](std::size_t i) const noexcept { return text_[i]; }
    friend bool operator==(OwnedText const& text, std::nullptr_t) noexcept { return text.text_ == nullptr; }
    friend bool operator!=(OwnedText const& text, std::nullptr_t) noexcept { return text.text_ != nullptr; }

    /// Gives the text up to the caller.
    char* release() noexcept {
        char* const text = text_;
        text_ = nullptr;
        return text;
    }

private:
    char* text_;
};

} // namespace kelcl

#endif
