// The replacing of markers in message texts, beside a replacement that goes from byte to byte.
#include "fuzz/target.h"

#include <kelcl/dmessagetext.h>

#include <algorithm>
#include <array>
#include <memory>

namespace {

using std::string;

string replaced(string const& pattern, char const* const* values, unsigned long count) {
    string result;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        char const following = i + 1 < pattern.size() ? pattern[i + 1] : '\0';
        unsigned long const number =
            following >= '1' && following <= '9' ? static_cast<unsigned long>(following - '0') : 0;
        if (pattern[i] == '%' && following == '%') {
            result += "%%";
            ++i;
        } else if (pattern[i] == '%' && number != 0 && number <= count && values[number - 1] != nullptr) {
            result += values[number - 1];
            ++i;
        } else {
            result += pattern[i];
        }
    }
    return result;
}

} // namespace

int LLVMFuzzerInitialize(int*, char***) { return 0; }

int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    ByteChoices choices(data, size);
    unsigned long const count = choices.below(10);
    std::array<string, 9> texts;
    std::array<char const*, 9> values{};
    for (unsigned long i = 0; i < count; ++i) {
        bool const isNull = choices.oneIn(8);
        texts[i] = choices.characters(12);
        values[i] = isNull ? nullptr : texts[i].c_str();
    }
    string pattern;
    while (!choices.isAtEnd()) {
        static constexpr std::string_view signs = "%%%%0123456789ax\r\n";
        char const c =
            choices.oneIn(3) ? static_cast<char>(1 + choices.below(255)) : signs[choices.below(18)];
        pattern += c;
    }
    // Exactly as many values as are counted, for sanitizers to notice who reads further.
    std::unique_ptr<char const*[]> const exact(new char const*[count]);
    std::copy(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(count), exact.get());
    std::unique_ptr<char[]> const result(DMessageText::replaceVars(pattern.c_str(), exact.get(), count));
    fuzz::same("replaceVars", string(result.get()), replaced(pattern, values.data(), count), pattern, count);

    DMessageText fallback(1, nullptr);
    fallback.setDefaultText(pattern.c_str());
    fuzz::same("the default text", string(fallback.text()), pattern);
    return 0;
}
