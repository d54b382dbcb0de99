// The bodies of DString's inline members that are longer than their declarations. Included at the end of
// dstring.h; not for hosts.
#ifndef KELCL_DETAIL_DSTRING_INLINE_H
#define KELCL_DETAIL_DSTRING_INLINE_H

#include <kelcl/dstring.h>

// Ownership
// ----------------------------------------------------------------------------------------------------

inline char* DString::sharedEmpty() {
    char* const made = nullBuf();
    return made != nullptr ? made : makeSharedEmpty();
}

inline void DString::becomeEmpty() noexcept {
    text_ = nullBuf();
    buffer()->take();
}

template <class It, class>
DString::DString(It first, It last) : DString() {
    if constexpr (std::is_same_v<It, char const*> || std::is_same_v<It, char*>)
        *this = DString(std::string_view(first, static_cast<std::size_t>(last - first)));
    else
        for (; first != last; ++first)
            *this += static_cast<char>(*first);
}

inline DString::~DString() {
    buffer()->release();
    text_ = nullptr;
}

inline DString& DString::operator=(DString const& other) noexcept {
    DBuffer* const old = buffer();
    other.buffer()->take();
    text_ = other.text_;
    old->release();
    return *this;
}

inline DString& DString::operator=(DString&& other) noexcept {
    if (this != &other) {
        DBuffer* const old = buffer();
        text_ = other.text_;
        other.becomeEmpty();
        old->release();
    }
    return *this;
}

// Element access
// ----------------------------------------------------------------------------------------------------

// An index outside of the text never comes back here, so that compilers keep the place and the length of the
// text in registers while a program goes through it. Index 0 means the first byte, as 1 does; among unsigned
// ones it is apart, lest each pass of a loop ask for it.

inline char const& DString::operator[](unsigned int index) const {
    unsigned int offset = index - 1;
    if (__builtin_expect(offset >= length(), false)) {
        if (index != 0 || isEmpty()) raiseOutside(index);
        offset = 0;
    }
    return text_[offset];
}

inline char const& DString::operator[](int index) const {
    if (index < 0) raiseOutside(index);
    unsigned int const offset = offsetOf(static_cast<unsigned int>(index));
    if (offset >= length()) raiseOutside(index);
    return text_[offset];
}

// The index 0 becomes the largest of all, which no text reaches. A negative one is tested for, as it would be
// within a text of more than 2 GB.

inline char& DString::operator[](unsigned int index) {
    char* const text = text_;
    if (index - 1 >= length() || !buffer()->hasOneOwner()) return rareElement(index);
    return text[index - 1];
}

inline char& DString::operator[](int index) {
    return index > 0 ? (*this)[static_cast<unsigned int>(index)] : rareElement(index);
}

// Comparison and matching
// --------------------------------------------------------------------------------------

inline bool DString::comparesBytes() const noexcept {
    return fgI18NState != 1 && kelcl::isLibraryClass(*buffer());
}

inline bool DString::equals(kelcl::Text text) const {
    if (!comparesBytes()) return order(text) == 0;
    return text.length == length() &&
           (text.data == text_ || std::char_traits<char>::compare(text_, text.data, text.length) == 0);
}

inline int DString::order(kelcl::Text text) const {
    if (comparesBytes() && text.data != text_) {
        unsigned int const own = length();
        unsigned int const both = own < text.length ? own : text.length;
        int const bytes = std::char_traits<char>::compare(text_, text.data, both);
        return bytes != 0 ? bytes : own < text.length ? -1 : own > text.length;
    }
    int const code =
        text.data != nullptr ? buffer()->compare(text.data, text.length) : buffer()->compare("", 0);
    return code == 2 ? -1 : code;
}

template <class T, class>
bool DString::isAbbrevFor(T const& full, unsigned int minLength) const {
    kelcl::Text const text = kelcl::textOf(full);
    return isAbbrevFor(text.data, text.length, minLength);
}

template <class T, class>
bool DString::isLike(T const& pattern, char anyString, char anyChar) const {
    kelcl::Text const text = kelcl::textOf(pattern);
    return isLike(text.data, text.length, anyString, anyChar);
}

// Searching
// ----------------------------------------------------------------------------------------------------

inline unsigned int DString::indexOf(char c, unsigned int startPos) const {
    DBuffer const& text = *buffer();
    return kelcl::standsForItself(text, c) ? kelcl::firstPositionOf(text, c, startPos)
                                           : kelcl::askForByte<&DBuffer::indexOf>(text, c, startPos);
}

inline unsigned int DString::indexOfAnyOf(char c, unsigned int startPos) const {
    DBuffer const& text = *buffer();
    return kelcl::standsForItself(text, c) ? kelcl::firstPositionOf(text, c, startPos)
                                           : kelcl::askForByte<&DBuffer::indexOfAnyOf>(text, c, startPos);
}

inline unsigned int DString::lastIndexOf(char c, unsigned int startPos) const {
    DBuffer const& text = *buffer();
    return kelcl::standsForItself(text, c) ? kelcl::lastPositionOf(text, c, startPos)
                                           : kelcl::askForByte<&DBuffer::lastIndexOf>(text, c, startPos);
}

inline unsigned int DString::lastIndexOfAnyOf(char c, unsigned int startPos) const {
    DBuffer const& text = *buffer();
    return kelcl::standsForItself(text, c) ? kelcl::lastPositionOf(text, c, startPos)
                                           : kelcl::askForByte<&DBuffer::lastIndexOfAnyOf>(text, c, startPos);
}

// A test is a host's code and may change this very string: a copy keeps the text that is searched. It is made
// by asString(), as calling a constructor has compilers look at thirty of them.

inline unsigned int DString::indexOf(DStringTest const& test, unsigned int startPos) const {
    if (comparesBytes()) return indexOfAnyOf(test, startPos);
    return asString().buffer()->indexOf(test, startPos);
}

template <class T, class>
unsigned int DString::indexOf(T const& text, unsigned int startPos) const {
    kelcl::Text const bytes = kelcl::textOf(text);
    return buffer()->indexOf(bytes.data, bytes.length, startPos);
}

inline unsigned int DString::indexOfAnyOf(DStringTest const& test, unsigned int startPos) const {
    DString const held = asString();
    if (startPos <= 1 && comparesBytes())
        if (kelcl::TestFunction const accepts = kelcl::functionOf(test))
            return kelcl::firstPositionAccepted(*held.buffer(), accepts);
    return held.buffer()->indexOfAnyOf(test, startPos);
}

template <class T, class>
unsigned int DString::indexOfAnyOf(T const& text, unsigned int startPos) const {
    kelcl::Text const bytes = kelcl::textOf(text);
    return buffer()->indexOfAnyOf(bytes.data, bytes.length, startPos);
}

inline unsigned int DString::indexOfAnyBut(DStringTest const& test, unsigned int startPos) const {
    return asString().buffer()->indexOfAnyBut(test, startPos);
}

template <class T, class>
unsigned int DString::indexOfAnyBut(T const& text, unsigned int startPos) const {
    kelcl::Text const bytes = kelcl::textOf(text);
    return buffer()->indexOfAnyBut(bytes.data, bytes.length, startPos);
}

inline unsigned int DString::lastIndexOf(DStringTest const& test, unsigned int startPos) const {
    return asString().buffer()->lastIndexOf(test, startPos);
}

template <class T, class>
unsigned int DString::lastIndexOf(T const& text, unsigned int startPos) const {
    kelcl::Text const bytes = kelcl::textOf(text);
    return buffer()->lastIndexOf(bytes.data, bytes.length, startPos);
}

inline unsigned int DString::lastIndexOfAnyOf(DStringTest const& test, unsigned int startPos) const {
    return asString().buffer()->lastIndexOfAnyOf(test, startPos);
}

template <class T, class>
unsigned int DString::lastIndexOfAnyOf(T const& text, unsigned int startPos) const {
    kelcl::Text const bytes = kelcl::textOf(text);
    return buffer()->lastIndexOfAnyOf(bytes.data, bytes.length, startPos);
}

inline unsigned int DString::lastIndexOfAnyBut(DStringTest const& test, unsigned int startPos) const {
    return asString().buffer()->lastIndexOfAnyBut(test, startPos);
}

template <class T, class>
unsigned int DString::lastIndexOfAnyBut(T const& text, unsigned int startPos) const {
    kelcl::Text const bytes = kelcl::textOf(text);
    return buffer()->lastIndexOfAnyBut(bytes.data, bytes.length, startPos);
}

template <class T, class>
unsigned int DString::occurrencesOf(T const& pattern, unsigned int startPos) const {
    kelcl::Text const text = kelcl::textOf(pattern);
    return occurrencesOf(text.data, text.length, startPos);
}

// Editing
// ------------------------------------------------------------------------------------------------------

template <class T, class U, class, class>
DString& DString::translate(T const& inputChars, U const& outputChars, char padCharacter) {
    kelcl::Text const input = kelcl::textOf(inputChars);
    kelcl::Text const output = kelcl::textOf(outputChars);
    return translate(input.data, input.length, output.data, output.length, padCharacter);
}

template <class T, class>
DString& DString::strip(T const& chars, DStringEnum::StripMode mode) {
    kelcl::Text const text = kelcl::textOf(chars);
    return strip(text.data, text.length, mode);
}

template <class T, class>
DString& DString::overlayWith(T const& text, unsigned int index, char padCharacter) {
    kelcl::Text const bytes = kelcl::textOf(text);
    return overlayWith(bytes.data, bytes.length, index, padCharacter);
}

template <class T, class>
DString& DString::insert(T const& text, unsigned int index, char padCharacter) {
    kelcl::Text const bytes = kelcl::textOf(text);
    return insert(bytes.data, bytes.length, index, padCharacter);
}

template <class T, class U, class, class>
DString& DString::change(T const& pattern, U const& replacement, unsigned int startPos,
                         unsigned int numChanges) {
    kelcl::Text const from = kelcl::textOf(pattern);
    kelcl::Text const to = kelcl::textOf(replacement);
    return change(from.data, from.length, to.data, to.length, startPos, numChanges);
}

inline char* DString::lengthenInPlace(unsigned int count) noexcept {
    DBuffer* const own = buffer();
    unsigned int const before = own->length;
    // Of 0 bytes there is nothing to do, and no text to copy.
    if (count == 0 || before == 0 || !kelcl::hasRoomFor(before, count) || !own->hasOneOwner() ||
        !kelcl::growsInPlace(*own))
        return nullptr;
    own->length = before + count;
    char* const end = own->contents() + before;
    end[count] = '\0';
    return end;
}

inline bool DString::appendInPlace(kelcl::Text text) noexcept {
    char* const end = lengthenInPlace(text.length);
    if (end == nullptr) return false;
    kelcl::moveBytes(end, text.data,
                     text.length); // which may be part of this very text, and end with its NUL
    return true;
}

inline DString& DString::operator+=(DString const& text) { return append(text.bytes()); }

template <class T, class>
DString& DString::operator+=(T const& piece) {
    if constexpr (std::is_same_v<T, char>) {
        char const byte = piece; // which may be part of this very text
        char* const end = lengthenInPlace(1);
        if (end == nullptr) return append(&byte, 1);
        *end = byte;
        return *this;
    } else {
        return append(kelcl::textOf(piece));
    }
}

// A text that grows keeps its class, a joined one is of that of the shared empty buffer.
inline DString DString::followedBy(kelcl::Text text) && {
    if (kelcl::haveOneClass(*buffer(), *DBuffer::fromContents(sharedEmpty())) && appendInPlace(text))
        return std::move(*this);
    return joined(bytes(), text);
}

// Bitwise operators
// --------------------------------------------------------------------------------------------

template <class T, class>
DString& DString::operator&=(T const& operand) {
    kelcl::Text const text = kelcl::textOf(operand);
    return applyBitOp(text.data, text.length, bitAnd);
}

template <class T, class>
DString& DString::operator|=(T const& operand) {
    kelcl::Text const text = kelcl::textOf(operand);
    return applyBitOp(text.data, text.length, bitOr);
}

template <class T, class>
DString& DString::operator^=(T const& operand) {
    kelcl::Text const text = kelcl::textOf(operand);
    return applyBitOp(text.data, text.length, bitExclusiveOr);
}

#endif
