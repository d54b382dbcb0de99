// DString: reading from and writing to streams. Reading takes runs out of the stream's buffer and leaves the
// last step of each run to the stream's own functions, which set its state.
#include "string/byte_search.h"

#include <kelcl/dstring.h>

#include <algorithm>
#include <cstring>
#include <istream>
#include <limits>
#include <locale>
#include <ostream>
#include <string_view>

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

std::istream& operator>>(std::istream& in, DString& text) {
    std::streamsize const width = in.width(0);
    std::size_t room =
        width < 1 ? std::numeric_limits<std::size_t>::max() : static_cast<std::size_t>(width) - 1;
    DString word;
    std::istream::sentry const skipped(in);
    if (skipped) {
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
    }
    text = std::move(word);
    return in;
}

std::ostream& operator<<(std::ostream& out, DString const& text) {
    return out << std::string_view(text.c_str(),
                                   std::min<std::size_t>(kelcl::findByte(text, '\0'), text.length()));
}
