// DBuffer: storage and sharing, pieces and removal. Searching, editing and classification have units of their
// own.
#include "buffers/buffer_block.h"
#include "buffers/buffer_factory.h"
#include "buffers/length.h"
#include "except/raise.h"

#include <kelcl/dexception.h>
#include <kelcl/dstring.h>

#include <algorithm>
#include <cstring>
#include <new>

namespace {

constexpr unsigned long overflowLine = 557; // hosts match on it

/// Writes a piece, or pad characters where it has none, and returns the place behind it.
char* writePiece(char* out, void const* piece, unsigned int length, char padCharacter) {
    if (length == 0) return out;
    if (piece != nullptr)
        std::memcpy(out, piece, length);
    else
        std::memset(out, padCharacter, length);
    return out + length;
}

} // namespace

namespace kelcl {

void raiseLengthOverflow() {
    constexpr unsigned long bufferOverflow = 1010;
    raise(
        [] {
            return DInvalidRequest(DBase::messageText(bufferOverflow), bufferOverflow,
                                   DException::recoverable);
        },
        {"dbuffer0", nullptr, overflowLine});
}

} // namespace kelcl

// The text lies past the object, in the same block. By its address alone, or the optimiser, which sees the
// object only, takes the store for one out of bounds.
DBuffer::DBuffer(unsigned int size) : refs(1), length(size) { *std::launder(contents() + size) = '\0'; }

DBuffer::~DBuffer() = default;

void DBuffer::operator delete(void* block) noexcept { ::operator delete[](block); }

char const* DBuffer::className() const { return "DBuffer"; }

unsigned int DBuffer::charType(unsigned int) const { return 0; }

// The address of the following byte would be more useful, but callers rely on getting the same address.
char* DBuffer::next(char const* p) { return const_cast<char*>(p); }
char const* DBuffer::next(char const* p) const { return p; }

bool DBuffer::isMBCS() const { return false; }
bool DBuffer::isDBCS() const { return false; }
bool DBuffer::isSBCS() const { return true; }
bool DBuffer::isValidMBCS() const { return true; }
bool DBuffer::isValidDBCS() const { return true; }
bool DBuffer::includesMBCS() const { return false; }
bool DBuffer::includesDBCS() const { return false; }
bool DBuffer::includesSBCS() const { return true; }

void DBuffer::overflow() const { kelcl::raiseLengthOverflow(); }

DBuffer* DBuffer::allocate(unsigned int size) const {
    if (size >= kelcl::lengthLimit) overflow();
    return kelcl::makeBuffer(size);
}

DBuffer* DBuffer::newBuffer(void const* p1, unsigned int l1, void const* p2, unsigned int l2, void const* p3,
                            unsigned int l3, char padCharacter) const {
    unsigned int const total = kelcl::lengthSum(kelcl::lengthSum(l1, l2), l3);
    if (total == 0) return kelcl::sharedEmpty(*this);
    DBuffer* const result = kelcl::allocateLike(*this, total);
    char* out = writePiece(result->contents(), p1, l1, padCharacter);
    out = writePiece(out, p2, l2, padCharacter);
    writePiece(out, p3, l3, padCharacter);
    return result;
}

DBuffer* DBuffer::remove(unsigned int start, unsigned int count) {
    if (length == 0 || start > length) return kelcl::shared(*this);
    unsigned int const before = std::max(start, 1U) - 1;
    unsigned int const removed = std::min(count, length - before);
    char const* const behind = contents() + before + removed;
    return newBuffer(contents(), before, behind, length - before - removed);
}

DBuffer* DBuffer::rightJustify(unsigned int width, char padCharacter) {
    if (width == length) return kelcl::shared(*this);
    unsigned int const kept = std::min(length, width);
    return newBuffer(nullptr, width - kept, contents() + length - kept, kept, nullptr, 0, padCharacter);
}

DBuffer* DBuffer::subString(unsigned int start) const {
    unsigned int const from = std::max(start, 1U);
    if (from > length && from - length > 1) overflow();
    return subString(from, length - from + 1, ' ');
}

DBuffer* DBuffer::subString(unsigned int start, unsigned int count, char padCharacter) const {
    unsigned int const before = std::max(start, 1U) - 1;
    unsigned int const available = before < length ? length - before : 0;
    unsigned int const taken = std::min(count, available);
    return newBuffer(contents() + (taken != 0 ? before : 0), taken, nullptr, count - taken, nullptr, 0,
                     padCharacter);
}

DString DBuffer::asDebugInfo() const {
    constexpr unsigned int longestShownWhole = 23;
    constexpr unsigned int shownAtEachEnd = 10;
    DString info(className());
    info += "(@";
    info += DString(reinterpret_cast<unsigned long>(this));
    info += ",refs=";
    info += DString(owners());
    info += ",len=";
    info += DString(length);
    info += ",data=[";
    if (length <= longestShownWhole) {
        info += contents();
    } else {
        info += std::string_view(contents(), shownAtEachEnd);
        info += "...";
        info += std::string_view(contents() + length - shownAtEachEnd, shownAtEachEnd);
    }
    info += "])";
    return info;
}
