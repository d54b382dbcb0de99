// The holder of trace functions: which one reports go to, and the default one.
#include "except/trace_functions.h"

#include <kelcl/dexception.h>

#include <atomic>

DException::TraceFn* DExceptStaticPtr::defaultFunction = nullptr;
DException::TraceFn* DExceptStaticPtr::userFunction = nullptr;

namespace {

constinit DExceptTraceFn standardFunction; // there before any code runs: start-up itself may fail

} // namespace

kelcl::TraceFunctions::TraceFunctions() {
    DExceptStaticPtr::defaultFunction = nullptr;
    DExceptStaticPtr::userFunction = nullptr;
}

DException::TraceFn* DExceptStaticPtr::traceFunction() noexcept {
    if (DException::TraceFn* const user = std::atomic_ref(userFunction).load()) return user;
    std::atomic_ref const standard(defaultFunction); // two threads may fail at once
    if (standard.load() == nullptr) standard.store(&standardFunction);
    return standard.load();
}

void DException::setTraceFunction(TraceFn& function) noexcept {
    DExceptStaticPtr::traceFunction(); // fills in the default one
    std::atomic_ref(DExceptStaticPtr::userFunction).store(&function);
}
