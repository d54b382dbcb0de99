// Appending more than a string can hold.
#include "tests/buffers/buffer_support.h"

namespace {

using namespace support;

/// Expects that appending `added` bytes to `claimed` ones overflows before a byte is looked at.
void expectAppendOverflows(unsigned int claimed, std::string const& added) {
    SCOPED_TRACE(testing::Message() << claimed << " and " << added.size());
    DString text("abc");
    DString const argument(added);
    DBuffer* const buffer = bufferOf(text);
    buffer->length = claimed;
    expectLengthOverflow([&] { text += argument; });
    expectLengthOverflow([&] { text += added; });
    expectLengthOverflow([&] { text += added.c_str(); });
    EXPECT_EQ(bufferOf(text), buffer);
    EXPECT_EQ(buffer->length, claimed);
    EXPECT_EQ(buffer->refs, 1U);
    buffer->length = 3;
    EXPECT_EQ(textOf(text), "abc");
}

TEST(StringAppendOverflow, BeginsWhereTheSumReachesTheLimit) {
    expectAppendOverflows(lengthLimit - 1, "x");
    expectAppendOverflows(lengthLimit - 1, "twenty-five bytes or more");
    expectAppendOverflows(lengthLimit - 5, "12345");
    expectAppendOverflows(lengthLimit - 5, std::string(100, 'x'));
    expectAppendOverflows(lengthLimit - 1000, std::string(1000, 'x'));
    expectAppendOverflows(lengthLimit - 1, std::string(70000, 'x'));
}

TEST(StringAppendOverflow, OfASharedTextLeavesAllOwnersAsTheyWere) {
    DString text("abc");
    DString const witness(text);
    DBuffer* const buffer = bufferOf(text);
    buffer->length = lengthLimit - 1;
    expectLengthOverflow([&] { text += "x"; });
    expectLengthOverflow([&] { text += text; });
    expectLengthOverflow([&] { text += 'x'; });
    buffer->length = 3;
    EXPECT_EQ(buffer->refs, 2U);
    EXPECT_EQ(text.c_str(), witness.c_str());
}

TEST(StringAppendOverflow, OfAStandardStringViewBeyond32BitsIsRaisedUnread) {
    char const one = 'x';
    DString text("abc");
    for (std::size_t const size :
         {(std::size_t{1} << 32) - 1, std::size_t{1} << 32, (std::size_t{1} << 32) + 1})
        expectLengthOverflow([&] { text += std::string_view(&one, size); });
    EXPECT_EQ(textOf(text), "abc");
}

} // namespace
