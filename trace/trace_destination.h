// Where finished trace lines go.
#ifndef KELCL_TRACE_TRACE_DESTINATION_H
#define KELCL_TRACE_TRACE_DESTINATION_H

#include <kelcl/dstring.h>

#include <optional>

namespace kelcl {

/// Where lines go at the moment it is made. Making it is what may throw, as strings do; sending does not.
class TraceDestination {
public:
    TraceDestination();

    /// Writes a whole text at once, so that the lines of several threads do not mix, and leaves `errno` as it
    /// was. A line that cannot be written is dropped.
    void send(char const* text) const noexcept;

private:
    int code_;
    std::optional<DString> file_;
};

} // namespace kelcl

#endif
