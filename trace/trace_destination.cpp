// Where finished trace lines go. How a line is made up is in trace.cpp.
#include "trace/trace_destination.h"

#include "except/cancellation.h"
#include "trace/trace_variables.h"

#include <kelcl/dtrace.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include <fcntl.h>
#include <poll.h>
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

/// Whether what reads the file has left the last line standing: then the next one does not wait for it.
std::atomic<bool> readerIsStuck = false;

/// Waits a moment for a pipe or terminal that is full; a host must not hang for its trace.
bool becomesWritable(int file) {
    constexpr int patienceInMilliseconds = 100;
    pollfd waiting{file, POLLOUT, 0};
    if (!readerIsStuck && ::poll(&waiting, 1, patienceInMilliseconds) > 0) return true;
    readerIsStuck = true;
    return false;
}

void writeAll(int file, char const* text, std::size_t length) {
    while (length != 0) {
        ssize_t const written = ::write(file, text, length);
        if (written < 0 && errno == EINTR) continue;
        if (written < 0 && errno == EAGAIN && becomesWritable(file)) continue;
        if (written <= 0) return;
        readerIsStuck = false;
        text += written;
        length -= static_cast<std::size_t>(written);
    }
}

/// The file is opened and closed for each line, so that it is complete at all times. Without waiting: a pipe
/// that nobody reads cannot be opened. A terminal does not become that of the process.
void appendToFile(char const* fileName, char const* text) {
    constexpr int flags = O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
    int const file = ::open(fileName, flags, 0666);
    if (file < 0) return;
    writeAll(file, text, std::strlen(text));
    ::close(file);
}

} // namespace

namespace kelcl {

/// The name of the file is looked up for each line and used in upper case: callers rely on it.
TraceDestination::TraceDestination() : code_(std::atomic_ref(DTrace::iClTraceLocation).load()) {
    if (code_ != 3) return;
    if (char const* const value = traceVariable("KORVA TRACEFILE", "KORVA_TRACEFILE"))
        file_ = normalizedValue(value);
}

void TraceDestination::send(char const* text) const noexcept {
    ErrnoPreserved const preserved;
    CancellationDeferral const deferral;
    switch (code_) {
    case 0:
    case 2:
        writeToStream(text, stdout);
        break;
    case 1:
        writeToStream(text, stderr);
        break;
    default:
        if (file_) appendToFile(file_->c_str(), text);
        break;
    }
}

} // namespace kelcl

void DTrace::writeString(char const* text) {
    if (text != nullptr) kelcl::TraceDestination().send(text);
}
