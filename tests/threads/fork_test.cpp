// What a child can do that was forked while other threads were anywhere in the library.
#include "tests/support/program_run.h"

#include <kelcl/kelcl.h>

#include <atomic>
#include <cstdlib>
#include <functional>
#include <new>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

/// Three threads that do `work` until they go.
class Busy {
public:
    explicit Busy(std::function<void()> const& work) {
        for (int i = 0; i < 3; ++i)
            threads_.emplace_back([this, work] {
                while (!stop_)
                    work();
            });
    }
    Busy(Busy const&) = delete;
    Busy& operator=(Busy const&) = delete;
    ~Busy() {
        stop_ = true;
        for (std::thread& thread : threads_)
            thread.join();
    }

private:
    std::atomic<bool> stop_ = false;
    std::vector<std::thread> threads_;
};

void silent(std::function<void()> const& work) {
    class Silent final : public DException::TraceFn {
    public:
        void write(char const*) override {}
    };
    static Silent function;
    static bool const installed = (DException::setTraceFunction(function), true);
    if (installed) work();
}

/// Forks children in the midst of the threads' work; all must find what they do to be right.
void expectChildrenSucceed(std::function<void()> const& work, std::function<bool()> const& inChild) {
    silent([&] {
        Busy const busy(work);
        for (int i = 0; i < 50; ++i) {
            pid_t const child = fork();
            ASSERT_GE(child, 0);
            if (child == 0) {
                alarm(20); // a child that waits for a lock of a thread it does not have
                std::_Exit(inChild() ? 0 : 1);
            }
            int status = 0;
            ASSERT_EQ(waitpid(child, &status, 0), child);
            ASSERT_TRUE(WIFEXITED(status)) << "signal " << WTERMSIG(status);
            ASSERT_EQ(WEXITSTATUS(status), 0);
        }
    });
}

TEST(ForkedChild, UsesStrings) {
    DString const shared("a shared text");
    expectChildrenSucceed(
        [&] {
            DString copy(shared);
            DString moved(std::move(copy));
            moved.upperCase();
        },
        [&] {
            DString copy(shared);
            DString const moved(std::move(copy));
            DString const last = DString(shared).upperCase() + moved;
            return copy.isEmpty() && last == "A SHARED TEXTa shared text";
        });
}

TEST(ForkedChild, ThrowsAndCatches) {
    setenv("NLSPATH", KELCL_TEST_CATALOG_DIR "/%N", 1);
    auto const throwing = [] {
        try {
            DString("x").copy(0xFFFFFFFF);
        } catch (DInvalidRequest const& error) {
            return error.errorId() == 1010 && error.textCount() == 1;
        }
        return false;
    };
    expectChildrenSucceed(throwing, throwing);
}

TEST(ForkedChild, Traces) {
    setenv("KORVA_TRACE", "ON", 1);
    setenv("KORVA_TRACETO", "FILE", 1);
    setenv("KORVA_TRACEFILE", "forked", 1);
    DTraceSetup::initialize();
    auto const tracing = [] {
        DTrace const trace("function", 1);
        DTrace::write("line");
        return true;
    };
    expectChildrenSucceed(tracing, [&] {
        unsigned long const before = DTrace::ulSequence;
        std::remove("FORKED");
        tracing();
        return DTrace::ulSequence == before + 3 && linesOf(readFile("FORKED")).size() >= 2;
    });
    unsetenv("KORVA_TRACE");
    unsetenv("KORVA_TRACETO");
    DTraceSetup::initialize();
}

TEST(ForkedChild, HasTheNewHandlerThoughOthersWereStoringTexts) {
    std::new_handler const handler = [] { throw std::bad_alloc(); };
    std::new_handler const before = std::set_new_handler(handler);
    expectChildrenSucceed([] { DException("a text").setText("another one"); },
                          [=] {
                              if (std::get_new_handler() != handler) return false;
                              DException const exception("a text");
                              return exception.textCount() == 1 && std::get_new_handler() == handler;
                          });
    EXPECT_EQ(std::get_new_handler(), handler);
    std::set_new_handler(before);
}

} // namespace
