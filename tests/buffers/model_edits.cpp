// The model of the edits of multi-byte text: by bytes and, with the national-language switch on, by wide
// values.
#include "tests/buffers/model.h"

#include <algorithm>
#include <cwctype>

namespace model {

Edited same(Text const& t) { return {string(t.view()), Edited::Where::unchanged}; }

// Pieces

namespace {

void padTail(Text const& t, unsigned int cut, string& result, unsigned int first, char pad) {
    while (cut <= t.length && typeOf(t, cut) >= 2 && first <= result.size()) {
        result[first - 1] = pad;
        ++first;
        ++cut;
    }
}

void padHead(Text const& t, unsigned int cut, string& result, unsigned int last, char pad) {
    if (cut == 0 || cut > t.length) return;
    unsigned int const type = typeOf(t, cut);
    for (unsigned int i = 1; i < type && last >= 1; ++i, --last)
        if (last <= result.size()) result[last - 1] = pad;
}

string pieceOf(Text const& t, unsigned int start, char pad, unsigned int count) {
    if (count == 0) return "";
    unsigned int const from = std::max(start, 1U);
    if (from > t.length) return string(count, pad);
    unsigned int const k = nextCharacterNumber(t, from);
    unsigned int const p = k == 0 ? 0 : bytePosition(t, k);
    if (p == 0) return string(count, pad);
    std::vector<string> const characters = broughtBack(t, p);
    if (count <= p - from) return string(count, pad);
    string result(p - from, pad);
    for (string const& bytes : characters) {
        if (result.size() + bytes.size() > count) break;
        result += bytes;
    }
    result.resize(count, pad);
    return result;
}

} // namespace

string remainOf(Text const& t, unsigned int start, char pad) {
    if (start > t.length) return "";
    unsigned int const from = std::max(start, 1U);
    if (from > t.length) return "";
    unsigned int const k = nextCharacterNumber(t, from);
    unsigned int const p = k == 0 ? 0 : bytePosition(t, k);
    if (p == 0) return string(t.length - from + 1, pad);
    string result(p - from, pad);
    for (string const& bytes : broughtBack(t, p))
        result += bytes;
    return result;
}

string subStringOf(Text const& t, unsigned int start, unsigned int count, char pad) {
    if (wideMode()) return pieceOf(t, start, pad, count);
    unsigned int const s = std::max(start, 1U);
    unsigned int const available = s > t.length ? 0 : t.length - s + 1;
    unsigned int const take = std::min(count, available);
    unsigned int const from = start != 0 && s <= t.length ? start : 1;
    string result = t.piece(from, take) + string(count - take, pad);
    padTail(t, from, result, 1, pad);
    if (t.length >= take + from) padHead(t, from + count, result, count, pad);
    return result;
}

// Characters in place of others

Edited caseOf(Text const& t, bool upper) {
    if (wideMode()) {
        if (t.length == 0) return same(t);
        wstring wide = widened(t);
        for (wchar_t& c : wide)
            c = static_cast<wchar_t>(upper ? std::towupper(static_cast<std::wint_t>(c))
                                           : std::towlower(static_cast<std::wint_t>(c)));
        return {narrowed(wide)};
    }
    Text const letters(upper ? "abcdefghijklmnopqrstuvwxyz" : "ABCDEFGHIJKLMNOPQRSTUVWXYZ");
    unsigned int hit = indexOfAnyOf(t, letters, 1);
    if (hit == 0) return same(t);
    string result(t.view());
    for (; hit != 0; hit = indexOfAnyOf(t, letters, hit + 1))
        if (typeOf(t, hit) == 0) result[hit - 1] = static_cast<char>(result[hit - 1] + (upper ? -32 : 32));
    return {result, Edited::Where::inPlace};
}

namespace {

std::vector<string> charactersOf(Text const& t) {
    std::vector<string> result;
    for (unsigned int at = 1; at <= t.length; at += static_cast<unsigned int>(result.back().size()))
        result.push_back(t.piece(at, std::min(characterLength(t.at(at)), t.length - at + 1)));
    return result;
}

} // namespace

Edited translated(Text const& t, Text const& from, Text const& to, char pad) {
    if (wideMode()) {
        std::vector<wstring> all = allWidened({from, to, Text(string(1, pad)), t});
        for (wchar_t& c : all[3]) {
            std::size_t const place = all[0].find(c);
            if (place != wstring::npos) c = place < all[1].size() ? all[1][place] : all[2][0];
        }
        return {narrowed(all[3])};
    }
    std::vector<string> const search = charactersOf(from);
    std::vector<string> const replace = charactersOf(to);
    string result;
    for (string const& character : charactersOf(t)) {
        auto const place =
            static_cast<std::size_t>(std::find(search.begin(), search.end(), character) - search.begin());
        if (place == search.size())
            result += character;
        else
            result += place < replace.size() ? replace[place] : string(1, pad);
    }
    return {result};
}

Edited reversed(Text const& t) {
    if (t.length < 2) return same(t);
    if (wideMode()) {
        wstring wide = widened(t);
        std::reverse(wide.begin(), wide.end());
        return {narrowed(wide)};
    }
    string result;
    for (string const& character : charactersOf(t))
        result.insert(0, character);
    return {result};
}

// Strips

namespace {

Edited strippedWide(wstring const& wide, DStringEnum::StripMode mode, std::vector<bool> const& goes) {
    std::size_t first = 0;
    std::size_t past = wide.size();
    if (mode != DStringEnum::trailing)
        while (first < past && goes[first])
            ++first;
    if (mode != DStringEnum::leading)
        while (past > first && goes[past - 1])
            --past;
    return {narrowed(wide.substr(first, past - first))};
}

/// `What` is a set or a test.
template <class What>
Edited strippedBytes(Text const& t, What const& what, DStringEnum::StripMode mode) {
    unsigned int first = 1;
    unsigned int last = t.length;
    if (mode != DStringEnum::trailing) first = indexOfAnyBut(t, what, 1);
    if (mode == DStringEnum::both && first == 0) return {""};
    if (mode != DStringEnum::leading) {
        last = lastIndexOfAnyBut(t, what, t.length);
        if (last != 0) last += characterLength(t.at(last)) - 1;
    }
    if (first == 1 && last == t.length) return same(t);
    if (first == 0) return {""};
    return {t.piece(first, last + 1 - first)};
}

} // namespace

Edited stripped(Text const& t, Text const& set, DStringEnum::StripMode mode) {
    if (t.length == 0) return same(t);
    if (!wideMode()) return strippedBytes(t, set, mode);
    std::vector<wstring> const all = allWidened({t, set});
    std::vector<bool> goes;
    for (wchar_t const c : all[0])
        goes.push_back(all[1].find(c) != wstring::npos);
    return strippedWide(all[0], mode, goes);
}

Edited stripped(Text const& t, Function test, DStringEnum::StripMode mode) {
    if (t.length == 0) return same(t);
    if (!wideMode()) return strippedBytes(t, test, mode);
    wstring const wide = widened(t);
    std::vector<bool> goes;
    for (wchar_t const c : wide)
        goes.push_back(test(static_cast<int>(c)) != 0);
    return strippedWide(wide, mode, goes);
}

// Widths, and texts put in and taken out

Edited overlaid(Text const& t, Text const& data, unsigned int position, char pad) {
    if (data.length == 0 && position <= t.length) return same(t);
    position = std::max(position, 1U);
    unsigned int const past = position + data.length;
    if (position > t.length)
        return {string(t.view()) + string(position - 1 - t.length, pad) + string(data.view())};
    if (wideMode()) {
        string result = pieceOf(t, 1, pad, position - 1) + string(data.view());
        if (t.length >= past) result += remainOf(t, past, pad);
        return {result};
    }
    string result = t.piece(1, position - 1) + string(data.view()) + t.from(past);
    padHead(t, position, result, position - 1, ' ');
    padTail(t, past, result, past, pad);
    return {result};
}

Edited leftJustified(Text const& t, unsigned int width, char pad) {
    if (width == t.length) return same(t);
    if (width > t.length) return {string(t.view()) + string(width - t.length, pad)};
    if (wideMode()) return {narrowedTo(width, widened(t), pad)};
    string result = t.piece(1, width);
    padHead(t, width + 1, result, width, pad);
    return {result};
}

Edited rightJustified(Text const& t, unsigned int width, char pad) {
    if (width == t.length) return same(t);
    if (width > t.length) return {string(width - t.length, pad) + string(t.view())};
    string result = t.piece(t.length - width + 1, width);
    padTail(t, t.length - width + 1, result, 1, pad);
    return {result};
}

Edited inserted(Text const& t, Text const& data, unsigned int position, char pad) {
    if (data.length == 0 && position <= t.length) return same(t);
    if (position > t.length)
        return {string(t.view()) + string(position - t.length, pad) + string(data.view())};
    if (wideMode()) {
        unsigned int const k = characterNumber(t, position);
        std::vector<wstring> const all = allWidened({t, data});
        return {narrowedTo(t.length + data.length, all[0].substr(0, k) + all[1] + all[0].substr(k), pad)};
    }
    while (position > 0 && position < t.length && typeOf(t, position + 1) >= 2)
        --position;
    return {t.piece(1, position) + string(data.view()) + t.from(position + 1)};
}

Edited centered(Text const& t, unsigned int width, char pad) {
    if (width == t.length) return same(t);
    if (width > t.length) {
        unsigned int const left = (width - t.length) / 2;
        return {string(left, pad) + string(t.view()) + string(width - t.length - left, pad)};
    }
    unsigned int s = (t.length - width) / 2 + 1;
    if (wideMode()) {
        unsigned int const k = characterNumber(t, s);
        wstring const wide = widened(t);
        return {narrowedTo(width, wide.substr(k - 1, wide.size() - k), pad)};
    }
    if (t.length - width > 1)
        while (s > 1 && typeOf(t, s) >= 2)
            --s;
    string result = t.piece(s, width);
    padHead(t, s + width, result, width, pad);
    return {result};
}

Edited removed(Text const& t, unsigned int start, unsigned int count) {
    if (start > t.length || t.length == 0) return same(t);
    unsigned int const s = std::max(start, 1U);
    unsigned int const n = std::min(count, t.length - s + 1);
    string result = t.piece(1, s - 1) + t.from(s + n);
    padHead(t, s, result, s - 1, ' ');
    padTail(t, s + n, result, s, ' ');
    return {result};
}

Edited changed(Text const& t, Text const& pattern, Text const& replacement, unsigned int start,
               unsigned int most) {
    string result;
    unsigned int copied = 0;
    unsigned int count = 0;
    for (unsigned int p = start; count < most; ++count) {
        p = indexOf(t, pattern, p);
        if (p == 0) break;
        result += t.piece(copied + 1, p - 1 - copied) + string(replacement.view());
        copied = p - 1 + pattern.length;
        p += pattern.length;
    }
    if (count == 0) return same(t);
    return {result + t.from(copied + 1),
            pattern.length == replacement.length ? Edited::Where::inPlace : Edited::Where::fresh};
}

} // namespace model
