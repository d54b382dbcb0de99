// What the tests of the national-language functions on raw bytes share: models that ask the C library
// character by character, and the failures of texts that do not convert. No tests are here.
#ifndef KELCL_TESTS_CHARACTERS_DNLSUTIL_SUPPORT_H
#define KELCL_TESTS_CHARACTERS_DNLSUTIL_SUPPORT_H

#include "tests/characters/multi_byte_support.h"

namespace mb {

inline operations::Failure badSequence(unsigned long line) {
    return {"DInvalidRequest", 1012, false, "Kel Class Library", "dnlsutil", line, 1, 1, ""};
}
inline operations::Failure nothing() { return {}; }

constexpr unsigned long invalidLine = 725;
constexpr unsigned long incompleteLine = 760;

/// Characters of a text as the C library converts them one by one, up to bytes that are none.
struct Conversion {
    std::wstring wide;              ///< Their values, of a sequence of two the first.
    std::vector<std::string> bytes; ///< Their own.
    std::vector<bool> isPair;       ///< Whether they give two wide characters.
    unsigned long failure = 0;      ///< The line that the failure names.
};
inline Conversion convertedWithPairs(std::string_view bytes) {
    Conversion result;
    for (std::size_t at = 0; at < bytes.size(); at += result.bytes.back().size()) {
        std::mbstate_t state{};
        wchar_t value = 0;
        std::size_t const window = std::min<std::size_t>(bytes.size() - at, MB_CUR_MAX);
        std::size_t const length = std::mbrtowc(&value, bytes.data() + at, window, &state);
        if (length == invalidSequence || length == incompleteSequence) {
            result.failure = length == invalidSequence ? invalidLine : incompleteLine;
            return result;
        }
        result.wide += value;
        result.bytes.emplace_back(bytes.substr(at, std::max<std::size_t>(length, 1)));
        result.isPair.push_back(std::mbsinit(&state) == 0);
    }
    return result;
}
/// The same where sequences of two wide characters are taken for invalid.
inline Conversion converted(std::string_view bytes) {
    Conversion result = convertedWithPairs(bytes);
    if (std::find(result.isPair.begin(), result.isPair.end(), true) != result.isPair.end())
        result.failure = invalidLine;
    return result;
}

/// What wide characters convert to.
inline std::string narrowed(std::wstring_view wide) {
    std::string bytes;
    for (wchar_t const value : wide) {
        bytes += bytesOf(value);
        EXPECT_FALSE(bytesOf(value).empty());
    }
    return bytes;
}

/// The positions of the first `length` bytes of a text that goes on after them, by the words of the
/// functions' descriptions. In these locales no character is longer than MB_CUR_MAX, so a sequence is a
/// character or it is invalid.
class Positions {
public:
    /// `bytes` has at least MB_CUR_MAX - 1 bytes after the first `length`.
    Positions(std::string const& bytes, std::size_t length) : length_(length) {
        std::size_t at = 0;
        while (at < length) {
            starts_.push_back(at);
            std::size_t const size = mbrlenOf(bytes.data() + at, MB_CUR_MAX);
            EXPECT_NE(size, incompleteSequence);
            if (size == invalidSequence) return;
            at += std::max<std::size_t>(size, 1);
        }
        starts_.push_back(at); // after the last character
    }

    unsigned int bytePos(std::size_t number) const {
        if (number == 0 || number > starts_.size() || starts_[number - 1] >= length_) return 0;
        return static_cast<unsigned int>(starts_[number - 1]) + 1;
    }
    unsigned int charNum(std::size_t position) const {
        if (position == 0 || position > length_) return 0;
        for (std::size_t number = 1; number < starts_.size(); ++number)
            if (position <= starts_[number]) return static_cast<unsigned int>(number);
        return 0;
    }
    unsigned int curPos(std::size_t position) const { return bytePos(charNum(position)); }
    unsigned int nextPos(std::size_t position) const {
        unsigned int const number = charNum(position);
        return number == 0 ? 0 : bytePos(number + 1);
    }
    unsigned int nextCharNum(std::size_t position) const {
        unsigned int const number = charNum(position);
        if (number == 0 || bytePos(number) == position) return number;
        return bytePos(number + 1) == 0 ? 0 : number + 1;
    }

private:
    std::size_t length_;
    std::vector<std::size_t> starts_; // ends at a sequence that is invalid, or after the text
};

/// Random texts, of whole characters and of all sorts of bytes in turn, each with bytes past its end.
template <class Check>
void forRandomTexts(unsigned int seed, int rounds, Check check) {
    std::mt19937 random(seed);
    for (int round = 0; round < rounds; ++round) {
        std::string text = randomText(random, round % 3 == 0 ? parts() : wholeParts(), 9);
        std::size_t const cut = round % 2 == 0 || text.empty() ? 0 : random() % text.size();
        std::size_t const length = text.size() - cut;
        text.append(16, '\0');
        check(text, static_cast<unsigned int>(length));
        if (testing::Test::HasFailure()) {
            ADD_FAILURE() << "first " << length << " bytes of " << hex(text);
            return;
        }
    }
}

} // namespace mb

#endif
