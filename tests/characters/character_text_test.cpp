// A text as a row of characters, against a plain list of its characters: at every length up to 130, at every
// byte, and with a byte that is no character at every place.
#include "characters/character_text.h"
#include "tests/characters/multi_byte_support.h"

#include <kelcl/dexception.h>

#include <optional>
#include <random>

namespace {

using std::string;

constexpr std::size_t longest = 130;

/// Calls `check(text)` with texts of whole characters of every length, the first one of each of ASCII only.
template <class Check>
void forEachText(Check check, int turns = 3) {
    std::mt19937 random(20261122);
    std::vector<string> const& parts = mb::wholeParts();
    for (std::size_t length = 0; length <= longest; ++length) {
        for (int turn = 0; turn < turns; ++turn) {
            string text;
            while (text.size() < length) {
                string const& part = parts[random() % parts.size()];
                text += turn == 0 || part.size() > length - text.size() ? "a" : part;
            }
            SCOPED_TRACE("length " + std::to_string(length) + ", turn " + std::to_string(turn));
            check(text);
            if (testing::Test::HasFatalFailure()) return;
        }
    }
}

/// The same with one byte that is no character, told where it is: at every place, for lengths up to the
/// second block of 32 bytes and some beyond.
template <class Check>
void forEachBadText(Check check) {
    string const& invalid = mb::samples().invalid;
    ASSERT_FALSE(invalid.empty());
    operations::LogOfExceptions const log; // there are many
    forEachText(
        [&](string const& text) {
            if (text.size() > 36 && text.size() % 31 > 2) return; // each failure takes its time
            for (mb::Character const& character : mb::charactersOf(text + "a"))
                check(string(text).insert(character.offset, invalid), character.offset);
        },
        2);
}

unsigned int positionOf(std::size_t offset) { return static_cast<unsigned int>(offset) + 1; }

/// The character that contains a byte, by its number.
std::size_t numberAt(std::vector<mb::Character> const& characters, std::size_t offset) {
    std::size_t number = 0;
    while (number + 1 < characters.size() && characters[number + 1].offset <= offset)
        ++number;
    return number;
}

string written(kelcl::CharacterText& text, std::size_t from, std::size_t to) {
    string out(text.roomFor(from, to).bytes, '?');
    out.resize(text.write(from, to, out.data()));
    return out;
}

string pieceOf(string const& text, std::size_t start, std::size_t count) {
    string out(count, '?');
    kelcl::CharacterText(text).writePiece(positionOf(start), count, '*', out.data());
    return out;
}

string restOf(string const& text, std::size_t start) {
    kelcl::CharacterText const characters(text);
    string out(characters.roomForRest(positionOf(start)).bytes, '?');
    out.resize(characters.writeRest(positionOf(start), '*', out.data()));
    return out;
}

/// The text from a byte on, its cut character replaced by pads.
string restByModel(string const& text, std::size_t start) {
    string rest = text.substr(start);
    std::vector<mb::Character> const characters = mb::charactersOf(text);
    mb::Character const& cut = characters[numberAt(characters, start)];
    if (cut.offset != start) {
        std::size_t const count = cut.offset + cut.bytes.size() - start;
        rest.replace(0, count, count, '*');
    }
    return rest;
}

/// The same of a field: only whole characters, then pads.
string pieceByModel(string const& text, std::size_t start, std::size_t count) {
    string piece = restByModel(text, start);
    if (piece.size() > count) {
        std::vector<mb::Character> const characters = mb::charactersOf(text);
        std::size_t const cut = characters[numberAt(characters, start + count)].offset;
        piece.resize(std::min(count, std::max(cut, start) - start));
        // Of a character that both ends cut, only pads are there.
    }
    piece.resize(count, '*');
    return piece;
}

TEST(CharacterText, StaysOnItsBytesWhereTheyArePlainUtf8) {
    forEachText([](string const& text) { EXPECT_EQ(kelcl::CharacterText(text).isPlain(), mb::isUtf8()); });
}

TEST(CharacterText, FindsTheCharacterAroundEachByte) {
    forEachText([](string const& text) {
        std::vector<mb::Character> const characters = mb::charactersOf(text);
        kelcl::CharacterText row(text);
        for (std::size_t at = 0; at < text.size(); ++at) {
            std::size_t const number = numberAt(characters, at);
            std::size_t const before = row.before(positionOf(at));
            std::size_t const after = row.after(positionOf(at));
            ASSERT_EQ(written(row, before, after), characters[number].bytes) << at;
            ASSERT_EQ(row.position(before), positionOf(characters[number].offset)) << at;
            ASSERT_EQ(row.previous(after), before) << at;
            std::optional<std::size_t> const first = row.firstFrom(positionOf(at));
            bool const isStart = characters[number].offset == at;
            if (!isStart && number + 1 == characters.size())
                ASSERT_EQ(first, std::nullopt) << at;
            else
                ASSERT_EQ(first, isStart ? before : after) << at;
            std::size_t place = before;
            ASSERT_EQ(row.take(place), mb::valueOf(characters[number].bytes)) << at;
            ASSERT_EQ(place, after) << at;
        }
        EXPECT_EQ(row.before(0), 0u);
        EXPECT_EQ(row.after(0), 0u);
        EXPECT_EQ(row.after(positionOf(text.size())), 0u);
        EXPECT_EQ(row.firstFrom(positionOf(text.size())), std::nullopt);
    });
}

TEST(CharacterText, FindsTheFirstAndTheLastCharacterOfAValue) {
    forEachText([](string const& text) {
        std::vector<mb::Character> const characters = mb::charactersOf(text);
        for (string const& part : mb::wholeParts()) {
            wchar_t const value = mb::valueOf(part);
            auto const wanted = [value](wchar_t c) { return c == value; };
            std::size_t first = characters.size();
            std::size_t last = characters.size();
            for (std::size_t i = 0; i < characters.size(); ++i) {
                if (mb::valueOf(characters[i].bytes) != value) continue;
                first = std::min(first, i);
                last = i;
            }
            kelcl::CharacterText row(text);
            std::size_t const found = row.findFirst(0, wanted);
            std::size_t const foundLast = row.findLast(row.end(), wanted);
            if (first == characters.size()) {
                EXPECT_EQ(found, row.end());
                EXPECT_EQ(foundLast, 0u);
            } else {
                EXPECT_EQ(row.position(found), positionOf(characters[first].offset));
                EXPECT_EQ(row.position(row.previous(foundLast)), positionOf(characters[last].offset));
            }
        }
    });
}

TEST(CharacterText, WritesWholeCharactersOnly) {
    forEachText([](string const& text) {
        std::vector<mb::Character> const characters = mb::charactersOf(text);
        kelcl::CharacterText row(text);
        for (std::size_t room = 0; room <= text.size() + 1; ++room) {
            std::size_t fitting = 0;
            for (mb::Character const& character : characters)
                if (character.offset + character.bytes.size() <= room)
                    fitting = character.offset + character.bytes.size();
            string out(room + 1, '?');
            std::size_t from = 0;
            ASSERT_EQ(row.writeWhole(from, row.end(), out.data(), room), fitting) << room;
            ASSERT_EQ(out, text.substr(0, fitting) + string(room + 1 - fitting, '?')) << room;
            ASSERT_EQ(from == row.end(), fitting == text.size()) << room;
        }
    });
}

TEST(CharacterText, ReversesTheOrderOfItsCharacters) {
    forEachText([](string const& text) {
        string reversed;
        for (mb::Character const& character : mb::charactersOf(text))
            reversed.insert(0, character.bytes);
        kelcl::CharacterText row(text);
        string out(row.roomForAll().bytes, '?');
        out.resize(row.writeReversed(out.data()));
        EXPECT_EQ(out, reversed);
    });
}

TEST(CharacterText, CutsPiecesWithPadsInPlaceOfCutCharacters) {
    forEachText(
        [](string const& text) {
            if (text.size() > 66 && text.size() < longest - 2) return; // pieces of pieces are many
            for (std::size_t start = 0; start < text.size(); ++start) {
                ASSERT_EQ(restOf(text, start), restByModel(text, start)) << start;
                for (std::size_t count = 1; count <= text.size() - start + 2; count += 1 + count / 3)
                    ASSERT_EQ(pieceOf(text, start, count), pieceByModel(text, start, count))
                        << start << ", " << count;
            }
        },
        2);
}

TEST(CharacterText, RefusesToConvertWithABadByteAnywhere) {
    forEachBadText([](string const& text, std::size_t at) {
        kelcl::CharacterText row(text);
        ASSERT_FALSE(row.isPlain()) << at;
        ASSERT_THROW(row.convert(), DInvalidRequest) << at;
        ASSERT_THROW(row.findFirst(0, [](wchar_t) { return true; }), DInvalidRequest) << at;
    });
}

TEST(CharacterText, TellsPlacesInFrontOfABadByteOnly) {
    forEachBadText([](string const& text, std::size_t bad) {
        std::vector<mb::Character> const characters = mb::charactersOf(text);
        kelcl::CharacterText const row(text);
        for (std::size_t at = 0; at < text.size(); at += 1 + at / 8) {
            std::size_t const number = numberAt(characters, at);
            ASSERT_EQ(row.after(positionOf(at)), at < bad ? number + 1 : 0u) << bad << ", " << at;
            ASSERT_EQ(row.before(positionOf(at)), at < bad ? number : 0u) << bad << ", " << at;
        }
    });
}

TEST(CharacterText, PiecesAfterABadByteArePadsAndThoseBeforeItThrow) {
    forEachBadText([](string const& text, std::size_t bad) {
        for (std::size_t const start : {std::size_t{0}, bad / 2, bad - 1, bad, bad + 1, text.size() - 1}) {
            if (start >= text.size()) continue;
            if (start < bad) {
                ASSERT_THROW(pieceOf(text, start, text.size()), DInvalidRequest) << bad << ", " << start;
                ASSERT_THROW(restOf(text, start), DInvalidRequest) << bad << ", " << start;
            } else {
                ASSERT_EQ(pieceOf(text, start, 7), string(7, '*')) << bad << ", " << start;
                ASSERT_EQ(restOf(text, start), string(text.size() - start, '*')) << bad << ", " << start;
            }
        }
    });
}

} // namespace
