// The national-language functions on raw multi-byte text, and DWBuffer, a wide copy of such a text.
// Strings that keep their characters whole by themselves are told in dstring.h and ddbcsbuffer.h.
#ifndef KELCL_DNLSUTIL_H
#define KELCL_DNLSUTIL_H

#include <kelcl/dexport.h>

#include <cwchar>

class DWBuffer;

/// @name Conversions
/// Texts are counted; a NUL inside is a character of one byte. Converting to wide never looks beyond the
/// bytes given. A sequence that stands for two wide characters, as a few encodings have some, is refused like
/// bytes that are no character: it would not come back.
/// @{

/// Converts the first `len` bytes into `wcs`, which has room for `len` wide characters, and returns how many
/// were stored; 0, with nothing stored, when a pointer is null or `len` is 0.
/// @throws DInvalidRequest (message 1012, unrecoverable) at bytes that are no character.
KELCL_EXPORT unsigned long cvtMBS2WCS(char const* mbs, unsigned int len, wchar_t* wcs);

/// Converts one character of at most `n` bytes with the caller's state and returns its length in bytes, 1 for
/// a NUL. A null `state` stands for a fresh one, a null `pwc` for no interest in the value.
/// @throws DInvalidRequest (message 1012, unrecoverable) when there is none; `pwc` keeps its value.
KELCL_EXPORT int cvtMB2WC(char const* s, unsigned int n, wchar_t* pwc, std::mbstate_t* state);

/// Converts wide characters, whole ones only, into a field of `outLen` bytes and returns the bytes written.
/// With `pad` nonzero the rest of the field is filled with `padChar` and the result is `outLen`; else the
/// rest is left alone. No NUL is added. 0 when a pointer is null or `outLen` is 0.
/// @throws DInvalidRequest (text "cvtWCS2MBS", id 0, recoverable) at a value that is no character; what was
/// written before stays written.
KELCL_EXPORT unsigned int cvtWCS2MBS(wchar_t const* wcs, unsigned int nwc, char* out, unsigned int outLen,
                                     int pad, char padChar);
KELCL_EXPORT unsigned int cvtWCS2MBS(DWBuffer const& wbuf, char* out, unsigned int outLen, int pad,
                                     char padChar);

/// Writes `src` with `ins` inserted after its first `pos` characters to `dst`, which overlaps neither, and
/// returns the number of wide characters written. Negative lengths and positions count as 0.
KELCL_EXPORT unsigned int insWCS2WCS(wchar_t* src, int srcLen, wchar_t* ins, int insLen, int pos,
                                     wchar_t* dst);
/// @}

/// @name Positions
/// Byte positions and character numbers, both 1-based. 0 for a null text, a position of 0 or beyond `len`,
/// and when bytes that are no character come before the answer. At the end of the text up to MB_CUR_MAX - 1
/// bytes after it are looked at: a NUL there is enough.
/// @{

/// Where character number `charNum` starts.
KELCL_EXPORT unsigned int findBytePos(char const* s, unsigned int len, unsigned int charNum);
/// The number of the character that contains byte `bytePos`.
KELCL_EXPORT unsigned int findCharNum(char const* s, unsigned int len, unsigned int bytePos);
/// Where the character that contains byte `bytePos` starts.
KELCL_EXPORT unsigned int findCurPos(char const* s, unsigned int len, unsigned int bytePos);
/// Where the character after the one that contains byte `bytePos` starts; 0 after the last.
KELCL_EXPORT unsigned int findNextPos(char const* s, unsigned int len, unsigned int bytePos);
/// The number of the first character that starts at or after byte `bytePos`; 0 when there is none.
KELCL_EXPORT unsigned int findNextCharNum(char const* s, unsigned int len, unsigned int bytePos);
/// @}

/// @name Cutting
/// Pieces of a text from byte `start` (1-based, 0 counts as 1) on, with pad characters in place of the bytes
/// of a character that was cut. All is pad when the start cannot be located or `s` is null.
/// A sequence that stands for two wide characters is kept as it is.
/// @throws DInvalidRequest as the conversions do, when the text after the start is no text.
/// @{

/// Writes the piece up to the end to `out` and returns the bytes written; 0 when `start` is beyond the end.
/// There is room for twice the piece.
KELCL_EXPORT unsigned int getRemainString(char const* s, unsigned int len, unsigned int start, char padChar,
                                          char* out);
/// Writes exactly `count` bytes to `out`, padded on the right, and returns `out`.
KELCL_EXPORT char* getSubString(char const* s, unsigned int len, unsigned int start, char padChar, char* out,
                                unsigned int count);
/// @}

/// @name Byte tests
/// @{

/// 1 when every byte is a decimal (hexadecimal) digit of ASCII, also of no bytes; else 0.
KELCL_EXPORT int isAllDigits(char const* s, unsigned int n);
KELCL_EXPORT int isAllHexDigits(char const* s, unsigned int n);
/// The 1-based position of the first byte other than `c`, 0 when there is none.
KELCL_EXPORT unsigned int indexThatIsNot(char const* s, unsigned int n, char c);
/// @}

/// A wide-character copy of a multi-byte text. Positions are 1-based character positions; a start of 0 finds
/// nothing.
class KELCL_EXPORT DWBuffer {
public:
    /// Converts `len` bytes.
    /// @throws DInvalidRequest (message 1012, unrecoverable) at bytes that are no character.
    DWBuffer(char const* mbs, unsigned int len);
    /// Converts the bytes up to the NUL; the array then ends in a wide NUL after its `length` characters.
    explicit DWBuffer(char const* mbs);
    DWBuffer(DWBuffer const&) = delete;
    DWBuffer& operator=(DWBuffer const&) = delete;
    ~DWBuffer();

    wchar_t* wide;       ///< The characters; in general without a terminating NUL.
    unsigned int length; ///< How many there are.

    /// What follows a NUL of the pattern must fit, but is not compared.
    unsigned int positionOf(DWBuffer const& pattern, unsigned int start) const;
    unsigned int positionOfAnyOf(DWBuffer const& set, unsigned int start) const;
    /// With an empty set the start itself.
    unsigned int positionOfAnyBut(DWBuffer const& set, unsigned int start) const;
    /// What follows a NUL of the pattern must fit, but is not compared.
    unsigned int lastPositionOf(DWBuffer const& pattern, unsigned int start) const;
    unsigned int lastPositionOfAnyOf(DWBuffer const& set, unsigned int start) const;
    /// With an empty set the smaller of the start and the length.
    unsigned int lastPositionOfAnyBut(DWBuffer const& set, unsigned int start) const;
    bool hasWChar(wchar_t wc) const;
    /// Reverses the characters in place: it changes the array, not the object.
    void reverse() const;
};

#endif
