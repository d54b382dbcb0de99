// DString: element access. Reports of indexes outside of the string name this file, and hosts match on that.
#include "except/raise.h"

#include <kelcl/dexception.h>
#include <kelcl/dstring.h>

namespace {

// Hosts match on these line numbers.
constexpr unsigned long readUnsignedPastEnd = 130;
constexpr unsigned long readNegative = 174;
constexpr unsigned long readPastEnd = 184;
constexpr unsigned long writeNegative = 197;

[[noreturn]] void raiseOutsideString(unsigned long line) {
    constexpr unsigned long outsideString = 1011;
    kelcl::raise(
        [] {
            return DInvalidRequest(DBase::messageText(outsideString), outsideString, DException::recoverable);
        },
        {"dstring5", nullptr, line});
}

} // namespace

void DString::raiseOutside(int index) { raiseOutsideString(index < 0 ? readNegative : readPastEnd); }

void DString::raiseOutside(unsigned int /*index*/) { raiseOutsideString(readUnsignedPastEnd); }

char& DString::rareElement(int index) {
    if (index < 0) raiseOutsideString(writeNegative);
    return rareElement(static_cast<unsigned int>(index));
}

char& DString::rareElement(unsigned int index) {
    unsigned int const offset = offsetOf(index);
    if (offset >= length())
        install(buffer()->newBuffer(text_, length(), nullptr, offset - length() + 1, nullptr, 0, ' '));
    else
        prepareToChange();
    return text_[offset];
}

namespace {

// Programs that were compiled when the operators were not inline find them here.
[[gnu::used]] char const& (DString::*const readByInt)(int) const = &DString::operator[];
[[gnu::used]] char const& (DString::*const readByUnsigned)(unsigned int) const = &DString::operator[];
[[gnu::used]] char& (DString::*const writtenByInt)(int) = &DString::operator[];
[[gnu::used]] char& (DString::*const writtenByUnsigned)(unsigned int) = &DString::operator[];

} // namespace
