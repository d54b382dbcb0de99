// A plain model of the operations of multi-byte text for the random test. It walks its texts a character at a
// time with the C library, is meant to be obviously right, not fast, and asks the library for nothing but the
// national-language switch. Positions are those of bytes, from 1, unless they are called numbers.
#ifndef KELCL_TESTS_BUFFERS_MODEL_H
#define KELCL_TESTS_BUFFERS_MODEL_H

#include <kelcl/dbuffer.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace model {

using std::string;
using std::string_view;
using std::wstring;

using Function = int (*)(int);

constexpr auto invalid = static_cast<std::size_t>(-1);
constexpr auto incomplete = static_cast<std::size_t>(-2);

/// Whether the national-language switch is on.
bool wideMode();

/// What the model says that is thrown. A line of 0 stands for any: several arguments are bad.
struct Failure {
    unsigned long id;
    unsigned long line;
};

/// Bytes with enough NULs after them for the C library to look ahead.
class Text {
public:
    Text(string_view bytes) // NOLINT: a text is what its bytes are
        : bytes_(string(bytes) + string(8, '\0')), length(static_cast<unsigned int>(bytes.size())) {}

private:
    string bytes_;

public:
    unsigned int length;
    char const* at(unsigned int position) const { return bytes_.data() + position - 1; }
    string_view view() const { return {bytes_.data(), length}; }
    string piece(unsigned int position, unsigned int count) const {
        return bytes_.substr(position - 1, count);
    }
    string from(unsigned int position) const {
        return position > length ? "" : string(view().substr(position - 1));
    }
};

// Characters

/// Bytes of the character at `p`; 1 for bytes that are none.
unsigned int characterLength(char const* p);
/// 0 for a character of one byte, else the place of the byte in its character from 1 on.
unsigned int typeOf(Text const& t, unsigned int index);
/// Bytes of the character before `index`.
unsigned int previousLength(Text const& t, unsigned int index);
/// Whether the character at `index` is one of the set's.
bool isMember(Text const& t, unsigned int index, Text const& set);

// Wide values. Bytes that are no character and values that have none throw a Failure.

wstring widened(Text const& t);
/// The arguments as wide characters: one failure, whichever comes first when several are bad.
std::vector<wstring> allWidened(std::vector<Text> const& texts);
string narrowed(wstring const& wide);
/// The whole characters that fit into `width` bytes, then pads.
string narrowedTo(unsigned int width, wstring const& wide, char pad);
/// What the characters from a position on become when they are converted and brought back. Sequences of two
/// wide characters, which would not come back, stay as they are.
std::vector<string> broughtBack(Text const& t, unsigned int position);

// Positions by characters; 0 where there is none or bytes before it are no character

/// Where the character begins that has this number.
unsigned int bytePosition(Text const& t, unsigned int number);
/// The number of the character that the byte belongs to.
unsigned int characterNumber(Text const& t, unsigned int position);
/// The number of the first character that begins at the position or after it.
unsigned int nextCharacterNumber(Text const& t, unsigned int position);

// Searches; 0 where nothing is found

/// Where searches for `n` bytes begin.
unsigned int startForward(Text const& t, unsigned int start, unsigned int n);
unsigned int startBackward(Text const& t, unsigned int start, unsigned int n);

unsigned int indexOf(Text const& t, Text const& pattern, unsigned int start);
unsigned int indexOfAnyOf(Text const& t, Text const& set, unsigned int start);
unsigned int indexOfAnyBut(Text const& t, Text const& set, unsigned int start);
unsigned int lastIndexOf(Text const& t, Text const& pattern, unsigned int start);
unsigned int lastIndexOfAnyOf(Text const& t, Text const& set, unsigned int start);
unsigned int lastIndexOfAnyBut(Text const& t, Text const& set, unsigned int start);

unsigned int indexOfAnyOf(Text const& t, Function test, unsigned int start);
unsigned int indexOfAnyBut(Text const& t, Function test, unsigned int start);
unsigned int lastIndexOfAnyOf(Text const& t, Function test, unsigned int start);
unsigned int lastIndexOfAnyBut(Text const& t, Function test, unsigned int start);
/// By the wide values, whatever the switch.
unsigned int windexOfAnyBut(Text const& t, Function test, unsigned int start);

// Edits

/// The result of an edit. Unchanged: the receiver itself comes back. In place: it does when it is the sole
/// owner.
struct Edited {
    enum class Where { fresh, unchanged, inPlace };
    string bytes;
    Where where = Where::fresh;
};

/// The receiver itself.
Edited same(Text const& t);
Edited caseOf(Text const& t, bool upper);
Edited translated(Text const& t, Text const& from, Text const& to, char pad);
Edited stripped(Text const& t, Text const& set, DStringEnum::StripMode mode);
Edited stripped(Text const& t, Function test, DStringEnum::StripMode mode);
Edited reversed(Text const& t);
Edited overlaid(Text const& t, Text const& data, unsigned int position, char pad);
Edited leftJustified(Text const& t, unsigned int width, char pad);
Edited rightJustified(Text const& t, unsigned int width, char pad);
Edited inserted(Text const& t, Text const& data, unsigned int position, char pad);
Edited centered(Text const& t, unsigned int width, char pad);
Edited removed(Text const& t, unsigned int start, unsigned int count);
Edited changed(Text const& t, Text const& pattern, Text const& replacement, unsigned int start,
               unsigned int most);
/// The text from `start` on.
string remainOf(Text const& t, unsigned int start, char pad);
/// `count` bytes from `start` on.
string subStringOf(Text const& t, unsigned int start, unsigned int count, char pad);

} // namespace model

#endif
