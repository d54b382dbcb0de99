// Marks what the shared library exports. Everything that does not carry the mark stays inside the library.
#ifndef KELCL_DEXPORT_H
#define KELCL_DEXPORT_H

#define KELCL_EXPORT __attribute__((visibility("default")))
/// Marks inline members that each program has for itself.
#define KELCL_LOCAL __attribute__((visibility("hidden")))

#endif
