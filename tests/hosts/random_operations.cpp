// Every operation of DString on texts of hosts' classes that lie. What comes out may be anything, but nothing
// is written or read outside of a text, no operation goes on forever, a text that others share and one whose
// operation throws are what they were, and all buffers are given back.
#include "tests/hosts/random_operations.h"

#include "tests/buffers/operation_support.h"
#include "tests/hosts/lying_buffer.h"

#include <cctype>
#include <cstring>
#include <exception>
#include <functional>
#include <iterator>
#include <new>
#include <sstream>
#include <utility>

namespace {

using hosts::Lies;
using hosts::LyingBuffer;

/// A test of a host's that answers as it likes.
class LyingTest final : public DStringTest {
public:
    LyingTest() : DStringTest(plainFunction + 1, nullptr) {}
    int test(int c) const override {
        return Lies::ofRun().oneIn(3) ? static_cast<int>(Lies::ofRun().choices->below(2))
                                      : std::isalpha(c & 0x7F);
    }
};

/// What an operation is given beside the string.
struct Given {
    std::string text;
    std::string other;
    DString host; ///< A text of a lying class.
    unsigned int first;
    unsigned int second;
    char c;
    DStringEnum::StripMode mode;
    LyingTest test;
};

struct Operation {
    char const* name;
    void (*run)(DString&, Given const&);
};

/// So that an answer counts as used.
template <class Answer>
void take(Answer const& answer) {
    static volatile unsigned long sum = 0;
    sum = sum + static_cast<unsigned long>(answer);
}

unsigned int lengthOf(std::string const& text) { return static_cast<unsigned int>(text.size()); }

#define KELCL_TEST_OF(name)                                                                                  \
    {                                                                                                        \
#name, [](DString & s, Given const&) { take(s.name()); }                                             \
    }
#define KELCL_SEARCH_OF(name)                                                                                \
    {#name " text", [](DString& s, Given const& g) { take(s.name(g.text, g.first)); }},                      \
        {#name " char", [](DString& s, Given const& g) { take(s.name(g.c, g.first)); }},                     \
        {#name " test", [](DString& s, Given const& g) { take(s.name(g.test, g.first)); }}, {                \
#name " class",                                                                                      \
            [](DString & s, Given const& g) { take(s.name(DStringTest(std::isalpha), g.first)); }            \
    }

Operation const operations[] = {
    KELCL_TEST_OF(isAlphanumeric),
    KELCL_TEST_OF(isAlphabetic),
    KELCL_TEST_OF(isASCII),
    KELCL_TEST_OF(isControl),
    KELCL_TEST_OF(isDigits),
    KELCL_TEST_OF(isGraphics),
    KELCL_TEST_OF(isHexDigits),
    KELCL_TEST_OF(isLowerCase),
    KELCL_TEST_OF(isPrintable),
    KELCL_TEST_OF(isPunctuation),
    KELCL_TEST_OF(isUpperCase),
    KELCL_TEST_OF(isWhiteSpace),
    KELCL_TEST_OF(isMBCS),
    KELCL_TEST_OF(isDBCS),
    KELCL_TEST_OF(isSBCS),
    KELCL_TEST_OF(isValidMBCS),
    KELCL_TEST_OF(isValidDBCS),
    KELCL_TEST_OF(includesMBCS),
    KELCL_TEST_OF(includesDBCS),
    KELCL_TEST_OF(includesSBCS),
    KELCL_TEST_OF(isBinaryDigits),
    KELCL_TEST_OF(numWords),
    KELCL_SEARCH_OF(indexOf),
    KELCL_SEARCH_OF(indexOfAnyOf),
    KELCL_SEARCH_OF(indexOfAnyBut),
    KELCL_SEARCH_OF(lastIndexOf),
    KELCL_SEARCH_OF(lastIndexOfAnyOf),
    KELCL_SEARCH_OF(lastIndexOfAnyBut),
    KELCL_SEARCH_OF(occurrencesOf),
    {"charType", [](DString& s, Given const& g) { take(s.charType(g.first)); }},
    {"includes", [](DString& s, Given const& g) { take(s.includes(g.text)); }},
    {"==", [](DString& s, Given const& g) { take(s == g.text); }},
    {"< host", [](DString& s, Given const& g) { take(s < g.host); }},
    {"isAbbrevFor", [](DString& s, Given const& g) { take(s.isAbbrevFor(g.text, g.second)); }},
    {"isLike", [](DString& s, Given const& g) { take(s.isLike(g.text + "*")); }},
    {"asDebugInfo", [](DString& s, Given const&) { take(s.asDebugInfo().length()); }},
    {"subString from", [](DString& s, Given const& g) { s = s.subString(g.first); }},
    {"subString", [](DString& s, Given const& g) { s = s.subString(g.first, g.second, g.c); }},
    {"read []", [](DString& s, Given const& g) { take(std::as_const(s)[g.first]); }},
    {"write []", [](DString& s, Given const& g) { s[g.second] = g.c; }},
    {"upperCase", [](DString& s, Given const&) { s.upperCase(); }},
    {"lowerCase", [](DString& s, Given const&) { s.lowerCase(); }},
    {"static upperCase", [](DString& s, Given const&) { s = DString::upperCase(s); }},
    {"reverse", [](DString& s, Given const&) { s.reverse(); }},
    {"translate", [](DString& s, Given const& g) { s.translate(g.text, g.other, g.c); }},
    {"translate own",
     [](DString& s, Given const& g) {
         unsigned int const n = std::min(s.length(), 3U);
         s.translate(s.c_str(), n, g.other.data(), lengthOf(g.other), g.c);
     }},
    {"strip", [](DString& s, Given const&) { s.strip(); }},
    {"strip set", [](DString& s, Given const& g) { s.strip(g.text, g.mode); }},
    {"strip test", [](DString& s, Given const& g) { s.strip(g.test, g.mode); }},
    {"strip class", [](DString& s, Given const& g) { s.strip(DStringTest(std::isalpha), g.mode); }},
    {"overlayWith", [](DString& s, Given const& g) { s.overlayWith(g.text, g.second, g.c); }},
    {"insert", [](DString& s, Given const& g) { s.insert(g.text, g.second, g.c); }},
    {"insert host", [](DString& s, Given const& g) { s.insert(g.host, g.second, g.c); }},
    {"leftJustify", [](DString& s, Given const& g) { s.leftJustify(g.second, g.c); }},
    {"rightJustify", [](DString& s, Given const& g) { s.rightJustify(g.second, g.c); }},
    {"center", [](DString& s, Given const& g) { s.center(g.second, g.c); }},
    {"copy", [](DString& s, Given const& g) { s.copy(g.second % 4); }},
    {"change", [](DString& s, Given const& g) { s.change(g.text, g.other, g.first, g.second); }},
    {"change alike",
     [](DString& s, Given const& g) { s.change(g.text, std::string(g.text.size(), g.c), g.first); }},
    {"change nothing", [](DString& s, Given const& g) { s.change("", g.other, g.first); }},
    {"remove", [](DString& s, Given const& g) { s.remove(g.first, g.second); }},
    {"remove from", [](DString& s, Given const& g) { s.remove(g.first); }},
    {"prepareToChange", [](DString& s, Given const&) { s.prepareToChange(); }},
    {"+=", [](DString& s, Given const& g) { s += g.text; }},
    {"+= host", [](DString& s, Given const& g) { s += g.host; }},
    {"+", [](DString& s, Given const& g) { s = s + g.text; }},
    {"word", [](DString& s, Given const& g) { s = s.word(g.first); }},
    {"words", [](DString& s, Given const& g) { s = s.words(g.first % 4, g.second); }},
    {"words to the end", [](DString& s, Given const& g) { s = s.words(g.first % 4, 0xFFFFFFFF); }},
    {"indexOfWord", [](DString& s, Given const& g) { take(s.indexOfWord(g.first % 4, g.second, g.first % 3)); }},
    {"lengthOfWord", [](DString& s, Given const& g) { take(s.lengthOfWord(g.first % 4)); }},
    {"removeWords", [](DString& s, Given const& g) { s.removeWords(g.first % 4, g.second % 5); }},
    {"space", [](DString& s, Given const& g) { s.space(g.second % 5, g.c); }},
    {"findPhrase", [](DString& s, Given const& g) { take(s.findPhrase(g.host, g.first % 4)); }},
    {"findPhrase position",
     [](DString& s, Given const& g) { take(s.findPhrase(g.text, g.first % 4, DString::charIndex)); }},
    {"c2x", [](DString& s, Given const&) { s.c2x(); }},
    {"x2c", [](DString& s, Given const&) { s.x2c(); }},
    {"c2b", [](DString& s, Given const&) { s.c2b(); }},
    {"b2c", [](DString& s, Given const&) { s.b2c(); }},
    {"c2d", [](DString& s, Given const&) { s.c2d(); }},
    {"d2c", [](DString& s, Given const&) { s.d2c(); }},
    {"decimalMath", [](DString& s, Given const& g) { s.decimalMath(static_cast<unsigned char>(g.c)); }},
    {"binaryMath", [](DString& s, Given const& g) { s.binaryMath(static_cast<unsigned char>(g.c)); }},
    {"&=", [](DString& s, Given const& g) { s &= g.text; }},
    {"|= host", [](DString& s, Given const& g) { s |= g.host; }},
    {"^=", [](DString& s, Given const& g) { s ^= g.text; }},
    {"~", [](DString& s, Given const&) { s = ~s; }},
    {"<<",
     [](DString& s, Given const&) {
         std::ostringstream out;
         out << s;
     }},
    {">>",
     [](DString& s, Given const& g) {
         std::istringstream in(g.text + g.other + " rest");
         in.width(static_cast<std::streamsize>(g.second % 8));
         in >> s;
     }},
    {"> > of nothing",
     [](DString& s, Given const&) {
         std::istringstream in("  ");
         in >> s;
     }},
};

class LyingOperations final : public RandomOperations {
public:
    explicit LyingOperations(Choices& choices) : choices_(choices) {}

    bool runOne() override {
        Lies& lies = Lies::ofRun();
        lies.choices = &choices_;
        lies.guardsAreIntact = true;
        int const before = std::exchange(DString::fgI18NState, choices_.oneIn(2) ? 1 : 0);
        failed_.clear();
        report_.str("");
        {
            operations::LogOfExceptions const log;
            tryOperation();
        }
        DString::fgI18NState = before;
        lies.choices = nullptr;
        if (!lies.guardsAreIntact) fail("bytes past the end of a text were written");
        if (!lies.guards.empty()) fail("buffers were not given back");
        return failed_.empty();
    }

    std::string report() const override { return report_.str() + failed_; }

private:
    void fail(char const* what) { failed_ += std::string("\n  ") + what; }

    std::string anyText(unsigned int most) {
        using namespace std::string_view_literals;
        static constexpr std::string_view pieces[] = {"a",
                                                      "B",
                                                      " ",
                                                      "\t",
                                                      "0",
                                                      "7",
                                                      "2F",
                                                      "\x00\x01"sv,
                                                      "\n",
                                                      "aa",
                                                      "--",
                                                      "\xC3\xA4",
                                                      "\xE3\x81\x82",
                                                      "\x82\xA0",
                                                      "\xA4\xA2",
                                                      "\x81\x30\x84\x36",
                                                      "\x83\x41",
                                                      "\xFF",
                                                      "\x8F",
                                                      "123456789012345678901"};
        std::string text;
        for (unsigned int count = choices_.below(most); count > 0; --count)
            text += pieces[choices_.below(std::size(pieces))];
        return text;
    }

    unsigned int anyPosition() { return choices_.oneIn(8) ? choices_.any() : choices_.below(24); }

    DString hostText(std::string const& text) {
        return choices_.oneIn(2) ? DString(LyingBuffer<DBuffer>::make(text))
                                 : DString(LyingBuffer<DDBCSBuffer>::make(text));
    }

    void tryOperation() {
        Given const given{anyText(4),
                          anyText(4),
                          hostText(anyText(6)),
                          anyPosition(),
                          choices_.below(40),
                          static_cast<char>(choices_.below(256)),
                          static_cast<DStringEnum::StripMode>(choices_.below(3)),
                          {}};
        std::string const text = anyText(12);
        DString string = hostText(text);
        DString const sharer = choices_.oneIn(2) ? string : DString();
        Operation const& operation = operations[choices_.below(std::size(operations))];
        report_ << operation.name << " with the switch at " << DString::fgI18NState << " on " << text.size()
                << " bytes, given " << given.text << ", " << given.other << ", " << given.first << ", "
                << given.second;
        try {
            operation.run(string, given);
        } catch (DException const&) { // an overflow, or bytes that are no character
            if (std::string_view(string) != text) fail("a throw changed the text");
        } catch (std::bad_alloc const&) { // where a class made no buffer, or a wrong one
            if (std::string_view(string) != text) fail("a failed allocation changed the text");
        } catch (std::exception const& other) {
            fail(other.what());
        }
        if (string.c_str()[string.length()] != '\0') fail("there is no NUL after the text");
        if (!sharer.isEmpty() && std::string_view(sharer) != text) fail("a shared text was changed");
    }

    Choices& choices_;
    std::string failed_;
    std::ostringstream report_;
};

} // namespace

std::unique_ptr<RandomOperations> operationsOnLyingBuffers(Choices& choices) {
    return std::make_unique<LyingOperations>(choices);
}
