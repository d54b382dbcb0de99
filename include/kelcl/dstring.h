/// @file
/// DString, the value-semantics string: construction, reading, searching, editing, words, radix and bit
/// operations. Its buffers are in dbuffer.h; dates, times and tracing have headers of their own.
#ifndef KELCL_DSTRING_H
#define KELCL_DSTRING_H

#include <kelcl/dbuffer.h>
#include <kelcl/detail/hash.h>
#include <kelcl/detail/library_buffers.h>
#include <kelcl/detail/text.h>
#include <kelcl/dexport.h>

#if defined(__cpp_impl_three_way_comparison) && __has_include(<compare>)
#include <compare>
#endif
#include <cstddef>
#include <iosfwd> // declares std::string as well; <string> itself costs a compiler more than this header
#include <string_view>
#include <utility>

/// A string of bytes with value semantics, which shares its text with its copies until one of them changes.
///
/// @code
/// DString line("  Amsterdam;1275  ");
/// line.strip();
/// DString name = line.subString(1, line.indexOf(';') - 1);
/// std::cout << name.upperCase() << " of " << line << '\n'; // AMSTERDAM of Amsterdam;1275
/// @endcode
///
/// **Value and sharing.** A string is one pointer to a counted text. Copying, assigning and returning it
/// costs one count, not a copy of the text. The first change through one of the owners gives that one a
/// text of its own, so a change is never seen through another string; the only owner of a text is edited in
/// place where possible.
///
/// **Positions** are 1-based and count bytes, as all lengths do. The result 0 means none, so a search can
/// be tested as a truth value. As an argument 0 counts as 1, unless the function says otherwise.
///
/// **Texts.** A *text* argument is a `char const*` (up to its NUL; null counts as empty), a `DString`, a
/// `std::string` or a `std::string_view`, and may point into the string it is given to. Where a function
/// takes a pointer and a length instead, the pointer may be null only when the length is 0, unless it says
/// otherwise.
///
/// **Edits** change this string and return it, so that they can be chained. To keep the old text, edit a
/// copy: `DString(name).upperCase()`.
///
/// **NULs** are bytes like others. Only a `char const*` argument and `operator<<` end at the first one.
///
/// **Multi-byte text.** Where the locale's characters may be longer than one byte (`MB_CUR_MAX` above 1),
/// searches find whole characters, and an edit that would cut one puts blanks or pad characters in place of
/// what is left of it. Positions and lengths remain bytes. The switch #fgI18NState tells whether
/// comparisons, tests and letter cases go by bytes or by the locale. Call `setlocale` before the first
/// string is made. See DDBCSBuffer.
///
/// **Threads.** Two strings may be used by two threads at once, also when they are copies of each other or
/// both empty. One string is for one thread at a time, unless all of them only read it.
///
/// **Errors.** An operation that makes a text throws DInvalidRequest (message 1010, recoverable) when the
/// result would be longer than 4294967270 bytes, and DOutOfMemory. With the switch on, operations that
/// convert multi-byte text throw DInvalidRequest (message 1012, unrecoverable) for bytes that form no
/// character. After any throw the string is what it was.
///
/// **Cost** is linear in the bytes read and written, unless a function says otherwise.
class KELCL_EXPORT DString {
public:
    /// What `findPhrase` reports.
    enum IndexType : unsigned int {
        /// The position of the phrase's first byte.
        charIndex = 0,
        /// The number of the phrase's first word; any value other than `charIndex` means this.
        wordIndex = 1
    };

    /// The operation of `applyBitOp`.
    enum BitOperator : unsigned int {
        /// Each bit that both have.
        bitAnd = 0,
        /// Each bit that one or both have.
        bitOr = 1,
        /// Each bit that exactly one has.
        bitExclusiveOr = 2
    };

    /// A byte of the text; with the types below, what makes a DString usable as a range.
    using value_type = char;
    /// What `size` returns.
    using size_type = unsigned int;
    /// The distance between two iterators.
    using difference_type = std::ptrdiff_t;
    /// What an iterator refers to.
    using const_reference = char const&;
    /// What `begin` and `end` return.
    using const_iterator = char const*;
    /// The same as `const_iterator`: a range of bytes is for reading.
    using iterator = const_iterator;
    /// What `rbegin` and `rend` return.
    using const_reverse_iterator = std::reverse_iterator<const_iterator>;
    /// The same as `const_reverse_iterator`.
    using reverse_iterator = const_reverse_iterator;

    /// @name Constants and process-wide state
    /// Texts that callers know by name, the switch, and the text that empty strings share.
    /// @code
    /// std::cout << DString::zero << ' ' << DString::maxLong << '\n'; // 0 0x7fffffffffffffffL
    /// std::cout << (DString() == DString::null) << '\n';             // 1
    /// @endcode
    /// @{

    /// The empty text.
    static char const* const null;
    /// The text "0".
    static char const* const zero;
    /// The text `0x7fffffffffffffffL`: the source form of the largest `long`, not a number.
    static char const* const maxLong;

    /// The national-language switch: 1 when the environment variable KORVA_I18N was "ON" in any case at
    /// load.
    ///
    /// Otherwise 0. At 1 comparisons collate through the locale, and multi-byte text is tested and edited
    /// as wide characters; at 0 it is compared and tested by bytes. Change it only at start-up.
    static int fgI18NState;

    /// The text of the shared empty buffer; null until a string has been made. Read it with `nullBuf`.
    static char* nullBuffer;

    /// Returns `nullBuffer` as it is at this moment, whatever other threads do.
    static char* nullBuf() { return __atomic_load_n(&nullBuffer, __ATOMIC_ACQUIRE); }

    /// @}

    /// @name Construction
    /// From a text, one byte, a number, or pieces. A new text has the class that buffers have in the locale
    /// of the moment.
    /// @code
    /// std::cout << DString("text") << DString('c') << DString(-5) << '\n'; // textc-5
    /// std::cout << DString(1.0 / 3) << '\n';                               // 0.333333333333333
    /// std::cout << DString("a\0b", 3).length() << '\n';                    // 3
    /// std::cout << DString(nullptr, 5, '*') << '\n';                       // *****
    /// std::cout << DString("ab", 2, nullptr, 3, "cd", 2, '-') << '\n';     // ab---cd
    /// @endcode
    /// @{

    /// Makes an empty string, which shares the one empty text.
    DString() : text_(sharedEmpty()) { buffer()->take(); }
    /// Makes an empty string; `DString s = 0` makes the number instead.
    DString(std::nullptr_t) : DString() {}
    /// Takes over the caller's reference to `buffer`, which must not be null; the count is not raised.
    DString(DBuffer* buffer) : text_(sharedEmpty()) { text_ = buffer->contents(); }
    /// Shares the text of `other`.
    DString(DString const& other) noexcept : text_(other.text_) { buffer()->take(); }
    /// Takes the text of `other`, which is left empty.
    DString(DString&& other) noexcept : text_(other.text_) { other.becomeEmpty(); }
    /// Copies the bytes up to the NUL; null gives the empty string.
    DString(char const* p);
    /// Copies the bytes up to the NUL; null gives the empty string.
    DString(signed char const* p);
    /// Copies the bytes up to the NUL; null gives the empty string.
    DString(unsigned char const* p);
    /// Copies all bytes, NULs included.
    DString(std::string const& text);
    /// Copies all bytes, NULs included.
    DString(std::string_view text);
    /// Copies the bytes of a range, given by iterators.
    template <class It, class = kelcl::IfIterator<It>>
    DString(It first, It last);
    /// Makes a string of one byte, also of NUL.
    DString(char c);
    /// Makes a string of one byte, also of NUL.
    DString(signed char c);
    /// Makes a string of one byte, also of NUL.
    DString(unsigned char c);
    /// Writes the number in decimal.
    DString(int number);
    /// Writes the number in decimal.
    DString(short number);
    /// Writes the number in decimal.
    DString(long number);
    /// Writes the number in decimal.
    DString(long long number);
    /// Writes the number in decimal.
    DString(unsigned int number);
    /// Writes the number in decimal.
    DString(unsigned short number);
    /// Writes the number in decimal.
    DString(unsigned long number);
    /// Writes the number in decimal.
    DString(unsigned long long number);
    /// Writes the number as `printf` does with `%.15g`: 15 significant digits, the locale's decimal point.
    DString(double number);
    /// Joins three pieces, each of its length in bytes. A null pointer stands for that many pad characters.
    /// @throws DInvalidRequest (message 1010, recoverable) when the lengths add up to more than 4294967270.
    DString(void const* p1, unsigned int l1, void const* p2, unsigned int l2, void const* p3, unsigned int l3,
            char padCharacter = ' ');
    /// Joins two pieces; see the form with three.
    DString(void const* p1, unsigned int l1, void const* p2, unsigned int l2, char padCharacter = ' ');
    /// Copies `l1` bytes, NULs included; a null pointer stands for that many pad characters.
    DString(void const* p1, unsigned int l1, char padCharacter = ' ');
    /// Gives up the share in the text; the last owner destroys it.
    ~DString();

    /// @}

    /// @name Assignment
    /// Constant time, whatever the lengths. Other texts are assigned by way of a new string.
    /// @code
    /// DString first("one");
    /// DString second = first;
    /// second += " more";
    /// swap(first, second);
    /// std::cout << first << ", " << second << '\n'; // one more, one
    /// first = 7;
    /// std::cout << first << '\n';                   // 7
    /// @endcode
    /// @{

    /// Shares the text of `other` from now on. Assigning a string to itself changes nothing.
    DString& operator=(DString const& other) noexcept;
    /// Takes the text of `other`, which is left empty.
    DString& operator=(DString&& other) noexcept;
    /// Exchanges the texts; no count changes.
    friend void swap(DString& left, DString& right) noexcept {
        char* const text = left.text_;
        left.text_ = right.text_;
        right.text_ = text;
    }

    /// @}

    /// @name Reading
    /// Pointers into the text are valid until the string is next changed or destroyed. All but
    /// `asDebugInfo` take constant time.
    /// @code
    /// DString const text("abc");
    /// std::cout << text.length() << text.isEmpty() << '\n';           // 30
    /// std::cout << std::strlen(text.c_str()) << '\n';                 // 3
    /// std::cout << std::string_view(text).substr(1) << '\n';          // bc
    /// std::cout << std::count(text.begin(), text.end(), 'b') << '\n'; // 1
    /// @endcode
    /// @{

    /// Returns the number of bytes, NULs included.
    [[nodiscard]] unsigned int length() const noexcept { return buffer()->length; }
    /// Returns the number of bytes, as `length` does.
    [[nodiscard]] unsigned int size() const noexcept { return length(); }
    /// Whether there are no bytes.
    [[nodiscard]] bool isEmpty() const noexcept { return length() == 0; }
    /// Whether there are no bytes, as `isEmpty` tells.
    [[nodiscard]] bool empty() const noexcept { return isEmpty(); }
    /// Returns the text with its terminating NUL; never null.
    [[nodiscard]] char const* c_str() const noexcept KELCL_LIFETIME_BOUND { return text_; }
    /// Returns the text with its terminating NUL; never null.
    [[nodiscard]] char const* data() const noexcept KELCL_LIFETIME_BOUND { return text_; }
    /// Returns a pointer to the first byte; with `end`, the range of all bytes.
    [[nodiscard]] char const* begin() const noexcept KELCL_LIFETIME_BOUND { return text_; }
    /// Returns a pointer past the last byte, to the terminating NUL.
    [[nodiscard]] char const* end() const noexcept KELCL_LIFETIME_BOUND { return text_ + length(); }
    /// The same as begin().
    [[nodiscard]] char const* cbegin() const noexcept KELCL_LIFETIME_BOUND { return begin(); }
    /// The same as end().
    [[nodiscard]] char const* cend() const noexcept KELCL_LIFETIME_BOUND { return end(); }
    /// Begins the bytes from the last one to the first.
    [[nodiscard]] const_reverse_iterator rbegin() const noexcept KELCL_LIFETIME_BOUND {
        return const_reverse_iterator(end());
    }
    /// Ends the bytes from the last one to the first.
    [[nodiscard]] const_reverse_iterator rend() const noexcept KELCL_LIFETIME_BOUND {
        return const_reverse_iterator(begin());
    }
    /// The same as rbegin().
    [[nodiscard]] const_reverse_iterator crbegin() const noexcept KELCL_LIFETIME_BOUND { return rbegin(); }
    /// The same as rend().
    [[nodiscard]] const_reverse_iterator crend() const noexcept KELCL_LIFETIME_BOUND { return rend(); }
    /// Views all bytes, NULs included.
    operator std::string_view() const noexcept KELCL_LIFETIME_BOUND {
        return {data(), std::size_t{length()}};
    }
    /// Makes a `std::filesystem::path`, so that a string can be given where one is taken.
    template <class Path, class = kelcl::IfPath<Path>>
    operator Path() const {
        return Path(std::string_view(data(), std::size_t{length()}));
    }
    /// Returns the text with its terminating NUL, for code that casts.
    explicit operator char const*() const noexcept KELCL_LIFETIME_BOUND { return text_; }
    /// Returns a copy, which shares the text; for code that asks any class here for its text.
    [[nodiscard]] DString asString() const { return *this; }
    /// Returns "DString(@address,pBuffer->...)": the object's address in decimal, then the buffer's own
    /// debug text.
    [[nodiscard]] DString asDebugInfo() const;

    /// @}

    /// @name Element access
    /// One byte by its position. Here 0 and 1 both mean the first.
    /// @code
    /// DString text("abc");
    /// DString const copy = text;
    /// text[1] = 'X';
    /// text[5] = 'Y';
    /// std::cout << text << ", " << copy[0] << copy[3] << '\n'; // Xbc Y, ac
    /// try {
    ///     std::cout << copy[4];
    /// } catch (DInvalidRequest const& problem) {
    ///     std::cout << problem.errorId() << '\n';              // 1011
    /// }
    /// @endcode
    /// @{

    /// Returns the byte at `index`.
    /// @throws DInvalidRequest (message 1011, recoverable) when `index` is negative or past the end.
    KELCL_EXPORT char const& operator[](int index) const KELCL_LIFETIME_BOUND;
    /// Returns the byte at `index`.
    /// @throws DInvalidRequest (message 1011, recoverable) when `index` is past the end.
    KELCL_EXPORT char const& operator[](unsigned int index) const KELCL_LIFETIME_BOUND;
    /// Returns the byte at `index` for writing. A string that is not `const` uses this form for reading
    /// too.
    ///
    /// A shared text is copied first. When `index` is past the end, the string is lengthened with blanks up
    /// to there. The reference is valid until the string is next changed or copied.
    /// @throws DInvalidRequest (message 1011, recoverable) when `index` is negative.
    KELCL_EXPORT char& operator[](int index) KELCL_LIFETIME_BOUND;
    /// Returns the byte at `index` for writing, as the form for `int` does; no index throws message 1011.
    KELCL_EXPORT char& operator[](unsigned int index) KELCL_LIFETIME_BOUND;
    /// The same for an index of another type of integers, whatever its size.
    template <class I, class = kelcl::IfOtherInteger<I>>
    char const& operator[](I index) const KELCL_LIFETIME_BOUND {
        return kelcl::isNegative(index) ? (*this)[-1] : (*this)[kelcl::cutToLength(index)];
    }
    /// The same for writing.
    template <class I, class = kelcl::IfOtherInteger<I>>
    char& operator[](I index) KELCL_LIFETIME_BOUND {
        return kelcl::isNegative(index) ? (*this)[-1] : (*this)[kelcl::cutToLength(index)];
    }

    /// @}

    /// @name Substrings
    /// A new string; this one is left alone.
    /// @code
    /// DString const date("2024-02-29");
    /// std::cout << date.subString(6) << '\n';                 // 02-29
    /// std::cout << '<' << date.subString(11) << ">\n";        // <>
    /// std::cout << date.subString(1, 4) << '\n';              // 2024
    /// std::cout << '<' << date.subString(9, 4, '.') << ">\n"; // <29..>
    /// @endcode
    /// @{

    /// Returns the text from `start` to the end; empty when `start` is past the end.
    ///
    /// While #fgI18NState is 0, a `start` of 0 gives the whole text and one blank: callers rely on it.
    [[nodiscard]] DString subString(unsigned int start) const;
    /// Returns exactly `count` bytes from `start`, with pad characters where the text has run out.
    [[nodiscard]] DString subString(unsigned int start, unsigned int count, char padCharacter = ' ') const;

    /// @}

    /// @name Comparison
    /// With any text on either side. While #fgI18NState is 0, bytes decide, as unsigned numbers, and a text
    /// that begins another sorts before it. At 1 the locale's collation decides: texts that differ may then
    /// be equal.
    /// @code
    /// DString const name("Bert");
    /// std::cout << (name == "Bert") << (name != std::string("Bert ")) << '\n';   // 11
    /// std::cout << ("Adam" < name) << (name < "Berta") << '\n';                  // 11
    /// std::cout << (DString("a\0b", 3) > "a") << (DString() == nullptr) << '\n'; // 11
    /// @endcode
    /// @{

    /// Whether the texts are equal.
    /// @throws DInvalidRequest (recoverable; its id is the `errno` value) when the locale cannot collate
    /// the texts, as every comparison does.
    friend bool operator==(DString const& left, DString const& right) { return left.equals(right.bytes()); }
    /// Whether the string is equal to a text.
    template <class T, class = kelcl::IfOtherText<T>>
    friend bool operator==(DString const& left, T const& right) {
        return left.equals(kelcl::textOf(right));
    }
    /// Whether a text is equal to the string.
    template <class T, class = kelcl::IfOtherText<T>>
    friend bool operator==(T const& left, DString const& right) {
        return right.equals(kelcl::textOf(left));
    }

    /// Whether the texts differ.
    friend bool operator!=(DString const& left, DString const& right) { return !left.equals(right.bytes()); }
    /// Whether the string differs from a text.
    template <class T, class = kelcl::IfOtherText<T>>
    friend bool operator!=(DString const& left, T const& right) {
        return !left.equals(kelcl::textOf(right));
    }
    /// Whether a text differs from the string.
    template <class T, class = kelcl::IfOtherText<T>>
    friend bool operator!=(T const& left, DString const& right) {
        return !right.equals(kelcl::textOf(left));
    }

#if defined(__cpp_impl_three_way_comparison) && __has_include(<compare>)
    /// How the left string sorts to the right one. Strings that collate alike are equivalent.
    friend std::weak_ordering operator<=>(DString const& left, DString const& right) {
        return left.order(right.bytes()) <=> 0;
    }
    /// How the string sorts to a text.
    template <class T, class = kelcl::IfOtherText<T>>
    friend std::weak_ordering operator<=>(DString const& left, T const& right) {
        return left.order(kelcl::textOf(right)) <=> 0;
    }
#endif

    /// Whether the left string sorts before the right one.
    friend bool operator<(DString const& left, DString const& right) { return left.order(right.bytes()) < 0; }
    /// Whether the string sorts before a text.
    template <class T, class = kelcl::IfOtherText<T>>
    friend bool operator<(DString const& left, T const& right) {
        return left.order(kelcl::textOf(right)) < 0;
    }
    /// Whether a text sorts before the string.
    template <class T, class = kelcl::IfOtherText<T>>
    friend bool operator<(T const& left, DString const& right) {
        return right.order(kelcl::textOf(left)) > 0;
    }

    /// Whether the left string sorts before the right one or is equal to it.
    friend bool operator<=(DString const& left, DString const& right) {
        return left.order(right.bytes()) <= 0;
    }
    /// Whether the string sorts before a text or is equal to it.
    template <class T, class = kelcl::IfOtherText<T>>
    friend bool operator<=(DString const& left, T const& right) {
        return left.order(kelcl::textOf(right)) <= 0;
    }
    /// Whether a text sorts before the string or is equal to it.
    template <class T, class = kelcl::IfOtherText<T>>
    friend bool operator<=(T const& left, DString const& right) {
        return right.order(kelcl::textOf(left)) >= 0;
    }

    /// Whether the left string sorts after the right one.
    friend bool operator>(DString const& left, DString const& right) { return left.order(right.bytes()) > 0; }
    /// Whether the string sorts after a text.
    template <class T, class = kelcl::IfOtherText<T>>
    friend bool operator>(DString const& left, T const& right) {
        return left.order(kelcl::textOf(right)) > 0;
    }
    /// Whether a text sorts after the string.
    template <class T, class = kelcl::IfOtherText<T>>
    friend bool operator>(T const& left, DString const& right) {
        return right.order(kelcl::textOf(left)) < 0;
    }

    /// Whether the left string sorts after the right one or is equal to it.
    friend bool operator>=(DString const& left, DString const& right) {
        return left.order(right.bytes()) >= 0;
    }
    /// Whether the string sorts after a text or is equal to it.
    template <class T, class = kelcl::IfOtherText<T>>
    friend bool operator>=(DString const& left, T const& right) {
        return left.order(kelcl::textOf(right)) >= 0;
    }
    /// Whether a text sorts after the string or is equal to it.
    template <class T, class = kelcl::IfOtherText<T>>
    friend bool operator>=(T const& left, DString const& right) {
        return right.order(kelcl::textOf(left)) <= 0;
    }

    /// @}

    /// @name Classification
    /// Whether every character is of a class, as the C library's function named says for the locale of the
    /// moment. In multi-byte text it is asked in its form for wide characters.
    /// @code
    /// std::cout << DString("2024").isDigits() << DString("20-24").isDigits() << '\n';         // 10
    /// std::cout << DString("c0de").isHexDigits() << DString().isHexDigits() << '\n';          // 10
    /// std::cout << DString("ABC").isUpperCase() << DString("AB1").isUpperCase() << '\n';      // 10
    /// std::cout << DString("0110").isBinaryDigits() << DString("\t ").isWhiteSpace() << '\n'; // 11
    /// @endcode
    /// @{

    /// Whether the string is made of letters and digits (`isalnum`); false when empty.
    [[nodiscard]] bool isAlphanumeric() const { return buffer()->isAlphanumeric(); }
    /// Whether the string is made of letters (`isalpha`); false when empty.
    [[nodiscard]] bool isAlphabetic() const { return buffer()->isAlphabetic(); }
    /// Whether no byte is above 127; false when empty.
    [[nodiscard]] bool isASCII() const { return buffer()->isASCII(); }
    /// Whether the string is made of control characters (`iscntrl`); false when empty.
    [[nodiscard]] bool isControl() const { return buffer()->isControl(); }
    /// Whether the string is made of the digits 0 to 9, whatever the locale; false when empty.
    [[nodiscard]] bool isDigits() const { return buffer()->isDigits(); }
    /// Whether the string is made of visible characters (`isgraph`); false when empty.
    [[nodiscard]] bool isGraphics() const { return buffer()->isGraphics(); }
    /// Whether the string is made of digits and the letters a to f of either case, whatever the locale;
    /// false when empty.
    [[nodiscard]] bool isHexDigits() const { return buffer()->isHexDigits(); }
    /// Whether the string is made of lower-case letters (`islower`); false when empty.
    [[nodiscard]] bool isLowerCase() const { return buffer()->isLowerCase(); }
    /// Whether the string is made of visible characters and blanks (`isprint`); false when empty.
    [[nodiscard]] bool isPrintable() const { return buffer()->isPrintable(); }
    /// Whether the string is made of punctuation (`ispunct`); false when empty.
    [[nodiscard]] bool isPunctuation() const { return buffer()->isPunctuation(); }
    /// Whether the string is made of upper-case letters (`isupper`); false when empty.
    [[nodiscard]] bool isUpperCase() const { return buffer()->isUpperCase(); }
    /// Whether the string is made of white space (`isspace`); false when empty.
    [[nodiscard]] bool isWhiteSpace() const { return buffer()->isWhiteSpace(); }
    /// Whether every byte is '0' or '1'; false when empty.
    [[nodiscard]] bool isBinaryDigits() const;

    /// @}

    /// @name Kinds of characters
    /// How the text is made of characters of one and of more bytes. In a multi-byte locale the empty string
    /// is both MBCS and SBCS; in a single-byte one the answers are fixed and take no time.
    /// @code
    /// std::setlocale(LC_ALL, "en_US.UTF-8");
    /// DString const city("東京");
    /// std::cout << city.length() << ' ' << city.isMBCS() << city.includesSBCS() << '\n'; // 6 10
    /// std::cout << city.charType(1) << city.charType(3) << city.charType(4) << '\n';     // 131
    /// @endcode
    /// @{

    /// Whether all characters have at least two bytes and are at least two columns wide; false in
    /// single-byte text.
    [[nodiscard]] bool isMBCS() const { return buffer()->isMBCS(); }
    /// The same as `isMBCS`.
    [[nodiscard]] bool isDBCS() const { return buffer()->isDBCS(); }
    /// Whether no character has at least two bytes and two columns; true in single-byte text.
    [[nodiscard]] bool isSBCS() const { return buffer()->isSBCS(); }
    /// Whether all characters have at least two bytes, none of them NUL after the first; true in
    /// single-byte text.
    [[nodiscard]] bool isValidMBCS() const { return buffer()->isValidMBCS(); }
    /// The same as `isValidMBCS`.
    [[nodiscard]] bool isValidDBCS() const { return buffer()->isValidDBCS(); }
    /// Whether some character has at least two bytes and two columns: the opposite of `isSBCS`.
    [[nodiscard]] bool includesMBCS() const { return buffer()->includesMBCS(); }
    /// The same as `includesMBCS`.
    [[nodiscard]] bool includesDBCS() const { return buffer()->includesDBCS(); }
    /// Whether some character is not as `isMBCS` wants it: the opposite of `isDBCS`.
    [[nodiscard]] bool includesSBCS() const { return buffer()->includesSBCS(); }
    /// Returns 0 for a byte that is a whole character, else the place of the byte at `index` in its
    /// character.
    ///
    /// Always 0 in single-byte text and for an `index` of 0. An `index` past the end is not checked.
    [[nodiscard]] unsigned int charType(unsigned int index) const { return buffer()->charType(index); }

    /// @}

    /// @name Matching
    /// The whole string against an abbreviated word or a pattern.
    /// @code
    /// DString const file("report-2024.txt");
    /// std::cout << file.isLike("*.txt") << file.isLike("report-????.*") << '\n'; // 11
    /// std::cout << file.isLike("report") << file.isLike("%.txt", '%') << '\n';   // 01
    /// std::cout << DString("PRI").isAbbrevFor("PRINT", 2) << '\n';               // 1
    /// std::cout << DString("P").isAbbrevFor("PRINT", 2) << '\n';                 // 0
    /// @endcode
    /// @{

    /// Whether this string is a prefix of `full` and has at least `minLength` bytes; 0 allows any length.
    ///
    /// Compared as by `==`, so collated while #fgI18NState is 1.
    [[nodiscard]] bool isAbbrevFor(char const* full, unsigned int fullLength, unsigned int minLength) const;
    /// Whether this string is a prefix of `full` and has at least `minLength` bytes; 0 allows any length.
    template <class T, class = kelcl::IfText<T>>
    [[nodiscard]] bool isAbbrevFor(T const& full, unsigned int minLength = 0) const;
    /// Whether the whole string matches `pattern`, byte by byte.
    ///
    /// In the pattern `anyString` stands for any run of bytes, also an empty one, `anyChar` for one byte,
    /// and every other byte for itself. For a pattern of dates, `isLike("####-##-##", '*', '#')`: compilers
    /// may warn of `??-`, which was a trigraph before C++17.
    ///
    /// A string that is equal to the pattern by `==` matches too. An empty pattern matches the empty string
    /// only. Linear in both lengths without an `anyChar`; with them at most the text times the stretches of
    /// the pattern between wildcards.
    [[nodiscard]] bool isLike(char const* pattern, unsigned int patternLength, char anyString = '*',
                              char anyChar = '?') const;
    /// Whether the whole string matches `pattern`, in which `anyString` stands for any run of bytes and
    /// `anyChar` for one; see the counted form.
    template <class T, class = kelcl::IfText<T>>
    [[nodiscard]] bool isLike(T const& pattern, char anyString = '*', char anyChar = '?') const;

    /// @}

    /// @name Forward search
    /// The first position at or after `startPos` (0 counts as 1), or 0 when there is none. In a multi-byte
    /// locale matches begin where characters do, and sets consist of characters. An empty text is never
    /// found; every character is outside an empty set.
    /// @code
    /// DString const path("/usr/share/doc");
    /// std::cout << path.indexOf('/') << path.indexOf('/', 2) << path.indexOf("lib") << '\n'; // 150
    /// std::cout << path.indexOfAnyOf("xyzr") << ' ' << path.indexOfAnyBut("/usr") << '\n';   // 4 7
    /// DStringTest const isLetter(std::isalpha);
    /// std::cout << path.indexOf(isLetter) << ' ' << path.indexOfAnyBut(isLetter, 2) << '\n'; // 2 5
    /// std::cout << path.includes("share") << path.includes('x') << '\n';                     // 10
    /// @endcode
    /// @{

    /// Finds a byte; in a multi-byte locale only where a character begins.
    [[nodiscard]] unsigned int indexOf(char c, unsigned int startPos = 1) const;
    /// Finds a byte or character that `test` accepts; see `indexOfAnyOf`.
    [[nodiscard]] unsigned int indexOf(DStringTest const& test, unsigned int startPos = 1) const;
    /// The same for any function, such as a lambda that captures. It is given values as DStringTest::test is;
    /// one that takes a `char` is not asked about values that do not fit it, and does not want them.
    template <class F, kelcl::IfTest<F> = 0>
    [[nodiscard]] unsigned int indexOf(F const& test, unsigned int startPos = 1) const {
        return indexOf(kelcl::TestBy<F>(test), startPos);
    }
    /// Finds a text.
    template <class T, class = kelcl::IfText<T>>
    [[nodiscard]] unsigned int indexOf(T const& text, unsigned int startPos = 1) const;

    /// Finds a byte, as `indexOf` does.
    [[nodiscard]] unsigned int indexOfAnyOf(char c, unsigned int startPos = 1) const;
    /// Finds a byte that `test` accepts; in a multi-byte locale with #fgI18NState at 1 a wide character.
    ///
    /// Bytes reach the test as `char` values, so from 128 on as negative numbers where `char` is signed.
    [[nodiscard]] unsigned int indexOfAnyOf(DStringTest const& test, unsigned int startPos = 1) const;
    /// The same for any function, such as a lambda that captures.
    template <class F, kelcl::IfTest<F> = 0>
    [[nodiscard]] unsigned int indexOfAnyOf(F const& test, unsigned int startPos = 1) const {
        return indexOfAnyOf(kelcl::TestBy<F>(test), startPos);
    }
    /// Finds a character of the set `text`.
    template <class T, class = kelcl::IfText<T>>
    [[nodiscard]] unsigned int indexOfAnyOf(T const& text, unsigned int startPos = 1) const;

    /// Finds a byte other than `c`.
    ///
    /// In a multi-byte locale a `c` that can only begin a longer character equals no character, so the
    /// start itself is found.
    [[nodiscard]] unsigned int indexOfAnyBut(char c, unsigned int startPos = 1) const {
        return buffer()->indexOfAnyBut(&c, 1, startPos);
    }
    /// Finds a character that `test` rejects. With #fgI18NState at 0 its first byte is asked.
    [[nodiscard]] unsigned int indexOfAnyBut(DStringTest const& test, unsigned int startPos = 1) const;
    /// The same for any function, such as a lambda that captures.
    template <class F, kelcl::IfTest<F> = 0>
    [[nodiscard]] unsigned int indexOfAnyBut(F const& test, unsigned int startPos = 1) const {
        return indexOfAnyBut(kelcl::TestBy<F>(test), startPos);
    }
    /// Finds a character outside the set `text`; with an empty set this is the start itself.
    template <class T, class = kelcl::IfText<T>>
    [[nodiscard]] unsigned int indexOfAnyBut(T const& text, unsigned int startPos = 1) const;

    /// Whether the byte occurs.
    [[nodiscard]] bool includes(char c) const { return indexOf(c) != 0; }
    /// Whether `test` accepts any byte or character.
    [[nodiscard]] bool includes(DStringTest const& test) const { return indexOf(test) != 0; }
    /// Whether any function, such as a lambda that captures, accepts any byte or character.
    template <class F, kelcl::IfTest<F> = 0>
    [[nodiscard]] bool includes(F const& test) const {
        return indexOf(kelcl::TestBy<F>(test)) != 0;
    }
    /// Whether the text occurs; an empty text does not.
    template <class T, class = kelcl::IfText<T>>
    [[nodiscard]] bool includes(T const& text) const {
        return indexOf(text) != 0;
    }

    /// @}

    /// @name Backward search
    /// The last position at or before `startPos` where a match begins, or 0 when there is none. Unlike the
    /// forward searches these find nothing from a `startPos` of 0; one past the end counts as the end.
    /// @code
    /// DString const path("/usr/share/doc  ");
    /// std::cout << path.lastIndexOf('/') << ' ' << path.lastIndexOf('/', 10) << '\n';         // 11 5
    /// std::cout << path.lastIndexOf("usr") << ' ' << path.lastIndexOf('/', 0) << '\n';        // 2 0
    /// std::cout << path.lastIndexOfAnyOf("rs") << ' ' << path.lastIndexOfAnyBut(' ') << '\n'; // 9 14
    /// @endcode
    /// @{

    /// Finds a byte; in a multi-byte locale only where a character begins.
    [[nodiscard]] unsigned int lastIndexOf(char c, unsigned int startPos = 0xFFFFFFFF) const;
    /// Finds a byte or character that `test` accepts; see `lastIndexOfAnyOf`.
    [[nodiscard]] unsigned int lastIndexOf(DStringTest const& test, unsigned int startPos = 0xFFFFFFFF) const;
    /// The same for any function, such as a lambda that captures.
    template <class F, kelcl::IfTest<F> = 0>
    [[nodiscard]] unsigned int lastIndexOf(F const& test, unsigned int startPos = 0xFFFFFFFF) const {
        return lastIndexOf(kelcl::TestBy<F>(test), startPos);
    }
    /// Finds a text.
    template <class T, class = kelcl::IfText<T>>
    [[nodiscard]] unsigned int lastIndexOf(T const& text, unsigned int startPos = 0xFFFFFFFF) const;

    /// Finds a byte, as `lastIndexOf` does.
    [[nodiscard]] unsigned int lastIndexOfAnyOf(char c, unsigned int startPos = 0xFFFFFFFF) const;
    /// Finds a character that `test` accepts. With #fgI18NState at 0 its first byte is asked.
    [[nodiscard]] unsigned int lastIndexOfAnyOf(DStringTest const& test,
                                                unsigned int startPos = 0xFFFFFFFF) const;
    /// The same for any function, such as a lambda that captures.
    template <class F, kelcl::IfTest<F> = 0>
    [[nodiscard]] unsigned int lastIndexOfAnyOf(F const& test, unsigned int startPos = 0xFFFFFFFF) const {
        return lastIndexOfAnyOf(kelcl::TestBy<F>(test), startPos);
    }
    /// Finds a character of the set `text`.
    template <class T, class = kelcl::IfText<T>>
    [[nodiscard]] unsigned int lastIndexOfAnyOf(T const& text, unsigned int startPos = 0xFFFFFFFF) const;

    /// Finds a byte other than `c`.
    ///
    /// In a multi-byte locale a `c` that can only begin a longer character finds nothing, unlike with
    /// `indexOfAnyBut`.
    [[nodiscard]] unsigned int lastIndexOfAnyBut(char c, unsigned int startPos = 0xFFFFFFFF) const {
        return buffer()->lastIndexOfAnyBut(&c, 1, startPos);
    }
    /// Finds a character that `test` rejects. With #fgI18NState at 0 its first byte is asked.
    [[nodiscard]] unsigned int lastIndexOfAnyBut(DStringTest const& test,
                                                 unsigned int startPos = 0xFFFFFFFF) const;
    /// The same for any function, such as a lambda that captures.
    template <class F, kelcl::IfTest<F> = 0>
    [[nodiscard]] unsigned int lastIndexOfAnyBut(F const& test, unsigned int startPos = 0xFFFFFFFF) const {
        return lastIndexOfAnyBut(kelcl::TestBy<F>(test), startPos);
    }
    /// Finds a character outside the set `text`; with an empty set this is the start itself.
    template <class T, class = kelcl::IfText<T>>
    [[nodiscard]] unsigned int lastIndexOfAnyBut(T const& text, unsigned int startPos = 0xFFFFFFFF) const;

    /// @}

    /// @name Counting
    /// How many matches that do not overlap there are from `startPos` (0 counts as 1) on, found as
    /// `indexOf` finds them.
    /// @code
    /// DString const text("aaaa-bb");
    /// std::cout << text.occurrencesOf('a') << text.occurrencesOf("") << '\n';       // 40
    /// std::cout << text.occurrencesOf("aa") << text.occurrencesOf("aa", 2) << '\n'; // 21
    /// std::cout << text.occurrencesOf(DStringTest(std::isalpha)) << '\n';           // 6
    /// @endcode
    /// @{

    /// Counts a byte.
    [[nodiscard]] unsigned int occurrencesOf(char c, unsigned int startPos = 1) const;
    /// Counts the bytes or characters that `test` accepts.
    [[nodiscard]] unsigned int occurrencesOf(DStringTest const& test, unsigned int startPos = 1) const;
    /// Counts what any function accepts, such as a lambda that captures.
    template <class F, kelcl::IfTest<F> = 0>
    [[nodiscard]] unsigned int occurrencesOf(F const& test, unsigned int startPos = 1) const {
        return occurrencesOf(kelcl::TestBy<F>(test), startPos);
    }
    /// Counts a text of `patternLength` bytes; an empty one never occurs.
    [[nodiscard]] unsigned int occurrencesOf(char const* pattern, unsigned int patternLength,
                                             unsigned int startPos) const;
    /// Counts a text; an empty one never occurs.
    template <class T, class = kelcl::IfText<T>>
    [[nodiscard]] unsigned int occurrencesOf(T const& pattern, unsigned int startPos = 1) const;

    /// @}

    /// @name Letter case and order
    /// The static form returns a new string and leaves its argument alone.
    /// @code
    /// DString const name("Ada");
    /// std::cout << DString::upperCase(name) << ' ' << name << '\n'; // ADA Ada
    /// std::cout << DString(name).lowerCase().reverse() << '\n';     // ada
    /// @endcode
    /// @{

    /// Converts the letters a to z to upper case; in a multi-byte locale with #fgI18NState at 1 all
    /// letters.
    DString& upperCase();
    /// Converts the letters A to Z to lower case; in a multi-byte locale with #fgI18NState at 1 all
    /// letters.
    DString& lowerCase();
    /// Reverses the order of the characters.
    DString& reverse();
    /// Returns `source` in upper case.
    [[nodiscard]] static DString upperCase(DString const& source);

    /// @}

    /// @name Translation
    /// One character for another, all over the string.
    /// @code
    /// std::cout << DString("2-3-5").translate("0123456789-", "abcdefghij", '.') << '\n'; // c.d.f
    /// @endcode
    /// @{

    /// Replaces each character of `inputChars` with the one at the same place in `outputChars`, or with
    /// `padCharacter` where that is shorter. If a character stands in `inputChars` twice, its first place
    /// counts.
    DString& translate(char const* inputChars, unsigned int inputLength, char const* outputChars,
                       unsigned int outputLength, char padCharacter = ' ');
    /// Replaces each character of one text with that of another, as the counted form does.
    template <class T, class U, class = kelcl::IfText<T>, class = kelcl::IfText<U>>
    DString& translate(T const& inputChars, U const& outputChars, char padCharacter = ' ');

    /// @}

    /// @name Stripping
    /// Removes characters from the ends, at most all of them.
    /// @code
    /// std::cout << '<' << DString("  one two\n").strip() << ">\n";             // <one two>
    /// std::cout << DString("007").strip('0', DStringEnum::leading) << '\n';    // 7
    /// std::cout << DString("(a), (b)").strip("(), ") << '\n';                  // a), (b
    /// std::cout << DString("v12rc3").strip(DStringTest(std::isalpha)) << '\n'; // 12rc3
    /// @endcode
    /// @{

    /// Removes the locale's white space (`isspace`) from both ends.
    DString& strip();
    /// Removes the characters of the set `chars` from the ends that `mode` names.
    DString& strip(char const* chars, unsigned int charsLength, DStringEnum::StripMode mode);
    /// Removes the characters that `test` accepts from the ends that `mode` names.
    DString& strip(DStringTest const& test, DStringEnum::StripMode mode = DStringEnum::both);
    /// Removes what any function accepts, such as a lambda that captures.
    template <class F, kelcl::IfTest<F> = 0>
    DString& strip(F const& test, DStringEnum::StripMode mode = DStringEnum::both) {
        return strip(kelcl::TestBy<F>(test), mode);
    }
    /// Removes the byte from the ends that `mode` names.
    DString& strip(char c, DStringEnum::StripMode mode = DStringEnum::both) { return strip(&c, 1, mode); }
    /// Removes the characters of the set `chars` from the ends that `mode` names.
    template <class T, class = kelcl::IfText<T>>
    DString& strip(T const& chars, DStringEnum::StripMode mode = DStringEnum::both);

    /// @}

    /// @name Insertion and overlay
    /// By design `insert` puts the text *after* the byte of the given number, `overlayWith` begins *at* it.
    /// @code
    /// std::cout << DString("abc").insert("XY") << '\n';              // XYabc
    /// std::cout << DString("abc").insert("XY", 2) << '\n';           // abXYc
    /// std::cout << DString("abc").insert("XY", 5, '.') << '\n';      // abc..XY
    /// std::cout << DString("abcdef").overlayWith("XY", 2) << '\n';   // aXYdef
    /// std::cout << DString("abc").overlayWith("XY", 6, '.') << '\n'; // abc..XY
    /// @endcode
    /// @{

    /// Writes `text` over the bytes from `index` (0 counts as 1) on.
    ///
    /// The string grows as needed, with pad characters between when `index` is past the end. What is left
    /// of a character that is cut in front becomes blanks, of one that is cut at the end pad characters;
    /// with #fgI18NState at 1 both become pad characters.
    DString& overlayWith(char const* text, unsigned int textLength, unsigned int index,
                         char padCharacter = ' ');
    /// Writes `text` over the bytes from `index` (0 counts as 1) on, as the counted form does.
    template <class T, class = kelcl::IfText<T>>
    DString& overlayWith(T const& text, unsigned int index = 1, char padCharacter = ' ');

    /// Inserts `text` after byte `index`; 0 inserts in front.
    ///
    /// When `index` is past the end, pad characters come between. Inside a character the text goes in front
    /// of it, with #fgI18NState at 1 after it.
    DString& insert(char const* text, unsigned int textLength, unsigned int index, char padCharacter = ' ');
    /// Inserts `text` after byte `index`, as the counted form does; 0 inserts in front.
    template <class T, class = kelcl::IfText<T>>
    DString& insert(T const& text, unsigned int index = 0, char padCharacter = ' ');

    /// @}

    /// @name Justification
    /// Fields of `width` bytes, in which the text is cut or padded to fit. What is left of a cut character
    /// becomes pad characters. For columns of a terminal see kelcl::leftJustifiedInColumns().
    /// @code
    /// std::cout << '<' << DString("ab").leftJustify(4) << ">\n"; // <ab  >
    /// std::cout << DString("7").rightJustify(3, '0') << '\n';    // 007
    /// std::cout << DString("2024").rightJustify(2) << '\n';      // 24
    /// std::cout << DString("mid").center(8, '.') << '\n';        // ..mid...
    /// std::cout << DString::center(DString("abcde"), 2) << '\n'; // bc
    /// @endcode
    /// @{

    /// Puts the text on the left of the field; what does not fit is cut on the right.
    DString& leftJustify(unsigned int width, char padCharacter = ' ');
    /// Puts the text on the right of the field; what does not fit is cut on the left.
    DString& rightJustify(unsigned int width, char padCharacter = ' ');
    /// Puts the text in the middle of the field; an odd byte is padded or cut on the right.
    DString& center(unsigned int width, char padCharacter = ' ');
    /// Returns `source` in the middle of the field.
    [[nodiscard]] static DString center(DString const& source, unsigned int width, char padCharacter = ' ');

    /// @}

    /// @name Repetition, replacement and removal
    /// The static forms return a new string and leave `source` alone.
    /// @code
    /// std::cout << DString("ab").copy(3) << '\n';                           // ababab
    /// std::cout << DString("aaaa").change("aa", "b") << '\n';               // bb
    /// std::cout << DString("one two two").change("two", "2", 1, 1) << '\n'; // one 2 two
    /// std::cout << DString("abcdef").remove(2, 3) << '\n';                  // aef
    /// DString const path("/usr/share");
    /// std::cout << DString::remove(path, 1, 5) << ' ' << path << '\n';      // share /usr/share
    /// @endcode
    /// @{

    /// Repeats the text until it is there `numCopies` times; 0 empties the string.
    /// @throws DInvalidRequest (message 1010, recoverable) when the result would be too long.
    DString& copy(unsigned int numCopies);

    /// Replaces `pattern` with `replacement`, up to `numChanges` times from `startPos` (0 counts as 1) on.
    ///
    /// Occurrences do not overlap, and what was replaced is not searched again. An empty pattern is never
    /// found.
    /// @throws DInvalidRequest (message 1010, recoverable) when the result would be too long.
    DString& change(char const* pattern, unsigned int patternLength, char const* replacement,
                    unsigned int replacementLength, unsigned int startPos = 1,
                    unsigned int numChanges = 0xFFFFFFFF);
    /// Replaces `pattern` with `replacement`, as the counted form does.
    template <class T, class U, class = kelcl::IfText<T>, class = kelcl::IfText<U>>
    DString& change(T const& pattern, U const& replacement, unsigned int startPos = 1,
                    unsigned int numChanges = 0xFFFFFFFF);
    /// Returns `source` with `pattern` replaced. Both texts end at their NUL; null counts as empty.
    [[nodiscard]] static DString change(DString const& source, char const* pattern, char const* replacement,
                                        unsigned int startPos, unsigned int numChanges);
    /// Returns `source` with `pattern` replaced.
    [[nodiscard]] static DString change(DString const& source, DString const& pattern,
                                        DString const& replacement, unsigned int startPos,
                                        unsigned int numChanges);

    /// Removes up to `count` bytes from `start` (0 counts as 1) on.
    ///
    /// A `start` past the end removes nothing. What is left of a cut character becomes blanks.
    DString& remove(unsigned int start, unsigned int count);
    /// Removes all bytes from `start` (0 counts as 1) on.
    DString& remove(unsigned int start);
    /// Returns `source` without up to `count` bytes from `start` (0 counts as 1) on.
    [[nodiscard]] static DString remove(DString const& source, unsigned int start, unsigned int count);

    /// @}

    /// @name Sharing
    /// Operations take care of shared texts by themselves; only code that writes through a pointer needs
    /// this.
    /// @code
    /// DString first("text");
    /// DString second = first;
    /// std::cout << (first.c_str() == second.c_str()) << '\n'; // 1
    /// second.prepareToChange();
    /// std::cout << (first.c_str() == second.c_str()) << '\n'; // 0
    /// @endcode
    /// @{

    /// Makes this string the only owner of its text, by a copy if it is shared. Empty strings stay shared.
    DString& prepareToChange();

    /// @}

    /// @name Concatenation
    /// With any text and with one `char`, NULs included. A null or empty text adds nothing.
    /// @code
    /// DString text("abc");
    /// text += "def";
    /// text += '!';
    /// std::cout << text << ' ' << text.length() << '\n';            // abcdef! 7
    /// std::cout << '<' + text.remove(4) + std::string(">") << '\n'; // <abc>
    /// @endcode
    /// @{

    /// Appends the text of a string, which may be this one.
    ///
    /// The only owner of a text appends in place where the block has room, so that building a text piece by
    /// piece costs the bytes appended.
    DString& operator+=(DString const& text);
    /// Appends a text or one byte.
    template <class T, class = kelcl::IfOtherPiece<T>>
    DString& operator+=(T const& piece);
    /// Returns a new string of both texts.
    friend DString operator+(DString const& left, DString const& right) {
        return joined(left.bytes(), right.bytes());
    }
    /// Returns a string of both texts, which takes over the text of `left` where it has room.
    friend DString operator+(DString&& left, DString const& right) {
        return std::move(left).followedBy(right.bytes());
    }
    /// Returns a new string of the string's text, then a text or one byte.
    template <class T, class = kelcl::IfOtherPiece<T>>
    friend DString operator+(DString const& left, T const& right) {
        return joined(left.bytes(), kelcl::textOf(right));
    }
    /// Returns a string of both texts, which takes over the text of `left` where it has room.
    template <class T, class = kelcl::IfOtherPiece<T>>
    friend DString operator+(DString&& left, T const& right) {
        return std::move(left).followedBy(kelcl::textOf(right));
    }
    /// Returns a new string of a text or one byte, then the string's text.
    template <class T, class = kelcl::IfOtherPiece<T>>
    friend DString operator+(T const& left, DString const& right) {
        return joined(kelcl::textOf(left), right.bytes());
    }

    /// @}

    /// @name Words
    /// A word is a run without any of six separators: `\t`, `\n`, `\v`, `\f`, `\r` and the blank, whatever
    /// the locale. Words are numbered from 1. Each call searches the text anew; kelcl::words() goes through
    /// all of them once.
    /// @code
    /// DString text("  the quick  brown fox ");
    /// std::cout << text.numWords() << ' ' << text.word(2) << '\n';              // 4 quick
    /// std::cout << text.words(2, 2) << '\n';                                    // quick  brown
    /// std::cout << text.indexOfWord(3) << ' ' << text.lengthOfWord(3) << '\n';  // 14 5
    /// std::cout << text.findPhrase("brown fox") << '\n';                        // 3
    /// std::cout << text.findPhrase("brown fox", 1, DString::charIndex) << '\n'; // 14
    /// std::cout << text.removeWords(2).space(1, '_') << '\n';                   // the_brown_fox
    /// @endcode
    /// @{

    /// Returns the number of words.
    [[nodiscard]] unsigned int numWords() const;
    /// Returns word `n` (0 counts as 1); empty when there is none.
    [[nodiscard]] DString word(unsigned int n) const;
    /// Returns `count` words from word `first` (0 counts as 1) on, with the separators between them.
    ///
    /// When there are fewer words, as many as there are; empty when word `first` does not exist.
    [[nodiscard]] DString words(unsigned int first, unsigned int count = 1) const;
    /// Returns the position of word `n`, counting from byte `startPos` with `counted` words seen already.
    ///
    /// 0 when there is no such word, and for a `startPos` of 0. With no word counted there is no word 0. A
    /// `startPos` inside a word counts the rest of it as a word.
    [[nodiscard]] unsigned int indexOfWord(unsigned int n, unsigned int startPos = 1,
                                           unsigned int counted = 0) const;
    /// Returns the number of bytes of word `n`; 0 when there is none. Here 0 does not count as 1.
    [[nodiscard]] unsigned int lengthOfWord(unsigned int n) const;
    /// Finds the words of `phrase` in a row, at or after word `startWord`; 0 when they are not there.
    ///
    /// Returns the number of the first word, or its position when `type` is `charIndex`. Words are compared
    /// byte by byte, whatever separates them. A phrase without words is found at `startWord` itself, if
    /// that is not 0 and at most one more than there are words; the position of a word that does not exist
    /// is 0.
    [[nodiscard]] unsigned int findPhrase(DString const& phrase, unsigned int startWord = 1,
                                          IndexType type = wordIndex) const;
    /// Removes `count` words from word `first` on, each with the separators after it. A `first` of 0
    /// removes nothing.
    DString& removeWords(unsigned int first, unsigned int count = 1);
    /// Joins the words with `n` copies of `c` between them and none at the ends. A text of separators only
    /// becomes empty.
    /// @throws DInvalidRequest (message 1010, recoverable) when the result would be too long.
    DString& space(unsigned int n = 1, char c = ' ');

    /// @}

    /// @name Radix conversion
    /// Between bytes, read as one unsigned big-endian number of any size, and digits. Where a conversion
    /// expects digits, any other text makes the string empty; nothing is thrown for it.
    /// @code
    /// std::cout << DString("KEL").c2x() << ' ' << DString("4B454C").x2c() << '\n';    // 4B454C KEL
    /// std::cout << DString("A").c2b() << ' ' << DString("1000001").b2c() << '\n';     // 01000001 A
    /// std::cout << DString("\1\0", 2).c2d() << ' ' << DString("16706").d2c() << '\n'; // 256 AB
    /// std::cout << DString("-1").d2c().isEmpty() << '\n';                             // 1
    /// std::cout << DString("12").decimalMath(3) << '\n';                              // 03075
    /// std::cout << DString("\1").binaryMath(5).c2x() << '\n';                         // 000F
    /// @endcode
    /// @{

    /// Converts bytes to hexadecimal digits, two per byte, in upper case.
    DString& c2x();
    /// Converts hexadecimal digits of either case to bytes; an odd number of them gets a leading 0.
    DString& x2c();
    /// Converts bytes to binary digits, eight per byte.
    /// @throws DInvalidRequest (message 1010, recoverable) for more than 536870910 bytes.
    DString& c2b();
    /// Converts binary digits to bytes; when their number is not a multiple of 8, the first byte is made of
    /// fewer.
    DString& b2c();
    /// Converts bytes to decimal digits without leading zeros.
    ///
    /// More than four bytes that are all zero give 3 * length - 11 zeros: callers rely on it.
    /// @throws DInvalidRequest (message 1010, recoverable) from about 1.43 billion bytes on.
    DString& c2d();
    /// Converts decimal digits to bytes without leading zero bytes; the number 0 gives one byte.
    DString& d2c();
    /// Multiplies the decimal number by 256 and adds `byte`.
    ///
    /// The text grows by three digits, fewer if it has leading zeros, and may begin with zeros.
    DString& decimalMath(unsigned char byte);
    /// Multiplies the number in the bytes by 10 and adds `digit`. A zero byte may come in front.
    DString& binaryMath(unsigned char digit);

    /// @}

    /// @name Bitwise operators
    /// Byte by byte, with any text or one `char` as the operand. By design the length is that of the left
    /// side: a shorter operand is repeated, a longer one is cut, and an empty one changes nothing.
    /// @code
    /// DString const key("\x20");
    /// std::cout << (DString("Name") ^ key) << ' ' << (DString("Name") | key) << '\n'; // nAME name
    /// std::cout << (DString("name") & "\xDF\xFF") << '\n';                            // NaMe
    /// std::cout << (~DString("\xBE\xBD")) << '\n';                                    // AB
    /// @endcode
    /// @{

    /// Clears the bits that the operand does not have.
    DString& operator&=(DString const& operand) {
        return applyBitOp(operand.text_, operand.length(), bitAnd);
    }
    /// Clears the bits that the operand does not have.
    template <class T, class = kelcl::IfOtherPiece<T>>
    DString& operator&=(T const& operand);
    /// Sets the bits that the operand has.
    DString& operator|=(DString const& operand) { return applyBitOp(operand.text_, operand.length(), bitOr); }
    /// Sets the bits that the operand has.
    template <class T, class = kelcl::IfOtherPiece<T>>
    DString& operator|=(T const& operand);
    /// Inverts the bits that the operand has.
    DString& operator^=(DString const& operand) {
        return applyBitOp(operand.text_, operand.length(), bitExclusiveOr);
    }
    /// Inverts the bits that the operand has.
    template <class T, class = kelcl::IfOtherPiece<T>>
    DString& operator^=(T const& operand);

    /// Returns the bits that both have, in the length of `left`.
    friend DString operator&(DString left, DString const& right) { return left &= right; }
    /// Returns the bits that both have, in the length of the string.
    template <class T, class = kelcl::IfOtherPiece<T>>
    friend DString operator&(DString left, T const& right) {
        return left &= right;
    }
    /// Returns the bits that both have, in the length of the text on the left.
    template <class T, class = kelcl::IfOtherPiece<T>>
    friend DString operator&(T const& left, DString const& right) {
        return DString(left) &= right;
    }
    /// Returns the bits that one or both have, in the length of `left`.
    friend DString operator|(DString left, DString const& right) { return left |= right; }
    /// Returns the bits that one or both have, in the length of the string.
    template <class T, class = kelcl::IfOtherPiece<T>>
    friend DString operator|(DString left, T const& right) {
        return left |= right;
    }
    /// Returns the bits that one or both have, in the length of the text on the left.
    template <class T, class = kelcl::IfOtherPiece<T>>
    friend DString operator|(T const& left, DString const& right) {
        return DString(left) |= right;
    }
    /// Returns the bits that exactly one has, in the length of `left`.
    friend DString operator^(DString left, DString const& right) { return left ^= right; }
    /// Returns the bits that exactly one has, in the length of the string.
    template <class T, class = kelcl::IfOtherPiece<T>>
    friend DString operator^(DString left, T const& right) {
        return left ^= right;
    }
    /// Returns the bits that exactly one has, in the length of the text on the left.
    template <class T, class = kelcl::IfOtherPiece<T>>
    friend DString operator^(T const& left, DString const& right) {
        return DString(left) ^= right;
    }
    /// Returns the string with every bit inverted.
    DString operator~() const;

    /// @}

    /// @name Streams
    /// Reading never throws of its own accord: the stream's state tells what happened.
    /// @code
    /// std::istringstream in("first line\nsecond line");
    /// std::cout << DString::lineFrom(in) << '\n';                             // first line
    /// DString word;
    /// in >> word;
    /// std::cout << word << '\n';                                              // second
    /// std::cout << '<' << DString::lineFrom(in) << "> " << in.fail() << '\n'; // < line> 1
    /// @endcode
    /// @{

    /// Reads up to `delimiter`, which is consumed and not stored, or to the end of the input.
    ///
    /// The stream is left in the state in which `get` leaves it: a last line without a delimiter sets
    /// eofbit and failbit, although it is returned.
    static DString lineFrom(std::istream& in, char delimiter = '\n');
    /// Writes the text up to its first NUL, as a `char const*` is written, the stream's field width
    /// included.
    friend KELCL_EXPORT std::ostream& operator<<(std::ostream& out, DString const& text);
    /// Reads a word as the stream's locale separates words; with a field width w at most w - 1 bytes.
    ///
    /// The separator stays in the stream. When there is no word left, `text` becomes empty. What `text`
    /// held is the space to work in, which the buffer's `remove` cuts after the word: the text keeps the
    /// buffer's class.
    friend KELCL_EXPORT std::istream& operator>>(std::istream& in, DString& text);

    /// @}

    // A call that gives a `char` where a number is meant does not compile: `remove('-')` would remove from
    // byte 45 on, not the dashes.
    /// @cond
    template <class... A, class = kelcl::IfCharIsAmong<1, A...>>
    DString(void const*, A...) = delete;
    DString(wchar_t) = delete;
    DString(char16_t) = delete;
    DString(char32_t) = delete;
    template <class... A, class = kelcl::IfCharIsAmong<2, A...>>
    DString subString(A...) const = delete;
    template <class... A, class = kelcl::IfCharIsAmong<1, A...>>
    unsigned int charType(A...) const = delete;
    template <class T, class... A, class = kelcl::IfCharIsAmong<1, A...>>
    bool isAbbrevFor(T const&, A...) const = delete;
    template <class T, class... A, class = kelcl::IfCharIsAmong<1, A...>>
    unsigned int indexOf(T const&, A...) const = delete;
    template <class T, class... A, class = kelcl::IfCharIsAmong<1, A...>>
    unsigned int indexOfAnyOf(T const&, A...) const = delete;
    template <class T, class... A, class = kelcl::IfCharIsAmong<1, A...>>
    unsigned int indexOfAnyBut(T const&, A...) const = delete;
    template <class T, class... A, class = kelcl::IfCharIsAmong<1, A...>>
    unsigned int lastIndexOf(T const&, A...) const = delete;
    template <class T, class... A, class = kelcl::IfCharIsAmong<1, A...>>
    unsigned int lastIndexOfAnyOf(T const&, A...) const = delete;
    template <class T, class... A, class = kelcl::IfCharIsAmong<1, A...>>
    unsigned int lastIndexOfAnyBut(T const&, A...) const = delete;
    template <class T, class... A, class = kelcl::IfCharIsAmong<1, A...>>
    unsigned int occurrencesOf(T const&, A...) const = delete;
    template <class T, class... A, class = kelcl::IfCharIsAmong<1, A...>>
    DString& overlayWith(T const&, A...) = delete;
    template <class T, class... A, class = kelcl::IfCharIsAmong<1, A...>>
    DString& insert(T const&, A...) = delete;
    template <class T, class U, class... A, class = kelcl::IfCharIsAmong<2, A...>>
    DString& change(T const&, U const&, A...) = delete;
    template <class... A, class = kelcl::IfCharIsAmong<1, A...>>
    DString& leftJustify(A...) = delete;
    template <class... A, class = kelcl::IfCharIsAmong<1, A...>>
    DString& rightJustify(A...) = delete;
    template <class... A, class = kelcl::IfCharIsAmong<1, A...>>
    DString& center(A...) = delete;
    template <class T, class... A, class = kelcl::IfText<T>, class = kelcl::IfCharIsAmong<1, A...>>
    static DString center(T const&, A...) = delete;
    template <class... A, class = kelcl::IfCharIsAmong<1, A...>>
    DString& copy(A...) = delete;
    template <class... A, class = kelcl::IfCharIsAmong<2, A...>>
    DString& remove(A...) = delete;
    template <class T, class... A, class = kelcl::IfText<T>, class = kelcl::IfCharIsAmong<2, A...>>
    static DString remove(T const&, A...) = delete;
    template <class... A, class = kelcl::IfCharIsAmong<1, A...>>
    DString word(A...) const = delete;
    template <class... A, class = kelcl::IfCharIsAmong<2, A...>>
    DString words(A...) const = delete;
    template <class... A, class = kelcl::IfCharIsAmong<3, A...>>
    unsigned int indexOfWord(A...) const = delete;
    template <class... A, class = kelcl::IfCharIsAmong<1, A...>>
    unsigned int lengthOfWord(A...) const = delete;
    template <class T, class... A, class = kelcl::IfCharIsAmong<1, A...>>
    unsigned int findPhrase(T const&, A...) const = delete;
    template <class... A, class = kelcl::IfCharIsAmong<2, A...>>
    DString& removeWords(A...) = delete;
    template <class... A, class = kelcl::IfCharIsAmong<1, A...>>
    DString& space(A...) = delete;
    /// @endcond

protected:
    /// @name For derived classes
    /// The forms of `initBuffer` replace the text without releasing the old one, whose reference the caller
    /// has taken over or given up. The new text has the class of the old one's buffer.
    /// @code
    /// class UpperCaseLetters : public DString {
    /// public:
    ///     explicit UpperCaseLetters(char const* text) : DString(text) { applyBitOp("\xDF", 1, bitAnd); }
    /// };
    /// std::cout << UpperCaseLetters("name") << '\n'; // NAME
    /// @endcode
    /// @{

    /// Makes the text the number in decimal.
    DString& initBuffer(long number);
    /// Makes the text the number in decimal.
    DString& initBuffer(unsigned long number);
    /// Makes the text the number with up to 15 significant digits.
    DString& initBuffer(double number);
    /// Joins three pieces; a null pointer stands for as many pad characters as its length says.
    DString& initBuffer(void const* p1, unsigned int l1, void const* p2, unsigned int l2, void const* p3,
                        unsigned int l3, char padCharacter = ' ');

    /// Combines the bytes with the operand's, repeated as often as needed.
    ///
    /// An empty operand changes nothing, nor does any other `op` than the three.
    DString& applyBitOp(char const* operand, unsigned int operandLength, BitOperator op);

    /// @}

private:
    char* text_;

    explicit DString(kelcl::Text text);

    DBuffer* buffer() const noexcept { return DBuffer::fromContents(text_); }
    kelcl::Text bytes() const noexcept { return {text_, length()}; }

    static char* sharedEmpty();
    static char* makeSharedEmpty();
    void becomeEmpty() noexcept;

    // Indexes 0 and 1 both mean the first byte.
    static unsigned int offsetOf(unsigned int index) noexcept { return index == 0 ? 0 : index - 1; }
    [[noreturn, gnu::cold]] static void raiseOutside(int index);
    [[noreturn, gnu::cold]] static void raiseOutside(unsigned int index);
    // What writing to single bytes leaves over: index 0, indexes outside of the text, shared texts.
    [[gnu::cold]] char& rareElement(int index);
    [[gnu::cold]] char& rareElement(unsigned int index);

    // Whether bytes alone decide comparisons, and no host's class is asked.
    bool comparesBytes() const noexcept;
    bool equals(kelcl::Text text) const;
    // Negative, 0 or positive as this text sorts before, with or after the other one.
    int order(kelcl::Text text) const;

    // Lengthens the text by so many bytes, which the caller writes, and returns their place; null where it
    // cannot grow where it stands.
    char* lengthenInPlace(unsigned int count) noexcept;
    // Whether the text could be appended so.
    bool appendInPlace(kelcl::Text text) noexcept;
    DString& append(char const* data, unsigned int count);
    // The same, without a call where the text has room.
    DString& append(kelcl::Text text) { return appendInPlace(text) ? *this : append(text.data, text.length); }
    static DString joined(char const* left, unsigned int leftLength, char const* right,
                          unsigned int rightLength);
    static DString joined(kelcl::Text left, kelcl::Text right) {
        return joined(left.data, left.length, right.data, right.length);
    }
    // The same with this as a left text that nobody needs any more.
    DString followedBy(kelcl::Text text) &&;

    // How an editing operation keeps the buffer it works on.
    enum class During { heldAlive, soleOwnerEditsInPlace };
    template <During during, class Operation>
    DString& edit(Operation operation);
    DString& install(DBuffer* edited);
};

namespace std {

/// Hashes the bytes, so it agrees with `==` as long as DString::fgI18NState is 0.
/// @code
/// std::unordered_set<DString> const names{"Ada", "Grace"};
/// std::cout << names.count("Ada") << names.count("ada") << '\n'; // 10
/// @endcode
template <>
struct hash<DString> {
    /// An unordered container of strings with this and `std::equal_to<>` is searched for any text.
    using is_transparent = void;
    /// Returns a number that is the same for equal bytes within a program. Another version of the library may
    /// give another one.
    size_t operator()(DString const& text) const noexcept {
        return kelcl::hashOf(text.data(), text.length());
    }
    /// The same of another text.
    template <class T, class = kelcl::IfOtherText<T>>
    size_t operator()(T const& text) const {
        kelcl::Text const bytes = kelcl::textOf(text);
        return kelcl::hashOf(bytes.data, bytes.length);
    }
};

} // namespace std

// Implementation details only past this point.
#include <kelcl/detail/dstring_inline.h>

#endif
