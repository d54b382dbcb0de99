// What the tests of how strings are made and changed share. No tests are here.
#ifndef KELCL_TESTS_STRING_STRING_SUPPORT_H
#define KELCL_TESTS_STRING_STRING_SUPPORT_H

#include "tests/buffers/buffer_support.h"

namespace support {

/// The checks that hold for a string of its own: text, class, one reference.
inline void expectOwnText(DString const& made, std::string const& expected) {
    EXPECT_EQ(textOf(made), expected);
    EXPECT_EQ(made.c_str()[made.length()], '\0');
    EXPECT_EQ(bufferOf(made)->className(), defaultClass());
    EXPECT_EQ(refsOf(made), 1U);
}

inline void expectSharedEmpty(DString const& made) {
    EXPECT_EQ(made.c_str(), DString::nullBuf());
    EXPECT_EQ(made.c_str(), DBuffer::defaultBuffer()->contents());
    EXPECT_EQ(made.length(), 0U);
}

} // namespace support

#endif
