// Numbers from text, as `std::from_chars` reads them, whose header costs a compiler much. Included by
// dtext.h; not for hosts.
#ifndef KELCL_DETAIL_NUMBERS_H
#define KELCL_DETAIL_NUMBERS_H

#include <kelcl/dexport.h>

#include <cstddef>
#include <string_view>
#include <type_traits>

namespace kelcl::detail {

/// Whether a type is one of those that `std::from_chars` reads: any arithmetic type but `bool` and the types
/// of characters other than `char`.
template <class T>
constexpr bool isNumber() {
    if constexpr (!std::is_integral_v<T>)
        return std::is_floating_point_v<T>;
    else if constexpr (std::is_same_v<T, bool>)
        return false;
    else
        return std::is_same_v<T, char> || std::is_same_v<T, std::make_signed_t<T>> ||
               std::is_same_v<T, std::make_unsigned_t<T>>;
}

/// Reads a number that all of the text is; false if the text is none, or the number does not fit.
KELCL_EXPORT bool readNumber(std::string_view text, float& number);
KELCL_EXPORT bool readNumber(std::string_view text, double& number);
KELCL_EXPORT bool readNumber(std::string_view text, long double& number);

template <class Integer, class = std::enable_if_t<std::is_integral_v<Integer>>>
bool readNumber(std::string_view text, Integer& number) {
    using Amount = std::make_unsigned_t<Integer>;
    constexpr auto all = static_cast<Amount>(-1);
    bool const isNegative = std::is_signed_v<Integer> && !text.empty() && text[0] == '-';
    auto const limit = static_cast<Amount>(std::is_signed_v<Integer> ? all / 2 + (isNegative ? 1 : 0) : all);
    auto const tenth = static_cast<Amount>(limit / 10);
    auto const lastDigit = static_cast<unsigned int>(limit % 10);

    std::size_t at = isNegative ? 1 : 0;
    if (at == text.size()) return false;
    Amount amount = 0;
    for (; at < text.size(); ++at) {
        unsigned int const digit = static_cast<unsigned char>(text[at]) - static_cast<unsigned int>('0');
        if (digit > 9 || amount > tenth || (amount == tenth && digit > lastDigit)) return false;
        amount = static_cast<Amount>(amount * 10 + digit);
    }
    number = static_cast<Integer>(isNegative ? 0 - amount : amount);
    return true;
}

} // namespace kelcl::detail

#endif
