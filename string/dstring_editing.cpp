// DString: the editing members. Each is the buffer's operation of the same name, called by the protocol of
// `edit`.
#include "buffers/length.h"
#include "characters/character_classes.h"
#include "string/dstring_edit.h"

DString& DString::upperCase() {
    return edit<During::soleOwnerEditsInPlace>([](DBuffer& text) { return text.upperCase(); });
}

DString& DString::lowerCase() {
    return edit<During::soleOwnerEditsInPlace>([](DBuffer& text) { return text.lowerCase(); });
}

DString& DString::reverse() {
    return edit<During::soleOwnerEditsInPlace>([](DBuffer& text) { return text.reverse(); });
}

DString& DString::translate(char const* inputChars, unsigned int inputLength, char const* outputChars,
                            unsigned int outputLength, char padCharacter) {
    return edit<During::soleOwnerEditsInPlace>([=](DBuffer& text) {
        return text.translate(inputChars, inputLength, outputChars, outputLength, padCharacter);
    });
}

DString& DString::change(char const* pattern, unsigned int patternLength, char const* replacement,
                         unsigned int replacementLength, unsigned int startPos, unsigned int numChanges) {
    return edit<During::soleOwnerEditsInPlace>([=](DBuffer& text) {
        return text.change(pattern, patternLength, replacement, replacementLength, startPos, numChanges);
    });
}

DString& DString::strip() { return strip(DStringTest(kelcl::whiteSpace.test)); }

DString& DString::strip(char const* chars, unsigned int charsLength, DStringEnum::StripMode mode) {
    return edit<During::heldAlive>([=](DBuffer& text) { return text.strip(chars, charsLength, mode); });
}

DString& DString::strip(DStringTest const& test, DStringEnum::StripMode mode) {
    return edit<During::heldAlive>([&test, mode](DBuffer& text) { return text.strip(test, mode); });
}

DString& DString::overlayWith(char const* text, unsigned int textLength, unsigned int index,
                              char padCharacter) {
    return edit<During::heldAlive>(
        [=](DBuffer& buffer) { return buffer.overlayWith(text, textLength, index, padCharacter); });
}

DString& DString::insert(char const* text, unsigned int textLength, unsigned int index, char padCharacter) {
    return edit<During::heldAlive>(
        [=](DBuffer& buffer) { return buffer.insert(text, textLength, index, padCharacter); });
}

DString& DString::remove(unsigned int start, unsigned int count) {
    if (count == 0 || start > length() || isEmpty()) return *this;
    return edit<During::heldAlive>([=](DBuffer& text) { return text.remove(start, count); });
}

DString& DString::remove(unsigned int start) { return remove(start, kelcl::unboundedLength); }

DString& DString::leftJustify(unsigned int width, char padCharacter) {
    return edit<During::heldAlive>([=](DBuffer& text) { return text.leftJustify(width, padCharacter); });
}

DString& DString::rightJustify(unsigned int width, char padCharacter) {
    if (width == length()) return *this;
    return edit<During::heldAlive>([=](DBuffer& text) { return text.rightJustify(width, padCharacter); });
}

DString& DString::center(unsigned int width, char padCharacter) {
    return edit<During::heldAlive>([=](DBuffer& text) { return text.center(width, padCharacter); });
}

DString& DString::copy(unsigned int numCopies) {
    return edit<During::heldAlive>([=](DBuffer& text) { return text.copy(numCopies); });
}

DString DString::upperCase(DString const& source) { return DString(source).upperCase(); }

DString DString::remove(DString const& source, unsigned int start, unsigned int count) {
    return DString(source).remove(start, count);
}

DString DString::center(DString const& source, unsigned int width, char padCharacter) {
    return DString(source).center(width, padCharacter);
}

DString DString::change(DString const& source, char const* pattern, char const* replacement,
                        unsigned int startPos, unsigned int numChanges) {
    return DString(source).change(pattern, replacement, startPos, numChanges);
}

DString DString::change(DString const& source, DString const& pattern, DString const& replacement,
                        unsigned int startPos, unsigned int numChanges) {
    return DString(source).change(pattern, replacement, startPos, numChanges);
}
