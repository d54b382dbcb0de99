// How values of the library are written where a format string names them, for std::format and {fmt} alike:
// each gives its own formatter a member of these, as neither knows the other's. Included by dtext.h and
// fmt.h; not for hosts.
#ifndef KELCL_DETAIL_FORMATTING_H
#define KELCL_DETAIL_FORMATTING_H

#include <kelcl/ddate.h>
#include <kelcl/dexception.h>
#include <kelcl/dstring.h>
#include <kelcl/dtime.h>

#include <algorithm>
#include <string_view>

namespace kelcl::detail {

/// Formats a date or a time by a pattern of `strftime`, as in `{:%d.%m.%Y}`; without one as `asString()`
/// does.
template <class Moment>
class MomentFormat {
public:
    template <class Context>
    constexpr auto parse(Context& context) {
        auto const begin = context.begin();
        auto const end = std::find(begin, context.end(), '}');
        if (begin != end) pattern_ = std::string_view(&*begin, static_cast<std::size_t>(end - begin));
        return end;
    }
    template <class Context>
    auto format(Moment const& moment, Context& context) const {
        DString const text =
            pattern_.empty() ? moment.asString() : moment.asString(DString(pattern_).c_str());
        return std::copy(text.begin(), text.end(), context.out());
    }

private:
    std::string_view pattern_;
};

/// Name and text of an exception, as in "DAccessError: the letter is lost"; the name alone if it has no text.
inline DString description(DException const& exception) {
    DString result(exception.name());
    if (exception.textCount() != 0) (result += ": ") += exception.text(0);
    return result;
}

} // namespace kelcl::detail

#endif
