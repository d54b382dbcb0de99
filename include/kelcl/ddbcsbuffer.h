// DDBCSBuffer, the buffer of multi-byte locales, and the character classes of wide values.
// The national-language functions on raw bytes are in dnlsutil.h.
#ifndef KELCL_DDBCSBUFFER_H
#define KELCL_DDBCSBUFFER_H

#include <kelcl/dbuffer.h>

#include <cwchar>

/// The buffer class of multi-byte locales: the operations of DBuffer, never cutting a character.
///
/// Positions are 1-based byte positions, as in DBuffer. A character's length is what the C library says for
/// at most 6 bytes; a NUL, an invalid byte and an incomplete sequence count as one byte each. With
/// DString::fgI18NState at 1 edits and predicate searches work on wide characters and throw on text that does
/// not convert; at 0 they work on bytes, blank out what is left of cut characters, and never fail on bad
/// sequences.
class KELCL_EXPORT DDBCSBuffer : public DBuffer {
public:
    explicit DDBCSBuffer(unsigned int size);
    ~DDBCSBuffer() override;

    /// The place (1, 2, ...) of the byte at `index` in its multi-byte character, 0 for a single-byte
    /// character and for index 0. `index` is at most the length.
    unsigned int charType(unsigned int index) const override;
    /// `p` plus the length of the character at `p`.
    char* next(char const* p) override;
    char const* next(char const* p) const override;

    /// @throws DInvalidRequest (recoverable) when wide collation fails; its id is the `errno` value.
    int compare(void const* other, unsigned int otherLength) const override;

    DBuffer* subString(unsigned int start, unsigned int count, char padCharacter) const override;
    DBuffer* subString(unsigned int start) const override;

    /// @name Classification, as in DBuffer
    /// @{
    bool isAlphanumeric() const override;
    bool isAlphabetic() const override;
    bool isASCII() const override;
    bool isControl() const override;
    bool isDigits() const override;
    bool isGraphics() const override;
    bool isHexDigits() const override;
    bool isLowerCase() const override;
    bool isPrintable() const override;
    bool isPunctuation() const override;
    bool isUpperCase() const override;
    bool isWhiteSpace() const override;
    /// @}

    /// @name Kinds of characters
    /// @{
    /// True for an empty text, and when every character is of two bytes or more and at least two columns
    /// wide.
    bool isMBCS() const override;
    bool isDBCS() const override;
    /// True unless a character is of two bytes or more and at least two columns wide.
    bool isSBCS() const override;
    /// True for an empty text, and when every character is of two bytes or more with no NUL behind its first
    /// byte.
    bool isValidMBCS() const override;
    bool isValidDBCS() const override;
    bool includesMBCS() const override;
    bool includesDBCS() const override;
    bool includesSBCS() const override;
    /// @}

    /// @name Searches, as in DBuffer
    /// @{
    unsigned int indexOf(char const* pattern, unsigned int patternLength, unsigned int start) const override;
    unsigned int indexOf(DStringTest const& test, unsigned int start) const override;
    unsigned int indexOfAnyBut(char const* set, unsigned int setLength, unsigned int start) const override;
    unsigned int indexOfAnyBut(DStringTest const& test, unsigned int start) const override;
    unsigned int indexOfAnyOf(char const* set, unsigned int setLength, unsigned int start) const override;
    unsigned int indexOfAnyOf(DStringTest const& test, unsigned int start) const override;
    unsigned int lastIndexOf(char const* pattern, unsigned int patternLength,
                             unsigned int start) const override;
    unsigned int lastIndexOf(DStringTest const& test, unsigned int start) const override;
    unsigned int lastIndexOfAnyBut(char const* set, unsigned int setLength,
                                   unsigned int start) const override;
    unsigned int lastIndexOfAnyBut(DStringTest const& test, unsigned int start) const override;
    unsigned int lastIndexOfAnyOf(char const* set, unsigned int setLength, unsigned int start) const override;
    unsigned int lastIndexOfAnyOf(DStringTest const& test, unsigned int start) const override;
    /// @}

    /// @name Edits, as in DBuffer
    /// @{
    DBuffer* center(unsigned int width, char padCharacter) override;
    DBuffer* change(char const* pattern, unsigned int patternLength, char const* replacement,
                    unsigned int replacementLength, unsigned int start, unsigned int maxCount) override;
    DBuffer* insert(char const* p, unsigned int n, unsigned int position, char padCharacter) override;
    DBuffer* leftJustify(unsigned int width, char padCharacter) override;
    DBuffer* lowerCase() override;
    DBuffer* overlayWith(char const* p, unsigned int n, unsigned int position, char padCharacter) override;
    DBuffer* remove(unsigned int start, unsigned int count) override;
    DBuffer* reverse() override;
    DBuffer* rightJustify(unsigned int width, char padCharacter) override;
    DBuffer* strip(char const* set, unsigned int setLength, DStringEnum::StripMode mode) override;
    DBuffer* strip(DStringTest const& test, DStringEnum::StripMode mode) override;
    DBuffer* translate(char const* inputSet, unsigned int inputLength, char const* outputSet,
                       unsigned int outputLength, char padCharacter) override;
    DBuffer* upperCase() override;
    /// @}

    /// As in DBuffer, then moved forward to the start of a character; 0 when that lies beyond the end.
    unsigned int startSearch(unsigned int start, unsigned int patternLength) const override;
    /// As in DBuffer, then moved back to the first byte of the character it points into.
    unsigned int startBackwardsSearch(unsigned int start, unsigned int patternLength) const override;

    /// Always a DDBCSBuffer.
    /// @throws DInvalidRequest (message 1010, recoverable) for a `size` of 0xFFFFFFE7 or more.
    DBuffer* allocate(unsigned int size) const override;
    char const* className() const override;

    /// Bytes of the character at `p`, looking at up to 6 bytes; 1 for a NUL and for bytes that are no
    /// character.
    static int charLength(char const* p, std::mbstate_t* state);
    /// The same for the character that starts at byte `index`.
    int charLength(unsigned int index, std::mbstate_t* state) const;
    /// Bytes of the character that ends just before byte `index`; 1 when `index` is 1.
    unsigned int prevCharLength(unsigned int index) const;
    unsigned int prevCharLength(unsigned int index, std::mbstate_t* state) const;
    /// Whether the character at `p` is one byte long.
    static int isSBC(char const* p, std::mbstate_t* state);
    /// Whether the character that starts at byte `index` is one of the characters of `set`.
    int isCharValid(unsigned int index, char const* set, unsigned int setLength) const;
    /// First position at or after `start` of a character that `test`, given its wide value, rejects; 0 when
    /// none.
    unsigned int windexOfAnyBut(DStringTest const& test, unsigned int start) const;
};

/// Character classes of wide values, 1 or 0: values of 0 to 127 by the C locale's table, others by the
/// current locale. Digits and hexadecimal digits are 0 beyond 127.
KELCL_EXPORT int tql_iswalnum(int c);
KELCL_EXPORT int tql_iswalpha(int c);
KELCL_EXPORT int tql_iswcntrl(int c);
KELCL_EXPORT int tql_iswdigit(int c);
KELCL_EXPORT int tql_iswgraph(int c);
KELCL_EXPORT int tql_iswlower(int c);
KELCL_EXPORT int tql_iswprint(int c);
KELCL_EXPORT int tql_iswpunct(int c);
KELCL_EXPORT int tql_iswspace(int c);
KELCL_EXPORT int tql_iswupper(int c);
KELCL_EXPORT int tql_iswxdigit(int c);

#endif
