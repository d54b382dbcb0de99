// Takes the process's new-handler out for a while, so that storing a text or writing a report never calls the
// handler that turns memory exhaustion into an exception of its own.
#ifndef KELCL_EXCEPT_NEW_HANDLER_SUSPENSION_H
#define KELCL_EXCEPT_NEW_HANDLER_SUSPENSION_H

namespace kelcl {

/// The new-handler belongs to the process, so the suspensions of all threads count as one: the first takes
/// the handler out, and when the last one ends it is put back, unless the host has installed another one in
/// the meantime. A child of fork() begins without suspensions, as it has none of the threads that held them.
class NewHandlerSuspension {
public:
    NewHandlerSuspension() noexcept;
    NewHandlerSuspension(NewHandlerSuspension const&) = delete;
    NewHandlerSuspension& operator=(NewHandlerSuspension const&) = delete;
    ~NewHandlerSuspension();
};

} // namespace kelcl

#endif
