// Converts records of fixed fields from the encoding of one locale to that of another. The fields of the
// input are counted in characters, those of the output in bytes, and no character is ever cut. It shows the
// conversions to and from wide characters, and exceptions that are told more on their way.
#include <kelcl/kelcl.h>

#include <algorithm>
#include <clocale>
#include <cstddef>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

namespace {

char const* const help =
    "Usage: recordconverter FROM TO FIELDS [FILE]\n"
    "Converts the records (lines) of FILE, or of standard input, from the encoding of the\n"
    "locale FROM to that of the locale TO.\n"
    "\n"
    "FIELDS is a list CHARACTERS:BYTES,...: how many characters each field has in the input,\n"
    "and how many bytes in the output. For equal numbers CHARACTERS alone is enough.\n"
    "A field is padded with blanks. If it is too long, characters at its end are left out.\n"
    "\n"
    "  recordconverter ja_JP.EUC-JP en_US.UTF-8 8:24,2,10 openings.txt\n"
    "\n"
    "A record that cannot be converted is reported with the number of its line and left out.\n"
    "'locale -a' lists the locales that are installed.\n"
    "Exit status: 0 when all is converted, 1 when characters or records were left out,\n"
    "2 when something failed.\n";

struct Field {
    unsigned int characters; ///< in the input
    unsigned int bytes;      ///< in the output
};

struct Task {
    DString from; ///< name of a locale
    DString to;
    std::vector<Field> fields;
    DString file; ///< "-" for standard input
};

/// Keeps the library from reporting: each failure is reported where it is caught, with the number of its
/// line.
class NoReports final : public DException::TraceFn {
public:
    TraceFn& logData(DException&) override { return *this; }
};

void tell(DString const& text) {
    std::cout.flush();
    std::cerr << "recordconverter: " << text << '\n';
}

// The command line ------------------------------------------------------------------------------------

/// @throws DInvalidParameter
[[noreturn]] void refuse(DString const& text) {
    throw DInvalidParameter((text + ". Try 'recordconverter --help'.").c_str());
}

/// Makes the characters of the C library, and with them those of DString, the ones of `locale`.
/// @throws DInvalidParameter when there is no such locale.
void enterLocale(DString const& locale) {
    if (std::setlocale(LC_CTYPE, locale.c_str()) == nullptr) {
        throw DInvalidParameter(
            ("there is no locale " + locale + ". 'locale -a' lists those that are installed.").c_str());
    }
}

unsigned int numberFrom(DString const& digits, DString const& field) {
    int const number = digits.isDigits() && digits.length() <= 4 ? std::atoi(digits.c_str()) : 0;
    if (number == 0) refuse("the field '" + field + "' is not of the form CHARACTERS:BYTES, from 1 to 9999");
    return static_cast<unsigned int>(number);
}

std::vector<Field> fieldsFrom(DString const& list) {
    std::vector<Field> fields;
    for (unsigned int start = 1, end = 0; start <= list.length() + 1; start = end + 1) {
        end = list.indexOf(',', start);
        if (end == 0) end = list.length() + 1;
        DString const field(list.data() + start - 1, end - start);
        unsigned int const colon = field.indexOf(':');
        DString const bytes = field.subString(colon + 1);
        DString const characters = colon == 0 ? bytes : field.subString(1, colon - 1);
        fields.push_back({numberFrom(characters, field), numberFrom(bytes, field)});
    }
    return fields;
}

Task taskFrom(std::vector<DString> const& words) {
    if (words.size() < 3 || words.size() > 4) refuse("three or four arguments are wanted");
    Task task{words[0], words[1], fieldsFrom(words[2]), words.size() == 4 ? words[3] : DString("-")};
    enterLocale(task.to);
    enterLocale(task.from);
    return task;
}

// Converting ------------------------------------------------------------------------------------------

/// The characters of a record in the encoding of `locale`.
/// @throws DInvalidRequest when there are bytes that are no character.
DWBuffer charactersOf(DString const& record, DString const& locale) {
    enterLocale(locale);
    try {
        return DWBuffer(record.data(), record.length());
    } catch (DInvalidRequest& failure) {
        failure.setText(("bytes that are no character of " + locale).c_str());
        throw;
    }
}

struct OutputField {
    std::string text;
    bool isWhole; ///< whether all characters are in it
};

/// The field with the characters in the encoding of the current locale.
/// @throws DInvalidRequest when the encoding does not have one of them.
OutputField outputField(wchar_t const* characters, unsigned int count, unsigned int bytes) {
    OutputField field{std::string(bytes, ' '), false};
    std::string all(count * MB_CUR_MAX, ' ');
    auto const room = static_cast<unsigned int>(all.size());
    field.isWhole = cvtWCS2MBS(characters, count, all.data(), room, 0, ' ') <= bytes;
    cvtWCS2MBS(characters, count, field.text.data(), bytes, 1, ' ');
    return field;
}

/// Appends the record in its new encoding to `converted`; false if characters were left out.
/// @throws DInvalidRequest when it cannot be converted.
bool convert(DString const& record, Task const& task, std::string& converted) {
    DWBuffer const characters = charactersOf(record, task.from);
    enterLocale(task.to);
    bool isWhole = true;
    unsigned int start = 0;
    for (std::size_t i = 0; i < task.fields.size(); ++i) {
        unsigned int const end = std::min(start + task.fields[i].characters, characters.length);
        unsigned int last = end; // past the last character that is not blank
        while (last > start && characters.wide[last - 1] == L' ')
            --last;
        try {
            OutputField const field =
                outputField(characters.wide + start, last - start, task.fields[i].bytes);
            converted += field.text;
            isWhole = isWhole && field.isWhole;
        } catch (DInvalidRequest& failure) {
            DString const number(static_cast<unsigned long>(i + 1));
            failure.setText(("field " + number + " has a character that is not in " + task.to).c_str());
            throw;
        }
        start = end;
    }
    if (start < characters.length) throw DInvalidRequest("more characters than the fields have");
    return isWhole;
}

/// Converts all records and returns whether nothing was left out.
/// @throws DAccessError when the file cannot be opened, read or written.
bool convertAll(std::istream& in, Task const& task) {
    bool isAllThere = true;
    unsigned int number = 0;
    while (in) {
        DString const record = DString::lineFrom(in);
        if (in.bad() || (in.eof() && record.isEmpty())) break;
        DString const place = "line " + DString(++number) + ": ";
        try {
            std::string converted;
            if (!convert(record, task, converted)) {
                tell(place + "characters that do not fit are left out");
                isAllThere = false;
            }
            std::cout << converted << '\n';
        } catch (DInvalidRequest const& failure) {
            tell(place + failure.text(0));
            isAllThere = false;
        }
    }
    return isAllThere;
}

bool run(Task const& task) {
    bool const isStandardInput = task.file == "-";
    std::ifstream file;
    if (!isStandardInput) file.open(task.file.c_str());
    std::istream& in = isStandardInput ? std::cin : file;
    bool const isOpen = isStandardInput || file.is_open();
    bool const isAllThere = isOpen && convertAll(in, task);
    if (!isOpen || in.bad() || !std::cout.flush())
        DCLibErrorInfo::throwCLibError(isOpen && !in.bad() ? "standard output" : task.file.c_str(),
                                       DEXCEPTION_LOCATION(), DBaseErrorInfo::accessError,
                                       DException::unrecoverable);
    return isAllThere;
}

} // namespace

int main(int argumentCount, char** arguments) {
    static NoReports noReports;
    DException::setTraceFunction(noReports);
    try {
        std::vector<DString> const words(arguments + std::min(1, argumentCount), arguments + argumentCount);
        if (words.size() == 1 && words.front() == "--help") {
            std::cout << help;
            return EXIT_SUCCESS;
        }
        return run(taskFrom(words)) ? EXIT_SUCCESS : 1;
    } catch (DException const& failure) {
        tell(failure.textCount() == 0 ? failure.name() : failure.text(0));
        return 2;
    }
}
