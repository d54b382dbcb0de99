// DString: reading from and writing to streams. Reading takes runs out of the stream's buffer and leaves the
// last step of each run to the stream's own functions, which set its state.
#include "buffers/host_classes.h"
#include "buffers/length.h"
#include "bytes/byte_search.h"
#include "characters/locale_encoding.h"

#include <kelcl/dstring.h>

#include <algorithm>
#include <cstring>
#include <istream>
#include <limits>
#include <locale>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>

namespace {

using Traits = std::istream::traits_type;

/// The bytes that a stream buffer holds ready. The accessors are protected; a derived class may name them as
/// members of the base.
class ReadyBytes : private std::streambuf {
public:
    static std::string_view of(std::istream const& in) {
        if (!in.good()) return {};
        std::streambuf& source = *in.rdbuf();
        char const* const next = (source.*&ReadyBytes::gptr)();
        return {next, static_cast<std::size_t>((source.*&ReadyBytes::egptr)() - next)};
    }
    static void take(std::istream const& in, std::size_t count) {
        constexpr std::size_t most = std::numeric_limits<int>::max();
        std::streambuf& source = *in.rdbuf();
        for (; count > most; count -= most)
            (source.*&ReadyBytes::gbump)(static_cast<int>(most));
        (source.*&ReadyBytes::gbump)(static_cast<int>(count));
    }
};

} // namespace

DString DString::lineFrom(std::istream& in, char delimiter) {
    DString line;
    for (;;) {
        std::string_view const ready = ReadyBytes::of(in);
        std::size_t const count = std::min(kelcl::findByte(ready, delimiter), ready.size());
        if (count != 0) {
            line += ready.substr(0, count);
            ReadyBytes::take(in, count);
        }
        Traits::int_type const next =
            in.get(); // the delimiter, the first byte of a refilled buffer, or the end
        if (!in || Traits::eq_int_type(next, Traits::to_int_type(delimiter))) return line;
        line += Traits::to_char_type(next);
    }
}

namespace {

/// Takes the bytes up to the next white space of the stream's locale, at most so many as a field of `width`
/// has room for with a NUL. A width below 1 means any number.
DString takeWord(std::istream& in, std::streamsize width) {
    std::size_t room =
        width < 1 ? std::numeric_limits<std::size_t>::max() : static_cast<std::size_t>(width) - 1;
    DString word;
    std::locale const locale = in.getloc();
    auto const& characters = std::use_facet<std::ctype<char>>(locale);
    while (room != 0 && !Traits::eq_int_type(in.peek(), Traits::eof())) {
        char const single = Traits::to_char_type(in.peek());
        std::string_view ready = ReadyBytes::of(in);
        bool const buffered = !ready.empty();
        ready = buffered ? ready.substr(0, room) : std::string_view(&single, 1);
        char const* const end = ready.data() + ready.size();
        char const* const stop = characters.scan_is(std::ctype_base::space, ready.data(), end);
        auto const count = static_cast<std::size_t>(stop - ready.data());
        word += ready.substr(0, count);
        room -= count;
        if (buffered)
            ReadyBytes::take(in, count);
        else if (count != 0)
            in.get();
        if (stop != end) break;
    }
    return word;
}

/// Whether a word may simply take the place of a text, which is not empty: its buffer is of the same class
/// then, and no removal after the word has anything to repair.
bool standsForItself(DString const& word, DString const& text) {
    DBuffer const& old = *DBuffer::fromContents(text.c_str());
    if (!kelcl::growsInPlace(old)) return false;
    if (kelcl::isSingleByteClass(old) || word.isEmpty() || word.length() >= old.length) return true;
    bool const isUtf8 = kelcl::isUtf8Locale();
    return kelcl::standsAlone(word.end()[-1], isUtf8) ||
           kelcl::standsAlone(old.contents()[word.length()], isUtf8);
}

/// Puts a word in the place of a text that is not empty. The old text is the work space: the word is written
/// over its front, where that is too short it is doubled with blanks, and then the buffer's own removal cuts
/// it after the word. So the text keeps its class, and the removal decides where the end of the word and what
/// follows it look like one character.
void replaceText(DString& text, DString const& word) {
    unsigned int const count = word.length();
    unsigned int space = text.length();
    if (count <= space) {
        text.prepareToChange();
        char* const front = const_cast<char*>(text.c_str());
        std::string const before(front, count);
        std::memcpy(front, word.data(), count);
        try {
            text.remove(count + 1);
        } catch (...) {
            std::memcpy(front, before.data(), count);
            throw;
        }
        return;
    }
    while (space < count)
        space = kelcl::lengthSum(space, space);
    DBuffer const& old = *DBuffer::fromContents(text.c_str());
    DString longer(old.newBuffer(word.data(), count, nullptr, space - count));
    text = std::move(longer.remove(count + 1));
}

} // namespace

std::istream& operator>>(std::istream& in, DString& text) {
    std::streamsize const width = in.width(0);
    std::istream::sentry const skipped(in);
    DString word = skipped ? takeWord(in, width) : DString();
    // Of the blanks that are the work space of an empty text nothing would be left.
    if (text.isEmpty() || standsForItself(word, text))
        text = std::move(word);
    else
        replaceText(text, word);
    return in;
}

std::ostream& operator<<(std::ostream& out, DString const& text) {
    return out << std::string_view(text.c_str(),
                                   std::min<std::size_t>(kelcl::findByte(text, '\0'), text.length()));
}
