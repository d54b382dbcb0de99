// DString: substrings.
#include <kelcl/dstring.h>

DString DString::subString(unsigned int start) const {
    if (start > length()) return DString();
    if (fgI18NState == 1) return DString(buffer()->subString(start));
    // A start of 0 asks for one byte more than there is and gets it as a blank: callers rely on it.
    return DString(buffer()->subString(start, length() - start + 1, ' '));
}

DString DString::subString(unsigned int start, unsigned int count, char padCharacter) const {
    return DString(buffer()->subString(start, count, padCharacter));
}
