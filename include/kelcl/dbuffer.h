// DBuffer, the reference-counted text buffer behind every DString, and DStringTest, a character predicate.
// Hosts normally use DString; this header is for those who derive buffers or look at sharing.
#ifndef KELCL_DBUFFER_H
#define KELCL_DBUFFER_H

#include <kelcl/dbase.h>
#include <kelcl/dexport.h>

#include <cstdint>

#if __has_include(<sys/single_threaded.h>)
#include <sys/single_threaded.h>
#define KELCL_HAS_SINGLE_THREADED 1
#else
#define KELCL_HAS_SINGLE_THREADED 0
#endif

/// Holds the enumerations that buffers and strings share.
struct DStringEnum {
    /// Where `strip` works. Any value other than leading and trailing means both ends.
    enum StripMode : unsigned int { leading = 0, trailing = 1, both = 2 };
};

/// A character predicate for searching and stripping.
///
/// Single-byte searches pass each byte sign-extended (0xA0 arrives as -96); searches by character in a
/// multi-byte locale pass wide character values.
class KELCL_EXPORT DStringTest : public DVBase {
public:
    /// Wraps `function`, which answers nonzero for the characters it accepts. Null accepts nothing.
    DStringTest(int (*function)(int));
    ~DStringTest() override;

    /// The function's answer for `c`; 0 for an object of another kind than a plain function.
    virtual int test(int c) const;

protected:
    /// The tag of an object that wraps a plain function. Objects with any other tag accept nothing of
    /// themselves.
    static constexpr std::uint32_t plainFunction = 1;

    /// For subclasses that override `test`.
    DStringTest(std::uint32_t kind, int (*function)(int));

private:
    friend class DBuffer;

    std::uint32_t kind_;
    int (*function_)(int);
};

/// A counted text with a reference count, in one heap block: header, bytes, NUL.
///
/// All positions are 1-based byte positions and 0 as a result means not found; all lengths count bytes. Texts
/// may contain NULs. Sets, patterns and replacements are counted bytes; a pointer may be null only when its
/// length is 0, unless stated otherwise.
///
/// Every operation that returns a `DBuffer*` gives it with one reference for the caller: a new buffer, or the
/// receiver itself with its count raised when there is nothing to do. `upperCase`, `lowerCase`, `translate`,
/// `reverse` and `change` (to the same length) edit the receiver in place when it has one owner. Give a
/// reference back with `release()`.
///
/// Threads may share a buffer: counts change indivisibly as soon as the process has a second thread. A buffer
/// that has several owners is never written to.
class KELCL_EXPORT DBuffer : public DVBase {
public:
    unsigned int refs;   ///< Number of owners. Use take(), release() and owners(), which threads may call.
    unsigned int length; ///< Bytes of text, without the terminating NUL.

    /// Sets `refs` to 1 and writes the NUL behind `size` bytes of text, which the caller fills. Only for
    /// storage that `allocate` obtained: the text stands directly behind the object.
    explicit DBuffer(unsigned int size);
    DBuffer(DBuffer const&) = delete;
    DBuffer& operator=(DBuffer const&) = delete;
    ~DBuffer() override;

    /// @name Owners
    /// All that changes or reads `refs`. As long as the process has one thread the count is a plain number,
    /// which costs no atomic instruction; with more threads it changes indivisibly.
    ///
    /// A count of 2147483648 or more is *pinned*: it does not change any more, and the buffer stays for the
    /// life of the process. That is what happens to the shared empty buffers when the process has more than
    /// one thread, so that threads with strings of their own do not meet in the count of the empty ones.
    /// @{
    /// Adds an owner.
    KELCL_LOCAL void take() noexcept;
    /// Removes an owner; when that was the last one, destroys the buffer.
    KELCL_LOCAL void release() noexcept;
    /// Whether nobody else can see the text, so that its owner may change it in place.
    KELCL_LOCAL bool hasOneOwner() const noexcept { return owners() < 2; }
    /// The number of owners at this moment, or any number from 2147483648 on when it is pinned.
    KELCL_LOCAL unsigned int owners() const noexcept { return __atomic_load_n(&refs, __ATOMIC_ACQUIRE); }
    /// @}

    /// "className(@address,refs=count,len=length,data=[text])", of a text of 24 bytes or more the first and
    /// last 10.
    DString asDebugInfo() const override;

    /// 0 for a byte that is a whole character, else the place of the byte at `index` in its multi-byte
    /// character.
    virtual unsigned int charType(unsigned int index) const;
    /// The character after `p` in multi-byte text. In single-byte text `p` itself: callers rely on it.
    virtual char* next(char const* p);
    virtual char const* next(char const* p) const;

    /// 0 equal, 1 this text sorts after `other`, 2 before. A null `other` gives 1. Collates through the
    /// locale when DString::fgI18NState is 1, else compares bytes.
    /// @throws DInvalidRequest (recoverable) when collation fails; its id is the `errno` value.
    virtual int compare(void const* other, unsigned int otherLength) const;

    /// Exactly `count` bytes from `start` (0 counts as 1), padded where the text runs out.
    virtual DBuffer* subString(unsigned int start, unsigned int count, char padCharacter) const;
    /// The text from `start` (0 counts as 1) to the end; a `start` beyond length + 1 raises the overflow
    /// failure.
    virtual DBuffer* subString(unsigned int start) const;

    /// @name Classification
    /// Whether the text is not empty and every character is of the class, as the C library's function of that
    /// class says for the current locale.
    /// @{
    virtual bool isAlphanumeric() const;
    virtual bool isAlphabetic() const;
    virtual bool isASCII() const; ///< Not empty and no byte above 127.
    virtual bool isControl() const;
    virtual bool isDigits() const;
    virtual bool isGraphics() const;
    virtual bool isHexDigits() const;
    virtual bool isLowerCase() const;
    virtual bool isPrintable() const;
    virtual bool isPunctuation() const;
    virtual bool isUpperCase() const;
    virtual bool isWhiteSpace() const;
    /// @}

    /// @name Kinds of characters
    /// What kinds of characters the text is made of; constant for single-byte buffers.
    /// @{
    virtual bool isMBCS() const;
    virtual bool isDBCS() const;
    virtual bool isSBCS() const;
    virtual bool isValidMBCS() const;
    virtual bool isValidDBCS() const;
    virtual bool includesMBCS() const;
    virtual bool includesDBCS() const;
    virtual bool includesSBCS() const;
    /// @}

    /// @name Forward search
    /// First position at or after `start` (0 counts as 1) where the pattern stands, a byte is in the set or
    /// outside it, or a test accepts or rejects. An empty pattern or set finds nothing, but `indexOfAnyBut`
    /// with an empty set answers with the start.
    /// @{
    virtual unsigned int indexOf(char const* pattern, unsigned int patternLength, unsigned int start) const;
    virtual unsigned int indexOf(DStringTest const& test, unsigned int start) const;
    virtual unsigned int indexOfAnyBut(char const* set, unsigned int setLength, unsigned int start) const;
    virtual unsigned int indexOfAnyBut(DStringTest const& test, unsigned int start) const;
    virtual unsigned int indexOfAnyOf(char const* set, unsigned int setLength, unsigned int start) const;
    virtual unsigned int indexOfAnyOf(DStringTest const& test, unsigned int start) const;
    /// @}

    /// @name Backward search
    /// Last position that begins at or before `start`. Here a `start` of 0 finds nothing.
    /// @{
    virtual unsigned int lastIndexOf(char const* pattern, unsigned int patternLength,
                                     unsigned int start) const;
    virtual unsigned int lastIndexOf(DStringTest const& test, unsigned int start) const;
    virtual unsigned int lastIndexOfAnyBut(char const* set, unsigned int setLength, unsigned int start) const;
    virtual unsigned int lastIndexOfAnyBut(DStringTest const& test, unsigned int start) const;
    virtual unsigned int lastIndexOfAnyOf(char const* set, unsigned int setLength, unsigned int start) const;
    virtual unsigned int lastIndexOfAnyOf(DStringTest const& test, unsigned int start) const;
    /// @}

    /// The text centred in `width` bytes; an odd pad byte goes to the right, and an odd byte is cut on the
    /// right.
    virtual DBuffer* center(unsigned int width, char padCharacter);
    /// Replaces up to `maxCount` non-overlapping occurrences of `pattern`, scanning from `start` (0 counts as
    /// 1).
    virtual DBuffer* change(char const* pattern, unsigned int patternLength, char const* replacement,
                            unsigned int replacementLength, unsigned int start, unsigned int maxCount);
    /// The text repeated `times` times.
    virtual DBuffer* copy(unsigned int times);
    /// `p` inserted after `position`, padded when `position` is beyond the end.
    virtual DBuffer* insert(char const* p, unsigned int n, unsigned int position, char padCharacter);
    /// The text on the left of `width` bytes, cut or padded on the right.
    virtual DBuffer* leftJustify(unsigned int width, char padCharacter);
    /// ASCII letters in lower case; a multi-byte buffer with the switch on maps through the locale.
    virtual DBuffer* lowerCase();
    /// `p` written over the text at `position` (0 counts as 1), padded when `position` is beyond the end.
    virtual DBuffer* overlayWith(char const* p, unsigned int n, unsigned int position, char padCharacter);
    /// Without up to `count` bytes from `start` (0 counts as 1). A `count` of 0 still makes a new buffer.
    virtual DBuffer* remove(unsigned int start, unsigned int count);
    /// The characters in reverse order.
    virtual DBuffer* reverse();
    /// The text on the right of `width` bytes, cut or padded on the left.
    virtual DBuffer* rightJustify(unsigned int width, char padCharacter);
    /// Without the characters of the set, or that the test accepts, at the ends that `mode` names.
    virtual DBuffer* strip(char const* set, unsigned int setLength, DStringEnum::StripMode mode);
    virtual DBuffer* strip(DStringTest const& test, DStringEnum::StripMode mode);
    /// Each character of `inputSet` replaced by the one at the same place of `outputSet`, or by
    /// `padCharacter` where that is shorter. Of a character that stands in `inputSet` twice the first place
    /// counts.
    virtual DBuffer* translate(char const* inputSet, unsigned int inputLength, char const* outputSet,
                               unsigned int outputLength, char padCharacter);
    /// ASCII letters in upper case; a multi-byte buffer with the switch on maps through the locale.
    virtual DBuffer* upperCase();

    /// Where a forward search from `start` for `patternLength` bytes begins, 0 when there is no room for a
    /// match.
    virtual unsigned int startSearch(unsigned int start, unsigned int patternLength) const;
    /// Where a backward search begins; 0 when `start` is 0 or the pattern is longer than the text.
    virtual unsigned int startBackwardsSearch(unsigned int start, unsigned int patternLength) const;

    /// The factory of new buffers: a buffer of `size` bytes, yet to be filled, with one reference. A plain
    /// buffer makes plain buffers while MB_CUR_MAX is 1, else multi-byte ones. An override returns objects of
    /// its own class, or those that a library class's `allocate` made: only these have room behind the text,
    /// in which a string may let it grow. A longer buffer than asked for is cut to `size`; for null and for a
    /// shorter one operations throw std::bad_alloc.
    /// @throws DInvalidRequest (message 1010, recoverable) for a `size` of 0xFFFFFFE7 or more.
    virtual DBuffer* allocate(unsigned int size) const;
    /// The class's name; compare the pointers to tell whether two buffers are of one class.
    virtual char const* className() const;

    /// A buffer of up to three consecutive pieces, made by the virtual `allocate`. A piece whose pointer is
    /// null is that many pad characters. An empty result is the shared empty buffer that suits the receiver.
    /// @throws DInvalidRequest (message 1010, recoverable) when the lengths add up to 0xFFFFFFE7 or more.
    DBuffer* newBuffer(void const* p1, unsigned int l1, void const* p2 = nullptr, unsigned int l2 = 0,
                       void const* p3 = nullptr, unsigned int l3 = 0, char padCharacter = ' ') const;
    /// The shared empty buffer that suits this one. No reference is added.
    DBuffer* null() const;
    /// Raises the length overflow failure: DInvalidRequest, message and id 1010, recoverable.
    [[noreturn]] void overflow() const;

    /// The text, NUL-terminated.
    char* contents() { return reinterpret_cast<char*>(this + 1); }
    char const* contents() const { return reinterpret_cast<char const*>(this + 1); }
    /// The buffer whose text begins at `text`: the inverse of `contents`.
    static DBuffer* fromContents(char const* text) {
        return reinterpret_cast<DBuffer*>(const_cast<char*>(text)) - 1;
    }

    /// Makes a fresh empty buffer of the current mode, owned by the caller. Where multi-byte, also makes a
    /// fresh `nullDBuffer`; the former one stays alive, as others may hold it.
    static DBuffer* initialize();
    /// `nullBuffer`, made first if needed. No reference is added.
    static DBuffer* defaultBuffer();

    static DBuffer* nullBuffer;  ///< Shared empty buffer of the default class; null until first needed.
    static DBuffer* nullDBuffer; ///< Shared empty plain buffer of a multi-byte process, else null.

    /// Blocks come from array new; the virtual destructor gives them back with array delete.
    static void operator delete(void* block) noexcept;

private:
    static constexpr unsigned int pinned = 0x80000000; ///< From this count on it does not change.

    KELCL_LOCAL static bool processHasOneThread() noexcept;

    // Out of line, so that what every string's destructor has in line stays small.
    KELCL_LOCAL __attribute__((noinline)) void destroy() noexcept {
        if (length != 0 || !pinIfSharedEmpty()) delete this;
    }
    /// The shared empty buffers are pinned when a second thread first meets them, and whenever somebody gave
    /// back more references than were taken.
    KELCL_LOCAL bool pinIfSharedEmpty() noexcept;
};

// Implementation only past this point.

/// Whether no other thread can see a buffer at this moment. Never where the C library does not tell.
inline bool DBuffer::processHasOneThread() noexcept {
#if KELCL_HAS_SINGLE_THREADED
    return __builtin_expect(__libc_single_threaded, 1) != 0;
#else
    return false;
#endif
}

inline void DBuffer::take() noexcept {
    if (processHasOneThread())
        ++refs;
    else if (owners() < pinned && (length != 0 || !pinIfSharedEmpty()))
        __atomic_fetch_add(&refs, 1, __ATOMIC_RELAXED);
}

inline void DBuffer::release() noexcept {
    if (processHasOneThread()) {
        if (--refs == 0) destroy();
        return;
    }
    unsigned int const known = owners(); // 1: nobody else can take a reference meanwhile
    if (known == 1 || (known < pinned && __atomic_fetch_sub(&refs, 1, __ATOMIC_ACQ_REL) == 1)) destroy();
}

inline bool DBuffer::pinIfSharedEmpty() noexcept {
    if (this != __atomic_load_n(&nullBuffer, __ATOMIC_RELAXED) &&
        this != __atomic_load_n(&nullDBuffer, __ATOMIC_RELAXED))
        return false;
    __atomic_store_n(&refs, pinned + pinned / 2, __ATOMIC_RELAXED); // far from what is still being counted
    return true;
}

#undef KELCL_HAS_SINGLE_THREADED

#endif
