// Every sequence of four bytes by both stepping rules against the C library. Where three bytes decide the
// fourth does not matter, and all of three are in the test of stepping; here are those that three leave open.
#include "characters/stepping.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cwchar>
#include <string>

namespace {

constexpr std::size_t incomplete = static_cast<std::size_t>(-2);
constexpr std::size_t invalid = static_cast<std::size_t>(-1);

struct Answer {
    std::size_t length;
    wchar_t value;
};

Answer ask(char const* bytes, std::size_t n) {
    std::mbstate_t state{};
    Answer answer{0, 0};
    answer.length = std::mbrtowc(&answer.value, bytes, n, &state);
    return answer;
}

/// Calls `check` with all extensions of the first `n` bytes to four whose first three are incomplete.
template <class Check>
void extend(char (&bytes)[5], std::size_t n, Check const& check) {
    for (unsigned int value = 0; value < 256; ++value) {
        bytes[n] = static_cast<char>(value);
        if (n == 3)
            check();
        else if (ask(bytes, n + 1).length == incomplete)
            extend(bytes, n + 1, check);
    }
    bytes[n] = '\0';
}

std::string hexOf(char const (&bytes)[5]) {
    char text[16];
    auto const byte = [&bytes](int i) {
        return static_cast<unsigned int>(static_cast<unsigned char>(bytes[i]));
    };
    std::snprintf(text, sizeof text, "%02X %02X %02X %02X", byte(0), byte(1), byte(2), byte(3));
    return text;
}

TEST(FourBytes, AreSteppedOverAsTheCLibrarySays) {
    kelcl::Encoding const encoding = kelcl::Encoding::current();
    kelcl::BufferSteps const boundaries(encoding);
    char bytes[5] = {};
    unsigned int sequences = 0;
    unsigned int differences = 0;
    extend(bytes, 0, [&] {
        ++sequences;
        Answer const expected = ask(bytes, 4);
        bool const isCharacter = expected.length != incomplete && expected.length != invalid;
        wchar_t value = 0;
        kelcl::UtilitySteps steps;
        kelcl::UtilitySteps::Step const step = steps.at(bytes, 4, value);
        bool const same =
            kelcl::BufferSteps(encoding).lengthWithin(bytes, 4) == (isCharacter ? expected.length : 1) &&
            (isCharacter ? step.outcome == kelcl::UtilitySteps::Outcome::character &&
                               step.bytes == expected.length && value == expected.value
             : expected.length == invalid
                 ? step.outcome == kelcl::UtilitySteps::Outcome::invalid
                 : step.outcome == kelcl::UtilitySteps::Outcome::incomplete && step.bytes == 4);
        if (!same && differences++ < 10) ADD_FAILURE() << hexOf(bytes);
        if (!isCharacter || encoding.isUtf8) return;
        for (std::size_t i = 1; i < expected.length; ++i)
            if ((boundaries.standsAlone(bytes[i]) || boundaries.isBoundary(bytes[i - 1], bytes[i])) &&
                differences++ < 10)
                ADD_FAILURE() << "boundary in " << hexOf(bytes);
    });
    EXPECT_EQ(differences, 0u);
    EXPECT_GE(sequences, 1000000u);
}

} // namespace
