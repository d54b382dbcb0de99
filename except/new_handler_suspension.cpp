// The one suspension of the process's new-handler that those of all threads make up.
#include "except/new_handler_suspension.h"

#include "except/static_order.h"

#include <kelcl/detail/one_thread.h>

#include <mutex>
#include <new>

#include <pthread.h>

namespace kelcl {

namespace {

/// Constant-initialised and never destroyed: exceptions may be made before and after the library's own
/// objects live. Nobody allocates or calls a host while holding the lock.
std::mutex lock;

/// Holds the lock, which nobody else could want while the process has one thread. What happens under it
/// starts no thread.
class Guard {
public:
    Guard() {
        if (isNeeded_) lock.lock();
    }
    Guard(Guard const&) = delete;
    Guard& operator=(Guard const&) = delete;
    ~Guard() {
        if (isNeeded_) lock.unlock();
    }

private:
    bool const isNeeded_ = !processHasOneThread();
};

unsigned long suspensions = 0;
std::new_handler suspended = nullptr;

void takeOut() {
    if (std::new_handler const handler = std::set_new_handler(nullptr)) suspended = handler;
}

/// A handler that the host has installed in the meantime stays. It may install one at this very moment: each
/// that is met is put back in its turn.
void putBack() {
    std::new_handler handler = suspended;
    std::new_handler expected = nullptr;
    suspended = nullptr;
    while (handler != nullptr) {
        std::new_handler const found = std::set_new_handler(handler);
        if (found == expected) return;
        expected = handler;
        handler = found;
    }
}

/// Keeps a fork from happening halfway, and ends in the child what no thread of it would end.
struct ForkHandlers {
    ForkHandlers() {
        ::pthread_atfork([] { lock.lock(); }, [] { lock.unlock(); }, endAllInChild);
    }

    static void endAllInChild() {
        suspensions = 0;
        putBack();
        lock.unlock();
    }
};

KELCL_BEFORE_HOSTS ForkHandlers const forkHandlers;

} // namespace

NewHandlerSuspension::NewHandlerSuspension() noexcept {
    Guard const guard;
    takeOut();
    ++suspensions;
}

NewHandlerSuspension::~NewHandlerSuspension() {
    Guard const guard;
    if (suspensions == 0) return; // in a child that was forked in the meantime
    if (--suspensions == 0) putBack();
}

} // namespace kelcl
