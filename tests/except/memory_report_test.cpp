// Reports of exceptions when memory has run out, and the new-handler that makes an exception of that.
#include "tests/except/except_support.h"
#include "tests/except/memory_support.h"
#include "tests/support/failing_allocations.h"

#include <new>

namespace {

// The report without a line buffer
// ------------------------------------------------------------------------------------------------------------

/// What a report writes to standard error when its line buffer cannot be allocated.
std::string reportWithoutMemory(DException& exception) {
    return standardErrorOf([&] {
        class Recording final : public DException::TraceFn {
        public:
            void write(char const*) override { std::fputs("write was called\n", stderr); }
            void exceptionLogged() override { std::fputs("exceptionLogged was called\n", stderr); }
        } recording;
        DException::setTraceFunction(recording);
        Outcome const outcome = runUnder({1, true}, [&] { exception.logExceptionData(); });
        if (outcome.handlerCalls != 0 || !outcome.handlerIsBack)
            std::fputs("the new-handler was called or lost\n", stderr);
    });
}

} // namespace

TEST(ReportWithoutMemory, GoesStraightToStandardErrorInItsOwnWords) {
    DInvalidRequest exception("first", 12, DException::recoverable);
    exception.setText("second").addLocation({"old", "old", 1}).addLocation({"unit", "open", 0x1'0000'0005ul});
    EXPECT_EQ(reportWithoutMemory(exception),
              "DInvalidRequest exception thrown.\n   function: open\n   file: unit\n   line: 4294967301.\n"
              "   Error ID is 12\n"
              " Error Code group is Kel Class Library\n"
              "   Exception text is:\n"
              "      first\n"
              "      second\n");
}

TEST(ReportWithoutMemory, OfAnExceptionWithNothingSaysSo) {
    DException exception(nullptr);
    exception.setErrorCodeGroup(nullptr);
    EXPECT_EQ(reportWithoutMemory(exception),
              "\nDException exception thrown.\n   Location information is unavailable.\n"
              "   Error ID is unavailable.\n"
              "   Error Code group is unavailable.\n"
              "   Exception text is unavailable.\n");
}

TEST(ReportWithoutMemory, ShowsNullNamesAsUnknown) {
    DException exception(nullptr, 1);
    exception.addLocation({nullptr, nullptr, 2});
    EXPECT_EQ(reportWithoutMemory(exception),
              "DException exception thrown.\n   function: Unknown\n   file: Unknown\n   line: 2.\n"
              "   Error ID is 1\n Error Code group is Kel Class Library\n"
              "   Exception text is unavailable.\n");
}

TEST(ReportWithoutMemory, ListsManyTextsFromTheOldestToTheNewest) {
    DException exception(nullptr);
    std::string expected = "\nDException exception thrown.\n   Location information is unavailable.\n"
                           "   Error ID is unavailable.\n Error Code group is Kel Class Library\n"
                           "   Exception text is:\n";
    for (int i = 0; i < 1000; ++i) {
        exception.setText(std::to_string(i).c_str());
        expected += "      " + std::to_string(i) + "\n";
    }
    EXPECT_EQ(reportWithoutMemory(exception), expected);
}

// The new-handler at work
// ------------------------------------------------------------------------------------------------------------

namespace {

void* volatile wanted =
    nullptr; // an allocation whose result nobody looks at might be left out by the compiler

} // namespace

TEST(NewHandlerAtWork, TurnsAFailedAllocationIntoALoggedOutOfMemory) {
    MessageFile const catalog(englishCatalog);
    std::new_handler const before = std::set_new_handler(DKORVA_Init::newHandler);
    long const blocks = allocations.live;
    {
        Facts const facts = thrownBy([] {
            follow({0, false, 1'000'000});
            wanted = ::operator new(1'000'000);
        });
        follow({});
        expectClass<DOutOfMemory>(facts, "DOutOfMemory");
        EXPECT_EQ(facts.texts, std::vector<std::string>{"There is not enough memory for the operation."});
        EXPECT_EQ(facts.errorId, 4u);
    }
    EXPECT_EQ(allocations.live, blocks);
    EXPECT_EQ(std::get_new_handler(), &DKORVA_Init::newHandler);
    std::set_new_handler(before);
}

TEST(NewHandlerAtWork, WithoutAnyMemoryStillThrowsAndReportsToStandardError) {
    EXPECT_EQ(standardErrorOf([] {
                  follow({1, true});
                  bool caught = false;
                  try {
                      wanted = ::operator new(16);
                  } catch (DOutOfMemory const& exception) {
                      caught = exception.errorId() == 4 && exception.textCount() == 0;
                  }
                  follow({});
                  if (!caught) std::fputs("not caught\n", stderr);
              }),
              "DOutOfMemory exception thrown.\n   function: Unknown\n   file: dbase\n   line: 175.\n"
              "   Error ID is 4\n Error Code group is Kel Class Library\n"
              "   Exception text is unavailable.\n");
}
