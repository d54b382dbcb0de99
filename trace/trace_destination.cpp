// Where finished trace lines go. How a line is made up is in trace.cpp.
#include <kelcl/dtrace.h>

#include "trace/trace_variables.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include <fcntl.h>
#include <unistd.h>

namespace {

/// Keeps `errno` as the host left it: a trace line must not come between a failed call and its cause.
class ErrnoPreserved {
public:
    ErrnoPreserved() = default;
    ErrnoPreserved(ErrnoPreserved const&) = delete;
    ErrnoPreserved& operator=(ErrnoPreserved const&) = delete;
    ~ErrnoPreserved() { errno = saved_; }

private:
    int const saved_ = errno;
};

void writeToStream(char const* text, std::FILE* stream) {
    std::fputs(text, stream);
    std::fflush(stream);
}

void writeAll(int file, char const* text, std::size_t length) {
    while (length != 0) {
        ssize_t const written = ::write(file, text, length);
        if (written < 0 && errno == EINTR) continue;
        if (written <= 0) return;
        text += written;
        length -= static_cast<std::size_t>(written);
    }
}

/// The file is opened and closed for each line, so that it is complete at all times; its name is looked up
/// for each line and used in upper case: callers rely on it.
void appendToFile(char const* text) {
    char const* const value = kelcl::traceVariable("KORVA TRACEFILE", "KORVA_TRACEFILE");
    if (value == nullptr) return;
    DString const fileName = kelcl::normalizedValue(value);
    int const file = ::open(fileName.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
    if (file < 0) return;
    writeAll(file, text, std::strlen(text));
    ::close(file);
}

} // namespace

void DTrace::writeString(char const* text) {
    if (text == nullptr) return;
    ErrnoPreserved const preserved;
    switch (iClTraceLocation) {
    case 0:
    case 2:
        writeToStream(text, stdout);
        break;
    case 1:
        writeToStream(text, stderr);
        break;
    case 3:
        appendToFile(text);
        break;
    default:
        break;
    }
}
