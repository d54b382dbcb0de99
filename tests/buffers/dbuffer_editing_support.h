// What the tests of edits of single-byte buffers share: which buffer comes back, with how many references,
// and whether the bytes were changed in place. No tests are here.
#ifndef KELCL_TESTS_BUFFERS_DBUFFER_EDITING_SUPPORT_H
#define KELCL_TESTS_BUFFERS_DBUFFER_EDITING_SUPPORT_H

#include "tests/buffers/operation_support.h"

namespace editing {

using operations::Owned;
using operations::SharedWith;

inline int isBlank(int c) { return c == ' '; }
inline int isHighByte(int c) { return c < 0; }

/// Runs an operation that changes nothing and checks that the receiver comes back with one more reference.
template <class Operation>
void expectReceiverBack(std::string const& text, Operation operation) {
    Owned const buffer(text);
    unsigned int const refs = buffer->refs;
    Owned const result(operation(*buffer));
    EXPECT_EQ(result.get(), buffer.get());
    EXPECT_EQ(buffer->refs, refs + 1);
    EXPECT_EQ(buffer.text(), text);
}

template <class Operation>
void expectNewBufferFrom(Owned const& buffer, Operation operation, std::string const& expected) {
    std::string const text = buffer.text();
    unsigned int const refs = buffer->refs;
    Owned const result(operation(*buffer));
    EXPECT_NE(result.get(), buffer.get()) << "with " << refs << " references";
    EXPECT_EQ(result.text(), expected) << "with " << refs << " references";
    EXPECT_EQ(result->refs, 1u);
    EXPECT_EQ(result->contents()[result->length], '\0');
    EXPECT_EQ(buffer.text(), text);
    EXPECT_EQ(buffer->refs, refs);
}

/// Runs an operation that makes a new buffer, on a receiver with one reference and on one with more.
template <class Operation>
void expectNewBuffer(std::string const& text, Operation operation, std::string const& expected) {
    Owned const buffer(text);
    expectNewBufferFrom(buffer, operation, expected);
    SharedWith const other(buffer);
    expectNewBufferFrom(buffer, operation, expected);
}

/// Runs an operation that may edit in place: a receiver with one reference is changed and comes back with
/// two, a shared one stays what it was.
template <class Operation>
void expectEdited(std::string const& text, Operation operation, std::string const& expected) {
    {
        Owned const sole(text);
        Owned const result(operation(*sole));
        EXPECT_EQ(result.get(), sole.get()) << "a sole owner's buffer is edited in place";
        EXPECT_EQ(sole->refs, 2u);
        EXPECT_EQ(sole.text(), expected);
        EXPECT_EQ(sole->contents()[sole->length], '\0');
    }
    Owned const shared(text);
    SharedWith const other(shared);
    Owned const result(operation(*shared));
    EXPECT_NE(result.get(), shared.get()) << "a shared buffer is copied";
    EXPECT_EQ(result->refs, 1u);
    EXPECT_EQ(result.text(), expected);
    EXPECT_EQ(result->contents()[result->length], '\0');
    EXPECT_EQ(shared.text(), text);
    EXPECT_EQ(shared->refs, 2u);
}

/// Runs an operation whose result is empty and checks that it is the shared empty buffer.
template <class Operation>
void expectSharedEmpty(std::string const& text, Operation operation) {
    Owned const buffer(text);
    DBuffer* const empty = DBuffer::defaultBuffer();
    unsigned int const refs = empty->refs;
    Owned const result(operation(*buffer));
    EXPECT_EQ(result.get(), empty);
    EXPECT_EQ(empty->refs, refs + 1);
    EXPECT_EQ(buffer.text(), text);
}

inline DBuffer* upper(DBuffer& b) { return b.upperCase(); }
inline DBuffer* lower(DBuffer& b) { return b.lowerCase(); }
inline DBuffer* reversed(DBuffer& b) { return b.reverse(); }

inline auto translating(std::string from, std::string to, char pad = ' ') {
    return [=](DBuffer& b) {
        return b.translate(from.data(), operations::lengthOf(from), to.data(), operations::lengthOf(to), pad);
    };
}
inline auto stripping(std::string set, DStringEnum::StripMode mode) {
    return [=](DBuffer& b) { return b.strip(set.data(), operations::lengthOf(set), mode); };
}
inline auto strippingBlanks(DStringEnum::StripMode mode) {
    return [=](DBuffer& b) { return b.strip(DStringTest(isBlank), mode); };
}
inline auto overlaying(std::string text, unsigned int position, char pad = ' ') {
    return [=](DBuffer& b) { return b.overlayWith(text.data(), operations::lengthOf(text), position, pad); };
}
inline auto inserting(std::string text, unsigned int position, char pad = ' ') {
    return [=](DBuffer& b) { return b.insert(text.data(), operations::lengthOf(text), position, pad); };
}
inline auto changing(std::string from, std::string to, unsigned int start = 1,
                     unsigned int most = 0xFFFFFFFF) {
    return [=](DBuffer& b) {
        return b.change(from.data(), operations::lengthOf(from), to.data(), operations::lengthOf(to), start,
                        most);
    };
}
inline auto leftJustifying(unsigned int width, char pad) {
    return [=](DBuffer& b) { return b.leftJustify(width, pad); };
}
inline auto centering(unsigned int width, char pad) {
    return [=](DBuffer& b) { return b.center(width, pad); };
}
inline auto copying(unsigned int times) {
    return [=](DBuffer& b) { return b.copy(times); };
}

inline constexpr auto bothByAnotherValue = static_cast<DStringEnum::StripMode>(77);

} // namespace editing

#endif
