// A host that has a static object of its own, and names nothing of what the library does when it starts: that
// must have been done before the host's object was made, and must not be done after it. Prints what is wrong.
#include <kelcl/dexception.h>

#include <cstdlib>
#include <iostream>
#include <new>

namespace {

struct Counter final : DException::TraceFn {
    void write(char const*) override { ++lines; }

    int lines = 0;
};
Counter counter;

/// Found by the host's first object: the library's new-handler, which throws when memory is out.
bool const newHandlerWasThere = [] {
    DException::setTraceFunction(counter);
    return std::get_new_handler() != nullptr;
}();

} // namespace

int main() {
    bool const newHandlerIsThere = std::get_new_handler() != nullptr;
    DException("a report", 0, DException::recoverable).logExceptionData();
    if (newHandlerWasThere && newHandlerIsThere && counter.lines != 0) return EXIT_SUCCESS;
    std::cout << "new-handler at the host's start: " << newHandlerWasThere
              << ", in main: " << newHandlerIsThere
              << "; lines for the host's trace function: " << counter.lines << '\n';
    return EXIT_FAILURE;
}
