// What the tests of multi-byte texts share: sample characters of each locale, a plain splitter of texts into
// characters that asks the C library at every byte, texts at the end of readable memory, and buffers that are
// multi-byte ones whatever the locale. No tests are here.
#ifndef KELCL_TESTS_CHARACTERS_MULTI_BYTE_SUPPORT_H
#define KELCL_TESTS_CHARACTERS_MULTI_BYTE_SUPPORT_H

#include "tests/buffers/operation_support.h"
#include "tests/support/switch_at.h"

#include <kelcl/ddbcsbuffer.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <new>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

namespace mb {

using namespace std::string_literals;
using namespace std::string_view_literals;

using operations::lengthOf;
using operations::localeModeIs;
using operations::Owned;
using operations::switchIsOn;

inline bool isUtf8() { return localeModeIs("utf8") || localeModeIs("turkish"); }
/// Whether the locale of this process has characters of several bytes at all.
inline bool isMultiByte() { return MB_CUR_MAX >= 2; }

/// A character with the value that it has in the wide encoding; no bytes where the locale has none of the
/// kind.
struct Sample {
    std::string bytes;
    wchar_t value = 0;

    bool exists() const { return !bytes.empty(); }
};

/// The characters of one locale that the tests are made of.
struct Samples {
    Sample letter{"a", L'a'};
    Sample two;          ///< Of two bytes.
    Sample three;        ///< Of three bytes.
    Sample four;         ///< Of four bytes.
    Sample wide;         ///< Two columns wide, of two bytes or more.
    Sample narrow;       ///< One column wide, of two bytes or more.
    Sample asciiTrail;   ///< Its last byte is an ASCII letter, digit or sign.
    std::string invalid; ///< One byte that is not part of any character; none where every byte is one.
    std::string lead;    ///< The first bytes of a longer character, not all of them.
    Sample pair;         ///< A sequence that gives two wide characters, with the value of the first.

    /// All characters that exist, the letter first.
    std::vector<Sample> characters() const {
        std::vector<Sample> all;
        for (Sample const& sample : {letter, two, three, four, wide, narrow, asciiTrail})
            if (sample.exists()) all.push_back(sample);
        return all;
    }
    /// Those of several bytes.
    std::vector<Sample> longCharacters() const {
        std::vector<Sample> all = characters();
        all.erase(all.begin());
        return all;
    }
};

inline Samples const& samples() {
    static Samples const ours = [] {
        Samples s;
        if (isUtf8()) {
            s.two = s.narrow = {"\xC3\xA4", 0xE4};
            s.three = s.wide = {"\xE3\x81\x82", 0x3042};
            s.four = {"\xF0\xA0\x80\x80", 0x20000};
            s.invalid = "\xFF";
            s.lead = "\xE3\x81";
        } else if (localeModeIs("eucjp")) {
            s.two = s.wide = {"\xA4\xA2", 0x3042};
            s.three = {"\x8F\xB0\xA1", 0x4E02};
            s.narrow = {"\x8E\xB1", 0xFF71};
            s.invalid = "\xFF";
            s.lead = "\xA4";
        } else if (localeModeIs("sjis")) {
            s.two = s.wide = {"\x82\xA0", 0x3042};
            s.asciiTrail = {"\x83\x41", 0x30A2};
            s.invalid = "\xFF";
            s.lead = "\x82";
        } else if (localeModeIs("gb18030")) {
            s.two = s.wide = {"\xB0\xA1", 0x554A};
            s.four = {"\x95\x32\x82\x36", 0x20000};
            s.asciiTrail = {"\x81\x40", 0x4E02};
            s.narrow = {"\x81\x30\x84\x36", 0xA5};
            s.invalid = "\xFF";
            s.lead = "\x95\x32\x82";
        } else if (localeModeIs("big5")) {
            s.two = s.wide = {"\xA4\xA4", 0x4E2D};
            s.asciiTrail = {"\xA4\x41", 0x4E59};
            s.invalid = "\xFF";
            s.lead = "\xA4";
        } else if (localeModeIs("euckr")) {
            s.two = s.wide = {"\xB0\xA1", 0xAC00};
            s.invalid = "\xA0";
            s.lead = "\xB0";
        } else if (localeModeIs("euctw")) {
            s.two = s.wide = {"\xC4\xE3", 0x4E2D};
            s.four = {"\x8E\xA2\xA1\xA1", 0x4E42};
            s.invalid = "\xFF";
            s.lead = "\x8E\xA2\xA1";
        } else if (localeModeIs("hkscs")) {
            s.two = s.wide = {"\xA4\xA4", 0x4E2D};
            s.asciiTrail = {"\xA4\x41", 0x4E59};
            s.narrow = {"\x88\x66", 0xCA};
            s.invalid = "\xFF";
            s.lead = "\xA4";
            s.pair = {"\x88\x62", 0xCA};
        } else if (localeModeIs("eucjisx0213")) {
            s.two = s.wide = {"\xA4\xAB", 0x304B};
            s.three = {"\x8F\xA1\xA2", 0x4E02};
            s.narrow = {"\x8E\xB1", 0xFF71};
            s.invalid = "\xFF";
            s.lead = "\xA4";
            s.pair = {"\xA4\xF7", 0x304B};
        } else if (localeModeIs("sjisx0213")) {
            s.two = s.wide = {"\x82\xA9", 0x304B};
            s.asciiTrail = {"\x83\x41", 0x30A2};
            s.invalid = "\xFF";
            s.lead = "\x82";
            s.pair = {"\x82\xF5", 0x304B};
        } else if (localeModeIs("C")) {
            s.invalid = "\xFF";
        }
        return s;
    }();
    return ours;
}

/// What mbrlen says of at most `n` of the bytes, with a fresh state.
inline std::size_t mbrlenOf(char const* p, std::size_t n) {
    std::mbstate_t state{};
    return std::mbrlen(p, n, &state);
}

constexpr auto invalidSequence = static_cast<std::size_t>(-1);
constexpr auto incompleteSequence = static_cast<std::size_t>(-2);

/// Bytes of the character at offset `at` by the rule of the multi-byte buffer. The text is a std::string for
/// the terminating NUL, which ends every sequence.
inline std::size_t lengthAt(std::string const& text, std::size_t at) {
    std::size_t const length = mbrlenOf(text.c_str() + at, std::min<std::size_t>(6, text.size() - at + 1));
    return length == 0 || length == invalidSequence || length == incompleteSequence ? 1 : length;
}

/// One character of a text: where it starts (an offset) and its bytes.
struct Character {
    std::size_t offset;
    std::string bytes;
};

/// The characters of a text by the rule of the multi-byte buffer.
inline std::vector<Character> charactersOf(std::string const& text) {
    std::vector<Character> all;
    for (std::size_t at = 0; at < text.size(); at += all.back().bytes.size())
        all.push_back({at, text.substr(at, lengthAt(text, at))});
    return all;
}

/// For each byte of a text 0 for a character of one byte, else its place in its character from 1 on.
inline std::vector<unsigned int> placesOf(std::string const& text) {
    std::vector<unsigned int> places;
    for (Character const& character : charactersOf(text))
        for (unsigned int place = 1; place <= character.bytes.size(); ++place)
            places.push_back(character.bytes.size() == 1 ? 0 : place);
    return places;
}

/// The wide value of a character by the C library; of what does not convert its value as a signed char.
inline wchar_t valueOf(std::string const& character) {
    std::mbstate_t state{};
    wchar_t value = 0;
    std::size_t const length = std::mbrtowc(&value, character.data(), character.size(), &state);
    if (length == invalidSequence || length == incompleteSequence)
        return static_cast<signed char>(character[0]);
    return value;
}

/// The bytes of a wide value, none where it has none. What the C library holds back comes out in front of a
/// NUL.
inline std::string bytesOf(wchar_t value) {
    char bytes[MB_LEN_MAX];
    std::mbstate_t state{};
    std::size_t const length = std::wcrtomb(bytes, value, &state);
    if (length == invalidSequence) return "";
    if (std::mbsinit(&state) != 0) return {bytes, length};
    return {bytes, std::wcrtomb(bytes, L'\0', &state) - 1};
}

/// Whether an encoding has the signs of the Japanese ISO 646 in place of the backslash and the tilde.
inline bool hasYenSign() { return localeModeIs("sjis") || localeModeIs("sjisx0213"); }

/// The parts that texts are put together of: the samples, and bytes that are no character, NUL among them.
inline std::vector<std::string> const& parts() {
    static std::vector<std::string> const ours = [] {
        std::vector<std::string> all = {"a", "B", "7", " ", "\\", "\0"s, "\x80", "\xA1", "\xE4"};
        for (Sample const& sample : samples().longCharacters())
            all.push_back(sample.bytes);
        for (std::string const& bad : {samples().invalid, samples().lead, samples().pair.bytes})
            if (!bad.empty()) all.push_back(bad);
        return all;
    }();
    return ours;
}

/// The parts that are whole characters only.
inline std::vector<std::string> const& wholeParts() {
    static std::vector<std::string> const ours = [] {
        std::vector<std::string> all = {"a", "B", "7", " ", "\\", "\0"s};
        for (Sample const& sample : samples().longCharacters())
            all.push_back(sample.bytes);
        return all;
    }();
    return ours;
}

inline std::string randomText(std::mt19937& random, std::vector<std::string> const& from, std::size_t most) {
    std::string text;
    for (std::size_t count = random() % (most + 1); count > 0; --count)
        text += from[random() % from.size()];
    return text;
}

/// Bytes as hexadecimal digits, for messages.
inline std::string hex(std::string_view bytes) {
    constexpr char digits[] = "0123456789ABCDEF";
    std::string text(3 * bytes.size(), ' ');
    char* at = text.data();
    for (char const byte : bytes) {
        auto const value = static_cast<unsigned char>(byte);
        at[0] = digits[value >> 4];
        at[1] = digits[value & 15];
        at += 3;
    }
    return text;
}

/// A copy of bytes whose end is the end of readable memory.
class AtMemoryEnd {
public:
    explicit AtMemoryEnd(std::string_view bytes) {
        auto const page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
        std::size_t const used = (bytes.size() / page + 1) * page;
        size_ = used + page;
        void* const map = mmap(nullptr, size_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (map == MAP_FAILED) throw std::runtime_error("mmap");
        map_ = static_cast<char*>(map);
        if (mprotect(map_ + used, page, PROT_NONE) != 0) throw std::runtime_error("mprotect");
        text_ = map_ + used - bytes.size();
        if (!bytes.empty()) std::memcpy(text_, bytes.data(), bytes.size());
    }
    AtMemoryEnd(AtMemoryEnd const&) = delete;
    AtMemoryEnd& operator=(AtMemoryEnd const&) = delete;
    ~AtMemoryEnd() { munmap(map_, size_); }

    char* data() const { return text_; }

private:
    char* map_ = nullptr;
    char* text_ = nullptr;
    std::size_t size_ = 0;
};

/// A new multi-byte buffer with the text, whatever the locale.
inline Owned buffer(std::string_view text) {
    alignas(std::max_align_t) static char storage[sizeof(DDBCSBuffer) + 32];
    static auto const* const maker = ::new (storage) DDBCSBuffer(0);
    DBuffer* const made = maker->allocate(lengthOf(text));
    if (!text.empty()) std::memcpy(made->contents(), text.data(), text.size());
    return Owned(made);
}

/// The same as the class itself, for what DBuffer does not declare.
inline DDBCSBuffer const& asMultiByte(Owned const& owned) {
    return static_cast<DDBCSBuffer const&>(*owned.get());
}

using support::SwitchAt;

} // namespace mb

#endif
