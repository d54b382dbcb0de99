// Keeps a request to cancel the thread waiting while the library is where it could not be honoured.
#ifndef KELCL_EXCEPT_CANCELLATION_H
#define KELCL_EXCEPT_CANCELLATION_H

#include <pthread.h>

namespace kelcl {

/// Cancelling unwinds the thread from within a function of the C library that may wait. Where a line, a
/// report or a look-up is under way that would leave it half done, and end the process where nothing may be
/// thrown. The request is honoured at the thread's next cancellation point afterwards.
class CancellationDeferral {
public:
    CancellationDeferral() noexcept { ::pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &former_); }
    CancellationDeferral(CancellationDeferral const&) = delete;
    CancellationDeferral& operator=(CancellationDeferral const&) = delete;
    ~CancellationDeferral() { ::pthread_setcancelstate(former_, nullptr); }

private:
    int former_ = PTHREAD_CANCEL_ENABLE;
};

} // namespace kelcl

#endif
