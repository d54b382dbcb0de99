// How the byte kernels use what newer processors offer: the one macro for loops that the compiler vectorises
// once for each kind of processor, and the one switch for the kernels that are written with vector
// intrinsics. Every kernel also has a plain form for all other processors. Building with
// KELCL_PORTABLE_KERNELS leaves only that.
#ifndef KELCL_STRING_MULTIVERSION_H
#define KELCL_STRING_MULTIVERSION_H

#include <cstddef>

#if defined(__x86_64__) && !defined(KELCL_PORTABLE_KERNELS)
#define KELCL_AVX2_KERNELS 1
#else
#define KELCL_AVX2_KERNELS 0
#endif

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define KELCL_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer) || __has_feature(memory_sanitizer)
#define KELCL_SANITIZED 1
#endif
#endif
#ifndef KELCL_SANITIZED
#define KELCL_SANITIZED 0
#endif

// The loader chooses among the versions before a sanitizer's run time is ready, so there must be one only.
#if KELCL_AVX2_KERNELS && defined(__GLIBC__) && !KELCL_SANITIZED
#define KELCL_MULTIVERSION __attribute__((target_clones("avx2", "default")))
#else
#define KELCL_MULTIVERSION
#endif

/// A helper that must become part of each version of its callers.
#define KELCL_ALWAYS_INLINE inline __attribute__((always_inline))

#if KELCL_AVX2_KERNELS
/// A function written with AVX2 intrinsics; to be called only when processorHasAvx2().
#define KELCL_AVX2 __attribute__((target("avx2,popcnt")))
/// The same, for helpers of such functions.
#define KELCL_AVX2_INLINE inline __attribute__((target("avx2,popcnt"), always_inline))
#endif

namespace kelcl {

inline bool processorHasAvx2() {
#if KELCL_AVX2_KERNELS
    return __builtin_cpu_supports("avx2") != 0;
#else
    return false;
#endif
}

} // namespace kelcl

#endif
