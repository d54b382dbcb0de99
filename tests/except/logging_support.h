// What the tests of the reports of exceptions share. No tests are here.
#ifndef KELCL_TESTS_EXCEPT_LOGGING_SUPPORT_H
#define KELCL_TESTS_EXCEPT_LOGGING_SUPPORT_H

#include "tests/except/except_support.h"

#include <new>

using Lines = std::vector<std::string>;

inline Lines reportOf(DException& exception) {
    RecordingTrace trace;
    exception.logExceptionData();
    EXPECT_EQ(trace.completed, 1);
    return trace.lines;
}

inline void ownHandler() { throw std::bad_alloc(); }

/// The process's new-handler while it lives.
class NewHandler {
public:
    explicit NewHandler(std::new_handler handler) : before_(std::set_new_handler(handler)) {}
    ~NewHandler() { std::set_new_handler(before_); }
    NewHandler(NewHandler const&) = delete;
    NewHandler& operator=(NewHandler const&) = delete;

private:
    std::new_handler before_;
};

#endif
