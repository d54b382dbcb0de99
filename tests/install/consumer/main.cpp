// A host program as a user would write it: it sees only what is installed. Prints a text of the message
// catalog, and fails if the library does not do what it should or the catalog was not found.
#include <kelcl/kelcl.h>

#include <cstdlib>
#include <iostream>

int main() {
    DString greeting("kelcl");
    greeting += " is installed";
    auto const [version, revision] = DBase::version();
    if (greeting.indexOf("installed") != 10 || version != 310 || revision != 1) return EXIT_FAILURE;

    DMessageText const text = DBase::messageText(1011);
    std::cout << text.text() << '\n';
    return text.isLoaded() ? EXIT_SUCCESS : EXIT_FAILURE;
}
