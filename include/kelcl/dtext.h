/// @file
/// Text tools: free functions and lazy ranges over any text, beside the members of DString.
#ifndef KELCL_DTEXT_H
#define KELCL_DTEXT_H

#include <kelcl/detail/text_tools.h>
#include <kelcl/dstring.h>

#include <charconv>
#include <cstddef>
#include <optional>
#include <string_view>
#include <type_traits>
#include <utility>
#if __cplusplus >= 202002L && __has_include(<version>)
#include <version>
#endif

namespace kelcl {

/// @name Asking
/// The functions of this header take the same texts as DString: a `char const*` (null counts as empty), a
/// `DString`, a `std::string` or a `std::string_view`. Positions are 1-based and count bytes.
/// @{

/// Whether `text` begins with `prefix`; every text begins with the empty one.
///
/// @code
/// std::cout << kelcl::startsWith("2024-05-17 ERROR", "2024-") << '\n'; // 1
/// @endcode
template <class T, class U, class = IfText<T>, class = IfText<U>>
[[nodiscard]] bool startsWith(T const& text, U const& prefix) {
    std::string_view const front = detail::viewOf(prefix);
    return detail::viewOf(text).compare(0, front.size(), front) == 0;
}

/// Whether `text` ends with `suffix`, from the start of a character on; every text ends with the empty one.
///
/// @code
/// std::cout << kelcl::endsWith("journal.txt", ".txt") << '\n'; // 1
/// @endcode
template <class T, class U, class = IfText<T>, class = IfText<U>>
[[nodiscard]] bool endsWith(T const& text, U const& suffix) {
    std::string_view const whole = detail::viewOf(text);
    std::string_view const back = detail::viewOf(suffix);
    if (back.size() > whole.size()) return false;
    std::size_t const at = whole.size() - back.size();
    return whole.compare(at, back.size(), back) == 0 && detail::CharacterSteps().isStart(whole, at);
}

/// Whether the texts are the same but for letter case: ASCII letters are, and with the switch
/// DString::fgI18NState on those that the locale maps to the same small letter.
///
/// @code
/// std::cout << kelcl::equalsIgnoringCase("Content-Length", "content-length") << '\n'; // 1
/// @endcode
template <class T, class U, class = IfText<T>, class = IfText<U>>
[[nodiscard]] bool equalsIgnoringCase(T const& left, U const& right) {
    return DString::fgI18NState == 1 ? detail::equalInLocale(detail::viewOf(left), detail::viewOf(right))
                                     : detail::equalInAscii(detail::viewOf(left), detail::viewOf(right));
}

/// The position of the first place at or after `startPos` where the characters of `pattern` stand, whatever
/// their case; see equalsIgnoringCase(). 0 if there is none, or the pattern is empty.
///
/// Linear, with memory for both texts.
/// @throws DInvalidRequest (message 1012, unrecoverable), with the switch on, at bytes that are no character.
///
/// @code
/// std::cout << kelcl::indexOfIgnoringCase("Content-Type: TEXT/html", "text/") << '\n'; // 15
/// @endcode
template <class T, class U, class = IfText<T>, class = IfText<U>>
[[nodiscard]] unsigned int indexOfIgnoringCase(T const& text, U const& pattern, unsigned int startPos = 1) {
    std::string_view const whole = detail::viewOf(text);
    std::string_view const part = detail::viewOf(pattern);
    if (DString::fgI18NState == 1) return detail::indexInLocale(whole, part, startPos);
    return DString(whole).lowerCase().indexOf(DString(part).lowerCase(), startPos);
}

/// @}

/// @name Ranges
/// They are lazy: a piece is looked for when the loop comes to it, in time linear in what it passes.
/// A piece is a `std::string_view` of the text. The range shares the text of a
/// `DString` and keeps a copy of a `std::string` that is a temporary; any other text must stay as it is while
/// the range or one of its pieces is in use. Pieces of a shared or copied text must not outlive the range.
/// @{

/// The words of a text, by the rule of DString::word: what is between blanks, tabs and line ends (the bytes 9
/// to 13 and 32).
///
/// @code
/// for (std::string_view const word : kelcl::words("  the quick\tfox "))
///     std::cout << '<' << word << '>'; // <the><quick><fox>
/// std::cout << '\n';
/// @endcode
template <class T, class = IfText<std::decay_t<T>>>
[[nodiscard]] auto words(T&& text) {
    return detail::Pieces(detail::hold(std::forward<T>(text)), detail::WordFinder());
}

/// The pieces between the places where `separator`, a text or a `char`, stands from the start of a character
/// on. They may be empty: there is one more of them than separators, for an empty text one. With an empty
/// separator the text is one piece.
///
/// A separator that has a name must stay as it is while the range is in use; a temporary one is kept.
///
/// @code
/// for (std::string_view const field : kelcl::split("1275;Amsterdam;;NL", ';'))
///     std::cout << '[' << field << ']'; // [1275][Amsterdam][][NL]
/// std::cout << '\n';
/// @endcode
template <class T, class S, class = IfText<std::decay_t<T>>>
[[nodiscard]] auto split(T&& text, S&& separator) {
    return detail::Pieces(detail::hold(std::forward<T>(text)),
                          detail::SeparatorFinder(detail::holdSeparator(std::forward<S>(separator))));
}

/// The characters of a text in the encoding of the locale at this moment. Each byte that is part of no
/// character is a piece by itself.
///
/// @code
/// std::setlocale(LC_ALL, "en_US.UTF-8");
/// for (std::string_view const character : kelcl::characters("Z\u00FCri"))
///     std::cout << character.size(); // 1211
/// std::cout << '\n';
/// @endcode
template <class T, class = IfText<std::decay_t<T>>>
[[nodiscard]] auto characters(T&& text) {
    return detail::Pieces(detail::hold(std::forward<T>(text)), detail::CharacterFinder());
}

/// The lines of an input stream as `DString`s, without their delimiters; the last one need not have any. The
/// range reads as the loop goes on and can be walked once; the stream must live as long.
///
/// @code
/// std::istringstream journal("first\n\nlast\n");
/// for (DString const& line : kelcl::lines(journal))
///     std::cout << '<' << line << '>'; // <first><><last>
/// std::cout << '\n';
/// @endcode
template <class Stream>
[[nodiscard]] detail::Lines<Stream> lines(Stream& stream, char delimiter = '\n') {
    return detail::Lines<Stream>(stream, delimiter);
}

/// The texts of a range, of which each may be any text, with `separator`, a text or a `char`, between them.
/// @throws DInvalidRequest (message 1010, recoverable) when the result would be too long.
///
/// @code
/// std::cout << kelcl::join(kelcl::words("  the  quick fox "), "_") << '\n'; // the_quick_fox
/// @endcode
template <class Range, class S>
[[nodiscard]] DString join(Range&& texts, S const& separator) {
    DString result;
    bool isFirst = true;
    for (auto const& text : texts) {
        if (!isFirst) result += separator;
        isFirst = false;
        result += text;
    }
    return result;
}

/// @}

/// @name Numbers
/// @{

/// The number that all of the text is, written as C++ writes it, whatever the locale: an integer in decimal
/// with a minus sign or none, a floating-point number with a point or an exponent as well, or `inf` or `nan`.
/// Nothing if the text is something else (blanks around it, a plus sign, a second word) or the number does
/// not fit.
///
/// @code
/// std::cout << kelcl::toNumber<int>("-17").value_or(0) << '\n';         // -17
/// std::cout << kelcl::toNumber<int>("17 apples").has_value() << '\n';   // 0
/// std::cout << kelcl::toNumber<double>("2.5e3").value_or(0) << '\n';    // 2500
/// @endcode
template <class Number, class T, class = IfText<T>>
[[nodiscard]] std::optional<Number> toNumber(T const& text) {
    static_assert(std::is_arithmetic_v<Number> && !std::is_same_v<Number, bool>, "a type of numbers");
    std::string_view const digits = detail::viewOf(text);
    Number number{};
    char const* const end = digits.data() + digits.size();
    auto const [stop, error] = std::from_chars(digits.data(), end, number);
    if (error != decltype(error)() || stop != end) return std::nullopt;
    return number;
}

/// @}

/// @name Columns of a terminal
/// In the locale of the moment; nothing is thrown for bytes that are no character. Linear in the text.
/// @{

/// How many columns a text takes on a terminal: two for wide characters as those of Chinese, none for
/// combining and control characters, one for a byte that is part of no character, as the locale has it
/// (`wcwidth`).
///
/// @code
/// std::setlocale(LC_ALL, "en_US.UTF-8");
/// std::cout << kelcl::columns("\u6771\u4EAC Tokyo") << '\n'; // 10
/// @endcode
template <class T, class = IfText<T>>
[[nodiscard]] unsigned int columns(T const& text) {
    return detail::columnsIn(detail::viewOf(text));
}

/// The text in exactly `width` columns: its front, with pad characters of one column after it. A character of
/// two columns that only half fits gives way to a pad character.
///
/// @code
/// std::setlocale(LC_ALL, "en_US.UTF-8");
/// DString const capital("\u6771\u4EAC");
/// std::cout << kelcl::leftJustifiedInColumns(capital, 6, '.') << "|\n"; // 東京..|
/// std::cout << kelcl::leftJustifiedInColumns(capital, 3, '.') << "|\n"; // 東.|
/// @endcode
template <class T, class = IfText<T>>
[[nodiscard]] DString leftJustifiedInColumns(T const& text, unsigned int width, char padCharacter = ' ') {
    return detail::inColumns(detail::viewOf(text), width, padCharacter, detail::Side::left);
}

/// The text in exactly `width` columns: its end, with pad characters before it.
///
/// @code
/// std::cout << kelcl::rightJustifiedInColumns("1275", 6, '.') << '\n'; // ..1275
/// @endcode
template <class T, class = IfText<T>>
[[nodiscard]] DString rightJustifiedInColumns(T const& text, unsigned int width, char padCharacter = ' ') {
    return detail::inColumns(detail::viewOf(text), width, padCharacter, detail::Side::right);
}

/// The text in exactly `width` columns: its middle, with pad characters on both sides, the odd one after it.
///
/// @code
/// std::cout << kelcl::centeredInColumns("mid", 8, '.') << '\n'; // ..mid...
/// @endcode
template <class T, class = IfText<T>>
[[nodiscard]] DString centeredInColumns(T const& text, unsigned int width, char padCharacter = ' ') {
    return detail::inColumns(detail::viewOf(text), width, padCharacter, detail::Side::middle);
}

/// @}

} // namespace kelcl

// Implementation details only past this point.
/// @cond

#ifdef __cpp_lib_format

#include <kelcl/detail/formatting.h>

#include <concepts>
#include <format>

/// Formats a DString as a string.
template <>
struct std::formatter<DString> : std::formatter<std::string_view> {
    /// Writes the text.
    template <class Context>
    auto format(DString const& text, Context& context) const {
        return std::formatter<std::string_view>::format(text, context);
    }
};

/// Formats a date by a pattern of `strftime`.
template <>
struct std::formatter<DDate> : kelcl::detail::MomentFormat<DDate> {};

/// Formats a time by a pattern of `strftime`.
template <>
struct std::formatter<DTime> : kelcl::detail::MomentFormat<DTime> {};

/// Formats an exception of any class as its name and text.
template <std::derived_from<DException> Exception>
struct std::formatter<Exception> : std::formatter<std::string_view> {
    /// Writes name and text.
    template <class Context>
    auto format(DException const& exception, Context& context) const {
        return std::formatter<std::string_view>::format(kelcl::detail::description(exception), context);
    }
};

#endif

/// @endcond

#endif
