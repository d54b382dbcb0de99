// Searches for one byte and by a function, which programs compile in: against plain loops, and against the
// buffer's own searches, from every start.
#include <kelcl/dstring.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>
#include <string>
#include <vector>

namespace {

unsigned int firstIn(std::string const& text, char byte, unsigned int start) {
    for (std::size_t i = start == 0 ? 0 : start - 1; i < text.size(); ++i)
        if (text[i] == byte) return static_cast<unsigned int>(i) + 1;
    return 0;
}

unsigned int lastIn(std::string const& text, char byte, unsigned int start) {
    for (std::size_t i = text.size(); i > 0; --i)
        if (i <= start && text[i - 1] == byte) return static_cast<unsigned int>(i);
    return 0;
}

std::vector<unsigned int> startsIn(std::string const& text) {
    std::vector<unsigned int> starts{0x7FFFFFFF, 0x80000000, 0xFFFFFFFF};
    for (unsigned int start = 0; start <= text.size() + 2; ++start)
        starts.push_back(start);
    return starts;
}

/// Texts of each length to 40, some of whose bytes begin characters in multi-byte encodings.
std::vector<std::string> someTexts() {
    constexpr char alphabet[] = {'\0', '\n', ' ', '/', '0', 'a', '\x7F', '\x81', '\xC3', '\xE3', '\xFF'};
    std::mt19937 random(20261122);
    std::vector<std::string> texts;
    for (std::size_t length = 0; length <= 40; ++length)
        for (int i = 0; i < 4; ++i) {
            std::string text(length, ' ');
            for (char& byte : text)
                byte = alphabet[random() % sizeof alphabet];
            texts.push_back(text);
        }
    return texts;
}

void expectFoundByBytes(std::string const& bytes, char wanted) {
    DString const text(bytes);
    DBuffer const& buffer = *DBuffer::fromContents(text.c_str());
    for (unsigned int const start : startsIn(bytes)) {
        unsigned int const first = firstIn(bytes, wanted, start);
        unsigned int const last = lastIn(bytes, wanted, start);
        ASSERT_EQ(text.indexOf(wanted, start), first) << start;
        ASSERT_EQ(text.indexOfAnyOf(wanted, start), first) << start;
        ASSERT_EQ(buffer.indexOf(&wanted, 1, start), first) << start;
        ASSERT_EQ(text.lastIndexOf(wanted, start), last) << start;
        ASSERT_EQ(text.lastIndexOfAnyOf(wanted, start), last) << start;
        ASSERT_EQ(buffer.lastIndexOf(&wanted, 1, start), last) << start;
    }
}

TEST(ByteSearches, FindAByteThatIsPartOfNoCharacterWhereverItStands) {
    for (std::string const& text : someTexts())
        for (char const wanted : {'\0', '\n', ' ', '/', '\x2E'})
            expectFoundByBytes(text, wanted);
}

TEST(ByteSearches, FindAByteNearAndFarInLongTexts) {
    for (std::size_t const length : {32767U, 32768U, 32769U, 40000U, 100000U}) {
        std::string bytes(length, 'a');
        for (std::size_t const place : {length / 3, length / 2, length - 4097, length - 4096, length - 1})
            bytes[place] = '\n';
        DString const text(bytes);
        for (unsigned int start :
             {0U, 1U, 2U, 4095U, 4096U, 4097U, 10000U, 16384U, 32768U, 33000U, 99999U, 200000U}) {
            ASSERT_EQ(text.indexOf('\n', start), firstIn(bytes, '\n', start)) << start;
            ASSERT_EQ(text.lastIndexOf('\n', start), lastIn(bytes, '\n', start)) << start;
            ASSERT_EQ(text.indexOf('#', start), 0U);
            ASSERT_EQ(text.lastIndexOf('#', start), 0U);
        }
    }
}

TEST(ByteSearches, FindAnyByteInSingleByteText) {
    if (MB_CUR_MAX > 1) { // there a byte is found only where a character begins
        EXPECT_EQ(DString("\xE3\x81\x82").indexOf('\x81', 3), 0U);
        return;
    }
    for (std::string const& text : someTexts())
        for (char const wanted : {'0', 'a', '\x7F', '\x80', '\x81', '\xC3', '\xFF'})
            expectFoundByBytes(text, wanted);
}

TEST(ByteSearches, ByAFunctionAskAboutEachByteInTurn) {
    static std::string asked;
    DStringTest const isSlash([](int c) -> int {
        asked += static_cast<char>(c);
        return c == '/';
    });
    for (std::size_t before = 0; before <= 10; ++before)
        for (std::size_t const after : {0U, 1U, 5U}) {
            std::string const bytes =
                std::string("abcdefghij").substr(0, before) + "/" + std::string(after, 'x');
            DString const text(bytes);
            asked.clear();
            EXPECT_EQ(text.indexOf(isSlash), before + 1);
            EXPECT_EQ(asked, bytes.substr(0, before + 1));
            asked.clear();
            EXPECT_EQ(text.indexOfAnyOf(isSlash, 0), before + 1);
            EXPECT_EQ(asked, bytes.substr(0, before + 1));
            EXPECT_EQ(text.indexOf(isSlash, static_cast<unsigned int>(before) + 2), 0U);
        }
}

} // namespace
