// The national-language functions on raw bytes and the wide buffer, against models that ask the C library
// character by character.
#include "tests/nls/mb_support.h"

#include <kelcl/dnlsutil.h>

#include <climits>
#include <optional>
#include <type_traits>

namespace {

using namespace std::string_literals;
using mb::hex;
using mb::lengthOf;

ops::Failure badSequence(unsigned long line) {
    return {"DInvalidRequest", 1012, false, "Kel Class Library", "dnlsutil", line, 1, 1, ""};
}
ops::Failure unconvertible() { return ops::invalidRequest(0, "dnlsutil", 880); }
ops::Failure nothing() { return {}; }

constexpr unsigned long invalidLine = 725;
constexpr unsigned long incompleteLine = 760;

/// A value that no locale has a character for.
constexpr wchar_t surrogate = 0xD800;

/// The characters of the first bytes of a text, or the line that the failure names.
struct Conversion {
    std::wstring wide;
    unsigned long failure = 0;
};
Conversion converted(std::string_view bytes) {
    Conversion result;
    std::mbstate_t state{};
    for (std::size_t at = 0; at < bytes.size();) {
        wchar_t value = 0;
        std::size_t const window = std::min<std::size_t>(bytes.size() - at, MB_CUR_MAX);
        std::size_t const length = std::mbrtowc(&value, bytes.data() + at, window, &state);
        if (length == mb::invalidSequence || length == mb::incompleteSequence) {
            result.failure = length == mb::invalidSequence ? invalidLine : incompleteLine;
            return result;
        }
        result.wide += value;
        at += std::max<std::size_t>(length, 1);
    }
    return result;
}

std::string narrowed(std::wstring_view wide) {
    std::string bytes;
    std::mbstate_t state{};
    for (wchar_t const value : wide) {
        char scratch[MB_LEN_MAX];
        std::size_t const length = std::wcrtomb(scratch, value, &state);
        EXPECT_NE(length, static_cast<std::size_t>(-1));
        bytes.append(scratch, length);
    }
    return bytes;
}

/// The positions of the first `length` bytes of a text that goes on behind them, by the words of the
/// functions' descriptions. In these locales no character is longer than MB_CUR_MAX, so a sequence is a
/// character or it is invalid.
class Positions {
public:
    /// `bytes` has at least MB_CUR_MAX - 1 bytes behind the first `length`.
    Positions(std::string const& bytes, std::size_t length) : length_(length) {
        std::mbstate_t state{};
        std::size_t at = 0;
        while (at < length) {
            starts_.push_back(at);
            std::size_t const size = std::mbrlen(bytes.data() + at, MB_CUR_MAX, &state);
            EXPECT_NE(size, mb::incompleteSequence);
            if (size == mb::invalidSequence) return;
            at += std::max<std::size_t>(size, 1);
        }
        starts_.push_back(at); // behind the last character
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
    std::vector<std::size_t> starts_; // ends at a sequence that is invalid, or behind the text
};

/// Random texts, of whole characters and of all sorts of bytes in turn, each with bytes behind its end.
template <class Check>
void forRandomTexts(unsigned int seed, int rounds, Check check) {
    std::mt19937 random(seed);
    for (int round = 0; round < rounds; ++round) {
        std::string text = mb::randomText(random, round % 3 == 0 ? mb::parts() : mb::wholeParts(), 9);
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

// Positions

TEST(Positions, AreThoseOfAWalkThroughTheCharacters) {
    forRandomTexts(1, 4000, [](std::string const& text, unsigned int length) {
        Positions const model(text, length);
        char const* const s = text.data();
        for (unsigned int n = 0; n <= length + 2; ++n) {
            EXPECT_EQ(findBytePos(s, length, n), model.bytePos(n)) << n;
            EXPECT_EQ(findCharNum(s, length, n), model.charNum(n)) << n;
            EXPECT_EQ(findCurPos(s, length, n), model.curPos(n)) << n;
            EXPECT_EQ(findNextPos(s, length, n), model.nextPos(n)) << n;
            EXPECT_EQ(findNextCharNum(s, length, n), model.nextCharNum(n)) << n;
        }
    });
}

TEST(Positions, OfSingleByteTextAreTheNumbersOfItsBytes) {
    EXPECT_EQ(findBytePos("abc", 3, 3), 3u);
    EXPECT_EQ(findBytePos("abc", 3, 4), 0u);
    EXPECT_EQ(findCharNum("abc", 3, 2), 2u);
    EXPECT_EQ(findCurPos("abc", 3, 2), 2u);
    EXPECT_EQ(findNextPos("abc", 3, 2), 3u);
    EXPECT_EQ(findNextPos("abc", 3, 3), 0u);
    EXPECT_EQ(findNextCharNum("abc", 3, 3), 3u);
}

TEST(Positions, CountANulInsideTheTextAsACharacterOfOneByte) {
    EXPECT_EQ(findBytePos("a\0b", 3, 3), 3u);
    EXPECT_EQ(findCharNum("a\0b", 3, 3), 3u);
    EXPECT_EQ(findCurPos("a\0b", 3, 2), 2u);
    EXPECT_EQ(findNextPos("a\0b", 3, 2), 3u);
    EXPECT_EQ(findNextCharNum("a\0b", 3, 2), 2u);
}

TEST(Positions, InsideATwoByteCharacterAreThoseOfTheCharacter) {
    for (mb::Sample const& two : {mb::samples().two, mb::samples().wide}) {
        if (two.bytes.size() != 2) continue;
        std::string const text = "a" + two.bytes + "bc";
        char const* const s = text.c_str();
        EXPECT_EQ(findCurPos(s, 5, 3), 2u);
        EXPECT_EQ(findNextPos(s, 5, 2), 4u);
        EXPECT_EQ(findNextPos(s, 5, 3), 4u);
        EXPECT_EQ(findCharNum(s, 5, 3), 2u);
        EXPECT_EQ(findNextCharNum(s, 5, 3), 3u);
        EXPECT_EQ(findNextCharNum(s, 5, 2), 2u);
        EXPECT_EQ(findBytePos(s, 5, 3), 4u);
        EXPECT_EQ(findNextCharNum(s, 3, 3), 0u) << "no character follows";
        EXPECT_EQ(findNextPos(s, 3, 2), 0u) << "no character follows";
    }
}

TEST(Positions, OfTextOfOneByteAreOneWhateverTheByteIs) {
    for (int value = 0; value < 256; ++value) {
        char const text[2] = {static_cast<char>(value), '\0'};
        EXPECT_EQ(findBytePos(text, 1, 1), 1u) << value;
        EXPECT_EQ(findBytePos(text, 1, 2), 0u) << value;
    }
}

TEST(Positions, OfNoTextAndOfPositionsOutsideAreZero) {
    for (auto* const find : {findBytePos, findCharNum, findCurPos, findNextPos, findNextCharNum}) {
        EXPECT_EQ(find(nullptr, 3, 1), 0u);
        EXPECT_EQ(find("abc", 3, 0), 0u);
        EXPECT_EQ(find("abc", 3, 4), 0u);
        EXPECT_EQ(find("abc", 3, UINT_MAX), 0u);
        EXPECT_EQ(find("", 0, 1), 0u);
        EXPECT_EQ(find("", 0, 0), 0u);
    }
}

TEST(Positions, BehindAnInvalidByteAreZeroAndThoseBeforeItAreKnown) {
    if (!mb::isMultiByte()) {
        EXPECT_EQ(findCharNum("abc", 3, 3), 3u);
        return;
    }
    std::string const text = "ab" + mb::samples().invalid + "cd";
    char const* const s = text.c_str();
    EXPECT_EQ(findCharNum(s, 5, 2), 2u);
    EXPECT_EQ(findBytePos(s, 5, 3), 3u) << "its start is known without looking at it";
    EXPECT_EQ(findNextPos(s, 5, 2), 3u);
    EXPECT_EQ(findBytePos(s, 5, 4), 0u);
    for (unsigned int position : {3u, 4u, 5u}) {
        EXPECT_EQ(findCharNum(s, 5, position), 0u);
        EXPECT_EQ(findCurPos(s, 5, position), 0u);
        EXPECT_EQ(findNextPos(s, 5, position), 0u);
        EXPECT_EQ(findNextCharNum(s, 5, position), 0u);
    }
}

TEST(Positions, LookBehindTheTextToCompleteItsLastCharacterWhichIsWanted) {
    for (mb::Sample const& sample : mb::samples().longCharacters()) {
        std::string const text = "a" + sample.bytes;
        unsigned int const cut = lengthOf(text) - 1;
        EXPECT_EQ(findCharNum(text.c_str(), cut, 2), 2u);
        EXPECT_EQ(findCurPos(text.c_str(), cut, cut), 2u);
        EXPECT_EQ(findNextPos(text.c_str(), cut, 2), 0u);
    }
}

TEST(Positions, NeedNoMoreThanANulBehindTheText) {
    for (std::string const& part : mb::parts())
        for (std::size_t size = 1; size <= part.size(); ++size) {
            std::string const bytes = "a" + part.substr(0, size);
            mb::AtMemoryEnd const text(bytes + '\0');
            unsigned int const length = lengthOf(bytes);
            Positions const model(bytes + std::string(16, '\0'), length);
            for (unsigned int n = 1; n <= length; ++n) {
                EXPECT_EQ(findBytePos(text.data(), length, n), model.bytePos(n));
                EXPECT_EQ(findCharNum(text.data(), length, n), model.charNum(n));
                EXPECT_EQ(findCurPos(text.data(), length, n), model.curPos(n));
                EXPECT_EQ(findNextPos(text.data(), length, n), model.nextPos(n));
                EXPECT_EQ(findNextCharNum(text.data(), length, n), model.nextCharNum(n));
            }
        }
}

// Conversions

/// Converts into room with marks behind it, and checks what it says of a failure.
void expectConversion(std::string const& bytes) {
    Conversion const expected = converted(bytes);
    std::wstring out(bytes.size() + 4, L'#');
    unsigned long stored = 0;
    mb::AtMemoryEnd const text(bytes);
    ops::Failure const failure =
        ops::failureOf([&] { stored = cvtMBS2WCS(text.data(), lengthOf(bytes), out.data()); });
    EXPECT_EQ(failure, expected.failure == 0 ? nothing() : badSequence(expected.failure)) << hex(bytes);
    EXPECT_EQ(out.substr(bytes.size()), L"####") << hex(bytes);
    if (expected.failure != 0) return;
    EXPECT_EQ(stored, expected.wide.size()) << hex(bytes);
    EXPECT_EQ(out.substr(0, stored), expected.wide) << hex(bytes);
}

TEST(ConversionToWide, ConvertsAsTheCLibraryDoesAndReadsNoByteBehindTheText) {
    forRandomTexts(2, 3000, [](std::string const& text, unsigned int length) {
        expectConversion(text.substr(0, length));
    });
}

TEST(ConversionToWide, ConvertsEveryCharacterOfOneAndTwoBytes) {
    for (int first = 0; first < 256; ++first)
        for (int second = 0; second < 256; ++second) {
            std::string const bytes{static_cast<char>(first), static_cast<char>(second)};
            Conversion const expected = converted(bytes);
            if (expected.failure != 0) continue;
            wchar_t out[2] = {};
            unsigned long const stored = cvtMBS2WCS(bytes.data(), 2, out);
            ASSERT_EQ(std::wstring(out, stored), expected.wide) << hex(bytes);
        }
}

TEST(ConversionToWide, HasTheValuesOfTheSamples) {
    std::string bytes;
    std::wstring values;
    for (mb::Sample const& sample : mb::samples().characters()) {
        bytes += sample.bytes + '\0';
        values += {sample.value, L'\0'};
    }
    std::wstring out(bytes.size(), L'#');
    out.resize(cvtMBS2WCS(bytes.data(), lengthOf(bytes), out.data()));
    EXPECT_EQ(out, values);
}

TEST(ConversionToWide, OfNothingStoresNothing) {
    wchar_t out = L'#';
    EXPECT_EQ(cvtMBS2WCS(nullptr, 3, &out), 0u);
    EXPECT_EQ(cvtMBS2WCS("abc", 0, &out), 0u);
    EXPECT_EQ(cvtMBS2WCS("abc", 3, nullptr), 0u);
    EXPECT_EQ(out, L'#');
}

TEST(ConversionToWide, TellsInvalidBytesFromACharacterThatTheEndCuts) {
    mb::Samples const& s = mb::samples();
    wchar_t out[32];
    auto const failureAt = [&out](std::string const& bytes) {
        return ops::failureOf([&] { cvtMBS2WCS(bytes.data(), lengthOf(bytes), out); });
    };
    EXPECT_EQ(failureAt("abc"), nothing());
    if (!mb::isMultiByte()) return;
    EXPECT_EQ(failureAt("ab" + s.invalid + "c"), badSequence(invalidLine));
    EXPECT_EQ(failureAt(s.lead + '\0'), badSequence(invalidLine));
    EXPECT_EQ(failureAt("ab" + s.lead), badSequence(incompleteLine));
    EXPECT_EQ(failureAt(s.lead), badSequence(incompleteLine));
    for (mb::Sample const& sample : s.longCharacters()) {
        std::string const text = "a" + sample.bytes;
        EXPECT_EQ(ops::failureOf([&] { cvtMBS2WCS(text.data(), lengthOf(text) - 1, out); }),
                  badSequence(incompleteLine))
            << "what completes the character is behind the bytes given";
    }
}

TEST(ConversionToWide, NamesNoFunctionAndTakesItsTextFromTheCatalog) {
    if (!mb::isMultiByte()) return;
    std::string const bad = mb::samples().invalid;
    wchar_t out[4];
    ops::LogOfExceptions const log;
    try {
        cvtMBS2WCS(bad.data(), lengthOf(bad), out);
        ADD_FAILURE() << "nothing was thrown";
    } catch (DInvalidRequest const& thrown) {
        EXPECT_STREQ(thrown.locationAtIndex(0)->functionName(), "Unknown");
        EXPECT_STREQ(thrown.text(0), "Unable to load text from message file.") << "there is no catalog";
        EXPECT_EQ(thrown.textCount(), 1u);
    }
}

TEST(ConversionOfOneCharacter, ReturnsItsLengthAndOneForANul) {
    wchar_t value = L'#';
    for (mb::Sample const& sample : mb::samples().characters()) {
        std::mbstate_t state{};
        mb::AtMemoryEnd const text(sample.bytes);
        EXPECT_EQ(cvtMB2WC(text.data(), lengthOf(sample.bytes), &value, &state),
                  static_cast<int>(sample.bytes.size()));
        EXPECT_EQ(value, sample.value);
        std::string const more = sample.bytes + "abcdefgh";
        EXPECT_EQ(cvtMB2WC(more.data(), lengthOf(more), &value, &state),
                  static_cast<int>(sample.bytes.size()));
    }
    std::mbstate_t state{};
    EXPECT_EQ(cvtMB2WC("\0a", 2, &value, &state), 1);
    EXPECT_EQ(value, L'\0');
}

TEST(ConversionOfOneCharacter, GoesOnFromTheStateOfTheCaller) {
    for (mb::Sample const& sample : mb::samples().longCharacters()) {
        std::mbstate_t state{};
        wchar_t value = 0;
        ASSERT_EQ(std::mbrtowc(&value, sample.bytes.data(), 1, &state), mb::incompleteSequence);
        EXPECT_EQ(cvtMB2WC(sample.bytes.data() + 1, lengthOf(sample.bytes) - 1, &value, &state),
                  static_cast<int>(sample.bytes.size()) - 1);
        EXPECT_EQ(value, sample.value);
    }
}

TEST(ConversionOfOneCharacter, FailsAtBadSequences) {
    wchar_t value = 0;
    auto const failureAt = [&value](std::string const& bytes) {
        return ops::failureOf([&] {
            std::mbstate_t state{};
            cvtMB2WC(bytes.data(), lengthOf(bytes), &value, &state);
        });
    };
    EXPECT_EQ(failureAt(""), badSequence(incompleteLine)) << "no bytes are the beginning of anything";
    if (!mb::isMultiByte()) return;
    EXPECT_EQ(failureAt(mb::samples().invalid), badSequence(invalidLine));
    EXPECT_EQ(failureAt(mb::samples().lead), badSequence(incompleteLine));
    EXPECT_EQ(failureAt(mb::samples().lead + '\0'), badSequence(invalidLine));
}

/// Converts into a field of every size, with and without pad, and compares with the rule.
void expectFields(std::wstring const& wide) {
    std::string const all = narrowed(wide);
    std::vector<std::size_t> ends = {0};
    for (wchar_t const value : wide)
        ends.push_back(ends.back() + narrowed({&value, 1}).size());
    for (unsigned int size = 1; size <= all.size() + 3; ++size) {
        std::size_t fitting = 0;
        for (std::size_t const end : ends)
            if (end <= size) fitting = end;
        for (int const pad : {0, 1, -1, 256}) {
            std::string out(size + 2, '#');
            unsigned int const written =
                cvtWCS2MBS(wide.data(), static_cast<unsigned int>(wide.size()), out.data(), size, pad, '*');
            EXPECT_EQ(written, pad == 0 ? fitting : size) << hex(all) << size;
            EXPECT_EQ(out, all.substr(0, fitting) + std::string(size - fitting, pad == 0 ? '#' : '*') + "##")
                << hex(all) << size;
        }
    }
}

TEST(ConversionFromWide, WritesWholeCharactersAndPadsOrLeavesTheRest) {
    expectFields(L"");
    expectFields(L"abc"s);
    expectFields(L"a\0b"s);
    forRandomTexts(3, 300, [](std::string const& text, unsigned int length) {
        Conversion const conversion = converted(std::string_view(text).substr(0, length));
        expectFields(conversion.wide);
    });
}

TEST(ConversionFromWide, ConvertsEveryValueAsTheCLibraryDoes) {
    unsigned int differences = 0;
    for (wchar_t value = 0; value < 0x30100; ++value) {
        char expected[MB_LEN_MAX];
        std::mbstate_t state{};
        std::size_t const length = std::wcrtomb(expected, value, &state);
        if (length == static_cast<std::size_t>(-1)) continue;
        char out[MB_LEN_MAX];
        unsigned int const written = cvtWCS2MBS(&value, 1, out, sizeof out, 0, ' ');
        if (written != length || std::memcmp(out, expected, length) != 0) ++differences;
    }
    EXPECT_EQ(differences, 0u);
    for (wchar_t const value : {surrogate, wchar_t{0xDFFF}, wchar_t{-1}}) {
        char out[MB_LEN_MAX];
        EXPECT_EQ(ops::failureOf([&] { cvtWCS2MBS(&value, 1, out, sizeof out, 0, ' '); }), unconvertible());
    }
}

TEST(ConversionFromWide, OfNothingWritesNothing) {
    char out[] = "###";
    EXPECT_EQ(cvtWCS2MBS(static_cast<wchar_t const*>(nullptr), 3, out, 3, 1, '*'), 0u);
    EXPECT_EQ(cvtWCS2MBS(L"abc", 3, nullptr, 3, 1, '*'), 0u);
    EXPECT_EQ(cvtWCS2MBS(L"abc", 3, out, 0, 1, '*'), 0u);
    EXPECT_STREQ(out, "###");
    EXPECT_EQ(cvtWCS2MBS(L"", 0, out, 2, 1, '*'), 2u);
    EXPECT_STREQ(out, "**#");
    EXPECT_EQ(cvtWCS2MBS(L"", 0, out, 2, 0, '-'), 0u);
    EXPECT_STREQ(out, "**#");
}

TEST(ConversionFromWide, FailsAtAValueThatIsNoCharacterAndKeepsWhatWasWritten) {
    wchar_t const wide[] = {L'a', L'b', surrogate, L'c'};
    std::string out(6, '#');
    EXPECT_EQ(ops::failureOf([&] { cvtWCS2MBS(wide, 4, out.data(), 6, 1, '*'); }), unconvertible());
    EXPECT_EQ(out, "ab####");
    ops::Failure const failure = ops::failureOf([&] { cvtWCS2MBS(wide, 4, out.data(), 3, 0, '*'); });
    EXPECT_EQ(failure, unconvertible());
    EXPECT_EQ(failure.text, "cvtWCS2MBS");
}

TEST(ConversionFromWide, DoesNotLookAtCharactersBehindAFullField) {
    wchar_t const wide[] = {L'a', L'b', surrogate};
    std::string out(3, '#');
    EXPECT_EQ(cvtWCS2MBS(wide, 3, out.data(), 2, 1, '*'), 2u);
    EXPECT_EQ(out, "ab#");
}

TEST(ConversionFromWide, TakesAWideBuffer) {
    std::string bytes;
    for (mb::Sample const& sample : mb::samples().characters())
        bytes += sample.bytes;
    DWBuffer const wide(bytes.data(), lengthOf(bytes));
    std::string out(bytes.size() + 2, '#');
    EXPECT_EQ(cvtWCS2MBS(wide, out.data(), lengthOf(out), 1, '*'), out.size());
    EXPECT_EQ(out, bytes + "**");
    EXPECT_EQ(cvtWCS2MBS(wide, out.data(), 0, 1, '*'), 0u);
    EXPECT_EQ(cvtWCS2MBS(wide, nullptr, 3, 1, '*'), 0u);
}

TEST(Insertion, PutsTheInsertBehindTheFirstCharacters) {
    std::wstring source = L"abcd";
    std::wstring insert = L"XY";
    for (int pos = -1; pos <= 4; ++pos)
        for (int count = -1; count <= 2; ++count) {
            std::wstring expected = source;
            expected.insert(static_cast<std::size_t>(std::max(pos, 0)), insert, 0,
                            static_cast<std::size_t>(std::max(count, 0)));
            std::wstring out(8, L'#');
            EXPECT_EQ(insWCS2WCS(source.data(), 4, insert.data(), count, pos, out.data()), expected.size());
            EXPECT_EQ(out, expected + std::wstring(8 - expected.size(), L'#'));
        }
}

TEST(Insertion, CopiesNulsAndTakesAnEmptySource) {
    std::wstring source = L"a\0b"s;
    std::wstring insert = L"\0"s;
    std::wstring out(4, L'#');
    EXPECT_EQ(insWCS2WCS(source.data(), 3, insert.data(), 1, 1, out.data()), 4u);
    EXPECT_EQ(out, L"a\0\0b"s);
    out = L"####";
    EXPECT_EQ(insWCS2WCS(source.data(), 0, insert.data(), 1, 0, out.data()), 1u);
    EXPECT_EQ(out, L"\0###"s);
    EXPECT_EQ(insWCS2WCS(source.data(), -5, insert.data(), -5, -5, out.data()), 0u);
}

// Cutting

/// What the cutting functions find before they write.
struct Piece {
    unsigned long failure = 0; ///< The line of the exception.
    bool isLocated = false;
    std::size_t pads = 0;
    std::wstring wide;
};
Piece pieceOf(std::string const& text, unsigned int length, unsigned int from) {
    Piece piece;
    Positions const positions(text, length);
    unsigned int const number = positions.nextCharNum(from);
    unsigned int const position = positions.bytePos(number);
    if (position == 0) return piece;
    piece.isLocated = true;
    Conversion const conversion = converted(std::string_view(text).substr(0, length));
    piece.failure = conversion.failure;
    if (piece.failure != 0) return piece;
    piece.pads = position - from;
    piece.wide = conversion.wide.substr(number - 1);
    return piece;
}

std::optional<std::string> expectedRemainder(std::string const& text, unsigned int length, unsigned int start,
                                             unsigned long& failure) {
    if (start > length) return "";
    unsigned int const from = std::max(start, 1u);
    if (from > length) return "";
    Piece const piece = pieceOf(text, length, from);
    failure = piece.failure;
    if (failure != 0) return std::nullopt;
    if (!piece.isLocated) return std::string(length - from + 1, '*');
    return std::string(piece.pads, '*') + narrowed(piece.wide);
}

TEST(Remainder, IsWhatTheCharactersBehindTheStartConvertTo) {
    forRandomTexts(4, 2500, [](std::string const& text, unsigned int length) {
        for (unsigned int start = 0; start <= length + 2; ++start) {
            unsigned long line = 0;
            std::optional<std::string> const expected = expectedRemainder(text, length, start, line);
            std::string out(2 * length + 4, '#');
            unsigned int written = 0;
            ops::Failure const failure = ops::failureOf(
                [&] { written = getRemainString(text.data(), length, start, '*', out.data()); });
            EXPECT_EQ(failure, line == 0 ? nothing() : badSequence(line)) << start;
            std::string const bytes = expected.value_or("");
            EXPECT_EQ(written, bytes.size()) << start;
            EXPECT_EQ(hex(out), hex(bytes + std::string(out.size() - bytes.size(), '#'))) << start;
        }
    });
}

TEST(Remainder, IsTheWholeTextFromZeroAndNothingBehindTheEnd) {
    char out[] = "#########";
    EXPECT_EQ(getRemainString("a\0b", 3, 0, '*', out), 3u);
    EXPECT_EQ(std::string(out, 4), "a\0b#"s);
    EXPECT_EQ(getRemainString("abc", 3, 4, '*', out), 0u);
    EXPECT_EQ(getRemainString("", 0, 0, '*', out), 0u);
    EXPECT_EQ(getRemainString(nullptr, 0, 0, '*', out), 0u);
    EXPECT_EQ(std::string(out, 4), "a\0b#"s);
}

TEST(Remainder, OfNoTextIsAllPad) {
    std::string out(5, '#');
    EXPECT_EQ(getRemainString(nullptr, 3, 2, '*', out.data()), 2u);
    EXPECT_EQ(out, "**###");
    EXPECT_EQ(getRemainString(nullptr, 3, 0, '*', out.data()), 3u);
    EXPECT_EQ(out, "***##");
}

TEST(Remainder, BeginsWithPadsInPlaceOfACutCharacter) {
    for (mb::Sample const& sample : mb::samples().longCharacters()) {
        std::string const text = "a" + sample.bytes + "b";
        for (std::size_t place = 1; place < sample.bytes.size(); ++place) {
            std::string out(text.size(), '#');
            std::size_t const pads = sample.bytes.size() - place;
            EXPECT_EQ(getRemainString(text.c_str(), lengthOf(text), static_cast<unsigned int>(2 + place), '*',
                                      out.data()),
                      pads + 1);
            EXPECT_EQ(out.substr(0, pads + 1), std::string(pads, '*') + "b");
        }
    }
}

TEST(Remainder, OfTextWithABadSequenceIsAllPadBehindItAndFailsBeforeIt) {
    if (!mb::isMultiByte()) return;
    std::string const text = "ab" + mb::samples().invalid + "cd";
    std::string out(8, '#');
    EXPECT_EQ(getRemainString(text.c_str(), 5, 4, '*', out.data()), 2u);
    EXPECT_EQ(out, "**######");
    out.assign(8, '#');
    EXPECT_EQ(ops::failureOf([&] { getRemainString(text.c_str(), 5, 1, '*', out.data()); }),
              badSequence(invalidLine));
    EXPECT_EQ(out, "########");
}

TEST(Remainder, NeedsNoMoreThanANulBehindTheText) {
    for (mb::Sample const& sample : mb::samples().characters()) {
        mb::AtMemoryEnd const text(sample.bytes + sample.bytes + '\0');
        unsigned int const length = 2 * lengthOf(sample.bytes);
        std::string out(length, '#');
        EXPECT_EQ(getRemainString(text.data(), length, 1, '*', out.data()), length);
        EXPECT_EQ(out, sample.bytes + sample.bytes);
    }
}

std::optional<std::string> expectedField(std::string const& text, unsigned int length, unsigned int start,
                                         unsigned int count, unsigned long& failure) {
    std::string field;
    unsigned int const from = std::max(start, 1u);
    if (count != 0 && from <= length) {
        Piece const piece = pieceOf(text, length, from);
        failure = piece.failure;
        if (failure != 0) return std::nullopt;
        field.assign(std::min<std::size_t>(piece.pads, count), '*');
        for (wchar_t const value : piece.wide) {
            std::string const bytes = narrowed({&value, 1});
            if (field.size() + bytes.size() > count) break;
            field += bytes;
        }
    }
    field.resize(count, '*');
    return field;
}

TEST(Field, HoldsTheWholeCharactersThatFitAndPads) {
    forRandomTexts(5, 800, [](std::string const& text, unsigned int length) {
        for (unsigned int start = 0; start <= length + 2; ++start)
            for (unsigned int count = 0; count <= length + 2; ++count) {
                unsigned long line = 0;
                std::optional<std::string> const expected = expectedField(text, length, start, count, line);
                if (line != 0 && count > 2) continue; // failures are slow
                std::string out(count + 2, '#');
                char* result = out.data();
                ops::Failure const failure = ops::failureOf(
                    [&] { result = getSubString(text.data(), length, start, '*', out.data(), count); });
                EXPECT_EQ(failure, line == 0 ? nothing() : badSequence(line)) << start << ' ' << count;
                EXPECT_EQ(result, out.data());
                EXPECT_EQ(hex(out), hex(expected.value_or(std::string(count, '#')) + "##"))
                    << start << ' ' << count;
            }
    });
}

TEST(Field, OfNoTextAndBehindTheEndIsAllPad) {
    std::string out(5, '#');
    EXPECT_EQ(getSubString(nullptr, 3, 1, '*', out.data(), 4), out.data());
    EXPECT_EQ(out, "****#");
    EXPECT_EQ(getSubString("abc", 3, 4, '-', out.data(), 2), out.data());
    EXPECT_EQ(out, "--**#");
    EXPECT_EQ(getSubString("abc", 3, 1, '.', out.data(), 0), out.data());
    EXPECT_EQ(out, "--**#");
    EXPECT_EQ(getSubString("", 0, 0, '+', out.data(), 3), out.data());
    EXPECT_EQ(out, "+++*#");
    EXPECT_EQ(getSubString("a\0bcd", 5, 2, '*', out.data(), 5), out.data());
    EXPECT_EQ(out, "\0bcd*"s);
}

TEST(Field, CutsNoCharacterAtEitherEdge) {
    for (mb::Sample const& sample : mb::samples().longCharacters()) {
        if (sample.bytes.size() != 2) continue;
        std::string const text = "a" + sample.bytes + "b" + sample.bytes;
        std::string out(6, '#');
        getSubString(text.c_str(), 6, 3, '*', out.data(), 3);
        EXPECT_EQ(out, "*b*###");
        getSubString(text.c_str(), 6, 3, '*', out.data(), 4);
        EXPECT_EQ(out, "*b" + sample.bytes + "##");
        getSubString(text.c_str(), 6, 3, '*', out.data(), 1);
        EXPECT_EQ(out, "*b" + sample.bytes + "##");
    }
}

TEST(Field, NeedsNoMoreThanANulBehindTheText) {
    for (std::string const& part : mb::wholeParts()) {
        mb::AtMemoryEnd const text(part + '\0');
        std::string out(part.size() + 1, '#');
        getSubString(text.data(), lengthOf(part), 1, '*', out.data(), lengthOf(part) + 1);
        EXPECT_EQ(out, part + '*');
    }
}

// Byte tests

TEST(DigitTests, KnowTheDigitsOfAsciiOnly) {
    for (int value = 0; value < 256; ++value) {
        auto const byte = static_cast<char>(value);
        bool const digit = value >= '0' && value <= '9';
        bool const hexDigit = digit || (value >= 'a' && value <= 'f') || (value >= 'A' && value <= 'F');
        EXPECT_EQ(isAllDigits(&byte, 1), digit ? 1 : 0) << value;
        EXPECT_EQ(isAllHexDigits(&byte, 1), hexDigit ? 1 : 0) << value;
    }
}

TEST(DigitTests, AreTrueOfNoBytes) {
    EXPECT_EQ(isAllDigits("x", 0), 1);
    EXPECT_EQ(isAllHexDigits("x", 0), 1);
    EXPECT_EQ(isAllDigits(nullptr, 0), 1);
    EXPECT_EQ(isAllHexDigits(nullptr, 0), 1);
}

TEST(DigitTests, LookAtEveryByteAndAtNoneBehind) {
    for (std::size_t size = 1; size <= 70; ++size) {
        mb::AtMemoryEnd const text(std::string(size, '7'));
        unsigned int const n = static_cast<unsigned int>(size);
        EXPECT_EQ(isAllDigits(text.data(), n), 1);
        EXPECT_EQ(isAllHexDigits(text.data(), n), 1);
        for (std::size_t at = 0; at < size; ++at) {
            text.data()[at] = 'f';
            EXPECT_EQ(isAllDigits(text.data(), n), 0);
            EXPECT_EQ(isAllHexDigits(text.data(), n), 1);
            text.data()[at] = '\0';
            EXPECT_EQ(isAllHexDigits(text.data(), n), 0);
            text.data()[at] = '7';
        }
    }
}

TEST(OtherByte, IsTheFirstThatDiffers) {
    EXPECT_EQ(indexThatIsNot("   x", 4, ' '), 4u);
    EXPECT_EQ(indexThatIsNot("   x", 3, ' '), 0u);
    EXPECT_EQ(indexThatIsNot("x", 0, ' '), 0u);
    EXPECT_EQ(indexThatIsNot(nullptr, 0, ' '), 0u);
    EXPECT_EQ(indexThatIsNot("\0\0a", 3, '\0'), 3u);
    for (std::size_t size = 1; size <= 70; ++size) {
        mb::AtMemoryEnd const text(std::string(size, '\xE4'));
        for (std::size_t at = 0; at < size; ++at) {
            text.data()[at] = 'd';
            EXPECT_EQ(indexThatIsNot(text.data(), static_cast<unsigned int>(size), '\xE4'), at + 1);
            text.data()[at] = '\xE4';
        }
        EXPECT_EQ(indexThatIsNot(text.data(), static_cast<unsigned int>(size), '\xE4'), 0u);
    }
}

// Wide buffers

static_assert(!std::is_copy_constructible_v<DWBuffer> && !std::is_copy_assignable_v<DWBuffer>);

std::wstring contentsOf(DWBuffer const& buffer) { return std::wstring(buffer.wide, buffer.length); }

/// A buffer of ASCII text.
DWBuffer wideOf(std::string const& text) { return DWBuffer(text.data(), lengthOf(text)); }

TEST(WideBuffer, HoldsTheCharactersOfTheText) {
    std::string bytes = "\0"s;
    std::wstring values = L"\0"s;
    for (mb::Sample const& sample : mb::samples().characters()) {
        bytes += sample.bytes;
        values += sample.value;
    }
    mb::AtMemoryEnd const text(bytes);
    EXPECT_EQ(contentsOf(DWBuffer(text.data(), lengthOf(bytes))), values);
    EXPECT_EQ(DWBuffer(text.data(), 1).length, 1u);
}

TEST(WideBuffer, OfTextUpToItsNulEndsInAWideNul) {
    std::string const bytes = "ab" + mb::samples().two.bytes;
    DWBuffer const buffer(bytes.c_str());
    EXPECT_EQ(buffer.length, mb::samples().two.exists() ? 3u : 2u);
    EXPECT_EQ(buffer.wide[1], L'b');
    EXPECT_EQ(buffer.wide[buffer.length], L'\0');
    DWBuffer const empty("");
    EXPECT_EQ(empty.length, 0u);
    EXPECT_EQ(empty.wide[0], L'\0');
}

TEST(WideBuffer, OfNoBytesHasAWideNulAndNoLength) {
    DWBuffer const empty("abc", 0);
    EXPECT_EQ(empty.length, 0u);
    EXPECT_EQ(empty.wide[0], L'\0');
}

TEST(WideBuffer, FailsAtBadSequences) {
    EXPECT_EQ(ops::failureOf([] { DWBuffer const buffer("abc", 3); }), nothing());
    if (!mb::isMultiByte()) return;
    std::string const bad = "a" + mb::samples().invalid;
    std::string const cut = "a" + mb::samples().lead;
    EXPECT_EQ(ops::failureOf([&] { DWBuffer const buffer(bad.data(), lengthOf(bad)); }),
              badSequence(invalidLine));
    EXPECT_EQ(ops::failureOf([&] { DWBuffer const buffer(cut.data(), lengthOf(cut)); }),
              badSequence(incompleteLine));
    EXPECT_EQ(ops::failureOf([&] { DWBuffer const buffer(cut.c_str()); }), badSequence(invalidLine))
        << "the NUL is converted with the text";
}

/// wcsncmp as a loop: equal up to a NUL on both sides is equal.
bool isEqualUpToNul(std::wstring_view a, std::wstring_view b) {
    for (std::size_t i = 0; i < b.size(); ++i) {
        if (a[i] != b[i]) return false;
        if (a[i] == L'\0') return true;
    }
    return true;
}

TEST(WideBufferSearch, AgreesWithALoopOverThePositions) {
    std::mt19937 random(6);
    for (int round = 0; round < 3000; ++round) {
        auto const some = [&random](std::size_t most) {
            return mb::randomText(random, {"a", "a", "b", "\0"s, mb::samples().two.bytes + "c"}, most);
        };
        DWBuffer const text = wideOf(some(8));
        DWBuffer const other = wideOf(some(3));
        std::wstring const t = contentsOf(text);
        std::wstring const o = contentsOf(other);
        unsigned int const length = text.length;
        for (unsigned int start = 0; start <= length + 2; ++start) {
            unsigned int first[3] = {};
            unsigned int last[3] = {};
            for (unsigned int p = 1; p <= length; ++p) {
                bool const hit[3] = {!o.empty() && o.size() <= length - p + 1 &&
                                         isEqualUpToNul(std::wstring_view(t).substr(p - 1), o),
                                     o.find(t[p - 1]) != o.npos, o.find(t[p - 1]) == o.npos};
                for (int i = 0; i < 3; ++i) {
                    if (hit[i] && start != 0 && p >= start && first[i] == 0) first[i] = p;
                    if (hit[i] && p <= start) last[i] = p;
                }
            }
            ASSERT_EQ(text.positionOf(other, start), first[0]) << round << ' ' << start;
            ASSERT_EQ(text.positionOfAnyOf(other, start), first[1]) << round << ' ' << start;
            ASSERT_EQ(text.positionOfAnyBut(other, start), first[2]) << round << ' ' << start;
            ASSERT_EQ(text.lastPositionOf(other, start), last[0]) << round << ' ' << start;
            ASSERT_EQ(text.lastPositionOfAnyOf(other, start), last[1]) << round << ' ' << start;
            ASSERT_EQ(text.lastPositionOfAnyBut(other, start), last[2]) << round << ' ' << start;
        }
    }
}

TEST(WideBufferSearch, ComparesAPatternNoFurtherThanToANulWhichIsWanted) {
    EXPECT_EQ(wideOf("xa\0b"s).positionOf(wideOf("a\0c"s), 1), 2u);
    EXPECT_EQ(wideOf("xa\0b"s).lastPositionOf(wideOf("a\0c"s), 4), 2u);
    EXPECT_EQ(wideOf("xa\0"s).positionOf(wideOf("a\0c"s), 1), 0u) << "the whole pattern must fit";
}

TEST(WideBufferSearch, WithAnEmptySetOrPattern) {
    DWBuffer const text = wideOf("abc");
    DWBuffer const none = wideOf("");
    EXPECT_EQ(text.positionOfAnyBut(none, 2), 2u);
    EXPECT_EQ(text.positionOfAnyBut(none, 4), 0u);
    EXPECT_EQ(text.lastPositionOfAnyBut(none, 2), 2u);
    EXPECT_EQ(text.lastPositionOfAnyBut(none, 9), 3u);
    EXPECT_EQ(none.lastPositionOfAnyBut(none, 9), 0u);
    EXPECT_EQ(none.positionOfAnyBut(none, 1), 0u);
    EXPECT_EQ(text.positionOf(none, 1), 0u);
    EXPECT_EQ(text.lastPositionOf(none, 3), 0u);
    EXPECT_EQ(text.positionOfAnyOf(none, 1), 0u);
    EXPECT_EQ(text.lastPositionOfAnyOf(none, 3), 0u);
    EXPECT_EQ(text.positionOf(text, UINT_MAX), 0u);
    EXPECT_EQ(text.lastPositionOf(text, UINT_MAX), 1u);
}

TEST(WideBuffer, KnowsItsCharactersAndReversesThem) {
    DWBuffer const text = wideOf("ab\0c"s);
    EXPECT_TRUE(text.hasWChar(L'c'));
    EXPECT_TRUE(text.hasWChar(L'\0'));
    EXPECT_FALSE(text.hasWChar(L'x'));
    text.reverse();
    EXPECT_EQ(contentsOf(text), L"c\0ba"s);
    DWBuffer const none = wideOf("");
    EXPECT_FALSE(none.hasWChar(L'\0'));
    none.reverse();
    EXPECT_EQ(none.length, 0u);
    EXPECT_EQ(none.wide[0], L'\0');
}

TEST(WideBufferSearch, KnowsTheMembersOfALargeSet) {
    DWBuffer const text("a quick brown fox 12");
    DWBuffer const letters("abcdefghijklmnopqrstuvwxyz");
    EXPECT_EQ(text.positionOfAnyOf(letters, 2), 3U);
    EXPECT_EQ(text.positionOfAnyBut(letters, 1), 2U);
    EXPECT_EQ(text.lastPositionOfAnyOf(letters, 20), 17U);
    EXPECT_EQ(text.lastPositionOfAnyBut(letters, 17), 14U);
}

} // namespace
