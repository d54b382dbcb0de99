// Whether a process has one thread, for what is cheaper then. Included by dbuffer.h; not for hosts to include
// themselves.
#ifndef KELCL_DETAIL_ONE_THREAD_H
#define KELCL_DETAIL_ONE_THREAD_H

#include <kelcl/dexport.h>

#if __has_include(<sys/single_threaded.h>)
#include <sys/single_threaded.h>
#define KELCL_HAS_SINGLE_THREADED 1
#else
#define KELCL_HAS_SINGLE_THREADED 0
#endif

namespace kelcl {

/// Whether there is no other thread at this moment. Never where the C library does not tell.
KELCL_LOCAL inline bool processHasOneThread() noexcept {
#if KELCL_HAS_SINGLE_THREADED
    return __builtin_expect(__libc_single_threaded, 1) != 0;
#else
    return false;
#endif
}

} // namespace kelcl

#undef KELCL_HAS_SINGLE_THREADED

#endif
