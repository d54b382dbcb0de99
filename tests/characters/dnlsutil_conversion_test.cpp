// Conversions of raw text to wide characters and back, and the insertion into wide text.
#include "tests/characters/dnlsutil_support.h"

#include <kelcl/dnlsutil.h>

#include <climits>

namespace {

using namespace std::string_literals;
using mb::badSequence;
using mb::Conversion;
using mb::converted;
using mb::forRandomTexts;
using mb::hex;
using mb::incompleteLine;
using mb::invalidLine;
using mb::lengthOf;
using mb::narrowed;
using mb::nothing;

/// A value that no locale has a character for.
constexpr wchar_t surrogate = 0xD800;

operations::Failure unconvertible() { return operations::invalidRequest(0, "dnlsutil", 880); }

/// Converts into room with marks after it, and checks what it says of a failure.
void expectConversion(std::string const& bytes) {
    Conversion const expected = converted(bytes);
    std::wstring out(bytes.size() + 4, L'#');
    unsigned long stored = 0;
    mb::AtMemoryEnd const text(bytes);
    operations::Failure const failure =
        operations::failureOf([&] { stored = cvtMBS2WCS(text.data(), lengthOf(bytes), out.data()); });
    EXPECT_EQ(failure, expected.failure == 0 ? nothing() : badSequence(expected.failure)) << hex(bytes);
    EXPECT_EQ(out.substr(bytes.size()), L"####") << hex(bytes);
    if (expected.failure != 0) return;
    EXPECT_EQ(stored, expected.wide.size()) << hex(bytes);
    EXPECT_EQ(out.substr(0, stored), expected.wide) << hex(bytes);
}

TEST(ConversionToWide, ConvertsAsTheCLibraryDoesAndReadsNoBytePastTheText) {
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
        return operations::failureOf([&] { cvtMBS2WCS(bytes.data(), lengthOf(bytes), out); });
    };
    EXPECT_EQ(failureAt("abc"), nothing());
    if (!mb::isMultiByte()) return;
    EXPECT_EQ(failureAt("ab" + s.invalid + "c"), badSequence(invalidLine));
    EXPECT_EQ(failureAt(s.lead + '\0'), badSequence(invalidLine));
    EXPECT_EQ(failureAt("ab" + s.lead), badSequence(incompleteLine));
    EXPECT_EQ(failureAt(s.lead), badSequence(incompleteLine));
    for (mb::Sample const& sample : s.longCharacters()) {
        std::string const text = "a" + sample.bytes;
        EXPECT_EQ(operations::failureOf([&] { cvtMBS2WCS(text.data(), lengthOf(text) - 1, out); }),
                  badSequence(incompleteLine))
            << "what completes the character is after the bytes given";
    }
}

TEST(ConversionToWide, NamesNoFunctionAndTakesItsTextFromTheCatalog) {
    if (!mb::isMultiByte()) return;
    std::string const bad = mb::samples().invalid;
    wchar_t out[4];
    operations::LogOfExceptions const log;
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

TEST(ConversionOfOneCharacter, NeedsNeitherStateNorRoomForTheValue) {
    wchar_t value = L'#';
    for (mb::Sample const& sample : mb::samples().characters()) {
        int const size = static_cast<int>(sample.bytes.size());
        EXPECT_EQ(cvtMB2WC(sample.bytes.data(), lengthOf(sample.bytes), &value, nullptr), size);
        EXPECT_EQ(value, sample.value);
        EXPECT_EQ(cvtMB2WC(sample.bytes.data(), lengthOf(sample.bytes), nullptr, nullptr), size);
    }
    std::mbstate_t state{};
    EXPECT_EQ(cvtMB2WC(nullptr, 0, &value, &state), 1) << "as mbrtowc takes a null text: for the empty one";
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
    wchar_t value = L'#';
    auto const failureAt = [&value](std::string const& bytes) {
        return operations::failureOf([&] {
            std::mbstate_t state{};
            cvtMB2WC(bytes.data(), lengthOf(bytes), &value, &state);
        });
    };
    EXPECT_EQ(failureAt(""), badSequence(incompleteLine)) << "no bytes are the beginning of anything";
    if (!mb::isMultiByte()) return;
    EXPECT_EQ(failureAt(mb::samples().invalid), badSequence(invalidLine));
    EXPECT_EQ(failureAt(mb::samples().lead), badSequence(incompleteLine));
    EXPECT_EQ(failureAt(mb::samples().lead + '\0'), badSequence(invalidLine));
    EXPECT_EQ(value, L'#') << "a failure leaves the value alone";
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
        std::size_t length = std::wcrtomb(expected, value, &state);
        if (length == static_cast<std::size_t>(-1)) continue;
        if (std::mbsinit(&state) == 0) length = std::wcrtomb(expected, L'\0', &state) - 1; // was held back
        char out[MB_LEN_MAX];
        unsigned int const written = cvtWCS2MBS(&value, 1, out, sizeof out, 0, ' ');
        if (written != length || std::memcmp(out, expected, length) != 0) ++differences;
    }
    EXPECT_EQ(differences, 0u);
    for (wchar_t const value : {surrogate, wchar_t{0xDFFF}, static_cast<wchar_t>(-1)}) {
        char out[MB_LEN_MAX];
        EXPECT_EQ(operations::failureOf([&] { cvtWCS2MBS(&value, 1, out, sizeof out, 0, ' '); }),
                  unconvertible());
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
    EXPECT_EQ(operations::failureOf([&] { cvtWCS2MBS(wide, 4, out.data(), 6, 1, '*'); }), unconvertible());
    EXPECT_EQ(out, "ab####");
    operations::Failure const failure =
        operations::failureOf([&] { cvtWCS2MBS(wide, 4, out.data(), 3, 0, '*'); });
    EXPECT_EQ(failure, unconvertible());
    EXPECT_EQ(failure.text, "cvtWCS2MBS");
}

TEST(ConversionFromWide, DoesNotLookAtCharactersAfterAFullField) {
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

TEST(Insertion, PutsTheInsertAfterTheFirstCharacters) {
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

} // namespace
