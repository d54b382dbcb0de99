// Fails unless the library works and finds its catalog.
#include <kelcl/kelcl.h>

#include <iostream>

int main() {
    DMessageText const text = DBase::messageText(1011);
    std::cout << DString("kelcl").upperCase() << ": " << text.text() << '\n';
    return text.isLoaded() ? 0 : 1;
}
