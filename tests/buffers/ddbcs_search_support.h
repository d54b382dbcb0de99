// What the tests of searches and of extraction share: a character of several bytes between two letters, and
// the searches of a buffer with their arguments as strings. No tests are here.
#ifndef KELCL_TESTS_BUFFERS_DDBCS_SEARCH_SUPPORT_H
#define KELCL_TESTS_BUFFERS_DDBCS_SEARCH_SUPPORT_H

#include "tests/characters/multi_byte_support.h"

#include <string>

namespace searching {

using mb::Owned;
using mb::SwitchAt;
using operations::Failure;
using operations::failureOf;
using operations::farEnd;
using std::string;

/// The letter a, a character of several bytes, the letter b.
struct Sandwich {
    explicit Sandwich(mb::Sample const& sample)
        : character(sample.bytes), size(mb::lengthOf(sample.bytes)), after(size + 2),
          owned(mb::buffer("a" + sample.bytes + "b")) {}

    string character;
    unsigned int size;  ///< Bytes of the character, which begins at byte 2.
    unsigned int after; ///< Where the letter b stands.
    Owned owned;

    DBuffer const* operator->() const { return owned.get(); }
};

inline unsigned int find(unsigned int (DBuffer::*search)(char const*, unsigned int, unsigned int) const,
                         DBuffer const& text, string const& wanted, unsigned int start) {
    return (text.*search)(wanted.data(), mb::lengthOf(wanted), start);
}
inline unsigned int indexOf(Owned const& t, string const& p, unsigned int start) {
    return find(&DBuffer::indexOf, *t, p, start);
}
inline unsigned int indexOfAnyOf(Owned const& t, string const& p, unsigned int start) {
    return find(&DBuffer::indexOfAnyOf, *t, p, start);
}
inline unsigned int indexOfAnyBut(Owned const& t, string const& p, unsigned int start) {
    return find(&DBuffer::indexOfAnyBut, *t, p, start);
}
inline unsigned int lastIndexOf(Owned const& t, string const& p, unsigned int start) {
    return find(&DBuffer::lastIndexOf, *t, p, start);
}
inline unsigned int lastIndexOfAnyOf(Owned const& t, string const& p, unsigned int start) {
    return find(&DBuffer::lastIndexOfAnyOf, *t, p, start);
}
inline unsigned int lastIndexOfAnyBut(Owned const& t, string const& p, unsigned int start) {
    return find(&DBuffer::lastIndexOfAnyBut, *t, p, start);
}

inline string subString(Owned const& t, unsigned int start) { return Owned(t->subString(start)).text(); }
inline string subString(Owned const& t, unsigned int start, unsigned int count, char pad) {
    return Owned(t->subString(start, count, pad)).text();
}

inline Failure badSequence(unsigned long line) {
    return {"DInvalidRequest", 1012, false, "Kel Class Library", "dnlsutil", line, 1, 1, ""};
}

/// Runs the body for each character of several bytes that the locale has, around it a text of it.
template <class Body>
void forEachSandwich(Body body) {
    ASSERT_FALSE(mb::samples().longCharacters().empty());
    for (mb::Sample const& sample : mb::samples().longCharacters()) {
        SCOPED_TRACE(mb::hex(sample.bytes));
        Sandwich const sandwich(sample);
        body(sandwich);
    }
}

/// Runs the body with the switch off and on.
template <class Body>
void inBothStates(Body body) {
    for (int const state : {0, 1}) {
        SCOPED_TRACE(state == 0 ? "switch off" : "switch on");
        SwitchAt const at(state);
        body();
    }
}

} // namespace searching

#endif
