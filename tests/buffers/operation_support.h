// What the tests of the buffer and string operations share: buffers held by a reference of their own,
// failures caught together with what was logged, and the modes that a test program runs in.
#ifndef KELCL_TESTS_BUFFERS_OPERATION_SUPPORT_H
#define KELCL_TESTS_BUFFERS_OPERATION_SUPPORT_H

#include "tests/support/owned_buffer.h"

#include <kelcl/dbuffer.h>
#include <kelcl/dexception.h>
#include <kelcl/dstring.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>
#include <ostream>
#include <string>
#include <string_view>

namespace operations {

/// A position past the end of every text.
inline constexpr unsigned int farEnd = 0xFFFFFFFF;

/// A literal with all its bytes, embedded NULs included.
template <std::size_t n>
std::string bytes(char const (&literal)[n]) {
    return std::string(literal, n - 1);
}

inline std::string contentsOf(DString const& text) { return std::string(text.data(), text.length()); }

inline unsigned int lengthOf(std::string_view text) { return static_cast<unsigned int>(text.size()); }

inline DBuffer* bufferOf(DString const& text) { return DBuffer::fromContents(text.data()); }

inline unsigned int refsOf(DString const& text) { return bufferOf(text)->refs; }

/// A test of a host: for the letter b.
inline int isB(int c) { return c == 'b'; }

using support::Owned;

/// A second reference to a buffer for the life of this object, so that nobody may edit it in place.
class SharedWith {
public:
    explicit SharedWith(Owned const& owned) : buffer_(owned.get()) { ++buffer_->refs; }
    SharedWith(SharedWith const&) = delete;
    SharedWith& operator=(SharedWith const&) = delete;
    ~SharedWith() { --buffer_->refs; }

private:
    DBuffer* buffer_;
};

/// Gathers the reports of exceptions while it lives, in place of standard error.
class LogOfExceptions final : public DException::TraceFn {
public:
    LogOfExceptions() : before_(DExceptStaticPtr::userFunction) { DException::setTraceFunction(*this); }
    LogOfExceptions(LogOfExceptions const&) = delete;
    LogOfExceptions& operator=(LogOfExceptions const&) = delete;
    ~LogOfExceptions() { DExceptStaticPtr::userFunction = before_; }

    TraceFn& logData(DException&) override {
        ++count_;
        return *this;
    }
    void write(char const*) override {}
    unsigned int count() const { return count_; }

private:
    TraceFn* before_;
    unsigned int count_ = 0;
};

/// What is seen of a failure from outside.
struct Failure {
    std::string name = "nothing was thrown";
    unsigned long id = 0;
    bool recoverable = false;
    std::string group;
    std::string file;
    unsigned long line = 0;
    unsigned long locations = 0;
    unsigned int timesLogged = 0;
    std::string text;

    friend bool operator==(Failure const& a, Failure const& b) {
        return a.name == b.name && a.id == b.id && a.recoverable == b.recoverable && a.group == b.group &&
               a.file == b.file && a.line == b.line && a.locations == b.locations &&
               a.timesLogged == b.timesLogged;
    }
    friend std::ostream& operator<<(std::ostream& out, Failure const& f) {
        return out << f.name << ", id " << f.id << (f.recoverable ? ", recoverable" : ", unrecoverable")
                   << ", group " << f.group << ", " << f.locations << " locations, first " << f.file << " "
                   << f.line << ", logged " << f.timesLogged << " times, text \"" << f.text << '"';
    }
};

inline Failure invalidRequest(unsigned long id, char const* file, unsigned long line) {
    return {"DInvalidRequest", id, true, "Kel Class Library", file, line, 1, 1, ""};
}

/// The failure of a text that would become too long.
inline Failure lengthOverflow() { return invalidRequest(1010, "dbuffer0", 557); }

/// Runs `action` and tells how it failed.
template <class Action>
Failure failureOf(Action action) {
    LogOfExceptions const log;
    Failure failure;
    try {
        action();
    } catch (DInvalidRequest const& thrown) {
        failure.name = thrown.name();
        failure.id = thrown.errorId();
        failure.recoverable = thrown.isRecoverable();
        failure.group = thrown.errorCodeGroup();
        failure.locations = thrown.locationCount();
        if (DExceptionLocation const* const location = thrown.locationAtIndex(0)) {
            failure.file = location->fileName();
            failure.line = location->lineNumber();
        }
        if (thrown.text(0) != nullptr) failure.text = thrown.text(0);
    }
    failure.timesLogged = log.count();
    return failure;
}

/// Whether this process runs in the given mode: a name of the test registration without its "-i18n".
inline bool localeModeIs(char const* mode) {
    char const* const value = std::getenv("KELCL_TEST_MODE");
    std::string_view const current = value == nullptr ? "C" : value;
    return current.substr(0, current.find('-')) == mode;
}

inline bool switchIsOn() { return DString::fgI18NState == 1; }

/// A new string of its own buffer.
inline DString fresh(std::string_view text) { return DString(text); }

} // namespace operations

#endif
