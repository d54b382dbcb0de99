// Compilers warn where a call does nothing but give a result, and that is dropped.
#include <kelcl/kelcl.h>

void discard(DString const& text) {
    text.word(1);                            // warned
    text.subString(2);                       // warned
    text.isEmpty();                          // warned
    DString::change(text, "a", "b", 1, 1);   // warned
    kelcl::leftJustifiedInColumns(text, 10); // warned
    kelcl::startsWith(text, "a");            // warned
    kelcl::toNumber<int>(text);              // warned
    DDate::today().addMonths(1);             // warned
    DDate::today();                          // warned
    DTime::now().asString();                 // warned
    DMessageText::replaceVars("", {}, 0);    // warned
}

void use(DString& text) {
    text.strip().change("a", "b");
    static_cast<void>(text.word(1));
}
