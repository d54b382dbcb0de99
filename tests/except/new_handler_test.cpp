// The new-handler that the library installs.
#include "tests/except/except_support.h"
#include "tests/except/logging_support.h"

#include <new>

TEST(OutOfMemorySetUp, OfAHostBecomesTheTraceFunctionAndInstallsTheHandlerUntilReplaced) {
    RecordingTrace restoring;
    NewHandler const before(nullptr);
    {
        DKORVA_Init const setUp;
        EXPECT_EQ(DExceptStaticPtr::userFunction, &setUp);
        EXPECT_EQ(std::get_new_handler(), &DKORVA_Init::newHandler);
    }
    EXPECT_EQ(std::get_new_handler(), &DKORVA_Init::newHandler) << "its destructor undoes nothing";
    EXPECT_NE(DExceptStaticPtr::userFunction, nullptr) << "its destructor undoes nothing";
}

TEST(OutOfMemorySetUp, WritesLikeTheDefaultTraceFunction) {
    EXPECT_EQ(standardErrorOf([] {
                  DKORVA_Init setUp;
                  setUp.write("a line");
                  DException("text").logExceptionData();
              }),
              "a line\n\nDException exception thrown.\n   Location information is unavailable.\n"
              "   Error Id is unavailable.\n   Error Code group is Kel Class Library\n"
              "   Exception text is:\n      text\n");
}

TEST(NewHandler, ThrowsOutOfMemoryWithMessageFour) {
    MessageFile const catalog(englishCatalog);
    Facts const facts = thrownBy([] { DKORVA_Init::newHandler(); });
    expectClass<DOutOfMemory>(facts, "DOutOfMemory");
    EXPECT_EQ(facts.texts, std::vector<std::string>{"There is not enough memory for the operation."});
    EXPECT_EQ(facts.errorId, 4u);
    EXPECT_FALSE(facts.recoverable);
    EXPECT_EQ(facts.group, "Kel Class Library");
    ASSERT_EQ(facts.locations.size(), 1u);
    EXPECT_EQ(facts.locations[0], std::make_tuple("dbase", "Unknown", 175ul));
}

TEST(NewHandler, WithoutCatalogThrowsWithTheFallbackText) {
    MessageFile const catalog(noCatalog);
    Facts const facts = thrownBy([] { DKORVA_Init::newHandler(); });
    expectClass<DOutOfMemory>(facts, "DOutOfMemory");
    EXPECT_EQ(facts.texts, std::vector<std::string>{fallbackText});
    EXPECT_EQ(facts.errorId, 4u);
}
