// A thread that is cancelled in the middle of a trace line, a report or a look-up finishes it, and ends only
// then. Each case runs in a child process, whose exit status says whether it survived.
#include <kelcl/kelcl.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <string>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <pthread.h>
#include <unistd.h>

namespace {

std::atomic<int> begun;

/// Cancels threads that do `work` again and again, at ever other moments. Ends the process with 0 if all of
/// them were cancelled and nothing else happened.
[[noreturn]] void cancelAgainAndAgain(void (*work)()) {
    for (int run = 0; run < 200; ++run) {
        begun = 0;
        pthread_t thread;
        auto const body = [](void* argument) -> void* {
            for (;;) {
                ++begun;
                reinterpret_cast<void (*)()>(argument)();
                pthread_testcancel();
            }
        };
        if (pthread_create(&thread, nullptr, body, reinterpret_cast<void*>(work)) != 0) std::_Exit(2);
        while (begun < 2 + run % 3)
            ;
        usleep(static_cast<useconds_t>(run % 50));
        pthread_cancel(thread);
        void* result = nullptr;
        pthread_join(thread, &result);
        if (result != PTHREAD_CANCELED) std::_Exit(3);
    }
    work(); // nothing is left locked or half done
    std::_Exit(std::get_new_handler() == &DKORVA_Init::newHandler ? 0 : 4);
}

void silenceStandardError() {
    int const nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
    dup2(nowhere, STDERR_FILENO);
    dup2(nowhere, STDOUT_FILENO);
}

#define EXPECT_SURVIVES(work) EXPECT_EXIT(cancelAgainAndAgain(work), testing::ExitedWithCode(0), "")

class CancelledThread : public testing::Test {
protected:
    void SetUp() override {
        testing::FLAGS_gtest_death_test_style = "threadsafe";
        setenv("NLSPATH", KELCL_TEST_CATALOG_DIR "/%N", 1);
        setenv("KORVA_TRACE", "ON", 1);
        setenv("KORVA_TRACEFILE", "cancelled", 1);
    }
};

TEST_F(CancelledThread, FinishesATraceLineForAFile) {
    setenv("KORVA_TRACETO", "FILE", 1);
    EXPECT_SURVIVES([] {
        DTrace const trace("function", 1);
        DTrace::write("line");
    });
}

TEST_F(CancelledThread, FinishesATraceLineForAStream) {
    setenv("KORVA_TRACETO", "STDOUT", 1);
    EXPECT_SURVIVES([] {
        silenceStandardError();
        DTrace const trace("function", 1);
        DTrace::write("line");
    });
}

TEST_F(CancelledThread, FinishesAReport) {
    EXPECT_SURVIVES([] {
        silenceStandardError();
        try {
            DString("x").copy(0xFFFFFFFF);
        } catch (DInvalidRequest const&) {
        }
    });
}

TEST_F(CancelledThread, FinishesALookUp) {
    EXPECT_SURVIVES([] {
        DMessageText const text = DBase::messageText(1010);
        if (!text.isLoaded()) std::_Exit(5);
    });
}

TEST_F(CancelledThread, FinishesWhatItTellsOfAnErrno) {
    EXPECT_SURVIVES([] {
        DCLibErrorInfo const info("open");
        DSystemErrorInfo const system(2, "open");
    });
}

} // namespace
