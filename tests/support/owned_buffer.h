// One reference to a buffer, which the tests give back as hosts do: by the count that everybody sees.
#ifndef KELCL_TESTS_SUPPORT_OWNED_BUFFER_H
#define KELCL_TESTS_SUPPORT_OWNED_BUFFER_H

#include <kelcl/dbuffer.h>

#include <string>
#include <string_view>
#include <utility>

namespace support {

class Owned {
public:
    Owned() = default;
    /// Takes over the reference that an operation returned.
    explicit Owned(DBuffer* buffer) : buffer_(buffer) {}
    /// A new buffer of the default class.
    explicit Owned(std::string_view text)
        : buffer_(DBuffer::defaultBuffer()->newBuffer(text.data(), static_cast<unsigned int>(text.size()))) {}
    Owned(Owned&& other) noexcept : buffer_(std::exchange(other.buffer_, nullptr)) {}
    Owned& operator=(Owned&& other) noexcept {
        std::swap(buffer_, other.buffer_);
        return *this;
    }
    ~Owned() {
        if (buffer_ != nullptr && --buffer_->refs == 0) delete buffer_;
    }

    DBuffer* get() const { return buffer_; }
    DBuffer* operator->() const { return buffer_; }
    DBuffer& operator*() const { return *buffer_; }
    DBuffer* giveUp() { return std::exchange(buffer_, nullptr); }
    std::string text() const { return std::string(buffer_->contents(), buffer_->length); }

private:
    DBuffer* buffer_ = nullptr;
};

} // namespace support

#endif
