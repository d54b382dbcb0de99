// DString, the value-semantics string: construction, reading, searching, editing, words, radix and bit
// operations. The buffers behind it are in dbuffer.h; dates, times and tracing have headers of their own.
#ifndef KELCL_DSTRING_H
#define KELCL_DSTRING_H

#include <kelcl/dbuffer.h>
#include <kelcl/dexport.h>

#include <cstddef>
#include <cstring>
#include <functional>
#include <iosfwd>
#include <string>
#include <string_view>
#include <type_traits>

class DString;

namespace kelcl {

/// The bytes of a text argument; `data` may be null when `length` is 0.
struct Text {
    char const* data;
    unsigned int length;
};

/// `size` as a length of 32 bits.
/// @throws DInvalidRequest (message 1010, recoverable) when it does not fit.
inline unsigned int checkedLength(std::size_t size) {
    if (size > 0xFFFFFFFF) DBuffer::defaultBuffer()->overflow();
    return static_cast<unsigned int>(size);
}

/// What may be given as a text: `char const*` (null counts as empty), `DString`, `std::string`,
/// `std::string_view`.
template <class T>
inline constexpr bool isText = std::is_convertible_v<T const&, std::string_view> || std::is_null_pointer_v<T>;

template <class T>
using IfText = std::enable_if_t<isText<T>>;

/// A text that is not a `DString`, or of a class derived from it, already.
template <class T>
using IfOtherText = std::enable_if_t<isText<T> && !std::is_base_of_v<DString, T>>;

/// What may be appended beside a `DString`: another text or one `char`.
template <class T>
using IfOtherPiece =
    std::enable_if_t<(isText<T> && !std::is_base_of_v<DString, T>) || std::is_same_v<T, char>>;

/// The bytes of `text`; embedded NULs count in all but a `char const*`.
template <class T>
Text textOf(T const& text) {
    if constexpr (std::is_same_v<T, char>) {
        return {&text, 1};
    } else if constexpr (std::is_null_pointer_v<T>) {
        return {nullptr, 0};
    } else if constexpr (std::is_convertible_v<T const&, char const*>) {
        char const* const characters = text;
        return {characters, characters == nullptr ? 0 : checkedLength(std::strlen(characters))};
    } else {
        std::string_view const view = text;
        return {view.data(), checkedLength(view.size())};
    }
}

} // namespace kelcl

/// A string with value semantics that shares its text with its copies until one of them is changed.
///
/// Positions and lengths count bytes; positions are 1-based and 0 as a result means none. Texts may contain
/// NULs. A *text* argument is a `char const*` (up to its NUL; null counts as empty), a `DString`, a
/// `std::string` or a `std::string_view`, and may point into the string it is given to.
///
/// In a multi-byte locale the operations work on whole characters, see DDBCSBuffer; `setlocale` comes before
/// the first string.
///
/// Two strings may be used by two threads at once, also when they are copies of each other or both empty. One
/// string is for one thread at a time, unless all of them only read it.
///
/// Every operation that makes a text may throw DInvalidRequest (message 1010, recoverable) when the result
/// would be longer than 4294967270 bytes, and DOutOfMemory; the string is then what it was.
///
/// @code
/// DString line("  Amsterdam;1275  ");
/// line.strip();
/// DString name = line.subString(1, line.indexOf(';') - 1);
/// std::cout << name.upperCase() << " of " << line << '\n'; // AMSTERDAM of Amsterdam;1275
/// @endcode
class KELCL_EXPORT DString {
public:
    /// What `findPhrase` reports. Any value but charIndex means a word number.
    enum IndexType : unsigned int { charIndex = 0, wordIndex = 1 };
    /// The operation of `applyBitOp`.
    enum BitOperator : unsigned int { bitAnd = 0, bitOr = 1, bitExclusiveOr = 2 };

    using value_type = char;
    using size_type = unsigned int;
    using difference_type = std::ptrdiff_t;
    using const_reference = char const&;
    using const_iterator = char const*;
    using iterator = const_iterator;

    static char const* const null;    ///< The empty text.
    static char const* const zero;    ///< "0".
    static char const* const maxLong; ///< "0x7fffffffffffffffL", a text, not a number.

    /// The national-language switch, read at load from the environment variable KORVA_I18N: 1 when it is "ON"
    /// in any case, else 0. At 1 comparisons collate through the locale and multi-byte edits work on wide
    /// characters.
    static int fgI18NState;

    /// The text of the shared empty buffer; null until a string has been made.
    static char* nullBuffer;
    static char* nullBuf() { return __atomic_load_n(&nullBuffer, __ATOMIC_ACQUIRE); }

    /// @name Construction
    /// A new text has the class that buffers have in the locale of the moment.
    /// @{
    DString() : text_(sharedEmpty()) { buffer()->take(); }
    DString(std::nullptr_t) : DString() {}
    /// Adopts `buffer`, which must not be null, with the caller's reference.
    DString(DBuffer* buffer) : text_(sharedEmpty()) { text_ = buffer->contents(); }
    DString(DString const& other) noexcept : text_(other.text_) { buffer()->take(); }
    /// Leaves `other` empty.
    DString(DString&& other) noexcept : text_(other.text_) { other.becomeEmpty(); }
    /// The bytes up to the NUL; null gives the empty string.
    DString(char const* p);
    DString(signed char const* p);
    DString(unsigned char const* p);
    DString(std::string const& text);
    DString(std::string_view text);
    /// One byte; NUL gives a string of one NUL.
    DString(char c);
    DString(signed char c);
    DString(unsigned char c);
    /// The number in decimal; a `double` with up to 15 significant digits and the locale's decimal point.
    DString(int number);
    DString(short number);
    DString(long number);
    DString(long long number);
    DString(unsigned int number);
    DString(unsigned short number);
    DString(unsigned long number);
    DString(unsigned long long number);
    DString(double number);
    /// The pieces in a row, each of its length in bytes; a piece whose pointer is null is that many pad
    /// characters.
    DString(void const* p1, unsigned int l1, void const* p2, unsigned int l2, void const* p3, unsigned int l3,
            char padCharacter = ' ');
    DString(void const* p1, unsigned int l1, void const* p2, unsigned int l2, char padCharacter = ' ');
    DString(void const* p1, unsigned int l1, char padCharacter = ' ');
    ~DString() {
        buffer()->release();
        text_ = nullptr;
    }
    /// @}

    DString& operator=(DString const& other) noexcept {
        DBuffer* const old = buffer();
        other.buffer()->take();
        text_ = other.text_;
        old->release();
        return *this;
    }
    /// Leaves `other` empty.
    DString& operator=(DString&& other) noexcept {
        if (this != &other) {
            DBuffer* const old = buffer();
            text_ = other.text_;
            other.becomeEmpty();
            old->release();
        }
        return *this;
    }
    friend void swap(DString& left, DString& right) noexcept {
        char* const text = left.text_;
        left.text_ = right.text_;
        right.text_ = text;
    }

    /// @name Reading
    /// Pointers into the text are valid until the string is next changed or destroyed.
    /// @{
    unsigned int length() const noexcept { return buffer()->length; } ///< Bytes.
    unsigned int size() const noexcept { return length(); }           ///< Bytes.
    bool isEmpty() const noexcept { return length() == 0; }
    bool empty() const noexcept { return isEmpty(); }
    char const* c_str() const noexcept { return text_; } ///< NUL-terminated.
    char const* data() const noexcept { return text_; }  ///< NUL-terminated.
    char const* begin() const noexcept { return text_; }
    char const* end() const noexcept { return text_ + length(); }
    operator std::string_view() const noexcept { return {text_, length()}; }
    explicit operator char const*() const noexcept { return text_; }
    DString asString() const { return *this; }
    /// "DString(@address,pBuffer->...)" with the buffer's own debug text.
    DString asDebugInfo() const;

    /// The byte at `index`; 0 and 1 both mean the first.
    /// @throws DInvalidRequest (message 1011, recoverable) for a negative index and one beyond the end.
    char const& operator[](int index) const;
    char const& operator[](unsigned int index) const;
    /// The byte at `index` for writing, in a text that is no longer shared. An index beyond the end first
    /// lengthens the string with blanks. The reference is valid until the string is next changed or copied.
    /// @throws DInvalidRequest (message 1011, recoverable) for a negative index.
    char& operator[](int index);
    char& operator[](unsigned int index);

    /// From `start` to the end; empty when `start` is beyond the end. With fgI18NState at 0 a `start` of 0
    /// gives the whole text and one blank: callers rely on it.
    DString subString(unsigned int start) const;
    /// Exactly `count` bytes from `start` (0 counts as 1), padded where the text runs out.
    DString subString(unsigned int start, unsigned int count, char padCharacter = ' ') const;
    /// @}

    /// @name Comparison
    /// Through the buffer's `compare`, so by bytes, or by the locale's collation where fgI18NState is 1. A
    /// text on the left gives the mirrored result.
    /// @throws DInvalidRequest (recoverable) when the locale cannot collate the texts.
    /// @{
#define KELCL_COMPARISON(op)                                                                                 \
    friend bool operator op(DString const& left, DString const& right) {                                     \
        return left.order(right.text_, right.length()) op 0;                                                 \
    }                                                                                                        \
    template <class T, class = kelcl::IfOtherText<T>>                                                        \
    friend bool operator op(DString const& left, T const& right) {                                           \
        kelcl::Text const text = kelcl::textOf(right);                                                       \
        return left.order(text.data, text.length) op 0;                                                      \
    }                                                                                                        \
    template <class T, class = kelcl::IfOtherText<T>>                                                        \
    friend bool operator op(T const& left, DString const& right) {                                           \
        kelcl::Text const text = kelcl::textOf(left);                                                        \
        return 0 op right.order(text.data, text.length);                                                     \
    }
    KELCL_COMPARISON(==)
    KELCL_COMPARISON(!=)
    KELCL_COMPARISON(<)
    KELCL_COMPARISON(<=)
    KELCL_COMPARISON(>)
    KELCL_COMPARISON(>=)
#undef KELCL_COMPARISON
    /// @}

    /// @name Classification
    /// Whether the text is not empty and every character is of the class in the current locale; see DBuffer.
    /// @{
    bool isAlphanumeric() const { return buffer()->isAlphanumeric(); }
    bool isAlphabetic() const { return buffer()->isAlphabetic(); }
    bool isASCII() const { return buffer()->isASCII(); }
    bool isControl() const { return buffer()->isControl(); }
    bool isDigits() const { return buffer()->isDigits(); }
    bool isGraphics() const { return buffer()->isGraphics(); }
    bool isHexDigits() const { return buffer()->isHexDigits(); }
    bool isLowerCase() const { return buffer()->isLowerCase(); }
    bool isPrintable() const { return buffer()->isPrintable(); }
    bool isPunctuation() const { return buffer()->isPunctuation(); }
    bool isUpperCase() const { return buffer()->isUpperCase(); }
    bool isWhiteSpace() const { return buffer()->isWhiteSpace(); }
    bool isBinaryDigits() const; ///< Not empty and every byte '0' or '1'.
    bool isMBCS() const { return buffer()->isMBCS(); }
    bool isDBCS() const { return buffer()->isDBCS(); }
    bool isSBCS() const { return buffer()->isSBCS(); }
    bool isValidMBCS() const { return buffer()->isValidMBCS(); }
    bool isValidDBCS() const { return buffer()->isValidDBCS(); }
    bool includesMBCS() const { return buffer()->includesMBCS(); }
    bool includesDBCS() const { return buffer()->includesDBCS(); }
    bool includesSBCS() const { return buffer()->includesSBCS(); }
    /// 0 for a byte that is a whole character, else the place of the byte at `index` in its character.
    unsigned int charType(unsigned int index) const { return buffer()->charType(index); }
    /// @}

    /// @name Matching
    /// @{
    /// Whether this string, at least `minLength` bytes long (0: any length), begins `full`.
    bool isAbbrevFor(char const* full, unsigned int fullLength, unsigned int minLength) const;
    template <class T, class = kelcl::IfText<T>>
    bool isAbbrevFor(T const& full, unsigned int minLength = 0) const {
        kelcl::Text const text = kelcl::textOf(full);
        return isAbbrevFor(text.data, text.length, minLength);
    }
    /// Whether the whole text matches `pattern`, byte by byte and case-sensitive: `anyString` stands for any
    /// run of bytes, `anyChar` for one byte.
    bool isLike(char const* pattern, unsigned int patternLength, char anyString = '*',
                char anyChar = '?') const;
    template <class T, class = kelcl::IfText<T>>
    bool isLike(T const& pattern, char anyString = '*', char anyChar = '?') const {
        kelcl::Text const text = kelcl::textOf(pattern);
        return isLike(text.data, text.length, anyString, anyChar);
    }
    /// @}

    /// @name Searching
    /// Positions of a byte, a text, any byte (in a multi-byte locale: character) of a text, any outside it,
    /// or any that a test accepts or rejects; 0 when there is none. A forward search takes a `startPos` of 0
    /// as 1, a backward search finds nothing from 0. An empty text is never found, but the any-but searches
    /// answer it with the start.
    /// @{
    unsigned int indexOf(char c, unsigned int startPos = 1) const {
        return buffer()->indexOf(&c, 1, startPos);
    }
    unsigned int indexOf(DStringTest const& test, unsigned int startPos = 1) const {
        return DString(*this).buffer()->indexOf(test, startPos);
    }
    template <class T, class = kelcl::IfText<T>>
    unsigned int indexOf(T const& text, unsigned int startPos = 1) const {
        kelcl::Text const bytes = kelcl::textOf(text);
        return buffer()->indexOf(bytes.data, bytes.length, startPos);
    }
    unsigned int indexOfAnyOf(char c, unsigned int startPos = 1) const {
        return buffer()->indexOfAnyOf(&c, 1, startPos);
    }
    unsigned int indexOfAnyOf(DStringTest const& test, unsigned int startPos = 1) const {
        return DString(*this).buffer()->indexOfAnyOf(test, startPos);
    }
    template <class T, class = kelcl::IfText<T>>
    unsigned int indexOfAnyOf(T const& text, unsigned int startPos = 1) const {
        kelcl::Text const bytes = kelcl::textOf(text);
        return buffer()->indexOfAnyOf(bytes.data, bytes.length, startPos);
    }
    unsigned int indexOfAnyBut(char c, unsigned int startPos = 1) const {
        return buffer()->indexOfAnyBut(&c, 1, startPos);
    }
    unsigned int indexOfAnyBut(DStringTest const& test, unsigned int startPos = 1) const {
        return DString(*this).buffer()->indexOfAnyBut(test, startPos);
    }
    template <class T, class = kelcl::IfText<T>>
    unsigned int indexOfAnyBut(T const& text, unsigned int startPos = 1) const {
        kelcl::Text const bytes = kelcl::textOf(text);
        return buffer()->indexOfAnyBut(bytes.data, bytes.length, startPos);
    }
    unsigned int lastIndexOf(char c, unsigned int startPos = 0xFFFFFFFF) const {
        return buffer()->lastIndexOf(&c, 1, startPos);
    }
    unsigned int lastIndexOf(DStringTest const& test, unsigned int startPos = 0xFFFFFFFF) const {
        return DString(*this).buffer()->lastIndexOf(test, startPos);
    }
    template <class T, class = kelcl::IfText<T>>
    unsigned int lastIndexOf(T const& text, unsigned int startPos = 0xFFFFFFFF) const {
        kelcl::Text const bytes = kelcl::textOf(text);
        return buffer()->lastIndexOf(bytes.data, bytes.length, startPos);
    }
    unsigned int lastIndexOfAnyOf(char c, unsigned int startPos = 0xFFFFFFFF) const {
        return buffer()->lastIndexOfAnyOf(&c, 1, startPos);
    }
    unsigned int lastIndexOfAnyOf(DStringTest const& test, unsigned int startPos = 0xFFFFFFFF) const {
        return DString(*this).buffer()->lastIndexOfAnyOf(test, startPos);
    }
    template <class T, class = kelcl::IfText<T>>
    unsigned int lastIndexOfAnyOf(T const& text, unsigned int startPos = 0xFFFFFFFF) const {
        kelcl::Text const bytes = kelcl::textOf(text);
        return buffer()->lastIndexOfAnyOf(bytes.data, bytes.length, startPos);
    }
    unsigned int lastIndexOfAnyBut(char c, unsigned int startPos = 0xFFFFFFFF) const {
        return buffer()->lastIndexOfAnyBut(&c, 1, startPos);
    }
    unsigned int lastIndexOfAnyBut(DStringTest const& test, unsigned int startPos = 0xFFFFFFFF) const {
        return DString(*this).buffer()->lastIndexOfAnyBut(test, startPos);
    }
    template <class T, class = kelcl::IfText<T>>
    unsigned int lastIndexOfAnyBut(T const& text, unsigned int startPos = 0xFFFFFFFF) const {
        kelcl::Text const bytes = kelcl::textOf(text);
        return buffer()->lastIndexOfAnyBut(bytes.data, bytes.length, startPos);
    }
    bool includes(char c) const { return indexOf(c) != 0; }
    bool includes(DStringTest const& test) const { return indexOf(test) != 0; }
    template <class T, class = kelcl::IfText<T>>
    bool includes(T const& text) const {
        return indexOf(text) != 0;
    }
    /// Matches that do not overlap, from `startPos` on.
    unsigned int occurrencesOf(char c, unsigned int startPos = 1) const;
    unsigned int occurrencesOf(DStringTest const& test, unsigned int startPos = 1) const;
    unsigned int occurrencesOf(char const* pattern, unsigned int patternLength, unsigned int startPos) const;
    template <class T, class = kelcl::IfText<T>>
    unsigned int occurrencesOf(T const& pattern, unsigned int startPos = 1) const {
        kelcl::Text const text = kelcl::textOf(pattern);
        return occurrencesOf(text.data, text.length, startPos);
    }
    /// @}

    /// @name Editing
    /// Each changes this string and returns it; the static forms return a new one and leave their argument
    /// alone.
    /// @{
    DString& upperCase();
    DString& lowerCase();
    DString& reverse();
    static DString upperCase(DString const& source);

    /// Each character of `inputChars` becomes the one at the same place of `outputChars`, or `padCharacter`.
    DString& translate(char const* inputChars, unsigned int inputLength, char const* outputChars,
                       unsigned int outputLength, char padCharacter = ' ');
    template <class T, class U, class = kelcl::IfText<T>, class = kelcl::IfText<U>>
    DString& translate(T const& inputChars, U const& outputChars, char padCharacter = ' ') {
        kelcl::Text const input = kelcl::textOf(inputChars);
        kelcl::Text const output = kelcl::textOf(outputChars);
        return translate(input.data, input.length, output.data, output.length, padCharacter);
    }

    /// Removes white space of the locale from both ends.
    DString& strip();
    /// Removes the given characters, or those that `test` accepts, from the ends that `mode` names.
    DString& strip(char const* chars, unsigned int charsLength, DStringEnum::StripMode mode);
    DString& strip(DStringTest const& test, DStringEnum::StripMode mode = DStringEnum::both);
    DString& strip(char c, DStringEnum::StripMode mode = DStringEnum::both) { return strip(&c, 1, mode); }
    template <class T, class = kelcl::IfText<T>>
    DString& strip(T const& chars, DStringEnum::StripMode mode = DStringEnum::both) {
        kelcl::Text const text = kelcl::textOf(chars);
        return strip(text.data, text.length, mode);
    }

    /// Writes `text` over the bytes from `index` (0 counts as 1) on, padding up to there when the text is
    /// shorter.
    DString& overlayWith(char const* text, unsigned int textLength, unsigned int index,
                         char padCharacter = ' ');
    template <class T, class = kelcl::IfText<T>>
    DString& overlayWith(T const& text, unsigned int index = 1, char padCharacter = ' ') {
        kelcl::Text const bytes = kelcl::textOf(text);
        return overlayWith(bytes.data, bytes.length, index, padCharacter);
    }
    /// Inserts `text` after byte `index` (0: in front), padding up to there when the text is shorter.
    DString& insert(char const* text, unsigned int textLength, unsigned int index, char padCharacter = ' ');
    template <class T, class = kelcl::IfText<T>>
    DString& insert(T const& text, unsigned int index = 0, char padCharacter = ' ') {
        kelcl::Text const bytes = kelcl::textOf(text);
        return insert(bytes.data, bytes.length, index, padCharacter);
    }

    /// The text on the left, on the right or in the middle of `width` bytes, cut or padded to fit.
    DString& leftJustify(unsigned int width, char padCharacter = ' ');
    DString& rightJustify(unsigned int width, char padCharacter = ' ');
    DString& center(unsigned int width, char padCharacter = ' ');
    static DString center(DString const& source, unsigned int width, char padCharacter = ' ');

    /// The text `numCopies` times in a row.
    DString& copy(unsigned int numCopies);

    /// Replaces up to `numChanges` occurrences of `pattern`, which do not overlap, from `startPos` (0 counts
    /// as 1) on.
    DString& change(char const* pattern, unsigned int patternLength, char const* replacement,
                    unsigned int replacementLength, unsigned int startPos = 1,
                    unsigned int numChanges = 0xFFFFFFFF);
    template <class T, class U, class = kelcl::IfText<T>, class = kelcl::IfText<U>>
    DString& change(T const& pattern, U const& replacement, unsigned int startPos = 1,
                    unsigned int numChanges = 0xFFFFFFFF) {
        kelcl::Text const from = kelcl::textOf(pattern);
        kelcl::Text const to = kelcl::textOf(replacement);
        return change(from.data, from.length, to.data, to.length, startPos, numChanges);
    }
    static DString change(DString const& source, char const* pattern, char const* replacement,
                          unsigned int startPos, unsigned int numChanges);
    static DString change(DString const& source, DString const& pattern, DString const& replacement,
                          unsigned int startPos, unsigned int numChanges);

    /// Removes up to `count` bytes, or all, from `start` (0 counts as 1) on.
    DString& remove(unsigned int start, unsigned int count);
    DString& remove(unsigned int start);
    static DString remove(DString const& source, unsigned int start, unsigned int count);

    /// Makes this string the only owner of its text, in a copy if it is shared.
    DString& prepareToChange();
    /// @}

    /// @name Concatenation
    /// A null or empty text changes nothing. `+=` on the only owner of a text writes in place where the block
    /// has room, so that appending costs the bytes appended.
    /// @{
    DString& operator+=(DString const& text) { return append(text.text_, text.length()); }
    template <class T, class = kelcl::IfOtherPiece<T>>
    DString& operator+=(T const& piece) {
        kelcl::Text const text = kelcl::textOf(piece);
        return append(text.data, text.length);
    }
    friend DString operator+(DString const& left, DString const& right) {
        return joined(left.text_, left.length(), right.text_, right.length());
    }
    template <class T, class = kelcl::IfOtherPiece<T>>
    friend DString operator+(DString const& left, T const& right) {
        kelcl::Text const text = kelcl::textOf(right);
        return joined(left.text_, left.length(), text.data, text.length);
    }
    template <class T, class = kelcl::IfOtherPiece<T>>
    friend DString operator+(T const& left, DString const& right) {
        kelcl::Text const text = kelcl::textOf(left);
        return joined(text.data, text.length, right.text_, right.length());
    }
    /// @}

    /// @name Words
    /// A word is a run without any of the six separators "\t\n\v\f\r " of the C locale. Words are numbered
    /// from 1.
    /// @{
    unsigned int numWords() const;
    /// Word `n` (0 counts as 1), empty when there is none.
    DString word(unsigned int n) const;
    /// From word `first` (0 counts as 1) through `count` words, the separators between them kept.
    DString words(unsigned int first, unsigned int count = 1) const;
    /// Position of word `n` when counting starts at byte `startPos` with `counted` words seen; 0 when there
    /// is none.
    unsigned int indexOfWord(unsigned int n, unsigned int startPos = 1, unsigned int counted = 0) const;
    /// Bytes of word `n`; 0 when there is none.
    unsigned int lengthOfWord(unsigned int n) const;
    /// Where the words of `phrase` stand in a row at or after word `startWord`, as a word number or a
    /// position.
    unsigned int findPhrase(DString const& phrase, unsigned int startWord = 1,
                            IndexType type = wordIndex) const;
    /// Removes `count` words from word `first` on with the separators behind them. A `first` of 0 removes
    /// nothing.
    DString& removeWords(unsigned int first, unsigned int count = 1);
    /// Joins the words with `n` copies of `c`.
    DString& space(unsigned int n = 1, char c = ' ');
    /// @}

    /// @name Radix conversion
    /// The bytes are one unsigned big-endian number. Text that is not of the notation makes the string empty.
    /// @{
    DString& c2x(); ///< Bytes to upper-case hexadecimal digits.
    DString& x2c(); ///< Hexadecimal digits to bytes; with an odd count a leading 0 is assumed.
    DString& c2b(); ///< Bytes to binary digits.
    DString& b2c(); ///< Binary digits to bytes.
    DString& c2d(); ///< Bytes to decimal digits. All-zero bytes, if more than 4, keep 3 * length - 11 zeros.
    DString& d2c(); ///< Decimal digits to bytes.
    /// The decimal number times 256 plus `byte`.
    DString& decimalMath(unsigned char byte);
    /// The binary number times 10 plus `digit`.
    DString& binaryMath(unsigned char digit);
    /// @}

    /// @name Bitwise operators
    /// Byte by byte; a shorter operand is repeated. The result has the length of the left operand; an empty
    /// right operand changes nothing.
    /// @{
    DString& operator&=(DString const& operand) {
        return applyBitOp(operand.text_, operand.length(), bitAnd);
    }
    template <class T, class = kelcl::IfOtherPiece<T>>
    DString& operator&=(T const& operand) {
        kelcl::Text const text = kelcl::textOf(operand);
        return applyBitOp(text.data, text.length, bitAnd);
    }
    DString& operator|=(DString const& operand) { return applyBitOp(operand.text_, operand.length(), bitOr); }
    template <class T, class = kelcl::IfOtherPiece<T>>
    DString& operator|=(T const& operand) {
        kelcl::Text const text = kelcl::textOf(operand);
        return applyBitOp(text.data, text.length, bitOr);
    }
    DString& operator^=(DString const& operand) {
        return applyBitOp(operand.text_, operand.length(), bitExclusiveOr);
    }
    template <class T, class = kelcl::IfOtherPiece<T>>
    DString& operator^=(T const& operand) {
        kelcl::Text const text = kelcl::textOf(operand);
        return applyBitOp(text.data, text.length, bitExclusiveOr);
    }
    friend DString operator&(DString left, DString const& right) { return left &= right; }
    template <class T, class = kelcl::IfOtherPiece<T>>
    friend DString operator&(DString left, T const& right) {
        return left &= right;
    }
    template <class T, class = kelcl::IfOtherPiece<T>>
    friend DString operator&(T const& left, DString const& right) {
        return DString(left) &= right;
    }
    friend DString operator|(DString left, DString const& right) { return left |= right; }
    template <class T, class = kelcl::IfOtherPiece<T>>
    friend DString operator|(DString left, T const& right) {
        return left |= right;
    }
    template <class T, class = kelcl::IfOtherPiece<T>>
    friend DString operator|(T const& left, DString const& right) {
        return DString(left) |= right;
    }
    friend DString operator^(DString left, DString const& right) { return left ^= right; }
    template <class T, class = kelcl::IfOtherPiece<T>>
    friend DString operator^(DString left, T const& right) {
        return left ^= right;
    }
    template <class T, class = kelcl::IfOtherPiece<T>>
    friend DString operator^(T const& left, DString const& right) {
        return DString(left) ^= right;
    }
    DString operator~() const; ///< Every byte complemented.
    /// @}

    /// @name Streams
    /// @{
    /// Reads up to `delimiter`, which is consumed and not stored, or the end. The stream is left in the state
    /// that `get` leaves it in: reading the last line without a delimiter sets eofbit and failbit.
    static DString lineFrom(std::istream& in, char delimiter = '\n');
    /// Writes the text up to its first NUL, as a `char const*` is written.
    friend KELCL_EXPORT std::ostream& operator<<(std::ostream& out, DString const& text);
    /// Reads a word as the stream's locale separates words; with a field width w at most w - 1 bytes. At the
    /// end of the input `text` becomes empty. What `text` held is the space to work in, which the buffer's
    /// `remove` cuts after the word: the text keeps the buffer's class.
    friend KELCL_EXPORT std::istream& operator>>(std::istream& in, DString& text);
    /// @}

protected:
    /// Replace the text without releasing the old one, whose reference the caller has taken over or given up.
    DString& initBuffer(long number);
    DString& initBuffer(unsigned long number);
    DString& initBuffer(double number);
    DString& initBuffer(void const* p1, unsigned int l1, void const* p2, unsigned int l2, void const* p3,
                        unsigned int l3, char padCharacter = ' ');

    /// Combines the bytes with the operand's, repeated as often as needed. An empty operand and any other
    /// `op` change nothing.
    DString& applyBitOp(char const* operand, unsigned int operandLength, BitOperator op);

private:
    char* text_;

    explicit DString(kelcl::Text text);

    DBuffer* buffer() const noexcept { return DBuffer::fromContents(text_); }

    static char* sharedEmpty() {
        char* const made = nullBuf();
        return made != nullptr ? made : makeSharedEmpty();
    }
    static char* makeSharedEmpty();
    void becomeEmpty() noexcept {
        text_ = nullBuf();
        buffer()->take();
    }

    /// Negative, 0 or positive as this text sorts before, with or after the bytes.
    int order(char const* data, unsigned int length) const {
        int const code = data != nullptr ? buffer()->compare(data, length) : buffer()->compare("", 0);
        return code == 2 ? -1 : code;
    }
    DString& append(char const* data, unsigned int count);
    static DString joined(char const* left, unsigned int leftLength, char const* right,
                          unsigned int rightLength);

    /// How an editing operation keeps the buffer it works on.
    enum class During { heldAlive, soleOwnerEditsInPlace };
    template <During during, class Operation>
    DString& edit(Operation operation);
    DString& install(DBuffer* edited);
};

/// Hashes the bytes, so it agrees with `==` as long as DString::fgI18NState is 0.
template <>
struct std::hash<DString> {
    std::size_t operator()(DString const& text) const noexcept { return std::hash<std::string_view>{}(text); }
};

#endif
