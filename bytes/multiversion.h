// How the kernels use what processors offer beyond plain instructions: one way to have a plain loop
// vectorised by the compiler once for each kind of processor, and marks for the kernels that are written with
// the blocks of block.h. One switch chooses for both. Every kernel also has a plain form for all other
// processors. Building with KELCL_PORTABLE_KERNELS leaves only that.
#ifndef KELCL_BYTES_MULTIVERSION_H
#define KELCL_BYTES_MULTIVERSION_H

#if defined(KELCL_PORTABLE_KERNELS)
#define KELCL_HAS_BLOCKS 0
#elif defined(__x86_64__) || (defined(__aarch64__) && defined(__AARCH64EL__))
#define KELCL_HAS_BLOCKS 1
#else
#define KELCL_HAS_BLOCKS 0
#endif

/// A loop that multiversioned() calls, and any helper that must become part of each of its versions.
#define KELCL_INLINED inline __attribute__((always_inline))

#if KELCL_HAS_BLOCKS
#if defined(__x86_64__)
#define KELCL_BLOCK_TARGET target("avx2,popcnt")
#else
#define KELCL_BLOCK_TARGET // Every processor of this kind has what blocks need.
#endif
/// A function that uses blocks; to be called only when processorHasBlocks().
#define KELCL_BLOCKS __attribute__((KELCL_BLOCK_TARGET))
/// The same, for helpers of such functions.
#define KELCL_BLOCKS_INLINE inline __attribute__((KELCL_BLOCK_TARGET, always_inline))
#endif

namespace kelcl {

inline bool processorHasBlocks() {
#if KELCL_HAS_BLOCKS && defined(__x86_64__)
    return __builtin_cpu_supports("avx2") != 0;
#else
    return KELCL_HAS_BLOCKS != 0;
#endif
}

#if KELCL_HAS_BLOCKS
template <auto loop, class... Arguments>
KELCL_BLOCKS auto runWithBlocks(Arguments... arguments) {
    return loop(arguments...);
}
#endif

/// Calls a loop, which is a function marked as KELCL_INLINED, in its version for this processor.
/// This does what the compiler's target_clones does, without its resolver functions, which a library exports
/// whatever their visibility, and which the loader calls before the run time of a sanitizer is ready.
template <auto loop, class... Arguments>
auto multiversioned(Arguments... arguments) {
#if KELCL_HAS_BLOCKS
    if (processorHasBlocks()) return runWithBlocks<loop>(arguments...);
#endif
    return loop(arguments...);
}

} // namespace kelcl

#endif
