// Texts of a calendar record that no locale has a say in. The rest is for strftime: formatting.h.
#ifndef KELCL_DATETIME_NUMBER_FORMAT_H
#define KELCL_DATETIME_NUMBER_FORMAT_H

#include <cstddef>
#include <ctime>

namespace kelcl {

/// Writes to `room` the text that `strftime` makes of the record, without a terminating NUL, and returns its
/// length. 0 where this is left to `strftime`: for a text that does not fit or is empty, and for a format
/// with any other conversion than those to the usual two- and four-digit numbers.
std::size_t formatNumbers(char* room, std::size_t size, char const* format, std::tm const& calendar);

} // namespace kelcl

#endif
