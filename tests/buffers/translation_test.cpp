// translate against a plain list of characters: texts of every length up to 130, sets from one character to
// many, by bytes and by wide characters.
#include "tests/characters/multi_byte_support.h"

#include <kelcl/dexception.h>
#include <kelcl/dstring.h>

#include <map>
#include <random>
#include <utility>

namespace {

using std::string;

/// Each character that is listed becomes the one at the same place, or the pad; the first place counts.
string translatedByModel(string const& text, string const& from, string const& to, char pad) {
    std::vector<mb::Character> const searched = mb::charactersOf(from);
    std::vector<mb::Character> const replacements = mb::charactersOf(to);
    std::map<string, string> table;
    for (std::size_t i = 0; i < searched.size(); ++i)
        table.emplace(searched[i].bytes, i < replacements.size() ? replacements[i].bytes : string(1, pad));
    string result;
    for (mb::Character const& character : mb::charactersOf(text)) {
        auto const found = table.find(character.bytes);
        result += found == table.end() ? character.bytes : found->second;
    }
    return result;
}

string translated(string const& text, string const& from, string const& to, char pad) {
    DString const changed = DString(text).translate(from, to, pad);
    return {changed.c_str(), changed.length()};
}

/// Characters of one byte and more: some hundred, all different.
std::vector<string> const& alphabet() {
    static std::vector<string> const ours = [] {
        std::vector<string> all;
        for (char c = 'a'; c <= 'z'; ++c)
            all.push_back(string(1, c));
        for (mb::Sample const& sample : mb::samples().longCharacters()) {
            for (int i = 0; i < 32; ++i) {
                string character = sample.bytes;
                character.back() = static_cast<char>(character.back() + i);
                bool const isOne = mb::lengthAt(character, 0) == character.size();
                bool const comesBack = isOne && mb::bytesOf(mb::valueOf(character)) == character;
                if (comesBack && std::find(all.begin(), all.end(), character) == all.end())
                    all.push_back(character);
            }
        }
        return all;
    }();
    return ours;
}

string randomText(std::mt19937& random, std::size_t characters, std::size_t kinds) {
    string text;
    for (std::size_t i = 0; i < characters; ++i)
        text += alphabet()[random() % std::min(kinds, alphabet().size())];
    return text;
}

TEST(Translation, ReplacesWhatIsListedInTextsOfEveryLength) {
    std::mt19937 random(20261122);
    for (int const state : {0, 1}) {
        mb::SwitchAt const state_(state);
        for (std::size_t length = 0; length <= 130; ++length) {
            for (std::size_t const members : {0U, 1U, 2U, 4U, 5U, 16U, 33U, 90U}) {
                string const from = randomText(random, members, 200);
                string const to = randomText(random, members * (random() % 3) / 2, 200);
                string const text = randomText(random, length, random() % 2 == 0 ? 26 : 200);
                ASSERT_EQ(translated(text, from, to, '*'), translatedByModel(text, from, to, '*'))
                    << "switch " << state << ", length " << length << ", " << members << " members";
            }
        }
    }
}

TEST(Translation, GrowsAndShrinksLongTexts) {
    std::mt19937 random(20261122);
    for (int const state : {0, 1}) {
        mb::SwitchAt const state_(state);
        string const narrow(20000, 'a');
        string const wide = alphabet().back();
        string grown;
        for (char const c : narrow)
            grown += c == 'a' ? wide : string(1, c);
        EXPECT_EQ(translated(narrow, "a", wide, '*'), grown);
        EXPECT_EQ(translated(grown, wide, "a", '*'), narrow);
        EXPECT_EQ(translated(grown, wide, "", '*'), string(20000, '*'));
        for (int turn = 0; turn < 8; ++turn) {
            string const text = randomText(random, 3000, 200);
            string const from = randomText(random, 40, 200);
            string const to = randomText(random, 30, 200);
            ASSERT_EQ(translated(text, from, to, '*'), translatedByModel(text, from, to, '*')) << turn;
        }
    }
}

TEST(Translation, WithTheSwitchOnRefusesABadByteAnywhereWhateverTheSets) {
    mb::SwitchAt const on(1);
    string const& invalid = mb::samples().invalid;
    ASSERT_FALSE(invalid.empty());
    string const last = alphabet().back();
    for (std::size_t length = 0; length <= 130; ++length) {
        string const before = string(length, 'b');
        for (auto const& [from, to] :
             {std::pair<string, string>{"a", "c"}, {"b", last}, {last, "c"}, {"z", last}}) {
            ASSERT_THROW(translated(before + invalid, from, to, '*'), DInvalidRequest) << length;
            ASSERT_THROW(translated(before + invalid + last, from, to, '*'), DInvalidRequest) << length;
        }
        ASSERT_THROW(translated(before, "a" + invalid, "c", '*'), DInvalidRequest) << length;
        ASSERT_THROW(translated(before, "a", "c" + invalid, '*'), DInvalidRequest) << length;
        ASSERT_THROW(translated(before, "a", "c", invalid.front()), DInvalidRequest) << length;
    }
}

} // namespace
