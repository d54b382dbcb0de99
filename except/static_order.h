// When the library's static objects are made in a program that it is linked into as an archive.
#ifndef KELCL_EXCEPT_STATIC_ORDER_H
#define KELCL_EXCEPT_STATIC_ORDER_H

/// Marks a static object that is made before those of the host, as everything of a shared library is. Among
/// themselves those of one source keep their order.
#define KELCL_BEFORE_HOSTS __attribute__((init_priority(101)))

#endif
