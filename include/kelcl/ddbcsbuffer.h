/// @file
/// DDBCSBuffer, the buffer of multi-byte locales, and the character classes of wide values. The
/// national-language functions on counted bytes are in dnlsutil.h.
#ifndef KELCL_DDBCSBUFFER_H
#define KELCL_DDBCSBUFFER_H

#include <kelcl/dbuffer.h>

#include <cwchar>

/// The buffer class of multi-byte locales: the operations of DBuffer, never cutting a character.
///
/// In a process whose locale has multi-byte characters every new buffer is of this class. Positions are
/// 1-based byte positions and lengths are bytes, as in DBuffer; so are ownership, sharing and what null and 0
/// mean. Each comment below says what differs.
///
/// A character's length is what the C library says for at most 6 bytes; a NUL, an invalid byte and an
/// incomplete sequence count as one byte each. With *the switch*, DString::fgI18NState, at 1, edits and
/// searches with a test work on wide characters and throw on text that does not convert: DInvalidRequest,
/// message 1012, unrecoverable. At 0 they work on bytes, blank out what is left of cut characters, and never
/// fail on bad sequences. The class has no data of its own; it reads the process's locale, which must not
/// change while multi-byte text is in use.
///
/// @code
/// std::setlocale(LC_ALL, "en_US.UTF-8");
/// DString city("Z\u00FCrich");
/// DBuffer const& buffer = *DBuffer::fromContents(city.c_str());
/// std::cout << buffer.className() << ' ' << buffer.charType(3) << '\n'; // DDBCSBuffer 2
/// std::cout << buffer.startSearch(3, 1) << buffer.startBackwardsSearch(3, 1) << '\n'; // 42
/// std::cout << city.subString(1, 2, '.') << ' ' << city.remove(3, 1) << '\n'; // Z. Z rich
/// @endcode
class KELCL_EXPORT DDBCSBuffer : public DBuffer {
public:
    /// Makes a buffer in storage with room for `size` bytes of text, as DBuffer's constructor does.
    explicit DDBCSBuffer(unsigned int size);
    /// Does nothing of its own. Owners call release().
    ~DDBCSBuffer() override;

    /// The place (1, 2, ...) of the byte at `index` in its multi-byte character; 0 for a character of one
    /// byte and for index 0.
    ///
    /// `index` is at most the length.
    unsigned int charType(unsigned int index) const override;

    /// `p` plus the length of the character at `p`.
    char* next(char const* p) override;

    /// `p` plus the length of the character at `p`.
    char const* next(char const* p) const override;

    /// Compares as DBuffer does; with the switch on collates wide characters through the locale.
    ///
    /// NULs separate what is collated. 2 if out of memory.
    /// @throws DInvalidRequest (recoverable) if wide collation fails; its id is the `errno` value.
    int compare(void const* other, unsigned int otherLength) const override;

    /// Exactly `count` bytes from `start` (0 counts as 1), with pad characters in place of the bytes of a
    /// character that was cut at either end.
    /// @throws DInvalidRequest (message 1010, recoverable) for a `count` of 0xFFFFFFE7 or more; with the
    /// switch on (message 1012, unrecoverable) at bytes after the start that are no character.
    DBuffer* subString(unsigned int start, unsigned int count, char padCharacter) const override;

    /// The text from `start` (0 counts as 1) to the end, with blanks in place of the bytes of a character
    /// that was cut; empty past the end, where DBuffer's throws.
    /// @throws DInvalidRequest (message 1012, unrecoverable) at bytes after the start that are no character,
    /// whatever the switch.
    DBuffer* subString(unsigned int start) const override;

    /// @name Classification
    /// Each character is taken as a wide value, whatever the switch. Bytes that are no character are in no
    /// class, and so is an empty text.
    /// @{

    /// Whether the text is not empty and holds only letters and digits: tql_iswalnum().
    bool isAlphanumeric() const override;

    /// Whether the text is not empty and holds only letters: tql_iswalpha().
    bool isAlphabetic() const override;

    /// Whether the text is not empty and no byte is above 127.
    bool isASCII() const override;

    /// Whether the text is not empty and holds only control characters: tql_iswcntrl().
    bool isControl() const override;

    /// Whether the text is not empty and holds only the digits 0 to 9: tql_iswdigit().
    bool isDigits() const override;

    /// Whether the text is not empty and holds only characters with a shape, without blanks: tql_iswgraph().
    bool isGraphics() const override;

    /// Whether the text is not empty and holds only the digits 0 to 9, a to f and A to F: tql_iswxdigit().
    bool isHexDigits() const override;

    /// Whether the text is not empty and holds only lower-case letters: tql_iswlower().
    bool isLowerCase() const override;

    /// Whether the text is not empty and holds only printable characters, blanks included: tql_iswprint().
    bool isPrintable() const override;

    /// Whether the text is not empty and holds only punctuation: tql_iswpunct().
    bool isPunctuation() const override;

    /// Whether the text is not empty and holds only upper-case letters: tql_iswupper().
    bool isUpperCase() const override;

    /// Whether the text is not empty and holds only white space: tql_iswspace().
    bool isWhiteSpace() const override;
    /// @}

    /// @name Kinds of characters
    /// "Multi-byte" means two bytes or more *and* two columns or more, as the ideographs are. What is defined
    /// by another one calls it, so that a derived class need override only that.
    /// @{

    /// Whether all characters are multi-byte; true for an empty text.
    bool isMBCS() const override;

    /// The same as isMBCS().
    bool isDBCS() const override;

    /// Whether no character is multi-byte; true for an empty text.
    bool isSBCS() const override;

    /// Whether every character is of two bytes or more, with no NUL after its first byte; true for an empty
    /// text. Columns do not matter.
    bool isValidMBCS() const override;

    /// The same as isValidMBCS().
    bool isValidDBCS() const override;

    /// Whether a character is multi-byte: not isSBCS().
    bool includesMBCS() const override;

    /// The same as includesMBCS().
    bool includesDBCS() const override;

    /// Whether a character is not multi-byte: not isDBCS(), so false for an empty text.
    bool includesSBCS() const override;
    /// @}

    /// @name Forward search
    /// A search begins at startSearch() and finds the starts of characters. Sets are characters too.
    /// @{

    /// The start of the first character at or after `start` (0 counts as 1) with which the pattern begins,
    /// compared byte for byte, else 0. A pattern of one byte is a set of one.
    unsigned int indexOf(char const* pattern, unsigned int patternLength, unsigned int start) const override;

    /// The same as indexOfAnyOf() with a test; with the switch off as DBuffer has it.
    unsigned int indexOf(DStringTest const& test, unsigned int start) const override;

    /// The start of the first character at or after `start` (0 counts as 1) that is not in the set, else 0.
    /// With an empty set the start itself.
    ///
    /// A set of one byte with which a longer character begins equals no character: it gives the start.
    unsigned int indexOfAnyBut(char const* set, unsigned int setLength, unsigned int start) const override;

    /// The start of the first character at or after `start` (0 counts as 1) that the test rejects (its wide
    /// value, or its first byte with the switch off), else 0.
    unsigned int indexOfAnyBut(DStringTest const& test, unsigned int start) const override;

    /// The start of the first character at or after `start` (0 counts as 1) that is in the set, else 0. An
    /// empty set finds nothing.
    ///
    /// A set of one byte finds characters that begin with it.
    unsigned int indexOfAnyOf(char const* set, unsigned int setLength, unsigned int start) const override;

    /// The start of the first character at or after `start` (0 counts as 1) whose wide value the test
    /// accepts, else 0.
    ///
    /// With the switch off the first byte that it accepts, which may lie inside a character: callers rely on
    /// it.
    unsigned int indexOfAnyOf(DStringTest const& test, unsigned int start) const override;
    /// @}

    /// @name Backward search
    /// A search begins at startBackwardsSearch(). Unlike in a forward search, a `start` of 0 finds nothing.
    /// @{

    /// The start of the last character at or before `start` with which the pattern begins, compared byte for
    /// byte, else 0.
    unsigned int lastIndexOf(char const* pattern, unsigned int patternLength,
                             unsigned int start) const override;

    /// The same as lastIndexOfAnyOf() with a test; with the switch off as DBuffer has it.
    unsigned int lastIndexOf(DStringTest const& test, unsigned int start) const override;

    /// The start of the last character at or before `start` that is not in the set, else 0. With an empty set
    /// the start, at most the length, moved to the start of its character.
    ///
    /// A set of one byte with which a longer character begins gives 0, unlike in the forward search: callers
    /// rely on it.
    unsigned int lastIndexOfAnyBut(char const* set, unsigned int setLength,
                                   unsigned int start) const override;

    /// The start of the last character at or before `start` that the test rejects (its wide value, or its
    /// first byte with the switch off), else 0.
    unsigned int lastIndexOfAnyBut(DStringTest const& test, unsigned int start) const override;

    /// The start of the last character at or before `start` that is in the set, else 0. An empty set finds
    /// nothing.
    unsigned int lastIndexOfAnyOf(char const* set, unsigned int setLength, unsigned int start) const override;

    /// The start of the last character at or before `start` that the test accepts (its wide value, or its
    /// first byte with the switch off), else 0.
    unsigned int lastIndexOfAnyOf(DStringTest const& test, unsigned int start) const override;
    /// @}

    /// @name Edits
    /// As in DBuffer, with positions and widths in bytes and no character cut. With the switch on most of
    /// them convert the text, and so throw DInvalidRequest (message 1012, unrecoverable) at bytes that are no
    /// character, and make a new buffer even if nothing changes.
    /// @{

    /// The text centred in `width` bytes; of a character that is cut on the right pad characters are left.
    ///
    /// A narrower result begins at the start of a character. With the switch on the last character of the
    /// text is never part of it: callers rely on it.
    DBuffer* center(unsigned int width, char padCharacter) override;

    /// Replaces up to `maxCount` non-overlapping occurrences of the pattern that begin at characters, from
    /// `start` (0 counts as 1) on; whatever the switch.
    DBuffer* change(char const* pattern, unsigned int patternLength, char const* replacement,
                    unsigned int replacementLength, unsigned int start, unsigned int maxCount) override;

    /// `n` bytes of `p` inserted after `position`, in front at 0; past the end of the text padded up to it.
    ///
    /// Inside a character they are inserted before it; with the switch on after it. Callers rely on both.
    DBuffer* insert(char const* p, unsigned int n, unsigned int position, char padCharacter) override;

    /// The text on the left of `width` bytes, padded on the right; of a character that is cut pad characters
    /// are left.
    DBuffer* leftJustify(unsigned int width, char padCharacter) override;

    /// ASCII letters in lower case; with the switch on all characters, as the locale maps them.
    DBuffer* lowerCase() override;

    /// `n` bytes of `p` written over the text at `position` (0 counts as 1), past the end of the text padded
    /// up to it.
    ///
    /// Of a character that is cut the head becomes blanks and the tail pad characters; with the switch on
    /// both become pad characters. Callers rely on both.
    DBuffer* overlayWith(char const* p, unsigned int n, unsigned int position, char padCharacter) override;

    /// The text without up to `count` bytes from `start` (0 counts as 1) on; what is left of a character that
    /// is cut becomes blanks. Whatever the switch.
    DBuffer* remove(unsigned int start, unsigned int count) override;

    /// The characters in reverse order, each with its bytes in their own order.
    DBuffer* reverse() override;

    /// The text on the right of `width` bytes, padded on the left; of a character that is cut pad characters
    /// are left. Whatever the switch.
    DBuffer* rightJustify(unsigned int width, char padCharacter) override;

    /// The text without the characters of the set at the ends that `mode` names.
    DBuffer* strip(char const* set, unsigned int setLength, DStringEnum::StripMode mode) override;

    /// The text without the characters that the test accepts at the ends that `mode` names: their wide
    /// values, or their first bytes with the switch off.
    DBuffer* strip(DStringTest const& test, DStringEnum::StripMode mode) override;

    /// Each character of the input set replaced by the one at the same place of the output set, which may be
    /// of another length, or by `padCharacter` where that is shorter.
    ///
    /// Of a character that stands in the input set twice the first place counts. Always makes a new buffer,
    /// even if nothing changes.
    DBuffer* translate(char const* inputSet, unsigned int inputLength, char const* outputSet,
                       unsigned int outputLength, char padCharacter) override;

    /// ASCII letters in upper case; with the switch on all characters, as the locale maps them.
    DBuffer* upperCase() override;
    /// @}

    /// Where a forward search begins: as in DBuffer, then moved forward to the start of a character; 0 if
    /// that lies past the end.
    unsigned int startSearch(unsigned int start, unsigned int patternLength) const override;

    /// Where a backward search begins: as in DBuffer, then moved back to the first byte of its character.
    unsigned int startBackwardsSearch(unsigned int start, unsigned int patternLength) const override;

    /// Makes a DDBCSBuffer of `size` bytes, yet to be filled, whatever the locale.
    /// @throws DInvalidRequest (message 1010, recoverable) for a `size` of 0xFFFFFFE7 or more.
    DBuffer* allocate(unsigned int size) const override;

    /// "DDBCSBuffer".
    char const* className() const override;

    /// @name Characters
    /// How long characters are; 1 for a NUL and for bytes that are no character.
    /// @{

    /// The bytes of the character at `p`, looking at up to 6 bytes. A null `state` stands for a fresh one.
    static int charLength(char const* p, std::mbstate_t* state);

    /// The bytes of the character that starts at byte `index`; 1 outside the text.
    int charLength(unsigned int index, std::mbstate_t* state) const;

    /// The bytes of the character that ends just before byte `index`; 1 if `index` is 1.
    ///
    /// Asks charType(), which walks from the start of the text.
    unsigned int prevCharLength(unsigned int index) const;

    /// The same; the state is not used.
    unsigned int prevCharLength(unsigned int index, std::mbstate_t* state) const;

    /// 1 if the character at `p` is one byte long, else 0.
    static int isSBC(char const* p, std::mbstate_t* state);

    /// 1 if the character that starts at byte `index` is one of the characters of the set, else 0.
    int isCharValid(unsigned int index, char const* set, unsigned int setLength) const;

    /// The start of the first character at or after `start` (0 counts as 1) whose wide value `test` rejects,
    /// else 0; whatever the switch.
    unsigned int windexOfAnyBut(DStringTest const& test, unsigned int start) const;
    /// @}
};

/// @name Character classes of wide values
/// Each returns 1 or 0: for values of 0 to 127 by the C locale's table, for others by the current locale.
/// They are functions for a DStringTest to wrap.
/// @{

/// Whether `c` is a letter or a digit.
///
/// @code
/// std::setlocale(LC_ALL, "en_US.UTF-8");
/// std::cout << tql_iswalpha(0xFC) << tql_iswdigit(0xFC) << tql_iswdigit('7') << '\n'; // 101
/// std::cout << DString("kelcl-3").indexOfAnyBut(DStringTest(tql_iswalnum)) << '\n'; // 6
/// @endcode
KELCL_EXPORT int tql_iswalnum(int c);

/// Whether `c` is a letter.
KELCL_EXPORT int tql_iswalpha(int c);

/// Whether `c` is a control character.
KELCL_EXPORT int tql_iswcntrl(int c);

/// Whether `c` is one of the digits 0 to 9; no value above 127 is.
KELCL_EXPORT int tql_iswdigit(int c);

/// Whether `c` is a character with a shape.
KELCL_EXPORT int tql_iswgraph(int c);

/// Whether `c` is a lower-case letter.
KELCL_EXPORT int tql_iswlower(int c);

/// Whether `c` is printable, as blanks are too.
KELCL_EXPORT int tql_iswprint(int c);

/// Whether `c` is punctuation.
KELCL_EXPORT int tql_iswpunct(int c);

/// Whether `c` is white space.
KELCL_EXPORT int tql_iswspace(int c);

/// Whether `c` is an upper-case letter.
KELCL_EXPORT int tql_iswupper(int c);

/// Whether `c` is one of the digits 0 to 9, a to f and A to F; no value above 127 is.
KELCL_EXPORT int tql_iswxdigit(int c);
/// @}

#endif
