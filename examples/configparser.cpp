// Reads a file of settings, checks each of them, and says what is wrong in the user's language. It shows
// wildcard patterns, numbers from texts, and a message catalog of one's own; ./catalog has its texts.
//
//   configparser /etc/login.defs
//   LANG=de_DE.UTF-8 NLSPATH='catalog/%l/%N' ./configparser /etc/login.defs   in build/release/examples
#include <kelcl/kelcl.h>

#include <algorithm>
#include <clocale>
#include <exception>
#include <fstream>
#include <iostream>
#include <iterator>
#include <map>

namespace {

char const* const usage = "Usage: configparser FILE\n"
                          "Checks and prints the settings in FILE, which has the form of /etc/login.defs.\n";

/// The text of the catalog, or the English one if there is no catalog for the user's language, with `value`
/// for %1.
DString message(unsigned long id, char const* english, DString const& value) {
    return DString(DMessageText(id, "configparser.cat").setDefaultText(english)).change("%1", value);
}

// Kinds of values -------------------------------------------------------------------------------------

bool isNumber(DString const& value) { return kelcl::toNumber<unsigned long>(value).has_value(); }
bool isOctal(DString const& value) { return value.isLike("0*") && value.indexOfAnyBut("01234567") == 0; }
bool isYesOrNo(DString const& value) { return value == "yes" || value == "no"; }
bool isFile(DString const& value) { return kelcl::startsWith(value, "/"); }
bool isSearchPath(DString const& value) {
    auto const folders = kelcl::split(value.subString(6), ':');
    return value.isLike("PATH=*") && std::all_of(folders.begin(), folders.end(), isFile);
}
bool isWord(DString const& value) { return value.numWords() == 1; }

struct Kind {
    char const* names; ///< patterns of the settings that are of this kind
    bool (*isRight)(DString const& value);
    unsigned long message; ///< what to say of a wrong one
    char const* english;
};

Kind const kinds[] = {
    {"PASS_* *ID_* LOGIN_*", isNumber, 3, "'%1' is not a number"},
    {"UMASK TTYPERM *CHAR", isOctal, 4, "'%1' is not an octal number, which begins with 0"},
    {"*_ENAB LOG_* DEFAULT_HOME", isYesOrNo, 5, "'%1' is neither yes nor no"},
    {"*_DIR FTMP_FILE NONEXISTENT", isFile, 6, "'%1' is not the name of a file, which begins with /"},
    {"ENV_*PATH", isSearchPath, 7, "'%1' is not of the form PATH=/folder:/folder"},
    {"*_NAME HUSH*_FILE TTYGROUP CHFN_* *_METHOD PREVENT_*", isWord, 8, "'%1' is more than one word"},
};

bool isOfKind(DString const& name, Kind const& kind) {
    auto const patterns = kelcl::words(kind.names);
    return std::any_of(patterns.begin(), patterns.end(),
                       [&](std::string_view pattern) { return name.isLike(pattern); });
}

// Reading ---------------------------------------------------------------------------------------------

/// What is wrong with a setting; empty if nothing is.
DString problemOf(DString const& name, DString const& value) {
    if (value.isEmpty()) return message(1, "%1 has no value", name);
    auto const kind = std::find_if(std::begin(kinds), std::end(kinds),
                                   [&](Kind const& known) { return isOfKind(name, known); });
    if (kind == std::end(kinds)) return message(2, "there is no setting %1", name);
    return kind->isRight(value) ? "" : message(kind->message, kind->english, value);
}

/// Prints what is wrong, and then the settings that are not. Returns whether all are right.
/// @throws DAccessError when the file cannot be read.
bool check(char const* fileName) {
    std::ifstream file(fileName);
    if (!file) throw DAccessError(DCLibErrorInfo(fileName)); // with the text for errno
    file.exceptions(std::ios::badbit);                       // reading fails with an exception, too
    std::map<DString, DString> settings;
    unsigned int lines = 0;
    unsigned int problems = 0;
    for (DString const& line : kelcl::lines(file)) {
        ++lines;
        DString const name = line.word(1);
        if (name.isEmpty() || name.isLike("#*")) continue;
        DString const value = DString(line).removeWords(1).strip();
        DString const problem = problemOf(name, value);
        if (problem.isEmpty()) {
            settings[name] = value;
        } else {
            std::cout << fileName << ':' << lines << ": " << problem << '\n';
            ++problems;
        }
    }
    for (auto const& [name, value] : settings)
        std::cout << kelcl::leftJustifiedInColumns(name, 18) << value << '\n';
    return problems == 0;
}

} // namespace

int main(int argumentCount, char** arguments) {
    std::setlocale(LC_ALL, ""); // before the first string is made: the locale decides what a character is
    if (argumentCount != 2) {
        std::cerr << usage;
        return 2;
    }
    try {
        return check(arguments[1]) ? 0 : 1;
    } catch (DException const& failure) { // is no std::exception
        std::cerr << "configparser: " << DString(failure.text(0)) << '\n';
    } catch (std::exception const& failure) {
        std::cerr << "configparser: " << failure.what() << '\n';
    }
    return 2;
}
