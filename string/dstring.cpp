// DString: construction, copy-on-write, concatenation.
#include "buffers/buffer_block.h"
#include "buffers/host_classes.h"
#include "buffers/length.h"
#include "bytes/real_number.h"
#include <kelcl/dstring.h>

#include <algorithm>
#include <atomic>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>

#include <langinfo.h>

char const* const DString::null = "";
char const* const DString::zero = "0";
char const* const DString::maxLong = "0x7fffffffffffffffL";

char* DString::nullBuffer = nullptr;

char* DString::makeSharedEmpty() {
    char* const made = DBuffer::defaultBuffer()->contents();
    std::atomic_ref(nullBuffer).store(made, std::memory_order_release);
    return made;
}

namespace {

/// `snprintf` as a function that may return any length: compilers know a bound for decimal points of one
/// character, and an optimiser that sees the name drops the test for a longer one.
int (*const volatile printTo)(char*, std::size_t, char const*, ...) = std::snprintf;

/// The decimal text of a number.
class NumberText {
public:
    template <class Integer>
    explicit NumberText(Integer number)
        : length_(static_cast<std::size_t>(std::to_chars(room_, room_ + sizeof room_, number).ptr - room_)) {}

    /// As `printf` writes it, so with the locale's decimal point, which may be of any length.
    explicit NumberText(double number) {
        auto const [length, hasPoint] = kelcl::writeReal(room_, number);
        length_ = length;
        if (length != 0 && (!hasPoint || std::strcmp(nl_langinfo(RADIXCHAR), ".") == 0)) return;
        length_ = print(room_, sizeof room_, number);
        if (length_ < sizeof room_) return;
        long_.reset(new char[length_ + 1]);
        length_ = std::min(length_, print(long_.get(), length_ + 1, number));
    }

    char const* text() const { return long_ != nullptr ? long_.get() : room_; }
    unsigned int length() const { return static_cast<unsigned int>(length_); }

private:
    /// The length that the text has, whatever the room.
    static std::size_t print(char* out, std::size_t room, double number) {
        constexpr int significant = 15;
        int const length = printTo(out, room, "%.*g", significant, number);
        if (length < 0) throw std::bad_alloc(); // the one reason for which it may fail
        return static_cast<std::size_t>(length);
    }

    char room_[kelcl::realTextSpace];
    std::unique_ptr<char[]> long_;
    std::size_t length_;
};

} // namespace

DString::DString(void const* p1, unsigned int l1, void const* p2, unsigned int l2, void const* p3,
                 unsigned int l3, char padCharacter)
    : text_(
          DBuffer::fromContents(sharedEmpty())->newBuffer(p1, l1, p2, l2, p3, l3, padCharacter)->contents()) {
}

DString::DString(void const* p1, unsigned int l1, void const* p2, unsigned int l2, char padCharacter)
    : DString(p1, l1, p2, l2, nullptr, 0, padCharacter) {}

DString::DString(void const* p1, unsigned int l1, char padCharacter)
    : DString(p1, l1, nullptr, 0, padCharacter) {}

DString::DString(kelcl::Text text) : text_(sharedEmpty()) {
    DBuffer* const empty = buffer();
    if (text.length != 0)
        text_ = kelcl::copyLike(*empty, text.data, text.length)->contents();
    else
        empty->take();
}

DString::DString(char const* p) : DString(kelcl::textOf(p)) {}
DString::DString(signed char const* p) : DString(reinterpret_cast<char const*>(p)) {}
DString::DString(unsigned char const* p) : DString(reinterpret_cast<char const*>(p)) {}
DString::DString(std::string const& text) : DString(kelcl::textOf(text)) {}
DString::DString(std::string_view text) : DString(kelcl::textOf(text)) {}

DString::DString(char c) : DString(kelcl::textOf(c)) {}
DString::DString(signed char c) : DString(static_cast<char>(c)) {}
DString::DString(unsigned char c) : DString(static_cast<char>(c)) {}

DString::DString(int number) : DString(static_cast<long>(number)) {}
DString::DString(short number) : DString(static_cast<long>(number)) {}
DString::DString(long long number) : DString(static_cast<long>(number)) {}
DString::DString(unsigned int number) : DString(static_cast<unsigned long>(number)) {}
DString::DString(unsigned short number) : DString(static_cast<unsigned long>(number)) {}
DString::DString(unsigned long long number) : DString(static_cast<unsigned long>(number)) {}
DString::DString(long number) : text_(sharedEmpty()) { initBuffer(number); }
DString::DString(unsigned long number) : text_(sharedEmpty()) { initBuffer(number); }
DString::DString(double number) : text_(sharedEmpty()) { initBuffer(number); }

DString& DString::initBuffer(void const* p1, unsigned int l1, void const* p2, unsigned int l2, void const* p3,
                             unsigned int l3, char padCharacter) {
    text_ = buffer()->newBuffer(p1, l1, p2, l2, p3, l3, padCharacter)->contents();
    return *this;
}

DString& DString::initBuffer(long number) {
    NumberText const digits(number);
    text_ = kelcl::copyLike(*buffer(), digits.text(), digits.length())->contents();
    return *this;
}

DString& DString::initBuffer(unsigned long number) {
    NumberText const digits(number);
    text_ = kelcl::copyLike(*buffer(), digits.text(), digits.length())->contents();
    return *this;
}

DString& DString::initBuffer(double number) {
    NumberText const digits(number);
    text_ = kelcl::copyLike(*buffer(), digits.text(), digits.length())->contents();
    return *this;
}

DString& DString::install(DBuffer* edited) {
    DBuffer* const old = buffer();
    text_ = edited->contents();
    old->release();
    return *this;
}

DString& DString::prepareToChange() {
    if (buffer()->hasOneOwner() || isEmpty()) return *this;
    return install(kelcl::copyLike(*buffer(), text_, length()));
}

DString& DString::append(char const* data, unsigned int count) {
    if (count == 0) return *this;
    if (char* const end = lengthenInPlace(count)) {
        std::memmove(end, data, count); // the bytes may be part of the text, and end with its NUL
        return *this;
    }
    return install(buffer()->newBuffer(text_, length(), data, count));
}

DString DString::joined(char const* left, unsigned int leftLength, char const* right,
                        unsigned int rightLength) {
    return DString(DBuffer::fromContents(sharedEmpty())->newBuffer(left, leftLength, right, rightLength));
}
