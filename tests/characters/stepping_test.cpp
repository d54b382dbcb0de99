// The two stepping rules against the C library, for every short sequence of bytes and at the end of a text,
// and the walks back to the start of a character against a walk from the front.
#include "characters/stepping.h"
#include "tests/characters/multi_byte_support.h"

#include <algorithm>
#include <functional>

namespace {

using kelcl::BufferSteps;
using kelcl::UtilitySteps;
using mb::hex;

TEST(Samples, AreTheCharactersThatTheTestsTakeThemFor) {
    mb::Samples const& s = mb::samples();
    EXPECT_EQ(mb::isMultiByte(), s.two.exists());
    for (mb::Sample const& sample : s.characters()) {
        EXPECT_EQ(mb::mbrlenOf(sample.bytes.data(), sample.bytes.size()), sample.bytes.size())
            << hex(sample.bytes);
        EXPECT_EQ(mb::valueOf(sample.bytes), sample.value) << hex(sample.bytes);
    }
    EXPECT_TRUE(!s.two.exists() || s.two.bytes.size() == 2);
    EXPECT_TRUE(!s.three.exists() || s.three.bytes.size() == 3);
    EXPECT_TRUE(!s.four.exists() || s.four.bytes.size() == 4);
    EXPECT_TRUE(!s.wide.exists() || wcwidth(s.wide.value) == 2);
    EXPECT_TRUE(!s.narrow.exists() || wcwidth(s.narrow.value) == 1);
    EXPECT_TRUE(!s.asciiTrail.exists() || static_cast<unsigned char>(s.asciiTrail.bytes.back()) < 0x80);
    EXPECT_TRUE(s.invalid.empty() || mb::mbrlenOf(s.invalid.data(), 1) == mb::invalidSequence);
    EXPECT_TRUE(s.lead.empty() || mb::mbrlenOf(s.lead.data(), s.lead.size()) == mb::incompleteSequence);
}

/// Calls `check` with every sequence of bytes up to three, and of four, five and six bytes with samples of
/// the ones from the third on. What follows a sequence that is already decided is sampled too.
class Sequences {
public:
    explicit Sequences(std::function<void(std::string const&)> check) : check_(std::move(check)) {}
    void run() { extend(""); }

private:
    void extend(std::string const& prefix) {
        bool const open =
            prefix.empty() || mb::mbrlenOf(prefix.data(), prefix.size()) == mb::incompleteSequence;
        bool const all = prefix.size() < 2 || (open && prefix.size() == 2);
        for (unsigned int value = 0; value < 256; ++value) {
            if (!all && !isSample(value)) continue;
            std::string const text = prefix + static_cast<char>(value);
            check_(text);
            bool const goesOn = text.size() < 2 || (text.size() == 2 && (open || isSample(value))) ||
                                (text.size() < 6 && open && isSample(value));
            if (goesOn) extend(text);
        }
    }
    static bool isSample(unsigned int value) {
        for (unsigned int const sample : {0x00u, 0x2Fu, 0x30u, 0x36u, 0x41u, 0x80u, 0x82u, 0xBFu, 0xFFu})
            if (value == sample) return true;
        return false;
    }

    std::function<void(std::string const&)> check_;
};

/// Counts differences and tells the first ones: a difference is likely to come a thousand times.
class Differences {
public:
    void add(std::string const& what) {
        if (count_++ < 10) ADD_FAILURE() << what;
    }
    ~Differences() { EXPECT_EQ(count_, 0u); }

private:
    unsigned int count_ = 0;
};

std::size_t modelOfBufferStep(char const* p, std::size_t available) {
    std::size_t const length = mb::mbrlenOf(p, std::min<std::size_t>(available, 6));
    return length == 0 || length == mb::invalidSequence || length == mb::incompleteSequence ? 1 : length;
}

TEST(BufferSteps, AgreeWithTheCLibraryForEverySequence) {
    Differences differences;
    unsigned int count = 0;
    Sequences([&](std::string const& text) {
        ++count;
        std::size_t const expected = modelOfBufferStep(text.c_str(), text.size() + 1);
        unsigned int const length = BufferSteps().length(text.c_str());
        if (length != expected)
            differences.add("length of " + hex(text) + " is " + std::to_string(length) + ", not " +
                            std::to_string(expected));
        std::size_t const cut = modelOfBufferStep(text.data(), text.size());
        unsigned int const within = BufferSteps().lengthWithin(text.data(), text.size());
        if (within != cut)
            differences.add("length within " + hex(text) + " is " + std::to_string(within) + ", not " +
                            std::to_string(cut));
    }).run();
    EXPECT_GE(count, 65536u);
}

TEST(UtilitySteps, AgreeWithTheCLibraryForEverySequence) {
    Differences differences;
    std::size_t const most = MB_CUR_MAX;
    Sequences([&](std::string const& text) {
        for (std::size_t const available : {text.size(), text.size() + 1}) {
            std::size_t const window = std::min(available, most);
            std::mbstate_t state{};
            wchar_t expected = 0;
            std::size_t const length = std::mbrtowc(&expected, text.c_str(), window, &state);
            wchar_t value = 0;
            UtilitySteps steps;
            UtilitySteps::Step const step = steps.at(text.c_str(), available, value);
            bool const isCharacter = length != mb::invalidSequence && length != mb::incompleteSequence;
            bool const isPair = isCharacter && std::mbsinit(&state) == 0;
            UtilitySteps::Outcome const outcome = isPair        ? UtilitySteps::Outcome::twoCharacters
                                                  : isCharacter ? UtilitySteps::Outcome::character
                                                  : length == mb::invalidSequence
                                                      ? UtilitySteps::Outcome::invalid
                                                      : UtilitySteps::Outcome::incomplete;
            if (step.outcome != outcome) differences.add("outcome of " + hex(text));
            if (isCharacter && (step.bytes != std::max<std::size_t>(length, 1) || value != expected))
                differences.add("character " + hex(text));
            wchar_t second = 0;
            if (isPair) std::mbrtowc(&second, "", 1, &state);
            if (step.second != second) differences.add("second of the pair " + hex(text));
            if (length == mb::incompleteSequence && step.bytes != window)
                differences.add("advance over " + hex(text));
        }
    }).run();
}

TEST(Steps, ReadNothingPastTheBytesThatAreAvailable) {
    for (std::string const& part : mb::parts())
        for (std::size_t size = 1; size <= part.size(); ++size) {
            mb::AtMemoryEnd const text(part.substr(0, size));
            EXPECT_EQ(BufferSteps().lengthWithin(text.data(), size), modelOfBufferStep(text.data(), size));
            wchar_t value = 0;
            UtilitySteps steps;
            std::size_t const length = mb::mbrlenOf(text.data(), std::min<std::size_t>(size, MB_CUR_MAX));
            UtilitySteps::Outcome const outcome = steps.at(text.data(), size, value).outcome;
            EXPECT_EQ(outcome != UtilitySteps::Outcome::invalid &&
                          outcome != UtilitySteps::Outcome::incomplete,
                      length != mb::invalidSequence && length != mb::incompleteSequence)
                << hex(part);
        }
}

TEST(Steps, NeedNoMoreThanANulAfterACutCharacter) {
    for (mb::Sample const& sample : mb::samples().longCharacters())
        for (std::size_t size = 1; size < sample.bytes.size(); ++size) {
            mb::AtMemoryEnd const text(sample.bytes.substr(0, size) + '\0');
            EXPECT_EQ(BufferSteps().length(text.data()), 1u);
            EXPECT_NE(UtilitySteps().at(text.data(), 16).outcome, UtilitySteps::Outcome::character);
        }
}

TEST(CharacterBeginnings, AreTheBytesThatAreIncompleteByThemselves) {
    for (int value = 0; value < 256; ++value) {
        auto const byte = static_cast<char>(value);
        EXPECT_EQ(kelcl::beginsLongerCharacter(byte), mb::mbrlenOf(&byte, 1) == mb::incompleteSequence)
            << value;
    }
}

TEST(Boundaries, AreNeverPartOfALongerCharacter) {
    Differences differences;
    bool const utf8 = kelcl::isUtf8Locale();
    EXPECT_EQ(utf8, mb::isUtf8());
    BufferSteps const steps;
    Sequences([&](std::string const& text) {
        std::size_t const length = modelOfBufferStep(text.c_str(), text.size() + 1);
        if (length < 2) return;
        for (std::size_t i = 0; i < length; ++i)
            if (kelcl::standsAlone(text[i], utf8) || steps.standsAlone(text[i])) differences.add(hex(text));
        for (std::size_t i = 1; i < length; ++i)
            if (kelcl::surelyBeginsCharacter(text.c_str(), i)) differences.add("beginning in " + hex(text));
        for (std::size_t i = 1; i < length && !utf8; ++i)
            if (steps.endsCharacter(text[i - 1]) || steps.isBoundary(text[i - 1], text[i]))
                differences.add("boundary in " + hex(text));
    }).run();
}

TEST(Boundaries, AreAtMostTwoBytesBeforeAnyByteOfAsciiText) {
    if (mb::isUtf8()) return; // it is read backwards without them
    BufferSteps const steps;
    std::string text;
    for (int round = 0; round < 3; ++round)
        for (int first = 1; first < 0x80; ++first)
            for (int second = 1; second < 0x80; ++second)
                text += {static_cast<char>(first), static_cast<char>(second)};
    text.append(1000, '0'); // digits stand inside characters of GB18030
    std::size_t furthest = 0;
    for (std::size_t at = 0; at < text.size(); ++at)
        furthest = std::max(furthest, at - kelcl::boundaryBefore(text.c_str(), at, 0, steps));
    EXPECT_LE(furthest, 2u);
}

TEST(Leads, OfUtf8StandNowhereButAtTheBeginningOfACharacter) {
    if (!mb::isUtf8()) return;
    Differences differences;
    Sequences([&](std::string const& text) {
        std::size_t const length = modelOfBufferStep(text.c_str(), text.size() + 1);
        for (std::size_t i = 1; i < length; ++i)
            if (static_cast<unsigned char>(text[i]) >= 0xC0) differences.add(hex(text));
    }).run();
}

std::vector<std::size_t> startsOf(std::string const& text) {
    std::vector<std::size_t> starts;
    for (mb::Character const& character : mb::charactersOf(text))
        starts.insert(starts.end(), character.bytes.size(), character.offset);
    return starts;
}

TEST(CharacterStarts, AreFoundBackwardsWhereAWalkFromTheFrontFindsThem) {
    std::mt19937 random(20261);
    Differences differences;
    for (int round = 0; round < 4000; ++round) {
        std::string text = mb::randomText(random, mb::parts(), 12);
        if (round % 3 == 0) // bytes that no part has
            for (int i = 0; i < 6; ++i)
                text += static_cast<char>(0x80 + random() % 0x80);
        std::vector<std::size_t> const starts = startsOf(text);
        BufferSteps forward;
        BufferSteps backward;
        kelcl::RisingStarts rising(text.c_str(), 0, forward);
        kelcl::FallingStarts falling(text.c_str(), backward);
        for (std::size_t at = 0; at < text.size(); ++at) {
            BufferSteps steps;
            if (kelcl::startOfCharacter(text.c_str(), at, steps) != starts[at])
                differences.add("start at " + std::to_string(at) + " of " + hex(text));
            if (rising.isStart(at) != (starts[at] == at))
                differences.add("rising " + std::to_string(at) + " of " + hex(text));
            std::size_t const from = text.size() - 1 - at;
            if (from % 2 == random() % 2) continue; // not every offset is asked for
            if (falling.startOf(from) != starts[from])
                differences.add("falling " + std::to_string(from) + " of " + hex(text));
        }
    }
}

/// Bytes of which each may be inside a character, so that nothing but a long walk tells where one begins: now
/// characters, now any bytes, now the same again and again, which can be read from a wrong place without end.
std::string openText(std::mt19937& random) {
    auto const highByte = [&random] { return static_cast<char>(0x81 + random() % 0x7E); };
    std::vector<std::string> characters;
    for (mb::Sample const& sample : mb::samples().longCharacters())
        characters.push_back(sample.bytes);
    if (characters.empty()) characters = {"\xA4\xA2"};
    std::string text;
    std::size_t const size = std::vector<std::size_t>{300, 1200, 5000, 9000}[random() % 4];
    while (text.size() < size) {
        std::string const& character = characters[random() % characters.size()];
        std::size_t const length = 1 + random() % 700;
        std::size_t const kind = random() % 3;
        for (std::size_t end = text.size() + length; text.size() < end;)
            text += kind == 0   ? character
                    : kind == 1 ? characters[random() % characters.size()]
                                : std::string(1, highByte());
    }
    return text;
}

TEST(CharacterStarts, AreFoundFarFromAnyByteThatTellsOne) {
    std::mt19937 random(20262);
    Differences differences;
    for (int round = 0; round < 150; ++round) {
        std::string const text = openText(random);
        std::vector<std::size_t> const starts = startsOf(text);
        BufferSteps forward;
        BufferSteps backward;
        kelcl::RisingStarts rising(text.c_str(), 0, forward);
        kelcl::FallingStarts falling(text.c_str(), backward);
        std::size_t const most = 1 + random() % 400;
        for (std::size_t at = 0; at < text.size(); at += 1 + random() % most) {
            BufferSteps steps;
            auto const where = [&] { return std::to_string(at) + " of " + hex(text); };
            if (kelcl::startOfCharacter(text.c_str(), at, steps) != starts[at])
                differences.add("start at " + where());
            std::size_t next = at;
            while (next < text.size() && starts[next] != next)
                ++next;
            if (rising.startFrom(at) != next) differences.add("rising " + where());
            if (falling.startOf(text.size() - 1 - at) != starts[text.size() - 1 - at])
                differences.add("falling " + where());
        }
    }
}

} // namespace
