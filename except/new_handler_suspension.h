// Takes the process's new-handler out for a while, so that storing a text or writing a report never calls the
// handler that turns memory exhaustion into an exception of its own.
#ifndef KELCL_EXCEPT_NEW_HANDLER_SUSPENSION_H
#define KELCL_EXCEPT_NEW_HANDLER_SUSPENSION_H

#include <new>

namespace kelcl {

/// Suspensions of two threads may overlap. The one that found no handler puts none back, so that whatever the
/// order in which they end, the handler is never lost.
class NewHandlerSuspension {
public:
    NewHandlerSuspension() noexcept : suspended_(std::set_new_handler(nullptr)) {}
    NewHandlerSuspension(NewHandlerSuspension const&) = delete;
    NewHandlerSuspension& operator=(NewHandlerSuspension const&) = delete;
    ~NewHandlerSuspension() {
        if (suspended_ != nullptr) std::set_new_handler(suspended_);
    }

private:
    std::new_handler suspended_;
};

} // namespace kelcl

#endif
