/// @file
/// DBuffer, the reference-counted text buffer of every DString, and DStringTest, a character predicate.
/// Programs normally use DString; this header is for those who derive buffers or look at sharing.
#ifndef KELCL_DBUFFER_H
#define KELCL_DBUFFER_H

#include <kelcl/dbase.h>
#include <kelcl/detail/one_thread.h>
#include <kelcl/dexport.h>

#include <cstdint>

/// Holds the enumeration that buffers and strings share.
///
/// @code
/// DString text("..end..");
/// std::cout << text.strip('.', DStringEnum::leading) << '\n'; // end..
/// @endcode
struct DStringEnum {
    /// At which ends `strip` works. Any value other than leading and trailing means both.
    enum StripMode : unsigned int {
        /// At the start only.
        leading = 0,
        /// At the end only.
        trailing = 1,
        /// At both ends.
        both = 2
    };
};

class DStringTest;

/// @cond
namespace kelcl {
using TestFunction = int (*)(int);
// The function of a test that is no more than that, else null.
KELCL_LOCAL TestFunction functionOf(DStringTest const& test) noexcept;
} // namespace kelcl
/// @endcond

/// A character predicate for searching and stripping.
///
/// Single-byte searches pass each byte sign-extended (0xA0 arrives as -96); searches by character in a
/// multi-byte locale pass wide character values. `std::isalpha` and the like are defined for bytes alone:
/// where DString::fgI18NState may be 1, give `tql_iswalpha` and the like, of ddbcsbuffer.h.
///
/// An object keeps a pointer to a function, nothing else; make one where it is needed. Threads may share it
/// if they may share the function.
///
/// @code
/// DStringTest const isVowel([](int c) -> int { return c == 'a' || c == 'e' || c == 'o'; });
/// std::cout << DString("hotel").indexOf(isVowel) << '\n'; // 2
/// std::cout << DString("aorta").strip(isVowel) << '\n'; // rt
/// @endcode
class KELCL_EXPORT DStringTest : public DVBase {
public:
    /// Wraps `function`, which returns nonzero for the characters it accepts. Null accepts nothing.
    DStringTest(int (*function)(int));
    /// Does nothing of its own.
    ~DStringTest() override;

    /// What the function returns for `c`; 0 for an object that does not wrap a plain function.
    virtual int test(int c) const;

protected:
    /// The tag of an object that wraps a plain function. Objects with any other tag accept nothing of
    /// themselves.
    static constexpr std::uint32_t plainFunction = 1;

    /// For derived classes that override test(): their tag, and the function if they have one.
    DStringTest(std::uint32_t kind, int (*function)(int));

private:
    friend kelcl::TestFunction kelcl::functionOf(DStringTest const& test) noexcept;

    std::uint32_t kind_;
    int (*function_)(int);
};

/// A counted text with a reference count, in one heap block: header, bytes, NUL.
///
/// All positions are 1-based byte positions and 0 as a result means not found; all lengths count bytes. Texts
/// may contain NULs. Sets, patterns and replacements are counted bytes; a pointer may be null only if its
/// length is 0, unless stated otherwise.
///
/// **Sharing.** Every operation that returns a `DBuffer*` returns it with one reference for the caller: a new
/// buffer, or the receiver itself with its count raised if there is nothing to do. Give a reference back with
/// release(), or to a DString, which adopts it. An empty result is a shared empty buffer, never a new block.
///
/// A buffer that has several owners is never written to. upperCase(), lowerCase(), translate(), reverse() and
/// change() (to the same length) edit the receiver in place if it has one owner. After a throw the receiver
/// is what it was before.
///
/// @code
/// DString const first("abc");
/// DString const second = first;
/// DBuffer* const buffer = DBuffer::fromContents(first.c_str());
/// std::cout << buffer->owners() << " owners\n"; // 2 owners
/// DBuffer* const unchanged = buffer->remove(9, 1);
/// std::cout << (unchanged == buffer) << ", " << buffer->owners() << " owners\n"; // 1, 3 owners
/// unchanged->release();
/// DBuffer* const shorter = buffer->remove(2, 1);
/// std::cout << shorter->contents() << ", " << shorter->owners() << " owner\n"; // ac, 1 owner
/// shorter->release();
/// @endcode
///
/// Threads may share a buffer: counts change indivisibly as soon as the process has a second thread.
///
/// **Deriving.** A derived class overrides allocate(), so that results are of its class, className(), and the
/// operations that should differ. It adds no data members: the text stands directly after the DBuffer. Blocks
/// come from array new, with room for the object, the text and its NUL. Where an operation is said to do what
/// another one does, it calls the virtual one.
///
/// @code
/// class CountingBuffer final : public DBuffer {
/// public:
///     static CountingBuffer* make(unsigned int size) {
///         return ::new (::operator new[](sizeof(DBuffer) + size + 1)) CountingBuffer(size);
///     }
///     DBuffer* allocate(unsigned int size) const override { return make(size); }
///     char const* className() const override { return "CountingBuffer"; }
///     DBuffer* upperCase() override {
///         ++edits;
///         return DBuffer::upperCase();
///     }
///
///     inline static int edits = 0;
///
/// private:
///     explicit CountingBuffer(unsigned int size) : DBuffer(size) {}
/// };
///
/// int main() {
///     CountingBuffer* const buffer = CountingBuffer::make(3);
///     std::copy_n("abc", 3, buffer->contents());
///     DString text(buffer);
///     text += "d";
///     std::cout << text.upperCase() << '\n'; // ABCD
///     std::cout << DBuffer::fromContents(text.c_str())->className() << '\n'; // CountingBuffer
///     std::cout << CountingBuffer::edits << '\n'; // 1
/// }
/// @endcode
class KELCL_EXPORT DBuffer : public DVBase {
public:
    /// The number of owners. Use take(), release() and owners(), which threads may call.
    unsigned int refs;

    /// The bytes of text, without the terminating NUL.
    unsigned int length;

    /// Sets refs to 1 and writes the terminating NUL after `size` bytes of text, which the caller fills.
    ///
    /// Only for storage that has room for them: the text stands directly after the object.
    explicit DBuffer(unsigned int size);
    /// Not copied: a copy has no text; see newBuffer().
    DBuffer(DBuffer const&) = delete;
    /// Not assigned: the texts may differ in length.
    DBuffer& operator=(DBuffer const&) = delete;
    /// Does nothing of its own. Owners call release().
    ~DBuffer() override;

    /// @name Owners
    /// All that changes or reads refs. As long as the process has one thread the count is a plain number,
    /// which costs no atomic instruction; with more threads it changes indivisibly.
    ///
    /// A count of 2147483648 or more is *pinned*: it does not change any more, and the buffer stays for the
    /// life of the process. That is what happens to the shared empty buffers once the process has more than
    /// one thread, so that threads with strings of their own do not meet in the count of the empty ones.
    /// @{

    /// Adds an owner.
    KELCL_LOCAL void take() noexcept;

    /// Removes an owner; if that was the last one, destroys the buffer.
    KELCL_LOCAL void release() noexcept;

    /// Whether nobody else can see the text, so that its owner may change it in place.
    KELCL_LOCAL bool hasOneOwner() const noexcept { return owners() < 2; }

    /// The number of owners at this moment, or any number from 2147483648 on if it is pinned.
    KELCL_LOCAL unsigned int owners() const noexcept { return __atomic_load_n(&refs, __ATOMIC_ACQUIRE); }
    /// @}

    /// "className(@address,refs=count,len=length,data=[text])", of a text of 24 bytes or more the first and
    /// last 10.
    ///
    /// The address is decimal. A shorter text is shown up to its first NUL.
    DString asDebugInfo() const override;

    /// Where in its multi-byte character the byte at `index` stands, 0 for a character of one byte: always 0
    /// here.
    virtual unsigned int charType(unsigned int index) const;

    /// The character after `p` in multi-byte text; here `p` itself: callers rely on it.
    virtual char* next(char const* p);

    /// The character after `p` in multi-byte text; here `p` itself: callers rely on it.
    virtual char const* next(char const* p) const;

    /// Compares with `otherLength` bytes: 0 equal, 1 this text sorts after them, 2 before. A null `other`
    /// gives 1.
    ///
    /// Collates through the locale if DString::fgI18NState is 1, else compares bytes, where a prefix sorts
    /// first. Collation takes the pieces between NULs one by one, and returns 2 if out of memory.
    /// @throws DInvalidRequest (recoverable) if collation fails; its id is the `errno` value.
    virtual int compare(void const* other, unsigned int otherLength) const;

    /// Exactly `count` bytes from `start` (0 counts as 1), padded where the text runs out.
    /// @throws DInvalidRequest (message 1010, recoverable) for a `count` of 0xFFFFFFE7 or more.
    virtual DBuffer* subString(unsigned int start, unsigned int count, char padCharacter) const;

    /// The text from `start` (0 counts as 1) to the end; empty at length + 1.
    /// @throws DInvalidRequest (message 1010, recoverable) for a `start` past length + 1.
    virtual DBuffer* subString(unsigned int start) const;

    /// @name Classification
    /// Empty texts are of no class. Values up to 127 are classified as in the C locale, others by the current
    /// locale.
    /// @{

    /// Whether the text is not empty and holds only letters and digits: `isalnum`.
    virtual bool isAlphanumeric() const;

    /// Whether the text is not empty and holds only letters: `isalpha`.
    virtual bool isAlphabetic() const;

    /// Whether the text is not empty and no byte is above 127.
    virtual bool isASCII() const;

    /// Whether the text is not empty and holds only control characters: `iscntrl`.
    virtual bool isControl() const;

    /// Whether the text is not empty and holds only the digits 0 to 9: `isdigit`.
    virtual bool isDigits() const;

    /// Whether the text is not empty and holds only characters with a shape, without blanks: `isgraph`.
    virtual bool isGraphics() const;

    /// Whether the text is not empty and holds only the digits 0 to 9, a to f and A to F: `isxdigit`.
    virtual bool isHexDigits() const;

    /// Whether the text is not empty and holds only lower-case letters: `islower`.
    virtual bool isLowerCase() const;

    /// Whether the text is not empty and holds only printable characters, blanks included: `isprint`.
    virtual bool isPrintable() const;

    /// Whether the text is not empty and holds only punctuation: `ispunct`.
    virtual bool isPunctuation() const;

    /// Whether the text is not empty and holds only upper-case letters: `isupper`.
    virtual bool isUpperCase() const;

    /// Whether the text is not empty and holds only white space: `isspace`.
    virtual bool isWhiteSpace() const;
    /// @}

    /// @name Kinds of characters
    /// What kinds of characters the text is made of, constant here: a plain buffer has characters of one
    /// byte. "Multi-byte" means two bytes or more *and* two columns or more.
    /// @{

    /// Whether all characters are multi-byte: false here.
    virtual bool isMBCS() const;

    /// The same as isMBCS(): false here.
    virtual bool isDBCS() const;

    /// Whether no character is multi-byte: true here.
    virtual bool isSBCS() const;

    /// Whether all characters are of two bytes or more, well formed: true here, whatever the text.
    virtual bool isValidMBCS() const;

    /// The same as isValidMBCS(): true here.
    virtual bool isValidDBCS() const;

    /// Whether a character is multi-byte: false here.
    virtual bool includesMBCS() const;

    /// The same as includesMBCS(): false here.
    virtual bool includesDBCS() const;

    /// Whether a character is not multi-byte: true here, also for an empty text.
    virtual bool includesSBCS() const;
    /// @}

    /// @name Forward search
    /// What is found lies wholly inside the text, at or after startSearch().
    /// @{

    /// The first position at or after `start` (0 counts as 1) where the pattern stands, else 0. An empty
    /// pattern is found nowhere.
    virtual unsigned int indexOf(char const* pattern, unsigned int patternLength, unsigned int start) const;

    /// The same as indexOfAnyOf() with a test.
    virtual unsigned int indexOf(DStringTest const& test, unsigned int start) const;

    /// The first position at or after `start` (0 counts as 1) of a byte outside the set, else 0. With an
    /// empty set the start itself.
    virtual unsigned int indexOfAnyBut(char const* set, unsigned int setLength, unsigned int start) const;

    /// The first position at or after `start` (0 counts as 1) of a byte that the test rejects, else 0.
    virtual unsigned int indexOfAnyBut(DStringTest const& test, unsigned int start) const;

    /// The first position at or after `start` (0 counts as 1) of a byte of the set, else 0. An empty set
    /// finds nothing.
    virtual unsigned int indexOfAnyOf(char const* set, unsigned int setLength, unsigned int start) const;

    /// The first position at or after `start` (0 counts as 1) of a byte that the test accepts, else 0.
    virtual unsigned int indexOfAnyOf(DStringTest const& test, unsigned int start) const;
    /// @}

    /// @name Backward search
    /// What is found begins at or before startBackwardsSearch(). Unlike in a forward search, a `start` of 0
    /// finds nothing.
    /// @{

    /// The last position at or before `start` where the pattern stands, else 0. An empty pattern is found
    /// nowhere.
    virtual unsigned int lastIndexOf(char const* pattern, unsigned int patternLength,
                                     unsigned int start) const;

    /// The same as lastIndexOfAnyOf() with a test.
    virtual unsigned int lastIndexOf(DStringTest const& test, unsigned int start) const;

    /// The last position at or before `start` of a byte outside the set, else 0. With an empty set the start,
    /// at most the length.
    virtual unsigned int lastIndexOfAnyBut(char const* set, unsigned int setLength, unsigned int start) const;

    /// The last position at or before `start` of a byte that the test rejects, else 0.
    virtual unsigned int lastIndexOfAnyBut(DStringTest const& test, unsigned int start) const;

    /// The last position at or before `start` of a byte of the set, else 0. An empty set finds nothing.
    virtual unsigned int lastIndexOfAnyOf(char const* set, unsigned int setLength, unsigned int start) const;

    /// The last position at or before `start` of a byte that the test accepts, else 0.
    virtual unsigned int lastIndexOfAnyOf(DStringTest const& test, unsigned int start) const;
    /// @}

    /// @name Edits
    /// Each returns a buffer with one reference for the caller: the receiver if nothing changes, or if it has
    /// one owner and is edited in place, else a new one. What would reach 0xFFFFFFE7 bytes throws
    /// DInvalidRequest (message 1010, recoverable).
    /// @{

    /// The text centred in `width` bytes; an odd pad byte is put on the right, and an odd byte is cut on the
    /// right.
    virtual DBuffer* center(unsigned int width, char padCharacter);

    /// Replaces up to `maxCount` non-overlapping occurrences of the pattern, from `start` (0 counts as 1) on.
    ///
    /// An empty pattern is found nowhere. Done in place for a replacement of the same length.
    virtual DBuffer* change(char const* pattern, unsigned int patternLength, char const* replacement,
                            unsigned int replacementLength, unsigned int start, unsigned int maxCount);

    /// The text repeated `times` times; 0 gives the empty text.
    virtual DBuffer* copy(unsigned int times);

    /// `n` bytes of `p` inserted after `position`, in front at 0; past the end of the text padded up to it.
    virtual DBuffer* insert(char const* p, unsigned int n, unsigned int position, char padCharacter);

    /// The text on the left of `width` bytes, cut or padded on the right.
    virtual DBuffer* leftJustify(unsigned int width, char padCharacter);

    /// ASCII letters in lower case, whatever the locale. A multi-byte buffer with the switch on maps through
    /// the locale.
    virtual DBuffer* lowerCase();

    /// `n` bytes of `p` written over the text at `position` (0 counts as 1), past the end of the text padded
    /// up to it.
    virtual DBuffer* overlayWith(char const* p, unsigned int n, unsigned int position, char padCharacter);

    /// The text without up to `count` bytes from `start` (0 counts as 1) on. A `count` of 0 still makes a new
    /// buffer.
    virtual DBuffer* remove(unsigned int start, unsigned int count);

    /// The characters in reverse order.
    virtual DBuffer* reverse();

    /// The text on the right of `width` bytes, cut or padded on the left.
    virtual DBuffer* rightJustify(unsigned int width, char padCharacter);

    /// The text without the characters of the set at the ends that `mode` names.
    virtual DBuffer* strip(char const* set, unsigned int setLength, DStringEnum::StripMode mode);

    /// The text without the characters that the test accepts at the ends that `mode` names.
    virtual DBuffer* strip(DStringTest const& test, DStringEnum::StripMode mode);

    /// Each character of the input set replaced by the one at the same place of the output set, or by
    /// `padCharacter` where that is shorter.
    ///
    /// Of a character that stands in the input set twice the first place counts.
    virtual DBuffer* translate(char const* inputSet, unsigned int inputLength, char const* outputSet,
                               unsigned int outputLength, char padCharacter);

    /// ASCII letters in upper case, whatever the locale. A multi-byte buffer with the switch on maps through
    /// the locale.
    virtual DBuffer* upperCase();
    /// @}

    /// Where a forward search from `start` (0 counts as 1) for `patternLength` bytes begins; 0 if there is no
    /// room for a match.
    ///
    /// @code
    /// DString const text("abcabc");
    /// DBuffer const& buffer = *DBuffer::fromContents(text.c_str());
    /// std::cout << buffer.startSearch(0, 2) << buffer.startSearch(6, 2) << '\n'; // 10
    /// std::cout << buffer.startBackwardsSearch(9, 2) << buffer.startBackwardsSearch(0, 2) << '\n'; // 50
    /// std::cout << buffer.indexOf("bc", 2, 0) << buffer.lastIndexOf("bc", 2, 0) << '\n'; // 20
    /// std::cout << buffer.indexOfAnyBut("", 0, 4) << buffer.lastIndexOfAnyBut("", 0, 9) << '\n'; // 46
    /// @endcode
    virtual unsigned int startSearch(unsigned int start, unsigned int patternLength) const;

    /// Where a backward search from `start` for `patternLength` bytes begins: at most where a match still
    /// fits; 0 if `start` is 0 or the pattern is longer than the text.
    virtual unsigned int startBackwardsSearch(unsigned int start, unsigned int patternLength) const;

    /// The factory of new buffers: a buffer of `size` bytes, yet to be filled, with one reference.
    ///
    /// A plain buffer makes plain buffers while MB_CUR_MAX is 1, else multi-byte ones. An override returns
    /// objects of its own class, or those that a library class's `allocate` made: only these have room after
    /// the text, in which a string may let it grow. A longer buffer than asked for is cut to `size`; for null
    /// and for a shorter one operations throw std::bad_alloc.
    /// @throws DInvalidRequest (message 1010, recoverable) for a `size` of 0xFFFFFFE7 or more.
    virtual DBuffer* allocate(unsigned int size) const;

    /// The class's name. Compare the pointers to tell whether two buffers are of one class.
    virtual char const* className() const;

    /// A buffer of up to three consecutive pieces, made by the virtual allocate(). A piece whose pointer is
    /// null is that many pad characters.
    ///
    /// An empty result is the shared empty buffer that suits the receiver, with a reference added.
    /// @throws DInvalidRequest (message 1010, recoverable) if the lengths add up to 0xFFFFFFE7 or more.
    DBuffer* newBuffer(void const* p1, unsigned int l1, void const* p2 = nullptr, unsigned int l2 = 0,
                       void const* p3 = nullptr, unsigned int l3 = 0, char padCharacter = ' ') const;

    /// The shared empty buffer that suits this one. No reference is added.
    DBuffer* null() const;

    /// Reports and throws the length overflow: DInvalidRequest, message and id 1010, recoverable.
    [[noreturn]] void overflow() const;

    /// The text, NUL-terminated. Write to it only as the one owner.
    char* contents() { return reinterpret_cast<char*>(this + 1); }

    /// The text, NUL-terminated.
    char const* contents() const { return reinterpret_cast<char const*>(this + 1); }

    /// The buffer whose text begins at `text`: the inverse of contents(). No reference is added.
    static DBuffer* fromContents(char const* text) {
        return reinterpret_cast<DBuffer*>(const_cast<char*>(text)) - 1;
    }

    /// Makes a fresh empty buffer of the current mode, owned by the caller.
    ///
    /// In a multi-byte locale also makes a fresh nullDBuffer; the former one stays alive, as others may hold
    /// it. nullBuffer stays what it is.
    static DBuffer* initialize();

    /// nullBuffer, made first if needed. No reference is added.
    static DBuffer* defaultBuffer();

    /// The shared empty buffer of the default class; null until first needed. Its class is settled then, by
    /// the locale of that moment.
    static DBuffer* nullBuffer;

    /// The shared empty plain buffer of a multi-byte process, else null.
    static DBuffer* nullDBuffer;

    /// Frees a block with array delete, as blocks come from array new.
    static void operator delete(void* block) noexcept;

private:
    static constexpr unsigned int pinned = 0x80000000;

    KELCL_LOCAL static bool processHasOneThread() noexcept;

    // Out of line, so that what every string's destructor has in line stays small.
    KELCL_LOCAL __attribute__((noinline)) void destroy() noexcept {
        if (length != 0 || !pinIfSharedEmpty()) delete this;
    }

    KELCL_LOCAL bool pinIfSharedEmpty() noexcept;
};

// Implementation details only past this point.
/// @cond

inline bool DBuffer::processHasOneThread() noexcept { return kelcl::processHasOneThread(); }

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

// The shared empty buffers are pinned when a second thread first meets them, and whenever somebody gave back
// more references than were taken.
inline bool DBuffer::pinIfSharedEmpty() noexcept {
    if (this != __atomic_load_n(&nullBuffer, __ATOMIC_RELAXED) &&
        this != __atomic_load_n(&nullDBuffer, __ATOMIC_RELAXED))
        return false;
    __atomic_store_n(&refs, pinned + pinned / 2, __ATOMIC_RELAXED); // far from what is still being counted
    return true;
}

/// @endcond

#endif
