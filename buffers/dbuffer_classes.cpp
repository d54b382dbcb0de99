// DBuffer: whole-text character classes and kinds of characters. What the classes contain is defined
// in character_classes.
#include "buffers/host_classes.h"
#include "bytes/byte_search.h"
#include "characters/character_classes.h"

#include <kelcl/dbuffer.h>

namespace {

bool bytesConsistOf(kelcl::CharacterClass const& characterClass, DBuffer const& text) {
    if (text.length == 0) return false;
    if (kelcl::isSingleByteClass(text))
        return kelcl::findFirstNotIn({text.contents(), text.length}, characterClass) == kelcl::notFound;
    return text.indexOfAnyBut(DStringTest(characterClass.test), 1) == 0; // a host's class may override it
}

} // namespace

bool DBuffer::isAlphanumeric() const { return bytesConsistOf(kelcl::alphanumeric, *this); }
bool DBuffer::isAlphabetic() const { return bytesConsistOf(kelcl::alphabetic, *this); }
bool DBuffer::isControl() const { return bytesConsistOf(kelcl::control, *this); }
bool DBuffer::isDigits() const { return bytesConsistOf(kelcl::digits, *this); }
bool DBuffer::isGraphics() const { return bytesConsistOf(kelcl::graphics, *this); }
bool DBuffer::isHexDigits() const { return bytesConsistOf(kelcl::hexDigits, *this); }
bool DBuffer::isLowerCase() const { return bytesConsistOf(kelcl::lowerCase, *this); }
bool DBuffer::isPrintable() const { return bytesConsistOf(kelcl::printable, *this); }
bool DBuffer::isPunctuation() const { return bytesConsistOf(kelcl::punctuation, *this); }
bool DBuffer::isUpperCase() const { return bytesConsistOf(kelcl::upperCase, *this); }
bool DBuffer::isWhiteSpace() const { return bytesConsistOf(kelcl::whiteSpace, *this); }

bool DBuffer::isASCII() const { return length != 0 && kelcl::isAscii({contents(), length}); }

bool DBuffer::isMBCS() const { return false; }
bool DBuffer::isDBCS() const { return false; }
bool DBuffer::isSBCS() const { return true; }
bool DBuffer::isValidMBCS() const { return true; }
bool DBuffer::isValidDBCS() const { return true; }
bool DBuffer::includesMBCS() const { return false; }
bool DBuffer::includesDBCS() const { return false; }
bool DBuffer::includesSBCS() const { return true; }
