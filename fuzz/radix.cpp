// Conversions between bytes and hexadecimal, binary and decimal digits, with the national-language switch off
// and on, beside longhand arithmetic, and back again.
#include "fuzz/target.h"
#include "tests/string/model.h"

#include <kelcl/dstring.h>

#include <algorithm>
#include <array>

namespace {

using std::string;

using Conversion = DString& (DString::*)();

string converted(string const& text, Conversion conversion) {
    DString result(text);
    DString const copy(result);
    (result.*conversion)();
    fuzz::same("a copy", string(std::string_view(copy)), text);
    fuzz::same("the terminating NUL", result.c_str()[result.length()], '\0', text);
    return string(std::string_view(result));
}

void checkBytes(string const& bytes) {
    string const hexadecimal = converted(bytes, &DString::c2x);
    string const binary = converted(bytes, &DString::c2b);
    string const decimal = converted(bytes, &DString::c2d);
    fuzz::same("c2x", hexadecimal, model::c2x(bytes), bytes);
    fuzz::same("c2b", binary, model::bitsOf(bytes), bytes);
    fuzz::same("c2d", decimal, model::c2d(bytes), bytes);
    fuzz::same("x2c of c2x", converted(hexadecimal, &DString::x2c), bytes);
    fuzz::same("b2c of c2b", converted(binary, &DString::b2c), bytes);
    string const withoutZeros = bytes.substr(std::min(bytes.find_first_not_of('\0'), bytes.size()));
    string const back = withoutZeros.empty() && !bytes.empty() ? string(1, '\0') : withoutZeros;
    fuzz::same("d2c of c2d", converted(decimal, &DString::d2c), back, bytes);
}

/// Of anything else than digits the empty string.
void checkDigits(string const& digits) {
    fuzz::same("x2c", converted(digits, &DString::x2c), model::x2c(digits), digits);
    fuzz::same("b2c", converted(digits, &DString::b2c),
               model::consistsOf(digits, "01") ? model::ofBits(digits) : string(), digits);
    fuzz::same("d2c", converted(digits, &DString::d2c), model::d2c(digits), digits);
    fuzz::same("isBinaryDigits", DString(digits).isBinaryDigits(),
               !digits.empty() && model::consistsOf(digits, "01"), digits);
}

/// The steps of the conversions: number * 256 + byte over decimal digits, number * 10 + digit over bytes.
void checkSteps(string const& digits, string const& bytes, unsigned char byte) {
    if (model::consistsOf(digits, "0123456789")) {
        DString result(digits);
        result.decimalMath(byte);
        std::vector<unsigned int> number;
        for (char const c : digits)
            number.push_back(static_cast<unsigned int>(c - '0'));
        string expected;
        for (unsigned int const digit : model::step(number, 10, 256, byte))
            expected += static_cast<char>('0' + digit);
        std::string_view is = result;
        is.remove_prefix(std::min(is.find_first_not_of('0'), is.size()));
        expected.erase(0, expected.find_first_not_of('0'));
        fuzz::same("decimalMath", string(is), expected, digits, int{byte});
    }
    DString result(bytes);
    result.binaryMath(byte % 10);
    if (bytes.empty()) return; // has no place for the digit
    std::vector<unsigned int> number;
    for (char const c : bytes)
        number.push_back(static_cast<unsigned char>(c));
    number = model::step(number, 256, 10, byte % 10);
    string expected;
    for (unsigned int const digit : number)
        expected += static_cast<char>(digit);
    std::string_view is = result;
    while (is.size() > expected.size() && is.front() == '\0')
        is.remove_prefix(1);
    fuzz::same("binaryMath", string(is), expected, bytes, int{byte});
}

} // namespace

int LLVMFuzzerInitialize(int*, char***) { return 0; }

int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    static constexpr std::array<std::string_view, 4> alphabets = {
        "01", "0123456789", "0123456789abcdefABCDEF", "09afAFgG/:@`- \x80"};
    ByteChoices choices(data, size);
    DString::fgI18NState = static_cast<int>(choices.below(2));
    std::string_view const alphabet = alphabets[choices.below(4)];
    string digits(choices.below(200), '0');
    for (char& c : digits)
        c = alphabet[choices.below(static_cast<unsigned int>(alphabet.size()))];
    auto const byte = static_cast<unsigned char>(choices.below(256));
    string bytes(choices.below(12), '\0');
    bytes += choices.text(200);

    checkBytes(bytes);
    checkDigits(digits);
    checkSteps(digits, bytes, byte);
    return 0;
}
