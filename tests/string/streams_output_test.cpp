// Writing strings with operator<<.
#include "tests/buffers/buffer_support.h"
#include "tests/string/streams_support.h"

#include <iomanip>
#include <sstream>

namespace {

using namespace support;

TEST(StringInsertion, WritesTheTextUpToItsFirstNul) {
    std::ostringstream out;
    std::ostream& result = out << DString("abc") << '|' << DString() << '|' << DString("a\0b"s) << '|'
                               << DString('\0') << '|';
    EXPECT_EQ(&result, &out);
    EXPECT_EQ(out.str(), "abc||a||");
}

TEST(StringInsertion, PadsToTheWidthAsACharacterPointerDoes) {
    for (std::string const& text : {""s, "abc"s, "a\0bcd"s, "abcdefgh"s, std::string(200, 'x')}) {
        for (int width : {0, 1, 3, 5, 8, 150}) {
            for (auto const adjust : {std::ios::left, std::ios::right, std::ios::internal}) {
                std::ostringstream expected, actual;
                expected << std::setw(width) << std::setfill('*');
                actual << std::setw(width) << std::setfill('*');
                expected.setf(adjust, std::ios::adjustfield);
                actual.setf(adjust, std::ios::adjustfield);
                expected << text.c_str() << '|';
                actual << DString(text) << '|';
                EXPECT_EQ(actual.str(), expected.str());
                EXPECT_EQ(actual.width(), 0);
            }
        }
    }
}

TEST(StringInsertion, IntoAStreamThatHasFailedWritesNothing) {
    std::ostringstream out;
    out.setstate(std::ios::failbit);
    out << DString("abc");
    EXPECT_EQ(out.str(), "");
    std::ostream nowhere(nullptr);
    nowhere << DString("abc");
    EXPECT_TRUE(nowhere.bad());
}

TEST(StringInsertion, SetsTheStateOfAStreamThatTakesNoMore) {
    struct Full : std::streambuf {
        std::streamsize xsputn(char const*, std::streamsize) override { return 1; }
    };
    Full full;
    std::ostream expected(&full), actual(&full);
    expected << "abc";
    actual << DString("abc");
    EXPECT_EQ(actual.rdstate(), expected.rdstate());
}

} // namespace
