// DDBCSBuffer: what class it is, and what is asked of single characters: type, length, membership in a set.
#include "buffers/buffer_block.h"
#include "buffers/length.h"
#include "characters/stepping.h"

#include <kelcl/ddbcsbuffer.h>

#include <algorithm>
#include <cstring>
#include <cwchar>

DBuffer* DDBCSBuffer::allocate(unsigned int size) const {
    if (size >= kelcl::lengthLimit) overflow();
    return kelcl::construct<DDBCSBuffer>(size);
}

char const* DDBCSBuffer::className() const { return "DDBCSBuffer"; }

unsigned int DDBCSBuffer::charType(unsigned int index) const {
    if (index == 0 || index > length) return 0;
    std::size_t const at = index - 1;
    // Where another one begins at the next byte, which is the terminating NUL at last, there is no more of
    // it.
    if (kelcl::surelyBeginsCharacter(contents(), at) && kelcl::surelyBeginsCharacter(contents(), at + 1))
        return 0;
    kelcl::BufferSteps steps;
    std::size_t const start = kelcl::startOfCharacter(contents(), at, steps);
    if (start == at && steps.length(contents() + at) == 1) return 0;
    return static_cast<unsigned int>(at - start) + 1;
}

char* DDBCSBuffer::next(char const* p) { return const_cast<char*>(p) + kelcl::BufferSteps().length(p); }
char const* DDBCSBuffer::next(char const* p) const { return p + kelcl::BufferSteps().length(p); }

int DDBCSBuffer::charLength(char const* p, std::mbstate_t* state) {
    // A fresh state is what a walk begins with; within a character only the C library can go on.
    bool const isFresh = state == nullptr || std::mbsinit(state) != 0;
    kelcl::BufferSteps steps = isFresh ? kelcl::BufferSteps() : kelcl::BufferSteps(*state);
    auto const bytes = static_cast<int>(steps.length(p));
    if (state != nullptr) *state = {}; // the next character begins anew
    return bytes;
}

int DDBCSBuffer::charLength(unsigned int index, std::mbstate_t* state) const {
    return index == 0 || index > length ? 1 : charLength(contents() + index - 1, state);
}

unsigned int DDBCSBuffer::prevCharLength(unsigned int index) const {
    return index <= 1 ? 1 : std::max(charType(index - 1), 1U);
}
unsigned int DDBCSBuffer::prevCharLength(unsigned int index, std::mbstate_t*) const {
    return prevCharLength(index);
}

int DDBCSBuffer::isSBC(char const* p, std::mbstate_t* state) { return charLength(p, state) == 1 ? 1 : 0; }

int DDBCSBuffer::isCharValid(unsigned int index, char const* set, unsigned int setLength) const {
    if (index == 0 || index > length) return 0;
    kelcl::BufferSteps steps;
    char const* const character = contents() + index - 1;
    unsigned int const bytes = steps.length(character);
    kelcl::BufferSteps members(steps.encoding());
    for (unsigned int at = 0; at < setLength && bytes <= setLength - at;) {
        unsigned int const memberBytes = members.lengthWithin(set + at, setLength - at);
        if (memberBytes == bytes && std::memcmp(character, set + at, bytes) == 0) return 1;
        at += memberBytes;
    }
    return 0;
}
