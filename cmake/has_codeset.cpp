// Whether a compiled locale is taken by the C library that programs of this build run with, and has the
// character set that was asked for. Usage: has_codeset DIRECTORY LOCALE CODESET
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <langinfo.h>

int main(int argc, char** argv) {
    if (argc != 4) return EXIT_FAILURE;
    char const* const directory = argv[1];
    char const* const locale = argv[2];
    char const* const wanted = argv[3];
    if (setenv("LOCPATH", directory, 1) != 0) return EXIT_FAILURE;
    char const* const codeset = std::setlocale(LC_ALL, locale) != nullptr ? nl_langinfo(CODESET) : "none";
    if (std::strcmp(codeset, wanted) == 0) return EXIT_SUCCESS;
    std::fprintf(stderr,
                 "Locale %s was not compiled: its character set is '%s', not '%s'. What localedef said is in "
                 "%s/%s.log.\nCheck that the locale sources are there (Debian: apt-get install --reinstall "
                 "locales).\n",
                 locale, codeset, wanted, directory, locale);
    return EXIT_FAILURE;
}
