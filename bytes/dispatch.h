// How a kernel comes in two forms, and the one place that chooses between them at run time.
//
// The plain form is a loop over bytes that any processor runs; it says what the kernel does. The form in
// blocks does the same 32 bytes at a time, on processors that have what blocks need: AVX2 on x86-64, which
// not every such processor has, and on 64-bit ARM NEON, which every one has. It comes to be in two ways:
//
//   - A kernel that is a loop which the compiler can vectorise is written once, marked as KELCL_INLINED, and
//     called by multiversioned<loop>(…). It is compiled twice, and becomes its own form in blocks.
//   - Other kernels have a second form, written with the operators of block.h and marked as KELCL_BLOCKS.
//     KELCL_DISPATCH(blocks::kernel(…), portable::kernel(…)) calls the one for this processor. A form in
//     blocks that stops where no whole block is left, and tells how far it came, has "nothing done" beside
//     it: KELCL_DISPATCH(blocks::kernel(…), 0), with the plain loop after it.
//
// Choosing costs one load and one test, which a processor foresees: less than a call through a pointer that
// is set once. There are no functions chosen by the loader (as target_clones makes): a library exports their
// resolvers whatever their visibility, and the loader calls them before the run time of a sanitizer is ready.
//
// A third form, on x86-64 with AVX-512 VBMI and VBMI2, takes 64 bytes at once and looks them up in a table of
// 128. In wide_search.h it tells a search in blocks how much of a long text it can pass by; for patterns, in
// pattern_candidates.h, and for UTF-8 it does the same as the form in blocks beside it.
//
// Building with KELCL_PORTABLE_KERNELS, or for any other machine, leaves only the plain forms; then the names
// of forms in blocks are not even declared, which is why KELCL_DISPATCH is a macro.
#ifndef KELCL_BYTES_DISPATCH_H
#define KELCL_BYTES_DISPATCH_H

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

/// A function that uses blocks; to be called by KELCL_DISPATCH, or by another such function.
#define KELCL_BLOCKS __attribute__((KELCL_BLOCK_TARGET))

/// The same, for helpers of such functions.
#define KELCL_BLOCKS_INLINE inline __attribute__((KELCL_BLOCK_TARGET, always_inline))

#if defined(__x86_64__)
#define KELCL_HAS_WIDE 1
/// A function of that third form; to be called where processorHasWide() says so.
#define KELCL_WIDE __attribute__((target("avx512f,avx512bw,avx512vbmi,avx512vbmi2")))
#define KELCL_WIDE_INLINE                                                                                    \
    inline __attribute__((target("avx512f,avx512bw,avx512vbmi,avx512vbmi2"), always_inline))
#else
#define KELCL_HAS_WIDE 0
#endif

/// The value of the first expression on a processor that has what blocks need, else that of the second.
#define KELCL_DISPATCH(inBlocks, plain) (::kelcl::processorHasBlocks() ? (inBlocks) : (plain))

#else

#define KELCL_HAS_WIDE 0
#define KELCL_DISPATCH(inBlocks, plain) (plain)

#endif

namespace kelcl {

#if KELCL_HAS_BLOCKS

inline bool processorHasBlocks() {
#if defined(__x86_64__)
    return __builtin_cpu_supports("avx2") != 0;
#else
    return true;
#endif
}

#if KELCL_HAS_WIDE
inline bool processorHasWide() {
    return __builtin_cpu_supports("avx512vbmi") != 0 && __builtin_cpu_supports("avx512vbmi2") != 0 &&
           __builtin_cpu_supports("avx512bw") != 0;
}
#endif

template <auto loop, class... Arguments>
KELCL_BLOCKS auto runInBlocks(Arguments... arguments) {
    return loop(arguments...);
}

#endif

/// Calls a loop, which is a function marked as KELCL_INLINED, in its version for this processor.
template <auto loop, class... Arguments>
auto multiversioned(Arguments... arguments) {
    return KELCL_DISPATCH(runInBlocks<loop>(arguments...), loop(arguments...));
}

} // namespace kelcl

#endif
