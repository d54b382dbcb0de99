// The main function of the test programs: takes the locale that the environment asks for, as a host program
// does, before any test runs. What the tests check is not here.
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <iostream>

#include <gmock/gmock.h>

namespace {

// A locale that is silently missing would turn every multi-byte test into a test of the C locale.
bool takeLocale() {
    char const* const taken = std::setlocale(LC_ALL, "");
    char const* const wanted = std::getenv("KELCL_TEST_LOCALE");
    if (taken != nullptr && (wanted == nullptr || std::strcmp(taken, wanted) == 0)) return true;
    std::cerr << "The locale was not taken: wanted "
              << (wanted == nullptr ? "that of the environment" : wanted) << ", have "
              << (taken == nullptr ? "none" : taken)
              << ".\nStart the tests with ctest or ./dev test, which compile the locales and set LOCPATH.\n";
    return false;
}

} // namespace

int main(int argc, char** argv) {
    ::testing::InitGoogleMock(&argc, argv);
    if (!takeLocale()) return EXIT_FAILURE;
    return RUN_ALL_TESTS();
}
