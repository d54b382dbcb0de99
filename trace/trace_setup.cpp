// How the trace state follows from the environment. Nothing is written here.
#include <kelcl/dtrace.h>

#include "trace/trace_variables.h"

#include <atomic>
#include <string_view>

int DTrace::iClState = DTrace::notSetUp;
int DTrace::iClTraceLocation = 2;
std::uint32_t DTrace::uClIndent[256] = {};
unsigned long DTrace::ulClProcessId = 0;
std::uint32_t DTrace::fCheckStack = 0;
unsigned long DTrace::ulSequence = 0;

namespace {

/// The trace flags while they are being found out. They count as they are when the set-up ends, also by an
/// exception.
struct PublishedState {
    explicit PublishedState(int initial) : flags(initial) {}
    PublishedState(PublishedState const&) = delete;
    PublishedState& operator=(PublishedState const&) = delete;
    ~PublishedState() { std::atomic_ref(DTrace::iClState).store(flags); }

    int flags;
};

/// The code of a destination given in upper case; unknown ones count as the queue, which is written to
/// standard output.
int destinationCode(std::string_view destination) {
    if (destination == "STDERR" || destination == "ERR") return 1;
    if (destination == "STDOUT" || destination == "OUT") return 2;
    if (destination == "FILE") return 3;
    return 0;
}

} // namespace

// Values are compared as bytes, not through DString's operators, which may collate. The state is published
// last and at once, so that no line is lost that another thread writes in the meantime.
void DTraceSetup::initialize() {
    using kelcl::normalizedValue;
    using kelcl::traceVariable;

    PublishedState state(DTrace::lineNumbers | DTrace::prefixed);

    DString const traceSwitch = normalizedValue(traceVariable("KORVA TRACE", "KORVA_TRACE"));
    if (std::string_view(traceSwitch) == "ON") {
        state.flags |= DTrace::tracingOn;
    } else if (std::string_view(traceSwitch) == "NOPREFIX") {
        state.flags = DTrace::lineNumbers | DTrace::tracingOn;
    }

    DString const destination = normalizedValue(traceVariable("KORVA TRACETO", "KORVA_TRACETO"));
    if (destination.length() > 2) {
        state.flags |= DTrace::tracingOn;
        std::atomic_ref(DTrace::iClTraceLocation).store(destinationCode(destination));
    }

    DString const checkStack = normalizedValue(traceVariable("KORVA CHECKSTACK", "KORVA_CHECKSTACK"));
    if (std::string_view(checkStack) == "ON" || std::string_view(checkStack) == "TRUE") {
        std::atomic_ref(DTrace::fCheckStack).store(1);
    }
}
