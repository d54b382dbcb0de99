// The text arguments of DString: what may be given as one, and how its bytes are reached. Included by
// dstring.h; not for hosts.
#ifndef KELCL_DETAIL_TEXT_H
#define KELCL_DETAIL_TEXT_H

#include <kelcl/dbuffer.h>

#include <cstddef>
#include <cstring>
#include <string_view>
#include <type_traits>
#include <utility>

class DString;

namespace kelcl {

/// The bytes of a text argument; `data` may be null when `length` is 0.
struct Text {
    char const* data;
    unsigned int length;
};

/// `size` as a length of 32 bits.
/// @throws DInvalidRequest (message 1010, recoverable) when it does not fit.
inline unsigned int checkedLength(std::size_t size) {
    if (size > 0xFFFFFFFF) DBuffer::defaultBuffer()->overflow();
    return static_cast<unsigned int>(size);
}

/// What may be given as a text: `char const*` (null counts as empty), `DString`, `std::string`,
/// `std::string_view`.
template <class T>
inline constexpr bool isText = std::is_convertible_v<T const&, std::string_view> || std::is_null_pointer_v<T>;

template <class T>
using IfText = std::enable_if_t<isText<T>>;

/// A text that is not a `DString`, or of a class derived from it, already.
template <class T>
using IfOtherText = std::enable_if_t<isText<T> && !std::is_base_of_v<DString, T>>;

/// What may be appended beside a `DString`: another text or one `char`.
template <class T>
using IfOtherPiece =
    std::enable_if_t<(isText<T> && !std::is_base_of_v<DString, T>) || std::is_same_v<T, char>>;

/// An integer of a type that has no overload of its own and is not promoted to one that has.
template <class I>
using IfOtherInteger = std::enable_if_t<std::is_integral_v<I> && sizeof(I) >= sizeof(int) &&
                                        !std::is_same_v<I, int> && !std::is_same_v<I, unsigned int>>;

template <class I>
constexpr bool isNegative(I index) noexcept {
    if constexpr (std::is_signed_v<I>)
        return index < 0;
    else
        return false;
}

/// An index that is not negative, or the largest, which is past the end of every text, in its place.
template <class I>
constexpr unsigned int cutToLength(I index) noexcept {
    if constexpr (sizeof(I) > sizeof(unsigned int))
        if (index > I{0xFFFFFFFF}) return 0xFFFFFFFF;
    return static_cast<unsigned int>(index);
}

/// `std::filesystem::path`, known by what only it has, as its header costs a compiler much.
template <class Path>
using IfPath = std::enable_if_t<std::is_convertible_v<typename Path::string_type, std::string_view>,
                                decltype(std::declval<Path&>().replace_extension())>;

/// An iterator of bytes.
template <class It>
using IfIterator = std::enable_if_t<std::is_convertible_v<decltype(*std::declval<It&>()), char> &&
                                        std::is_convertible_v<decltype(++std::declval<It&>()), It&> &&
                                        !std::is_null_pointer_v<It>,
                                    typename std::iterator_traits<It>::iterator_category>;

/// A function that tells whether it wants a character. A type of values, which tells templates apart from
/// those for texts.
template <class F>
using IfTest = std::enable_if_t<std::is_convertible_v<std::invoke_result_t<F const&, int>, bool> &&
                                    !isText<F> && !std::is_convertible_v<F const&, DStringTest const&>,
                                int>;

/// The type of what such a function takes, where its own type tells it; a generic lambda takes an `int`.
template <class F, class = void>
struct TakenBy {
    using Type = int;
};
template <class R, class P>
struct TakenBy<R(P)> {
    using Type = std::decay_t<P>;
};
template <class R, class P>
struct TakenBy<R (*)(P)> : TakenBy<R(P)> {};
template <class R, class C, class P>
struct TakenBy<R (C::*)(P) const> : TakenBy<R(P)> {};
template <class R, class C, class P>
struct TakenBy<R (C::*)(P) const noexcept> : TakenBy<R(P)> {};
template <class F>
struct TakenBy<F, std::void_t<decltype(&F::operator())>> : TakenBy<decltype(&F::operator())> {};

/// Whether type P holds the value of a character: of a byte, which may be negative, or a wide one.
template <class P>
constexpr bool isHeldBy(int value) noexcept {
    if constexpr (std::is_arithmetic_v<P>)
        return value < 0 || static_cast<int>(static_cast<P>(value)) == value;
    else
        return true;
}

/// Such a function as a test, while a call lasts. What its parameter cannot hold it is not asked about, and
/// does not want: a wide character cut to a `char` would be another one.
template <class F>
class TestBy : public DStringTest {
    using Taken = typename TakenBy<F>::Type;

public:
    explicit TestBy(F const& function) : DStringTest(plainFunction + 1, nullptr), wants_(function) {}
    int test(int c) const override { return isHeldBy<Taken>(c) && wants_(static_cast<Taken>(c)) ? 1 : 0; }

private:
    F const& wants_;
};

/// Whether one of the first `count` types is `char`.
template <std::size_t count, class... A>
constexpr bool isCharAmong() {
    if constexpr (sizeof...(A) == 0) {
        return false;
    } else {
        bool const areChars[] = {std::is_same_v<A, char>...};
        bool result = false;
        for (std::size_t i = 0; i < count && i < sizeof...(A); ++i)
            result = result || areChars[i];
        return result;
    }
}
template <std::size_t count, class... A>
using IfCharIsAmong = std::enable_if_t<isCharAmong<count, A...>()>;

/// The bytes of `text`; embedded NULs count in all but a `char const*`.
template <class T>
Text textOf(T const& text) {
    if constexpr (std::is_same_v<T, char>) {
        return {&text, 1};
    } else if constexpr (std::is_null_pointer_v<T>) {
        return {nullptr, 0};
    } else if constexpr (std::is_convertible_v<T const&, char const*>) {
        char const* const characters = text;
        return {characters, characters == nullptr ? 0 : checkedLength(std::strlen(characters))};
    } else {
        std::string_view const view = text;
        return {view.data(), checkedLength(view.size())};
    }
}

} // namespace kelcl

#endif
