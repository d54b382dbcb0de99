// How the byte kernels use what newer processors offer: one way to have a plain loop vectorised by the
// compiler once for each kind of processor, and marks for the kernels that are written with vector
// intrinsics. One switch chooses for both. Every kernel also has a plain form for all other processors.
// Building with KELCL_PORTABLE_KERNELS leaves only that.
#ifndef KELCL_STRING_MULTIVERSION_H
#define KELCL_STRING_MULTIVERSION_H

#if defined(__x86_64__) && !defined(KELCL_PORTABLE_KERNELS)
#define KELCL_AVX2_KERNELS 1
#else
#define KELCL_AVX2_KERNELS 0
#endif

/// A loop that multiversioned() calls, and any helper that must become part of each of its versions.
#define KELCL_INLINED inline __attribute__((always_inline))

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

#if KELCL_AVX2_KERNELS
template <auto loop, class... Arguments>
KELCL_AVX2 auto runWithAvx2(Arguments... arguments) {
    return loop(arguments...);
}
#endif

/// Calls a loop, which is a function marked as KELCL_INLINED, in its version for this processor.
/// This does what the compiler's target_clones does, without its resolver functions, which a library exports
/// whatever their visibility, and which the loader calls before the run time of a sanitizer is ready.
template <auto loop, class... Arguments>
auto multiversioned(Arguments... arguments) {
#if KELCL_AVX2_KERNELS
    if (processorHasAvx2()) return runWithAvx2<loop>(arguments...);
#endif
    return loop(arguments...);
}

} // namespace kelcl

#endif
