// The descriptors that the library opens do not reach programs that a host starts meanwhile. The test's own
// open() stands in front of the C library's and notes the flags.
#include <kelcl/dtrace.h>

#include <cstdarg>
#include <cstdlib>
#include <string>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

struct Opened {
    std::string name;
    int flags;
};
std::vector<Opened> opened;

} // namespace

extern "C" int open(char const* name, int flags, ...) {
    std::va_list rest;
    va_start(rest, flags);
    mode_t const mode = (flags & O_CREAT) != 0 ? va_arg(rest, mode_t) : 0;
    va_end(rest);
    opened.push_back({name, flags});
    return static_cast<int>(syscall(SYS_openat, AT_FDCWD, name, flags, mode));
}

namespace {

TEST(Descriptors, OfTheTraceFileAreClosedInProgramsThatTheHostStarts) {
    setenv("KORVA_TRACETO", "FILE", 1);
    setenv("KORVA_TRACEFILE", "descriptors", 1);
    DTraceSetup::initialize();
    opened.clear();
    DTrace::write("line");
    ASSERT_EQ(opened.size(), 1U);
    EXPECT_EQ(opened[0].name, "DESCRIPTORS");
    EXPECT_NE(opened[0].flags & O_CLOEXEC, 0);
    EXPECT_NE(opened[0].flags & O_APPEND, 0);
}

} // namespace
