// What the tests of edits of multi-byte text share: each edit as a function of a text. No tests are here.
#ifndef KELCL_TESTS_BUFFERS_DDBCS_EDITING_SUPPORT_H
#define KELCL_TESTS_BUFFERS_DDBCS_EDITING_SUPPORT_H

#include "tests/characters/multi_byte_support.h"

#include <kelcl/dstring.h>

#include <string>

namespace editing {

using mb::Owned;
using mb::SwitchAt;
using operations::Failure;
using std::string;

inline constexpr int off = 0;
inline constexpr int on = 1;

inline int isBlank(int c) { return c == ' '; }
inline int isAnything(int) { return 1; }
inline int throwsOut(int) { throw 5; }

inline Failure badSequence(unsigned long line) {
    return {"DInvalidRequest", 1012, false, "Kel Class Library", "dnlsutil", line, 1, 1, ""};
}

/// Calls an edit and gives the text of what it returned. An empty result is the receiver or the shared empty
/// buffer.
template <class Edit>
string after(string const& text, Edit edit) {
    Owned const owned = mb::buffer(text);
    Owned const result(edit(*owned));
    EXPECT_STREQ(result->className(), "DDBCSBuffer");
    EXPECT_EQ(result->contents()[result->length], '\0');
    bool const isNewEmpty =
        result->length == 0 && result.get() != owned.get() && result.get() != owned->null();
    EXPECT_FALSE(isNewEmpty);
    return result.text();
}

/// Whether an edit returns its receiver, with one reference more.
template <class Edit>
bool returnsItself(string const& text, Edit edit) {
    Owned const owned = mb::buffer(text);
    Owned const result(edit(*owned));
    EXPECT_EQ(owned->refs, result.get() == owned.get() ? 2U : 1U);
    return result.get() == owned.get();
}

inline string upper(string const& text) {
    return after(text, [](DBuffer& b) { return b.upperCase(); });
}
inline string lower(string const& text) {
    return after(text, [](DBuffer& b) { return b.lowerCase(); });
}
inline string translate(string const& text, string const& from, string const& to, char pad) {
    return after(text, [&](DBuffer& b) {
        return b.translate(from.data(), mb::lengthOf(from), to.data(), mb::lengthOf(to), pad);
    });
}
inline string strip(string const& text, string const& set, DStringEnum::StripMode mode) {
    return after(text, [&](DBuffer& b) { return b.strip(set.data(), mb::lengthOf(set), mode); });
}
inline string strip(string const& text, int (*test)(int), DStringEnum::StripMode mode) {
    return after(text, [&](DBuffer& b) { return b.strip(DStringTest(test), mode); });
}
inline string reverse(string const& text) {
    return after(text, [](DBuffer& b) { return b.reverse(); });
}
inline string overlay(string const& text, string const& data, unsigned int position, char pad) {
    return after(text,
                 [&](DBuffer& b) { return b.overlayWith(data.data(), mb::lengthOf(data), position, pad); });
}
inline string insert(string const& text, string const& data, unsigned int position, char pad) {
    return after(text, [&](DBuffer& b) { return b.insert(data.data(), mb::lengthOf(data), position, pad); });
}
inline string leftJustify(string const& text, unsigned int width, char pad) {
    return after(text, [&](DBuffer& b) { return b.leftJustify(width, pad); });
}
inline string center(string const& text, unsigned int width, char pad) {
    return after(text, [&](DBuffer& b) { return b.center(width, pad); });
}
inline string change(string const& text, string const& from, string const& to, unsigned int start,
                     unsigned int count) {
    return after(text, [&](DBuffer& b) {
        return b.change(from.data(), mb::lengthOf(from), to.data(), mb::lengthOf(to), start, count);
    });
}

/// Runs the body with each character of several bytes that the locale has, and the number of its bytes.
template <class Body>
void forEachCharacter(Body body) {
    ASSERT_FALSE(mb::samples().longCharacters().empty());
    for (mb::Sample const& sample : mb::samples().longCharacters()) {
        SCOPED_TRACE(mb::hex(sample.bytes));
        body(sample.bytes, mb::lengthOf(sample.bytes));
    }
}

template <class Body>
void inBothStates(Body body) {
    for (int const state : {off, on}) {
        SCOPED_TRACE(state == off ? "switch off" : "switch on");
        SwitchAt const at(state);
        body();
    }
}

} // namespace editing

#endif
