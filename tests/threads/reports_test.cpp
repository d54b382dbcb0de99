// Exceptions, messages, error informations and the new-handler in several threads.
#include "tests/threads/together.h"

#include <kelcl/kelcl.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <mutex>
#include <new>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

constexpr int threads = 4;
constexpr int rounds = 300;

/// Collects what is reported; a write is a whole line of one report.
class Collector final : public DException::TraceFn {
public:
    void write(char const* line) override {
        std::lock_guard const guard(lock_);
        lines_.emplace_back(line);
    }
    void exceptionLogged() override { ++reports; }

    std::vector<std::string> takeLines() {
        std::lock_guard const guard(lock_);
        return std::move(lines_);
    }

    std::atomic<int> reports = 0;

private:
    std::mutex lock_;
    std::vector<std::string> lines_;
};

/// Registered for good: a trace function must live as long as exceptions are thrown.
Collector& collector() {
    static Collector only;
    DException::setTraceFunction(only);
    only.takeLines();
    only.reports = 0;
    return only;
}

void ownHandler() { throw std::bad_alloc(); }
void otherHandler() { throw std::bad_alloc(); }

std::size_t countOf(std::vector<std::string> const& lines, std::string const& line) {
    return static_cast<std::size_t>(std::count(lines.begin(), lines.end(), line));
}

TEST(ThrownInThreads, EveryExceptionIsReportedInWholeLines) {
    Collector& log = collector();
    together(threads, [](int number) {
        std::string const text = "the failure of thread " + std::to_string(number);
        for (int i = 0; i < rounds; ++i)
            EXPECT_THROW(DException::assertParameter(text.c_str(), {"unit", "function", 12}),
                         DAssertionFailure);
    });
    std::vector<std::string> const lines = log.takeLines();
    constexpr std::size_t all = threads * rounds;
    EXPECT_EQ(log.reports, threads * rounds);
    EXPECT_EQ(lines.size(), 5 * all);
    EXPECT_EQ(
        countOf(lines,
                "DAssertionFailure exception thrown.\n   function: function\n   file: unit\n   line: 12"),
        all);
    EXPECT_EQ(countOf(lines, "   Exception text is:"), all);
    for (int number = 0; number < threads; ++number)
        EXPECT_EQ(countOf(lines, "      the failure of thread " + std::to_string(number)),
                  static_cast<std::size_t>(rounds));
}

TEST(ThrownInThreads, TheDefaultReportsAreWholeLinesToo) {
    DExceptTraceFn standard;
    collector();
    DException::setTraceFunction(standard);
    testing::internal::CaptureStderr();
    together(threads, [](int) {
        for (int i = 0; i < rounds; ++i)
            DException("a text of one line", 7).logExceptionData();
    });
    std::string const output = testing::internal::GetCapturedStderr();
    collector();
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < output.size();) {
        std::size_t const end = output.find('\n', at);
        lines.push_back(output.substr(at, end - at));
        at = end + 1;
    }
    constexpr std::size_t all = threads * rounds;
    EXPECT_EQ(lines.size(), 7 * all);
    EXPECT_EQ(countOf(lines, "DException exception thrown."), all);
    EXPECT_EQ(countOf(lines, "   Error Id is 7"), all);
    EXPECT_EQ(countOf(lines, "      a text of one line"), all);
}

TEST(ThrownInThreads, CatalogTextsAreFoundByAll) {
    collector();
    setenv("NLSPATH", KELCL_TEST_CATALOG_DIR "/%N", 1);
    std::atomic<int> right = 0;
    together(threads, [&](int) {
        for (int i = 0; i < rounds; ++i) {
            try {
                DExcept__assertParameter("port >= 1", DEXCEPTION_LOCATION());
            } catch (DInvalidParameter const& error) {
                if (std::string(error.text(0)) == "The condition does not hold: port >= 1") ++right;
            }
        }
    });
    EXPECT_EQ(right, threads * rounds);
    unsetenv("NLSPATH");
}

TEST(ThrownInThreads, WithoutACatalogTheTextsSayThatItIsMissing) {
    collector();
    setenv("NLSPATH", "/nowhere/%N", 1);
    std::atomic<int> right = 0;
    together(threads, [&](int) {
        for (int i = 0; i < rounds; ++i) {
            try {
                DString("x").copy(0xFFFFFFFF);
            } catch (DInvalidRequest const& error) {
                if (error.errorId() == 1010 &&
                    std::string(error.text(0)) == "Unable to load text from message file.")
                    ++right;
            }
        }
    });
    EXPECT_EQ(right, threads * rounds);
    unsetenv("NLSPATH");
}

TEST(ThrownInThreads, AnExceptionMayBeCopiedInSeveralAtOnce) {
    DException const original("the first text");
    together(threads, [&](int number) {
        for (int i = 0; i < rounds; ++i) {
            DException copy(original);
            copy.setText("the second").appendText(" text");
            copy.setErrorId(static_cast<unsigned long>(number));
            EXPECT_STREQ(copy.text(0), "the second text");
            EXPECT_STREQ(copy.text(1), "the first text");
        }
    });
    EXPECT_EQ(original.textCount(), 1UL);
}

TEST(ErrorInformation, TellsEachThreadItsOwnErrno) {
    std::atomic<int> right = 0;
    together(threads, [&](int number) {
        int const mine = number % 2 == 0 ? ENOENT : 4711;
        std::string const expected =
            number % 2 == 0 ? "open:No such file or directory" : "open:Unknown error 4711";
        for (int i = 0; i < rounds; ++i) {
            errno = mine;
            DCLibErrorInfo const info("open");
            if (info.text() == expected && info.errorId() == static_cast<unsigned long>(mine)) ++right;
        }
    });
    EXPECT_EQ(right, threads * rounds);
}

// The new-handler
// --------------------------------------------------------------------------------------------------------

TEST(NewHandler, IsBackWhenAllThreadsHaveStoredTheirTexts) {
    collector();
    std::new_handler const before = std::set_new_handler(ownHandler);
    together(threads, [](int) {
        for (int i = 0; i < 20000; ++i)
            DException("a text").setText("another one").appendText(", longer");
    });
    EXPECT_EQ(std::get_new_handler(), &ownHandler);
    std::set_new_handler(before);
}

// The handler may be installed at any moment of a suspension, and must be there when all suspensions are
// over.
TEST(NewHandler, ThatAHostInstallsWhileOthersStoreTextsIsNotLost) {
    std::new_handler const before = std::get_new_handler();
    for (int i = 0; i < 300; ++i) {
        std::set_new_handler(ownHandler);
        together(3, [](int number) {
            if (number == 0)
                std::set_new_handler(otherHandler);
            else
                for (int k = 0; k < 5; ++k)
                    DException("a text").setText("another one");
        });
        ASSERT_EQ(std::get_new_handler(), &otherHandler) << "round " << i;
    }
    std::set_new_handler(before);
}

TEST(NewHandler, ThatAHostInstallsWithinAReportStays) {
    class Installing final : public DException::TraceFn {
    public:
        void write(char const*) override { std::set_new_handler(otherHandler); }
    } installing;
    collector();
    std::new_handler const before = std::set_new_handler(ownHandler);
    DException::setTraceFunction(installing);
    DException("a text").logExceptionData();
    collector();
    EXPECT_EQ(std::get_new_handler(), &otherHandler);
    std::set_new_handler(before);
}

TEST(NewHandler, StaysAbsentWhenTheHostHasNone) {
    collector();
    std::new_handler const before = std::set_new_handler(nullptr);
    together(threads, [](int) {
        for (int i = 0; i < rounds; ++i)
            DException("a text").setText("another one");
    });
    EXPECT_EQ(std::get_new_handler(), nullptr);
    std::set_new_handler(before);
}

} // namespace
