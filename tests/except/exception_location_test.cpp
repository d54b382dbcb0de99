// DExceptionLocation.
#include "tests/except/except_support.h"

#include <type_traits>

TEST(ExceptionLocation, WithoutArgumentsHasNullNullAndZero) {
    DExceptionLocation const location;
    EXPECT_EQ(location.fileName(), nullptr);
    EXPECT_STREQ(location.functionName(), "Unknown");
    EXPECT_EQ(location.lineNumber(), 0u);
}

TEST(ExceptionLocation, KeepsPointersAndTheFullLineNumber) {
    char const file[] = "parser";
    char const function[] = "next";
    DExceptionLocation const location(file, function, 0x1'0000'0002ul);
    EXPECT_EQ(location.fileName(), file);
    EXPECT_EQ(location.functionName(), function);
    EXPECT_EQ(location.lineNumber(), 0x1'0000'0002ul);
}

TEST(ExceptionLocation, NullFileNameStaysNullAndNullFunctionNameIsUnknown) {
    DExceptionLocation const location(nullptr, nullptr, 3);
    EXPECT_EQ(location.fileName(), nullptr);
    EXPECT_STREQ(location.functionName(), "Unknown");
}

TEST(ExceptionLocation, IsCopiedBitwise) { EXPECT_TRUE(std::is_trivially_copyable_v<DExceptionLocation>); }

TEST(ExceptionLocation, MacroGivesThePlaceWhereItStands) {
    unsigned long const line = __LINE__ + 1;
    DExceptionLocation const location = DEXCEPTION_LOCATION();
    EXPECT_STREQ(location.fileName(), __FILE__);
    EXPECT_STREQ(location.functionName(), "TestBody");
    EXPECT_EQ(location.lineNumber(), line);
}
