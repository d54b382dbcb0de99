// Floating-point numbers from text. Here and not in the header, as <charconv> costs every program's compiler
// much.
#include <kelcl/detail/numbers.h>

#include <charconv>
#include <system_error>

namespace kelcl::detail {

namespace {

template <class Number>
bool readAll(std::string_view text, Number& number) {
    char const* const end = text.data() + text.size();
    auto const [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end;
}

} // namespace

bool readNumber(std::string_view text, float& number) { return readAll(text, number); }
bool readNumber(std::string_view text, double& number) { return readAll(text, number); }
bool readNumber(std::string_view text, long double& number) { return readAll(text, number); }

} // namespace kelcl::detail
