// Clears the holder of trace functions when the library starts: nobody is registered.
#ifndef KELCL_EXCEPT_TRACE_FUNCTIONS_H
#define KELCL_EXCEPT_TRACE_FUNCTIONS_H

namespace kelcl {

/// Clears the holder of trace functions when it is made. There is one, a static object of the start-up unit,
/// as its turn among the others there matters.
class TraceFunctions {
public:
    TraceFunctions();
};

} // namespace kelcl

#endif
