// Shows the bytes of a file in hexadecimal, makes the file of such a text again, and converts numbers of any
// size. It shows c2x, x2c, c2d and d2c, and bytes that are not text.
//
//   hexconverter /usr/share/zoneinfo/UTC | hexconverter --back - | cmp - /usr/share/zoneinfo/UTC
#include <kelcl/kelcl.h>

#include <algorithm>
#include <clocale>
#include <exception>
#include <fstream>
#include <iostream>
#include <iterator>

namespace {

char const* const usage = "Usage: hexconverter FILE          the bytes of FILE, sixteen to a line\n"
                          "       hexconverter --back FILE   the bytes of which FILE is such a text\n"
                          "       hexconverter NUMBER        123 as 0x7B, 0x7B as 123\n"
                          "FILE is - for standard input.\n";

// Offset, bytes, characters: "00000000  4C 69 6E ... 65  Line"
unsigned int const bytesPerLine = 16;
unsigned int const firstDigit = 11;

void printLine(std::size_t offset, std::string_view bytes) {
    DString digits;
    DString characters;
    for (char const byte : bytes) {
        digits += DString(byte).c2x() + ' ';
        characters += ' ' <= byte && byte <= '~' ? byte : '.';
    }
    std::cout << DString(offset).d2c().c2x().rightJustify(8, '0') << "  "
              << digits.leftJustify(3 * bytesPerLine) << ' ' << characters << '\n';
}

void print(std::istream& in) {
    char bytes[bytesPerLine];
    for (std::size_t offset = 0; in.read(bytes, sizeof bytes) || in.gcount() > 0; offset += bytesPerLine)
        printLine(offset, DString(bytes, bytes + in.gcount()));
}

/// @throws DInvalidParameter when a line has something else than hexadecimal digits.
void printBack(std::istream& in) {
    for (DString const& line : kelcl::lines(in)) {
        DString const digits = line.subString(firstDigit, 3 * bytesPerLine).space(0);
        DString const bytes = DString(digits).x2c();
        if (bytes.isEmpty()) throw DInvalidParameter("a line has no bytes in hexadecimal");
        std::cout.write(bytes.data(), bytes.length()); // << would end at the first NUL
    }
}

/// The number in the other notation; empty if the text is no number.
DString converted(DString const& number) {
    if (number.isLike("0x*")) return number.subString(3).x2c().c2d();
    DString const digits = DString(number).d2c().c2x();
    return digits.isEmpty() ? digits : "0x" + digits;
}

void run(DString const& option, char const* fileName) {
    std::ifstream file;
    bool const isStandardInput = DString(fileName) == "-";
    if (!isStandardInput) file.open(fileName);
    if (!file) throw DAccessError(DCLibErrorInfo(fileName)); // with the text for errno
    file.exceptions(std::ios::badbit);                       // reading fails with an exception, too
    std::istream& in = isStandardInput ? std::cin : file;
    if (option == "--back")
        printBack(in);
    else
        print(in);
}

} // namespace

int main(int argumentCount, char** arguments) {
    std::setlocale(LC_ALL, ""); // before the first string is made: the locale decides what a character is
    if (argumentCount < 2 || argumentCount > 3 || (argumentCount == 3 && DString(arguments[1]) != "--back")) {
        std::cerr << usage;
        return 2;
    }
    try {
        DString const number = converted(arguments[1]);
        if (number.isEmpty())
            run(arguments[1], arguments[argumentCount - 1]);
        else
            std::cout << number << '\n';
        return 0;
    } catch (DException const& failure) { // is no std::exception
        std::cerr << "hexconverter: " << DString(failure.text(0)) << '\n';
    } catch (std::exception const& failure) {
        std::cerr << "hexconverter: " << failure.what() << '\n';
    }
    return 2;
}
