/// @file
/// The marks of what the shared library exports. Everything that does not carry one stays inside the library.
#ifndef KELCL_DEXPORT_H
#define KELCL_DEXPORT_H

/// Marks a class or function that the shared library exports.
#define KELCL_EXPORT __attribute__((visibility("default")))

/// Marks an inline member of an exported class that each program compiles for itself.
#define KELCL_LOCAL __attribute__((visibility("hidden")))

#endif
