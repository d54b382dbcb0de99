// A plain model of the string operations in single-byte mode, written on std::string for the random test. It
// is meant to be obviously right, not fast, and shares nothing with the library. An operation whose result
// would be too long has no result.
#ifndef KELCL_TESTS_STRING_MODEL_H
#define KELCL_TESTS_STRING_MODEL_H

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace model {

using std::string;
using std::string_view;
using Wide = std::uint64_t;
using Result = std::optional<string>; ///< Nothing: the overflow failure.

inline constexpr Wide limit = 0xFFFFFFE7;

inline bool isMember(string_view set, char c) { return set.find(c) != string_view::npos; }

// Searches

inline unsigned int position(Wide value) { return static_cast<unsigned int>(value); }

/// The first position from `start` on for which `matches(offset)` holds, where `room` bytes must follow.
template <class Matches>
unsigned int first(string_view text, Wide start, Wide room, Matches matches) {
    for (Wide at = start == 0 ? 1 : start; at <= text.size() && at - 1 + room <= text.size(); ++at)
        if (matches(at - 1)) return position(at);
    return 0;
}

template <class Matches>
unsigned int last(string_view text, Wide start, Wide room, Matches matches) {
    if (room > text.size()) return 0;
    for (Wide at = std::min<Wide>(start, text.size() - room + 1); at > 0; --at)
        if (matches(at - 1)) return position(at);
    return 0;
}

inline unsigned int indexOf(string_view text, string_view pattern, unsigned int start) {
    if (pattern.empty()) return 0;
    return first(text, start, pattern.size(),
                 [&](Wide at) { return text.substr(at, pattern.size()) == pattern; });
}

inline unsigned int lastIndexOf(string_view text, string_view pattern, unsigned int start) {
    if (pattern.empty()) return 0;
    return last(text, start, pattern.size(),
                [&](Wide at) { return text.substr(at, pattern.size()) == pattern; });
}

template <class Accepts>
unsigned int indexOfAccepted(string_view text, Accepts accepts, unsigned int start) {
    return first(text, start, 1, [&](Wide at) { return accepts(text[at]); });
}

template <class Accepts>
unsigned int lastIndexOfAccepted(string_view text, Accepts accepts, unsigned int start) {
    return last(text, start, 1, [&](Wide at) { return accepts(text[at]); });
}

template <class Find>
unsigned int count(Find find, unsigned int start, unsigned int step) {
    unsigned int matches = 0;
    for (unsigned int at = find(start); at != 0; at = find(at + step))
        ++matches;
    return matches;
}

// Editing

inline Result padded(Wide length, string text, char pad) {
    if (length >= limit) return std::nullopt;
    text.resize(length, pad);
    return text;
}

inline Result subString(string_view text, unsigned int start, unsigned int count, char pad) {
    Wide const from = start == 0 ? 0 : start - 1;
    string taken(from < text.size() ? text.substr(from, count) : string_view());
    return padded(count, taken, pad);
}

inline Result leftJustify(string_view text, unsigned int width, char pad) {
    return padded(width, string(text), pad);
}

inline Result rightJustify(string_view text, unsigned int width, char pad) {
    if (width >= limit) return std::nullopt;
    if (width <= text.size()) return string(text.substr(text.size() - width));
    return string(width - text.size(), pad) + string(text);
}

inline Result center(string_view text, unsigned int width, char pad) {
    if (width >= limit) return std::nullopt;
    if (width <= text.size()) return string(text.substr((text.size() - width) / 2, width));
    std::size_t const surplus = width - text.size();
    return string(surplus / 2, pad) + string(text) + string(surplus - surplus / 2, pad);
}

inline Result insert(string_view text, string_view piece, unsigned int position, char pad) {
    Wide const total = std::max<Wide>(position, text.size()) + piece.size();
    if (total >= limit && (position > text.size() || !piece.empty())) return std::nullopt;
    string result(text.substr(0, position));
    if (position > text.size()) result.resize(position, pad);
    result += piece;
    if (position < text.size()) result += text.substr(position);
    return result;
}

inline Result overlayWith(string_view text, string_view piece, unsigned int position, char pad) {
    Wide const before = position == 0 ? 0 : position - 1;
    if (before + piece.size() >= limit) return std::nullopt;
    string result(text.substr(0, before));
    result.resize(before, pad);
    result += piece;
    if (result.size() < text.size()) result += text.substr(result.size());
    return result;
}

inline Result copy(string_view text, unsigned int times) {
    if (text.empty() || times == 0) return string();
    if (Wide{times} * text.size() >= limit) return std::nullopt;
    string result;
    for (unsigned int i = 0; i < times; ++i)
        result += text;
    return result;
}

inline string remove(string_view text, unsigned int start, unsigned int count) {
    Wide const from = start == 0 ? 0 : start - 1;
    if (from >= text.size()) return string(text);
    return string(text.substr(0, from)) + string(text.substr(std::min<Wide>(text.size(), from + count)));
}

inline string change(string_view text, string_view pattern, string_view replacement, unsigned int start,
                     unsigned int most) {
    string result;
    Wide copied = 0;
    unsigned int from = start;
    for (unsigned int i = 0; i < most; ++i) {
        unsigned int const at = indexOf(text, pattern, from);
        if (at == 0) break;
        result += text.substr(copied, at - 1 - copied);
        result += replacement;
        copied = at - 1 + pattern.size();
        from = position(copied + 1);
    }
    return result + string(text.substr(copied));
}

inline string translate(string text, string_view input, string_view output, char pad) {
    for (char& c : text) {
        std::size_t const at = input.find(c);
        if (at != string_view::npos) c = at < output.size() ? output[at] : pad;
    }
    return text;
}

template <class Accepts>
string strip(string_view text, Accepts accepts, bool atFront, bool atBack) {
    while (atFront && !text.empty() && accepts(text.front()))
        text.remove_prefix(1);
    while (atBack && !text.empty() && accepts(text.back()))
        text.remove_suffix(1);
    return string(text);
}

// Matching

/// Every way of matching, by a table over all beginnings of the text.
inline bool isLike(string_view text, string_view pattern, char anyString, char anyChar) {
    string reached(text.size() + 1, '\0'); // reached[i]: the pattern so far matches i bytes
    reached[0] = 1;
    for (char const c : pattern) {
        if (c == anyString) {
            for (std::size_t i = 1; i <= text.size(); ++i)
                reached[i] = static_cast<char>(reached[i] | reached[i - 1]);
            continue;
        }
        for (std::size_t i = text.size(); i > 0; --i)
            reached[i] = static_cast<char>(reached[i - 1] != 0 && (c == anyChar || c == text[i - 1]));
        reached[0] = 0;
    }
    return reached[text.size()] != 0;
}

/// Collation: by segments between NULs, where NULs count unevenly.
inline int collatePrefix(string const& a, string const& b) {
    int result = -1;
    std::size_t at = 0;
    while (at < a.size()) {
        std::size_t const nulsOfA = std::min(a.find_first_not_of('\0', at), a.size()) - at;
        std::size_t const nulsOfB = std::min(b.find_first_not_of('\0', at), b.size()) - at;
        if (nulsOfA < nulsOfB) return 1;
        if (nulsOfA > nulsOfB) return result;
        at += nulsOfA;
        if (at == a.size()) return 0;
        result = std::strcoll(a.c_str() + at, b.c_str() + at);
        if (result != 0) return result;
        at += std::strlen(a.c_str() + at) + 1;
    }
    return result;
}

/// Negative, 0, positive.
inline int compare(string const& text, string const& other, bool collates) {
    if (text.empty() || other.empty())
        return static_cast<int>(!text.empty()) - static_cast<int>(!other.empty());
    if (!collates) return text.compare(other);
    std::size_t const common = std::min(text.size(), other.size());
    int const result = collatePrefix(text.substr(0, common), other.substr(0, common));
    if (result != 0) return result;
    return text.size() < other.size() ? -1 : text.size() > other.size() ? 1 : 0;
}

// Words

struct Word {
    unsigned int position = 0;
    string text;
};

inline std::vector<Word> words(string_view text, std::size_t from = 0) {
    std::vector<Word> list;
    string_view const separators("\t\n\v\f\r ", 6);
    for (std::size_t i = from; i < text.size();) {
        if (isMember(separators, text[i])) {
            ++i;
            continue;
        }
        std::size_t end = i;
        while (end < text.size() && !isMember(separators, text[end]))
            ++end;
        list.push_back({static_cast<unsigned int>(i + 1), string(text.substr(i, end - i))});
        i = end;
    }
    return list;
}

inline unsigned int indexOfWord(string_view text, unsigned int n, unsigned int start, unsigned int counted) {
    if (start == 0) return 0;
    for (Word const& word : words(text, start - 1))
        if (++counted == n) return word.position;
    return 0;
}

inline Result wordsFrom(string_view text, unsigned int firstWord, unsigned int count) {
    std::vector<Word> const list = words(text);
    std::size_t const begin = firstWord == 0 ? 0 : firstWord - 1;
    if (begin >= list.size() || count == 0) return string();
    Word const& to = list[static_cast<std::size_t>(std::min<Wide>(list.size(), Wide{begin} + count)) - 1];
    return string(text.substr(list[begin].position - 1, to.position - list[begin].position + to.text.size()));
}

inline string removeWords(string_view text, unsigned int firstWord, unsigned int count) {
    std::vector<Word> const list = words(text);
    if (count == 0 || firstWord == 0 || firstWord > list.size()) return string(text);
    string result(text.substr(0, list[firstWord - 1].position - 1));
    Wide const past = Wide{firstWord} - 1 + count;
    if (past < list.size()) result += text.substr(list[static_cast<std::size_t>(past)].position - 1);
    return result;
}

inline Result space(string_view text, unsigned int n, char c) {
    std::vector<Word> const list = words(text);
    Wide length = 0;
    for (std::size_t i = 0; i < list.size(); ++i)
        length += list[i].text.size() + (i == 0 ? 0 : n);
    if (length >= limit) return std::nullopt;
    string result;
    for (std::size_t i = 0; i < list.size(); ++i)
        result += (i == 0 ? string() : string(n, c)) + list[i].text;
    return result;
}

/// By the steps, with sums of 32 bits.
inline unsigned int findPhrase(string_view text, string_view phrase, unsigned int start, bool asPosition) {
    std::vector<Word> const own = words(text);
    std::vector<Word> const wanted = words(phrase);
    auto const have = static_cast<unsigned int>(own.size());
    auto const need = static_cast<unsigned int>(wanted.size());
    auto const wordAt = [&](unsigned int i) { return i == 0 || i > have ? Word() : own[i - 1]; };
    for (unsigned int i = start; have >= need + i - 1; ++i) {
        bool matches = true;
        for (unsigned int j = 1; j <= need && matches; ++j)
            matches = wordAt(i + j - 1).text == wanted[j - 1].text;
        if (matches) return asPosition ? wordAt(i).position : i;
    }
    return 0;
}

// Radix and bits

inline string bitsOf(string_view text) {
    string bits;
    for (char const c : text)
        for (int bit = 7; bit >= 0; --bit)
            bits += (static_cast<unsigned char>(c) >> bit & 1) != 0 ? '1' : '0';
    return bits;
}

inline string ofBits(string bits) {
    bits.insert(0, (8 - bits.size() % 8) % 8, '0');
    string text;
    for (std::size_t i = 0; i < bits.size(); i += 8) {
        int value = 0;
        for (std::size_t j = i; j < i + 8; ++j)
            value = value * 2 + (bits[j] - '0');
        text += static_cast<char>(value);
    }
    return text;
}

inline bool consistsOf(string_view text, string_view set) {
    return text.find_first_not_of(set) == string_view::npos;
}

inline string c2x(string_view text) {
    string digits;
    for (char const c : text) {
        digits += "0123456789ABCDEF"[static_cast<unsigned char>(c) / 16];
        digits += "0123456789ABCDEF"[static_cast<unsigned char>(c) % 16];
    }
    return digits;
}

inline string x2c(string_view digits) {
    if (!consistsOf(digits, "0123456789abcdefABCDEF")) return string();
    string bits;
    for (char const c : digits) {
        auto const value = string_view("0123456789ABCDEF").find(static_cast<char>(std::toupper(c)));
        for (int bit = 3; bit >= 0; --bit)
            bits += (value >> bit & 1) != 0 ? '1' : '0';
    }
    return ofBits(bits);
}

/// number * factor + addend, over digits of the given base, most significant first.
inline std::vector<unsigned int> step(std::vector<unsigned int> number, unsigned int base,
                                      unsigned int factor, unsigned int addend) {
    unsigned int carry = addend;
    for (auto digit = number.rbegin(); digit != number.rend(); ++digit) {
        unsigned int const value = *digit * factor + carry;
        *digit = value % base;
        carry = value / base;
    }
    for (; carry != 0; carry /= base)
        number.insert(number.begin(), carry % base);
    return number;
}

inline string c2d(string_view text) {
    if (text.empty()) return string();
    std::vector<unsigned int> number;
    for (char const c : text)
        number = step(number, 10, 256, static_cast<unsigned char>(c));
    if (number.empty()) return string(text.size() <= 4 ? 1 : 3 * text.size() - 11, '0');
    string digits;
    for (unsigned int const digit : number)
        digits += static_cast<char>('0' + digit);
    return digits;
}

inline string d2c(string_view digits) {
    if (digits.empty() || !consistsOf(digits, "0123456789")) return string();
    std::vector<unsigned int> number;
    for (char const c : digits)
        number = step(number, 256, 10, static_cast<unsigned int>(c - '0'));
    if (number.empty()) return string(1, '\0');
    string text;
    for (unsigned int const byte : number)
        text += static_cast<char>(byte);
    return text;
}

template <class Combine>
string combined(string text, string_view operand, Combine combine) {
    for (std::size_t i = 0; i < text.size() && !operand.empty(); ++i)
        text[i] = static_cast<char>(combine(text[i], operand[i % operand.size()]));
    return text;
}

} // namespace model

#endif
