/// @file
/// The national-language functions on counted bytes, and DWBuffer, a wide-character copy of a text. Buffers
/// that keep their characters whole are in dstring.h and ddbcsbuffer.h.
#ifndef KELCL_DNLSUTIL_H
#define KELCL_DNLSUTIL_H

#include <kelcl/dexport.h>

#include <cwchar>

class DWBuffer;

/// @name Conversions
/// Between bytes in the locale's encoding and wide characters. Texts are counted; a NUL inside is a character
/// of one byte. Converting to wide never looks past the bytes given. A sequence that stands for two wide
/// characters, as a few encodings have some, is refused like bytes that are no character: it would not come
/// back.
/// @{

/// Converts `len` bytes into `wcs`, which has room for `len` wide characters, and returns how many were
/// stored.
///
/// 0, with nothing stored, if a pointer is null or `len` is 0. No wide NUL is added.
/// @throws DInvalidRequest (message 1012, unrecoverable) at bytes that are no character.
///
/// @code
/// std::setlocale(LC_ALL, "en_US.UTF-8");
/// DString const city("Z\u00FCrich");
/// wchar_t wide[7];
/// unsigned long const count = cvtMBS2WCS(city.c_str(), city.length(), wide);
/// std::cout << city.length() << " bytes, " << count << " characters\n"; // 7 bytes, 6 characters
/// char field[3];
/// unsigned int const written = cvtWCS2MBS(wide, 6, field, sizeof field, 1, '.');
/// std::cout << written << ' ' << (std::string(field, written) == "Z\u00FC") << '\n'; // 3 1
/// @endcode
KELCL_EXPORT unsigned long cvtMBS2WCS(char const* mbs, unsigned int len, wchar_t* wcs);

/// Converts one character of at most `n` bytes with the caller's state and returns its length in bytes: 1 for
/// a NUL.
///
/// A null `state` stands for a fresh one, a null `pwc` for no interest in the value.
/// @throws DInvalidRequest (message 1012, unrecoverable) if there is no character; `pwc` keeps its value.
KELCL_EXPORT int cvtMB2WC(char const* s, unsigned int n, wchar_t* pwc, std::mbstate_t* state);

/// Converts `nwc` wide characters, whole ones only, into a field of `outLen` bytes and returns the bytes
/// written.
///
/// With `pad` nonzero the rest of the field is filled with `padChar` and the result is `outLen`; else the
/// rest is left alone. No NUL is added. 0 if a pointer is null or `outLen` is 0.
/// @throws DInvalidRequest (text "cvtWCS2MBS", id 0, recoverable) at a value that is no character; what was
/// written before stays written.
KELCL_EXPORT unsigned int cvtWCS2MBS(wchar_t const* wcs, unsigned int nwc, char* out, unsigned int outLen,
                                     int pad, char padChar);

/// Converts the characters of `wbuf` in the same way.
/// @throws DInvalidRequest (text "cvtWCS2MBS", id 0, recoverable) at a value that is no character.
KELCL_EXPORT unsigned int cvtWCS2MBS(DWBuffer const& wbuf, char* out, unsigned int outLen, int pad,
                                     char padChar);

/// Writes `src` with `ins` inserted after its first `pos` characters to `dst`, and returns the number of wide
/// characters written.
///
/// `dst` has room for both and overlaps neither. Negative lengths and positions count as 0.
KELCL_EXPORT unsigned int insWCS2WCS(wchar_t* src, int srcLen, wchar_t* ins, int insLen, int pos,
                                     wchar_t* dst);
/// @}

/// @name Positions
/// Byte positions and character numbers, both 1-based. Each function walks from the start of the text.
/// @{

/// The byte position at which character number `charNum` starts, else 0.
///
/// Like its companions it returns 0 for a null text, a number or position of 0 or outside the text, and if
/// bytes that are no character come before the answer. At the end of the text up to MB_CUR_MAX - 1 bytes
/// after it are looked at: a NUL there is enough.
///
/// @code
/// std::setlocale(LC_ALL, "en_US.UTF-8");
/// DString const city("Z\u00FCrich");
/// char const* const bytes = city.c_str();
/// std::cout << findBytePos(bytes, 7, 3) << ' ' << findCharNum(bytes, 7, 4) << '\n'; // 4 3
/// std::cout << findCurPos(bytes, 7, 3) << ' ' << findNextPos(bytes, 7, 3) << '\n'; // 2 4
/// std::cout << findNextCharNum(bytes, 7, 3) << ' ' << findNextPos(bytes, 7, 7) << '\n'; // 3 0
/// @endcode
KELCL_EXPORT unsigned int findBytePos(char const* s, unsigned int len, unsigned int charNum);

/// The number of the character that contains byte `bytePos`, else 0; see findBytePos().
KELCL_EXPORT unsigned int findCharNum(char const* s, unsigned int len, unsigned int bytePos);

/// The byte position at which the character that contains byte `bytePos` starts, else 0; see findBytePos().
KELCL_EXPORT unsigned int findCurPos(char const* s, unsigned int len, unsigned int bytePos);

/// The byte position at which the character after the one that contains byte `bytePos` starts; 0 after the
/// last, and as findBytePos() has it.
KELCL_EXPORT unsigned int findNextPos(char const* s, unsigned int len, unsigned int bytePos);

/// The number of the first character that starts at or after byte `bytePos`, else 0; see findBytePos().
KELCL_EXPORT unsigned int findNextCharNum(char const* s, unsigned int len, unsigned int bytePos);
/// @}

/// @name Cutting
/// Pieces of a text from byte `start` (1-based, 0 counts as 1) on, with pad characters in place of the bytes
/// of a character that was cut. All is pad if the start cannot be located or `s` is null. A sequence that
/// stands for two wide characters is kept as it is.
///
/// @code
/// std::setlocale(LC_ALL, "en_US.UTF-8");
/// DString const city("Z\u00FCrich");
/// char piece[5];
/// std::cout << std::string(getSubString(city.c_str(), 7, 3, '.', piece, 3), 3) << '\n';   // .ri
/// char rest[8];
/// std::cout << std::string(rest, getRemainString(city.c_str(), 7, 5, '.', rest)) << '\n'; // ich
/// @endcode
/// @{

/// Writes the piece from byte `start` to the end to `out` and returns the bytes written; 0 if `start` is past
/// the end.
///
/// `out` has room for twice the piece. The bytes of a cut character become `padChar`. No NUL is added.
/// @throws DInvalidRequest (message 1012, unrecoverable) at bytes after the start that are no character;
/// (text "cvtWCS2MBS", id 0, recoverable) at a character that does not convert back.
KELCL_EXPORT unsigned int getRemainString(char const* s, unsigned int len, unsigned int start, char padChar,
                                          char* out);

/// Writes exactly `count` bytes from byte `start` on to `out`, padded on the right, and returns `out`.
///
/// The bytes of a character that is cut at either end become `padChar`. No NUL is added.
/// @throws DInvalidRequest (message 1012, unrecoverable) at bytes after the start that are no character;
/// (text "cvtWCS2MBS", id 0, recoverable) at a character that does not convert back.
KELCL_EXPORT char* getSubString(char const* s, unsigned int len, unsigned int start, char padChar, char* out,
                                unsigned int count);
/// @}

/// @name Byte tests
///
/// @code
/// std::cout << isAllDigits("2024", 4) << isAllDigits("20x4", 4) << isAllHexDigits("c0de", 4) << '\n'; // 101
/// std::cout << indexThatIsNot("  text", 6, ' ') << '\n';                                          // 3
/// @endcode
/// @{

/// 1 if every byte is one of the digits 0 to 9, also of no bytes; else 0.
KELCL_EXPORT int isAllDigits(char const* s, unsigned int n);

/// 1 if every byte is one of 0 to 9, a to f and A to F, also of no bytes; else 0.
KELCL_EXPORT int isAllHexDigits(char const* s, unsigned int n);

/// The 1-based position of the first byte other than `c`; 0 if there is none.
KELCL_EXPORT unsigned int indexThatIsNot(char const* s, unsigned int n, char c);
/// @}

/// A wide-character copy of a multi-byte text, for work by character number.
///
/// Positions are 1-based character positions; a start of 0 finds nothing, and 0 as a result means not found.
/// An object owns its array, converts once, and cannot be copied: make it for one piece of work.
///
/// @code
/// std::setlocale(LC_ALL, "en_US.UTF-8");
/// DWBuffer const city("Z\u00FCrich");
/// DWBuffer const letter("\u00FC");
/// std::cout << city.length << ' ' << city.positionOf(letter, 1) << '\n'; // 6 2
/// std::cout << city.hasWChar(L'c') << ' ' << city.positionOfAnyBut(DWBuffer("", 0), 3) << '\n'; // 1 3
/// @endcode
class KELCL_EXPORT DWBuffer {
public:
    /// Converts `len` bytes.
    /// @throws DInvalidRequest (message 1012, unrecoverable) at bytes that are no character.
    DWBuffer(char const* mbs, unsigned int len);

    /// Converts the bytes up to the NUL; the array then ends in a wide NUL after its `length` characters.
    /// @throws DInvalidRequest (message 1012, unrecoverable) at bytes that are no character.
    explicit DWBuffer(char const* mbs);

    /// Not copied: an object owns its array.
    DWBuffer(DWBuffer const&) = delete;
    /// Not assigned: an object owns its array.
    DWBuffer& operator=(DWBuffer const&) = delete;
    /// Frees the array.
    ~DWBuffer();

    /// The characters, owned by this object; in general without a terminating NUL.
    wchar_t* wide;

    /// How many characters there are.
    unsigned int length;

    /// The first position at or after `start` where the pattern stands, else 0. An empty pattern is found
    /// nowhere.
    ///
    /// What follows a NUL of the pattern must fit, but is not compared.
    unsigned int positionOf(DWBuffer const& pattern, unsigned int start) const;

    /// The first position at or after `start` of a character of the set, else 0. An empty set finds nothing.
    unsigned int positionOfAnyOf(DWBuffer const& set, unsigned int start) const;

    /// The first position at or after `start` of a character outside the set, else 0. With an empty set the
    /// start itself.
    unsigned int positionOfAnyBut(DWBuffer const& set, unsigned int start) const;

    /// The last position at or before `start` where the pattern stands, else 0. An empty pattern is found
    /// nowhere.
    ///
    /// What follows a NUL of the pattern must fit, but is not compared.
    unsigned int lastPositionOf(DWBuffer const& pattern, unsigned int start) const;

    /// The last position at or before `start` of a character of the set, else 0. An empty set finds nothing.
    unsigned int lastPositionOfAnyOf(DWBuffer const& set, unsigned int start) const;

    /// The last position at or before `start` of a character outside the set, else 0. With an empty set the
    /// smaller of the start and the length.
    unsigned int lastPositionOfAnyBut(DWBuffer const& set, unsigned int start) const;

    /// Whether one of the characters is `wc`.
    bool hasWChar(wchar_t wc) const;

    /// Reverses the characters in place: it changes the array, not the object.
    void reverse() const;
};

#endif
