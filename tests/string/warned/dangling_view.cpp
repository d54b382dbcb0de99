// Compilers that know how long an object must live warn where a part of a temporary is kept.
#include <kelcl/kelcl.h>

std::string_view dangle(DString const& text) {
    std::string_view const word = text.word(1);           // warned
    char const* const bytes = text.word(1).c_str();       // warned
    char const* const end = (text + "x").end();           // warned
    char const* const message = DBase::messageText(1011); // warned
    return bytes != end && bytes != message ? word : std::string_view();
}

std::string_view keep(DString const& text) {
    DString const word = text.word(1);
    std::string_view const view = word;
    return view.empty() ? view : std::string_view(text);
}
