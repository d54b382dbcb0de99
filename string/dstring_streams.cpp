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

/// What the stream's locale takes for white space.
class Spaces {
public:
    explicit Spaces(std::istream const& in) : locale_(in.getloc()), characters_(facetOf(locale_)) {}

    /// The bytes in front of the first white space.
    std::string_view wordIn(std::string_view bytes) const {
        char const* const end = bytes.data() + bytes.size();
        char const* const stop = characters_.scan_is(std::ctype_base::space, bytes.data(), end);
        return bytes.substr(0, static_cast<std::size_t>(stop - bytes.data()));
    }

private:
    using Characters = std::ctype<char>;

    /// That of most streams is looked up once: doing so costs as much as reading a short word.
    static Characters const& facetOf(std::locale const& locale) {
        static Characters const& classic = std::use_facet<Characters>(std::locale::classic());
        return locale == std::locale::classic() ? classic : std::use_facet<Characters>(locale);
    }

    std::locale locale_; // keeps the facet alive
    Characters const& characters_;
};

/// A word that is read. The last `ready` bytes of it still stand in the stream.
struct Word {
    std::string_view text;
    std::size_t ready;
};

/// Finds the bytes up to the next white space, at most so many as a field of `width` has room for with a NUL.
/// A width below 1 means any number. Those of earlier fillings of the stream's buffer are taken into
/// `pieces`.
Word readWord(std::istream& in, std::streamsize width, DString& pieces) {
    std::size_t room =
        width < 1 ? std::numeric_limits<std::size_t>::max() : static_cast<std::size_t>(width) - 1;
    Spaces const spaces(in);
    for (;;) {
        std::string_view ready = ReadyBytes::of(in).substr(0, room);
        if (ready.empty()) {
            if (room == 0 || Traits::eq_int_type(in.peek(), Traits::eof())) return {pieces, 0};
            ready = ReadyBytes::of(in).substr(0, room);
        }
        if (ready.empty()) { // a stream without a buffer
            char const single = Traits::to_char_type(in.peek());
            if (spaces.wordIn({&single, 1}).empty()) return {pieces, 0};
            pieces += single;
            in.get();
            --room;
            continue;
        }
        std::string_view const word = spaces.wordIn(ready);
        bool const isWhole = word.size() < ready.size() || word.size() == room;
        if (isWhole && pieces.isEmpty()) return {word, word.size()};
        pieces += word;
        if (isWhole) return {pieces, word.size()};
        ReadyBytes::take(in, word.size());
        room -= word.size();
    }
}

DBuffer& bufferOf(DString const& text) { return *DBuffer::fromContents(text.c_str()); }

/// Whether a word may simply take the place of a text, which is not empty: its buffer is of the same class
/// then, and no removal after the word has anything to repair.
bool mayTakeThePlace(std::string_view word, DString const& text) {
    DBuffer const& old = bufferOf(text);
    if (!kelcl::growsInPlace(old)) return false;
    if (kelcl::isSingleByteClass(old) || word.empty() || word.size() >= old.length) return true;
    bool const isUtf8 = kelcl::isUtf8Locale();
    return kelcl::standsAlone(word.back(), isUtf8) || kelcl::standsAlone(old.contents()[word.size()], isUtf8);
}

/// Whether the only owner of a text that may grow in its block has room for a word there, and not very much
/// more.
bool fitsInBlock(std::string_view word, DBuffer const& text) {
    constexpr unsigned int little = 64;
    return !word.empty() && text.hasOneOwner() &&
           word.size() <= std::size_t{text.length} + kelcl::roomAfter(text.length) &&
           (text.length <= little || word.size() >= text.length / 2);
}

/// Makes a text, which is empty or for which the word stands, the word.
void assign(DString& text, std::string_view word) {
    DBuffer& own = bufferOf(text);
    if (text.isEmpty() || !fitsInBlock(word, own)) {
        text = word;
        return;
    }
    std::memmove(own.contents(), word.data(), word.size());
    own.contents()[word.size()] = '\0';
    own.length = static_cast<unsigned int>(word.size());
}

/// Puts a word in the place of a text that is not empty. The old text is the work space: the word is written
/// over its front, where that is too short it is doubled with blanks, and then the buffer's own removal cuts
/// it after the word. So the text keeps its class, and the removal decides where the end of the word and what
/// follows it look like one character.
void replaceText(DString& text, std::string_view word) {
    unsigned int const count = kelcl::checkedLength(word.size());
    unsigned int space = text.length();
    if (count <= space) {
        text.prepareToChange();
        char* const front = const_cast<char*>(text.c_str());
        std::string const before(front, count);
        word.copy(front, count); // an empty one may have no place to copy from
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
    DString longer(bufferOf(text).newBuffer(word.data(), count, nullptr, space - count));
    text = std::move(longer.remove(count + 1));
}

} // namespace

std::istream& operator>>(std::istream& in, DString& text) {
    std::streamsize const width = in.width(0);
    std::istream::sentry const skipped(in);
    DString pieces;
    Word const word = skipped ? readWord(in, width, pieces) : Word{};
    // Of the blanks that are the work space of an empty text nothing would be left.
    if (text.isEmpty() || mayTakeThePlace(word.text, text))
        assign(text, word.text);
    else
        replaceText(text, word.text);
    if (word.ready != 0) ReadyBytes::take(in, word.ready);
    return in;
}

std::ostream& operator<<(std::ostream& out, DString const& text) {
    return out << std::string_view(text.c_str()); // to its first NUL, which need not be its end
}
