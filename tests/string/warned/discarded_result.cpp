// Compilers warn where a call does nothing but give a result, and that is dropped.
#include <kelcl/kelcl.h>

void discard(DString const& text) {
    text.word(1);                            // warned
    text.subString(2);                       // warned
    text.isEmpty();                          // warned
    DString::change(text, "a", "b", 1, 1);   // warned
    kelcl::leftJustifiedInColumns(text, 10); // warned
    DDate::today().addMonths(1);             // warned
}

void use(DString& text) {
    text.strip().change("a", "b");
    static_cast<void>(text.word(1));
}
