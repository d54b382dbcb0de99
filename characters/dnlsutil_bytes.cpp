// The national-language functions that test raw bytes, whatever the encoding.
#include "bytes/byte_search.h"
#include "bytes/digits.h"

#include <kelcl/dnlsutil.h>

#include <cstddef>

int isAllDigits(char const* s, unsigned int n) { return n == 0 || kelcl::isDecimalDigits({s, n}) ? 1 : 0; }
int isAllHexDigits(char const* s, unsigned int n) { return n == 0 || kelcl::isHexDigits({s, n}) ? 1 : 0; }

unsigned int indexThatIsNot(char const* s, unsigned int n, char c) {
    std::size_t const found = n == 0 ? kelcl::notFound : kelcl::findByteOtherThan({s, n}, c);
    return found == kelcl::notFound ? 0 : static_cast<unsigned int>(found) + 1;
}
