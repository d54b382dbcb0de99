/// @file
/// Formatting by {fmt}: DString, DDate, DTime and exceptions as arguments of `fmt::format` and its kin. Not
/// part of kelcl.h, as it needs the headers of {fmt}.
///
/// A DString takes the format of a string, a date or a time a pattern of `strftime`, without width or
/// alignment; an exception is its name and text. Where the standard library has `std::format`, dtext.h does
/// the same for that.
///
/// @code
/// DDate const day(DDate::May, 17, 2024);
/// std::cout << fmt::format("{:.>8}|{:%d.%m.%Y}", DString("right"), day) << '\n'; // ...right|17.05.2024
/// std::cout << fmt::format("{:%H:%M}", DTime(9, 30)) << '\n';                    // 09:30
/// DAccessError const error("the letter is lost");
/// std::cout << fmt::format("{}", error) << '\n'; // DAccessError: the letter is lost
/// @endcode
#ifndef KELCL_FMT_H
#define KELCL_FMT_H

#include <kelcl/detail/formatting.h>

#include <fmt/format.h>

#include <string_view>
#include <type_traits>

/// @cond

/// Formats a DString as a string.
template <>
struct fmt::formatter<DString> : fmt::formatter<std::string_view> {
    /// Writes the text.
    template <class Context>
    auto format(DString const& text, Context& context) const {
        return fmt::formatter<std::string_view>::format(text, context);
    }
};

/// Formats a date by a pattern of `strftime`.
template <>
struct fmt::formatter<DDate> : kelcl::detail::MomentFormat<DDate> {};

/// Formats a time by a pattern of `strftime`.
template <>
struct fmt::formatter<DTime> : kelcl::detail::MomentFormat<DTime> {};

/// Formats an exception of any class as its name and text.
template <class Exception>
struct fmt::formatter<Exception, char, std::enable_if_t<std::is_base_of_v<DException, Exception>>>
    : fmt::formatter<std::string_view> {
    /// Writes name and text.
    template <class Context>
    auto format(DException const& exception, Context& context) const {
        return fmt::formatter<std::string_view>::format(kelcl::detail::description(exception), context);
    }
};

/// @endcond

#endif
