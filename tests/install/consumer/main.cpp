// A host program as a user would write it: it sees only what is installed. Prints nothing if all is well.
#include <kelcl/kelcl.h>

#include <cstdlib>
#include <iostream>

int main() {
    DString greeting("kelcl");
    greeting += " is installed";
    auto const [major, minor] = DBase::version();
    std::cout << greeting << ' ' << major << '.' << minor << '\n';
    return greeting.indexOf("installed") == 10 ? EXIT_SUCCESS : EXIT_FAILURE;
}
