// What the text tools of dtext.h are made of: steps from character to character, lazy ranges of pieces,
// letter case, and columns. Included by dtext.h; not for hosts.
#ifndef KELCL_DETAIL_TEXT_TOOLS_H
#define KELCL_DETAIL_TEXT_TOOLS_H

#include <kelcl/ddbcsbuffer.h>
#include <kelcl/detail/text.h>
#include <kelcl/dnlsutil.h>
#include <kelcl/dstring.h>

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <cwctype>
#include <string_view>
#include <type_traits>
#include <utility>

namespace kelcl::detail {

/// The bytes of a text argument, of any length.
template <class T>
std::string_view viewOf(T const& text) {
    if constexpr (std::is_null_pointer_v<T>) {
        return {};
    } else if constexpr (std::is_convertible_v<T const&, char const*>) {
        char const* const characters = text;
        return characters == nullptr ? std::string_view() : std::string_view(characters);
    } else {
        return text;
    }
}

// Characters

/// The steps from one character to the next by the rule of the multi-byte buffer, in the locale of the moment
/// in which the object is made.
class CharacterSteps {
public:
    CharacterSteps() : alone_(MB_CUR_MAX == 1 ? 0x100U : isUtf8() ? 0x80U : 0x30U) {}

    /// The bytes of the character that starts at an offset.
    std::size_t lengthAt(std::string_view text, std::size_t at) const {
        if (standsAlone(text[at])) return 1;
        std::size_t const rest = text.size() - at;
        if (rest >= longest) return bytesOf(text.data() + at);
        char terminated[longest] = {}; // a character is looked for up to a NUL
        std::memcpy(terminated, text.data() + at, rest);
        std::size_t const bytes = bytesOf(terminated);
        return bytes < rest ? bytes : rest;
    }

    /// Whether a byte can only be the first one of a character.
    bool alwaysStarts(char byte) const {
        return standsAlone(byte) || (alone_ == 0x80 && static_cast<unsigned char>(byte) >= 0xC0);
    }

    /// Whether a character starts at an offset.
    bool isStart(std::string_view text, std::size_t at) const {
        if (at == text.size() || alwaysStarts(text[at])) return true;
        std::size_t start = at;
        while (start > 0 && !standsAlone(text[start - 1]))
            --start;
        while (start < at)
            start += lengthAt(text, start);
        return start == at;
    }

private:
    static constexpr std::size_t longest = 6;

    static bool isUtf8();
    static std::size_t bytesOf(char const* p) {
        return static_cast<std::size_t>(DDBCSBuffer::charLength(p, nullptr));
    }
    /// Whether a byte is never part of a longer character.
    bool standsAlone(char byte) const { return static_cast<unsigned char>(byte) < alone_; }

    unsigned int alone_; ///< Bytes below are.
};

/// Whether the locale's encoding is UTF-8: it alone has this character in these bytes.
inline bool CharacterSteps::isUtf8() {
    wchar_t value = 0;
    std::mbstate_t state{};
    return MB_CUR_MAX >= 4 && std::mbrtowc(&value, "\xF0\x9F\x98\x80", 4, &state) == 4 && value == 0x1F600;
}

/// The wide value of a character, or of one byte that is none; `isCharacter` tells which.
struct CharacterValue {
    explicit CharacterValue(std::string_view character)
        : value(static_cast<unsigned char>(character.front())) {
        std::mbstate_t state{};
        wchar_t wide = 0;
        isCharacter = std::mbrtowc(&wide, character.data(), character.size(), &state) <= character.size();
        if (isCharacter) value = static_cast<std::wint_t>(wide);
    }
    std::wint_t value;
    bool isCharacter;
};

// Letter case

inline char inSmallAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; }

/// Whether texts differ in the case of their ASCII letters only.
inline bool equalInAscii(std::string_view left, std::string_view right) {
    if (left.size() != right.size()) return false;
    CharacterSteps const steps;
    for (std::size_t at = 0, bytes = 0; at < left.size(); at += bytes) {
        bytes = steps.lengthAt(left, at);
        if (bytes != steps.lengthAt(right, at)) return false;
        bool const isEqual = bytes == 1 ? inSmallAscii(left[at]) == inSmallAscii(right[at])
                                        : left.substr(at, bytes) == right.substr(at, bytes);
        if (!isEqual) return false;
    }
    return true;
}

/// Whether the locale maps two characters to the same small letter, or they are the same.
inline bool equalCharactersInLocale(std::string_view left, std::string_view right) {
    if (left == right) return true;
    CharacterValue const first(left);
    CharacterValue const second(right);
    return first.isCharacter && second.isCharacter &&
           std::towlower(first.value) == std::towlower(second.value);
}

inline bool equalInLocale(std::string_view left, std::string_view right) {
    CharacterSteps const steps;
    while (!left.empty() && !right.empty()) {
        std::size_t const leftBytes = steps.lengthAt(left, 0);
        std::size_t const rightBytes = steps.lengthAt(right, 0);
        if (!equalCharactersInLocale(left.substr(0, leftBytes), right.substr(0, rightBytes))) return false;
        left.remove_prefix(leftBytes);
        right.remove_prefix(rightBytes);
    }
    return left.empty() && right.empty();
}

/// A text as wide characters in small letters. A NUL becomes a value that no character has, as DWBuffer
/// compares patterns only up to one.
class SmallLetters : public DWBuffer {
public:
    explicit SmallLetters(std::string_view text) : DWBuffer(text.data(), checkedLength(text.size())) {
        constexpr wchar_t noCharacter = 0x7FFFFFFF;
        for (unsigned int i = 0; i < length; ++i)
            wide[i] = wide[i] == L'\0'
                          ? noCharacter
                          : static_cast<wchar_t>(std::towlower(static_cast<std::wint_t>(wide[i])));
    }
};

/// The byte position of a pattern in small letters at or after a byte position, else 0.
inline unsigned int indexInLocale(std::string_view text, std::string_view pattern, unsigned int startPos) {
    if (text.empty() || pattern.empty()) return 0;
    SmallLetters const whole(text);
    unsigned int const bytes = checkedLength(text.size());
    unsigned int const start = findNextCharNum(text.data(), bytes, startPos == 0 ? 1 : startPos);
    return findBytePos(text.data(), bytes, whole.positionOf(SmallLetters(pattern), start));
}

// Ranges

/// What a range keeps of a text: the shared text of a `DString`, a copy of another temporary that owns its
/// text, or else a view.
template <class T>
auto hold(T&& text) {
    using Type = std::decay_t<T>;
    constexpr bool ownsText =
        !std::is_pointer_v<Type> && !std::is_null_pointer_v<Type> && !std::is_same_v<Type, std::string_view>;
    if constexpr (std::is_base_of_v<DString, Type>)
        return DString(std::forward<T>(text));
    else if constexpr (ownsText && !std::is_lvalue_reference_v<T>)
        return DString(viewOf(text));
    else
        return viewOf(text);
}

/// A lazy range of the pieces that `finder.next(text, at, piece)` finds one after the other: it is given
/// where the last call left `at`, which is 0 at first, and returns whether there is one more.
template <class Holder, class Finder>
class Pieces {
public:
    class iterator {
    public:
        using iterator_category = std::input_iterator_tag;
        using value_type = std::string_view;
        using difference_type = std::ptrdiff_t;
        using pointer = std::string_view const*;
        using reference = std::string_view;
#if __cplusplus >= 202002L
        using iterator_concept = std::forward_iterator_tag;
#endif

        iterator() = default;
        explicit iterator(Pieces const& pieces) : pieces_(&pieces) { ++*this; }

        std::string_view operator*() const { return piece_; }
        std::string_view const* operator->() const { return &piece_; }
        iterator& operator++() {
            if (!pieces_->finder_.next(viewOf(pieces_->text_), at_, piece_)) *this = iterator();
            return *this;
        }
        iterator operator++(int) {
            iterator const before = *this;
            ++*this;
            return before;
        }
        friend bool operator==(iterator const& left, iterator const& right) {
            return left.pieces_ == right.pieces_ && left.at_ == right.at_;
        }
        friend bool operator!=(iterator const& left, iterator const& right) { return !(left == right); }

    private:
        Pieces const* pieces_ = nullptr; ///< Null at the end.
        std::size_t at_ = 0;
        std::string_view piece_;
    };
    using const_iterator = iterator;

    Pieces(Holder text, Finder finder) : text_(std::move(text)), finder_(std::move(finder)) {}

    iterator begin() const { return iterator(*this); }
    iterator end() const { return iterator(); }
    bool empty() const { return begin() == end(); }

private:
    Holder text_;
    Finder finder_;
};

inline bool isWordSeparator(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }

/// No separator is part of a longer character in any encoding.
struct WordFinder {
    bool next(std::string_view text, std::size_t& at, std::string_view& piece) const {
        while (at < text.size() && isWordSeparator(text[at]))
            ++at;
        std::size_t const start = at;
        while (at < text.size() && !isWordSeparator(text[at]))
            ++at;
        piece = text.substr(start, at - start);
        return !piece.empty();
    }
};

inline char holdSeparator(char separator) { return separator; }
template <class T, class = IfText<std::decay_t<T>>>
auto holdSeparator(T&& separator) {
    return hold(std::forward<T>(separator));
}

template <class Holder>
class SeparatorFinder {
public:
    explicit SeparatorFinder(Holder separator) : separator_(std::move(separator)) {}

    bool next(std::string_view text, std::size_t& at, std::string_view& piece) const {
        if (at > text.size()) return false;
        std::string_view const separator = bytes();
        std::size_t const end = separator.empty() ? std::string_view::npos : find(text, separator, at);
        piece = text.substr(at, end - at);
        at = end == std::string_view::npos ? text.size() + 1 : end + separator.size();
        return true;
    }

private:
    std::string_view bytes() const {
        if constexpr (std::is_same_v<Holder, char>)
            return {&separator_, 1};
        else
            return viewOf(separator_);
    }

    /// Where the separator stands from a character start on, at the start of a character.
    std::size_t find(std::string_view text, std::string_view separator, std::size_t from) const {
        std::size_t start = from;
        std::size_t found = findBytes(text, separator, from);
        while (found != std::string_view::npos && !steps_.alwaysStarts(separator.front())) {
            while (start < found)
                start += steps_.lengthAt(text, start);
            if (start == found) break;
            found = findBytes(text, separator, start);
        }
        return found;
    }

    static std::size_t findBytes(std::string_view text, std::string_view pattern, std::size_t from) {
        if (from >= text.size()) return std::string_view::npos;
        if (pattern.size() == 1) return text.find(pattern.front(), from);
        void const* const found =
            memmem(text.data() + from, text.size() - from, pattern.data(), pattern.size());
        return found == nullptr ? std::string_view::npos
                                : static_cast<std::size_t>(static_cast<char const*>(found) - text.data());
    }

    Holder separator_;
    CharacterSteps steps_;
};

class CharacterFinder {
public:
    bool next(std::string_view text, std::size_t& at, std::string_view& piece) const {
        if (at == text.size()) return false;
        piece = text.substr(at, steps_.lengthAt(text, at));
        at += piece.size();
        return true;
    }

private:
    CharacterSteps steps_;
};

/// A range of the lines of a stream, which is read when the loop comes to them.
template <class Stream>
class Lines {
public:
    class iterator {
    public:
        using iterator_category = std::input_iterator_tag;
        using value_type = DString;
        using difference_type = std::ptrdiff_t;
        using pointer = DString const*;
        using reference = DString const&;

        iterator() = default;
        explicit iterator(Lines& lines) : lines_(&lines) { ++*this; }

        DString const& operator*() const { return lines_->line_; }
        DString const* operator->() const { return &lines_->line_; }
        iterator& operator++() {
            if (!lines_->read()) lines_ = nullptr;
            return *this;
        }
        void operator++(int) { ++*this; }
        friend bool operator==(iterator const& left, iterator const& right) {
            return left.lines_ == right.lines_;
        }
        friend bool operator!=(iterator const& left, iterator const& right) { return !(left == right); }

    private:
        Lines* lines_ = nullptr; ///< Null at the end.
    };

    Lines(Stream& stream, char delimiter) : stream_(&stream), delimiter_(delimiter) {}

    iterator begin() { return iterator(*this); }
    iterator end() { return iterator(); }

private:
    bool read() {
        if (stream_->peek() == Stream::traits_type::eof()) return false;
        line_ = DString::lineFrom(*stream_, delimiter_);
        return true;
    }

    Stream* stream_;
    char delimiter_;
    DString line_;
};

// Columns

/// The columns of a character.
inline unsigned int columnsOf(std::string_view character) {
    char const first = character.front();
    if (character.size() == 1 && static_cast<unsigned char>(first) < 0x80)
        return first >= ' ' && first <= '~' ? 1 : 0;
    CharacterValue const wide(character);
    if (!wide.isCharacter) return 1;
    int const columns = wcwidth(static_cast<wchar_t>(wide.value));
    return columns > 0 ? static_cast<unsigned int>(columns) : 0;
}

inline unsigned int columnsIn(std::string_view text) {
    CharacterFinder const characters;
    unsigned int columns = 0;
    std::string_view character;
    for (std::size_t at = 0; characters.next(text, at, character);)
        columns += columnsOf(character);
    return columns;
}

struct Columns {
    std::size_t bytes;
    unsigned int columns;
};

/// The characters at the front of a text that fit into some columns, with all that combine with them.
inline Columns fittingColumns(std::string_view text, unsigned int width) {
    CharacterFinder const characters;
    Columns front{0, 0};
    std::string_view character;
    for (std::size_t at = 0; characters.next(text, at, character); front.bytes = at) {
        unsigned int const taken = columnsOf(character);
        if (taken > width - front.columns) break;
        front.columns += taken;
    }
    return front;
}

/// A text without as many characters at its front as take at least some columns, and what combines with them.
inline std::string_view withoutColumns(std::string_view text, unsigned int width) {
    CharacterFinder const characters;
    unsigned int dropped = 0;
    std::size_t start = 0;
    std::string_view character;
    for (std::size_t at = 0; characters.next(text, at, character); start = at) {
        unsigned int const taken = columnsOf(character);
        if (dropped >= width && taken != 0) break;
        dropped += taken;
    }
    return text.substr(start);
}

enum class Side { left, middle, right };

/// A text cut and padded to some columns, on the given side of them.
inline DString inColumns(std::string_view text, unsigned int width, char padCharacter, Side side) {
    unsigned int const all = side == Side::left ? 0 : columnsIn(text);
    if (all > width) text = withoutColumns(text, side == Side::right ? all - width : (all - width) / 2);
    Columns const kept = fittingColumns(text, width);
    unsigned int const pads = width - kept.columns;
    bool const isCut = all > width;
    unsigned int const before = side == Side::right ? pads : side == Side::middle && !isCut ? pads / 2 : 0;
    return DString(nullptr, before, text.data(), checkedLength(kept.bytes), nullptr, pads - before,
                   padCharacter);
}

} // namespace kelcl::detail

#endif
