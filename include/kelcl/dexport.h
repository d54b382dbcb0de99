/// @file
/// The marks of what the shared library exports. Everything that does not carry one stays inside the library.
#ifndef KELCL_DEXPORT_H
#define KELCL_DEXPORT_H

#if __cplusplus < 201703L
#error "the headers of kelcl need C++17 or later, as by -std=c++17"
#endif

/// Marks a class or function that the shared library exports.
#define KELCL_EXPORT __attribute__((visibility("default")))

/// Marks an inline member of an exported class that each program compiles for itself.
#define KELCL_LOCAL __attribute__((visibility("hidden")))

/// Marks a member function whose result is a part of the object, so that a compiler that knows the mark warns
/// where the object is a temporary and the result outlives it.
#if defined(__has_cpp_attribute)
#if __has_cpp_attribute(clang::lifetimebound)
#define KELCL_LIFETIME_BOUND [[clang::lifetimebound]]
#endif
#endif
#ifndef KELCL_LIFETIME_BOUND
#define KELCL_LIFETIME_BOUND
#endif

#endif
