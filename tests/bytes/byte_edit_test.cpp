// The edits that keep the length, against plain ones.

#include "bytes/byte_copy.h"
#include "bytes/byte_edit.h"
#include "tests/bytes/texts.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using namespace bytes_test;
using kelcl::BitOperation;

char plainUpper(char byte) { return byte >= 'a' && byte <= 'z' ? static_cast<char>(byte - 32) : byte; }
char plainLower(char byte) { return byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte + 32) : byte; }

template <class Map>
std::string plainMapped(std::string_view text, Map map) {
    std::string result(text);
    for (char& byte : result)
        byte = map(byte);
    return result;
}

/// Checks an edit into other memory, at every alignment of either side and beside guard pages: the result,
/// and that no byte before or after it changes.
template <class Edit>
void expectCopies(std::string_view text, std::string_view wanted, Edit edit) {
    static GuardedPages pages;
    atEveryPlace(text, '?', [&](std::string_view placed) {
        for (std::size_t shift : {0U, 1U, 7U, 16U, 33U}) {
            std::string out(shift + wanted.size() + 40, '#');
            edit(out.data() + shift, placed.data(), placed.size());
            ASSERT_EQ(out, std::string(shift, '#') + std::string(wanted) + std::string(40, '#'));
        }
        edit(pages.roomAtBegin(), placed.data(), placed.size());
        ASSERT_EQ(std::string_view(pages.roomAtBegin(), wanted.size()), wanted);
        edit(pages.roomAtEnd(wanted.size()), placed.data(), placed.size());
        ASSERT_EQ(std::string_view(pages.roomAtEnd(wanted.size()), wanted.size()), wanted);
    });
}

/// The same for an edit in place.
template <class Edit>
void expectEditsInPlace(std::string_view text, std::string_view wanted, Edit edit) {
    static GuardedPages pages;
    for (std::size_t shift = 0; shift < 64; ++shift) {
        std::string room = std::string(shift, '#') + std::string(text) + std::string(40, '#');
        edit(room.data() + shift, text.size());
        ASSERT_EQ(room, std::string(shift, '#') + std::string(wanted) + std::string(40, '#'));
    }
    pages.atBegin(text);
    edit(pages.roomAtBegin(), text.size());
    ASSERT_EQ(std::string_view(pages.roomAtBegin(), text.size()), wanted);
    pages.atEnd(text);
    edit(pages.roomAtEnd(text.size()), text.size());
    ASSERT_EQ(std::string_view(pages.roomAtEnd(text.size()), text.size()), wanted);
}

template <class Edit>
void expectBothWays(std::string_view text, std::string_view wanted, Edit edit) {
    expectCopies(text, wanted, edit);
    expectEditsInPlace(text, wanted, [&](char* bytes, std::size_t n) { edit(bytes, bytes, n); });
}

TEST(Copy, CopiesEveryLengthToEveryDistance) {
    std::mt19937 random(100);
    for (std::size_t n = 0; n <= longest; ++n) {
        std::string const text = randomBytes(random, n);
        expectCopies(text, text, kelcl::copyBytes);
    }
}

TEST(Copy, CopiesLongPiecesThatMoveByAFewBytesModuloAPage) {
    constexpr std::size_t page = 4096;
    std::mt19937 random(101);
    std::string const text = randomBytes(random, 3 * page);
    alignas(64) static char room[9 * page];
    for (std::size_t const n : {2047U, 2048U, 2049U, 4095U, 4096U, 4097U, 6145U, 12288U})
        for (std::size_t shift = 0; shift < 80; ++shift) {
            std::memcpy(room, text.data(), n);
            char* const out = room + 4 * page + shift;
            std::memset(room + 4 * page, '#', 5 * page);
            kelcl::copyBytes(out, room, n);
            ASSERT_EQ(std::string_view(out, n), std::string_view(text).substr(0, n));
            ASSERT_EQ(std::string_view(out - shift, shift), std::string(shift, '#'));
            ASSERT_EQ(std::string_view(out + n, 64), std::string(64, '#'));
        }
}

TEST(Fill, SetsEveryLengthAtEveryDistance) {
    for (std::size_t n = 0; n <= longest; ++n)
        expectCopies(std::string(n, '.'), std::string(n, '\xE9'),
                     [](char* out, char const*, std::size_t size) { kelcl::fillBytes(out, '\xE9', size); });
}

TEST(CaseMapping, ChangesTheTwentySixLettersOfAsciiOnly) {
    std::string const all = allBytes();
    std::string out(256, '\0');
    kelcl::copyUpperCase(out.data(), all.data(), 256);
    EXPECT_EQ(out, plainMapped(all, plainUpper));
    kelcl::copyLowerCase(out.data(), all.data(), 256);
    EXPECT_EQ(out, plainMapped(all, plainLower));
}

TEST(CaseMapping, IsRightForEveryLengthAndAlignment) {
    std::mt19937 random(301);
    for (std::size_t n = 0; n <= longest; ++n) {
        std::string const text = n % 2 == 0 ? randomBytes(random, n) : randomText(random, n, "@AZ[`az{\xE9");
        expectBothWays(text, plainMapped(text, plainUpper), kelcl::copyUpperCase);
        expectBothWays(text, plainMapped(text, plainLower), kelcl::copyLowerCase);
    }
}

TEST(CaseSearch, FindsTheFirstLetterOfItsCase) {
    std::mt19937 random(302);
    auto const firstOf = [](std::string_view text, char first, char last) {
        auto const* const found =
            std::find_if(text.begin(), text.end(), [=](char byte) { return byte >= first && byte <= last; });
        return found == text.end() ? std::string_view::npos : static_cast<std::size_t>(found - text.begin());
    };
    for (std::size_t n = 0; n <= longest; ++n) {
        std::string const text = randomText(random, n,
                                            std::string_view("@@@@[[[[````{{{{\xE9\xC9\0\xFF"
                                                             "aA",
                                                             22));
        atEveryPlace(text, 'a', [&](std::string_view placed) {
            ASSERT_EQ(kelcl::findLowerCase(placed), firstOf(placed, 'a', 'z'));
            ASSERT_EQ(kelcl::findUpperCase(placed), firstOf(placed, 'A', 'Z'));
        });
    }
    for (char const byte : allBytes()) {
        std::string text(41, '.');
        text.back() = byte;
        EXPECT_EQ(kelcl::findLowerCase(text), byte >= 'a' && byte <= 'z' ? 40U : std::string::npos);
        EXPECT_EQ(kelcl::findUpperCase(text), byte >= 'A' && byte <= 'Z' ? 40U : std::string::npos);
    }
}

TEST(Complement, InvertsEveryBit) {
    std::mt19937 random(303);
    for (std::size_t n = 0; n <= longest; ++n) {
        std::string const text = randomBytes(random, n);
        expectBothWays(text, plainMapped(text, [](char byte) { return static_cast<char>(~byte); }),
                       kelcl::copyComplement);
    }
}

TEST(Translation, FollowsTheTableForEveryLengthAndAlignment) {
    std::mt19937 random(304);
    for (std::size_t n = 0; n <= longest; ++n) {
        unsigned char table[256];
        for (unsigned int value = 0; value < 256; ++value)
            table[value] = static_cast<unsigned char>(n % 3 == 0 ? random() : value);
        for (std::size_t change = 0; n % 3 != 0 && change < n % 7; ++change)
            table[random() % 256] = static_cast<unsigned char>(random());
        std::string const text = randomBytes(random, n);
        auto const look = [&](char byte) {
            return static_cast<char>(table[static_cast<unsigned char>(byte)]);
        };
        expectBothWays(text, plainMapped(text, look), [&](char* out, char const* in, std::size_t size) {
            kelcl::copyTranslated(out, in, size, table);
        });
    }
}

TEST(Translation, TakesEveryByteValueToEveryOther) {
    std::string const all = allBytes();
    for (unsigned int step = 0; step < 256; ++step) {
        unsigned char table[256];
        for (unsigned int value = 0; value < 256; ++value)
            table[value] = static_cast<unsigned char>(value + step);
        std::string out(1024, '\0');
        kelcl::copyTranslated(out.data(), (all + all + all + all).data(), 1024, table);
        for (std::size_t i = 0; i < 1024; ++i)
            ASSERT_EQ(static_cast<unsigned char>(out[i]), (i + step) % 256);
    }
}

TEST(Reversal, IsRightForEveryLengthAndAlignment) {
    std::mt19937 random(305);
    for (std::size_t n = 0; n <= longest; ++n) {
        std::string const text = randomBytes(random, n);
        std::string const wanted(text.rbegin(), text.rend());
        expectCopies(text, wanted, kelcl::copyReversed);
        expectEditsInPlace(text, wanted, kelcl::reverseInPlace);
    }
}

TEST(Reversal, OfALongTextIsRight) {
    std::mt19937 random(306);
    std::string text = randomBytes(random, 10'007);
    std::string const wanted(text.rbegin(), text.rend());
    std::string out(text.size(), '\0');
    kelcl::copyReversed(out.data(), text.data(), text.size());
    EXPECT_EQ(out, wanted);
    kelcl::reverseInPlace(text.data(), text.size());
    EXPECT_EQ(text, wanted);
}

TEST(RepeatedFill, ContinuesTheFirstBytesCyclically) {
    std::mt19937 random(307);
    for (std::size_t filled : {1U, 2U, 3U, 7U, 31U, 32U, 33U, 100U, 20'000U})
        for (std::size_t n : {std::size_t{0}, filled - 1, filled, filled + 1, 2 * filled, 5 * filled + 1,
                              std::size_t{1000}, std::size_t{100'001}}) {
            std::string const first = randomBytes(random, filled);
            std::string out = first + std::string(n, '#') + "end";
            std::size_t const size = filled + n;
            kelcl::fillRepeating(out.data(), size, filled);
            for (std::size_t i = 0; i < size; ++i)
                ASSERT_EQ(out[i], first[i % filled]);
            EXPECT_EQ(out.substr(size), "end");
        }
}

std::string plainCombined(std::string text, std::string_view operand, BitOperation operation) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        int const left = text[i];
        int const right = operand[i % operand.size()];
        text[i] = static_cast<char>(operation == BitOperation::bitAnd  ? left & right
                                    : operation == BitOperation::bitOr ? left | right
                                                                       : left ^ right);
    }
    return text;
}

constexpr BitOperation allOperations[] = {BitOperation::bitAnd, BitOperation::bitOr,
                                          BitOperation::bitExclusiveOr};

TEST(Combination, RepeatsOrCutsTheOperand) {
    std::mt19937 random(308);
    for (std::size_t n = 0; n <= longest; ++n)
        for (std::size_t m : {1U, 2U, 3U, 8U, 15U, 64U, 129U, 200U}) {
            std::string const text = randomBytes(random, n);
            std::string const operand = randomBytes(random, m);
            BitOperation const operation = allOperations[random() % 3];
            expectBothWays(text, plainCombined(text, operand, operation),
                           [&](char* out, char const* in, std::size_t size) {
                               kelcl::combine(out, in, size, operand.data(), m, operation);
                           });
        }
}

TEST(Combination, IsRightForOperandsAndTextsOfAllSizes) {
    std::mt19937 random(309);
    static GuardedPages pages(2);
    for (int round = 0; round < 3000; ++round) {
        std::string text = randomBytes(random, random() % 3000);
        std::string const operand = randomBytes(random, 1 + random() % 1200);
        BitOperation const operation = allOperations[random() % 3];
        std::string const wanted = plainCombined(text, operand, operation);
        kelcl::combine(text.data(), text.data(), text.size(), pages.atEnd(operand).data(), operand.size(),
                       operation);
        ASSERT_EQ(text, wanted);
    }
}

TEST(Combination, OfATextWithItselfWorksInPlace) {
    for (std::size_t n : {1U, 31U, 32U, 33U, 130U, 5000U}) {
        std::string text(n, 'x');
        kelcl::combine(text.data(), text.data(), n, text.data(), n, BitOperation::bitOr);
        EXPECT_EQ(text, std::string(n, 'x'));
        kelcl::combine(text.data(), text.data(), n, text.data(), n, BitOperation::bitAnd);
        EXPECT_EQ(text, std::string(n, 'x'));
        kelcl::combine(text.data(), text.data(), n, text.data(), n, BitOperation::bitExclusiveOr);
        EXPECT_EQ(text, std::string(n, '\0'));
    }
}

char plainReplaced(char byte, std::string_view from, std::string_view to, char pad) {
    std::size_t const place = from.find(byte);
    if (place == std::string_view::npos) return byte;
    return place < to.size() ? to[place] : pad;
}

TEST(Replacements, ReplaceByTheFirstPlaceOfEachByteWhateverTheSizes) {
    std::mt19937 random(120);
    for (std::size_t listed : {0U, 1U, 2U, 4U, 7U, 8U, 9U, 30U, 60U})
        for (std::size_t n = 0; n <= 700; n += n < longest ? 1 : 57) {
            std::string const from = randomText(random, listed, "abcdefghijklmnop\xE4\xFF");
            std::string const to = randomBytes(random, random() % (listed + 2));
            std::string const text = randomText(random, n, "abcdefghijklmnopqrstuvwxyz\xE4\xFF");
            kelcl::Replacements const replacements(from, to, '-', n);
            auto const plain = [&](char byte) { return plainReplaced(byte, from, to, '-'); };
            for (char const byte : allBytes())
                ASSERT_EQ(replacements.of(byte), plain(byte));
            std::string const wanted = plainMapped(text, plain);
            std::string copy(n, '#');
            replacements.copy(copy.data(), text.data(), n);
            ASSERT_EQ(copy, wanted);
            copy = text;
            replacements.copy(copy.data(), copy.data(), n);
            ASSERT_EQ(copy, wanted);
            std::size_t const first = replacements.findFirst(text, from);
            ASSERT_EQ(first == std::string::npos, text.find_first_of(from) == std::string::npos);
            if (first == std::string::npos) continue;
            ASSERT_NE(from.find(text[first]), std::string::npos);
            ASSERT_EQ(text.substr(0, first), wanted.substr(0, first));
        }
}

TEST(Replacements, KeepTheListsThatArePartOfTheText) {
    std::string text = "b aaab b  ab";
    std::string_view const lists(text);
    kelcl::Replacements const replacements(lists.substr(0, 3), lists.substr(5, 3), '-', text.size());
    replacements.copy(text.data(), text.data(), text.size());
    EXPECT_EQ(text, "b bbbb b  bb"); // a to b, and the others to themselves
}

TEST(Replacements, TouchNoByteBesideTheTexts) {
    std::mt19937 random(121);
    for (std::size_t n = 0; n <= longest; ++n) {
        std::string const text = randomText(random, n, "abcd");
        kelcl::Replacements const replacements("ab", "x", '-', n);
        expectCopies(text, plainMapped(text, [](char c) { return plainReplaced(c, "ab", "x", '-'); }),
                     [&](char* out, char const* in, std::size_t size) { replacements.copy(out, in, size); });
    }
}

} // namespace
