// DString::isLike beside a matcher that tries every way.
#include "fuzz/target.h"
#include "tests/string/model.h"

#include <kelcl/dstring.h>

int LLVMFuzzerInitialize(int*, char***) { return 0; }

int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    ByteChoices choices(data, size);
    // Few different bytes make many partial matches.
    static constexpr char signs[] = {'*', '?', 'a', 'b', '\0', '\xFF', '\n', '['};
    bool const useAll = choices.oneIn(4);
    auto const sign = [&] {
        return useAll ? static_cast<char>(choices.below(256)) : signs[choices.below(8)];
    };
    char const anyString = choices.oneIn(4) ? sign() : '*';
    char const anyChar = choices.oneIn(4) ? sign() : '?';
    std::string pattern(choices.below(40), '\0');
    for (char& c : pattern)
        c = sign();
    std::string text;
    while (!choices.isAtEnd())
        text += sign();

    // A pattern that is the text itself matches, whatever its signs mean.
    bool const expected = text == pattern || model::isLike(text, pattern, anyString, anyChar);
    DString const string(text);
    fuzz::same("isLike", string.isLike(pattern, anyString, anyChar), expected, text, pattern, anyString,
               anyChar);
    // More of what stands for any run at the end never loses a match.
    if (expected && anyString != anyChar)
        fuzz::holds("isLike with a run after",
                    string.isLike(pattern + anyString, anyString, anyChar) ||
                        !model::isLike(text, pattern + anyString, anyString, anyChar),
                    text, pattern);
    return 0;
}
