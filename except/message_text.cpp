// DMessageText: catalog look-up and the replacing of variables. Which catalog is asked is decided in
// base/dbase.cpp.
#include "except/cancellation.h"
#include "except/text_copy.h"

#include <kelcl/dmessagetext.h>

#include <climits>
#include <cstring>
#include <nl_types.h>
#include <utility>

namespace {

using kelcl::copyText;
using kelcl::OwnedText;

/// Passes a pattern piece by piece, with values in place of markers, to `piece(bytes, length)`.
template <class Piece>
void substitute(char const* pattern, char const* const* values, unsigned long count, Piece piece) {
    char const* literal = pattern; // what follows the last marker
    char const* at = std::strchr(pattern, '%');
    while (at != nullptr) {
        char const digit = at[1];
        bool const isMarker = digit >= '1' && digit <= '9' &&
                              static_cast<unsigned long>(digit - '0') <= count &&
                              values[digit - '1'] != nullptr;
        if (isMarker) {
            piece(literal, static_cast<std::size_t>(at - literal));
            char const* const value = values[digit - '1'];
            piece(value, std::strlen(value));
            literal = at + 2;
        }
        // The second of two percent signs does not begin a marker.
        at = std::strchr(at + (isMarker || digit == '%' ? 2 : 1), '%');
    }
    piece(literal, std::strlen(literal));
}

OwnedText substituted(char const* pattern, char const* const* values, unsigned long count) {
    std::size_t length = 0;
    substitute(pattern, values, count, [&](char const*, std::size_t n) { length += n; });
    OwnedText result = kelcl::roomForText(length + 1);
    if (result == nullptr) return nullptr;
    char* out = result.get();
    substitute(pattern, values, count, [&](char const* bytes, std::size_t n) {
        std::memcpy(out, bytes, n);
        out += n;
    });
    *out = '\0';
    return result;
}

/// Messages may be written with the line end of another system.
void dropCarriageReturnLineFeed(char* text) {
    std::size_t const length = std::strlen(text);
    if (length >= 2 && text[length - 2] == '\r' && text[length - 1] == '\n') text[length - 2] = '\0';
}

/// An open message catalog; one that cannot be opened has no messages.
class Catalog {
public:
    explicit Catalog(char const* file) : handle_(catopen(file, 0)) {}
    Catalog(Catalog const&) = delete;
    Catalog& operator=(Catalog const&) = delete;
    ~Catalog() {
        if (isOpen()) catclose(handle_);
    }

    /// The message, owned by the catalog; null when there is none.
    char const* message(unsigned long id) const {
        constexpr int set = 1;
        if (!isOpen() || id > INT_MAX) return nullptr;
        return catgets(handle_, set, static_cast<int>(id), nullptr);
    }

private:
    // catopen says with -1 that it failed.
    bool isOpen() const { return reinterpret_cast<long>(handle_) != -1; }

    nl_catd handle_;
};

} // namespace

DMessageText::DMessageText(unsigned long messageId, char const* catalogFile, char const* t1, char const* t2,
                           char const* t3, char const* t4, char const* t5, char const* t6, char const* t7,
                           char const* t8, char const* t9) noexcept {
    kelcl::CancellationDeferral const deferral;
    kelcl::NewHandlerSuspension const suspension;
    if (catalogFile != nullptr) {
        char const* const values[] = {t1, t2, t3, t4, t5, t6, t7, t8, t9};
        unsigned long count = 0;
        while (count < 9 && values[count] != nullptr)
            ++count;
        Catalog const catalog(catalogFile);
        if (char const* const message = catalog.message(messageId)) {
            loaded_ = true;
            text_ = substituted(message, values, count);
            if (text_ != nullptr) dropCarriageReturnLineFeed(text_.get());
        }
    }
    if (text_ == nullptr) {
        loaded_ = false;
        text_ = copyText("Unable to load text from message file.");
    }
}

DMessageText::DMessageText(DMessageText const& source) noexcept
    : text_(copyText(source.text())), loaded_(source.loaded_) {}

DMessageText& DMessageText::operator=(DMessageText const& source) noexcept {
    if (this == &source) return *this;
    text_ = copyText(source.text());
    loaded_ = source.loaded_;
    return *this;
}

DMessageText::~DMessageText() = default;

DMessageText& DMessageText::setDefaultText(char const* defaultText) noexcept {
    if (loaded_) return *this;
    if (OwnedText copy = copyText(defaultText); copy != nullptr) text_ = std::move(copy);
    return *this;
}

char* DMessageText::replaceVars(char const* pattern, char const* const* values,
                                unsigned long count) noexcept {
    return substituted(pattern != nullptr ? pattern : "", values, count).release();
}
