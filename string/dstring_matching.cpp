// DString: counting and matching.
#include "buffers/occurrences.h"
#include "bytes/wildcard.h"

#include <kelcl/dstring.h>

unsigned int DString::occurrencesOf(char c, unsigned int startPos) const {
    return occurrencesOf(&c, 1, startPos);
}

unsigned int DString::occurrencesOf(DStringTest const& test, unsigned int startPos) const {
    DString const held(*this); // the test may change this string
    return kelcl::countTested(*held.buffer(), test, startPos);
}

unsigned int DString::occurrencesOf(char const* pattern, unsigned int patternLength,
                                    unsigned int startPos) const {
    return kelcl::Occurrences::count(*buffer(), {pattern, patternLength}, startPos);
}

bool DString::isAbbrevFor(char const* full, unsigned int fullLength, unsigned int minLength) const {
    unsigned int const own = length();
    unsigned int const least = minLength == 0 ? own : minLength;
    if (fullLength < own || least > own) return false;
    return equals({full, own});
}

bool DString::isLike(char const* pattern, unsigned int patternLength, char anyString, char anyChar) const {
    if (equals({pattern, patternLength})) return true;
    return kelcl::matchesWildcard(*this, {pattern, patternLength}, anyString, anyChar);
}
