// Trace lines, beside a plain form of them: nested and unbalanced entries and exits, free texts, any settings
// of the environment.
#include "fuzz/target.h"

#include <kelcl/dtrace.h>

#include <algorithm>
#include <array>
#include <memory>
#include <sys/mman.h>
#include <unistd.h>
#include <vector>

namespace {

using std::string;

/// Standard output, which nothing else is written to, caught in memory.
class Output {
public:
    Output() : file_(memfd_create("output", 0)) {
        if (dup2(file_, STDOUT_FILENO) < 0) fuzz::fail("standard output cannot be caught");
    }
    string take() const {
        off_t const size = lseek(file_, 0, SEEK_CUR);
        string text(static_cast<std::size_t>(size), '\0');
        if (pread(file_, text.data(), text.size(), 0) != size || ftruncate(file_, 0) != 0 ||
            lseek(file_, 0, SEEK_SET) != 0)
            fuzz::fail("standard output cannot be read back");
        return text;
    }

private:
    int file_;
};

/// What the library's state should be.
struct Plain {
    bool isOn = false;
    bool hasPrefix = true;
    bool hasStackField = false;
    int location = 2;
    unsigned long sequence = 0;
    std::size_t indentation = 0;

    string digits(unsigned long number, std::size_t width) const {
        string const text = string(width, '0') + std::to_string(number);
        return text.substr(text.size() - width);
    }

    /// The lines of a text, as they should be written.
    string lines(string const& text, string const& marker) {
        bool const isExit = !marker.empty() && marker[0] == '-';
        if (isExit && indentation >= 2) indentation -= 2;
        string lead;
        if (hasPrefix) {
            lead = digits(sequence, 8) + ' ' + digits(static_cast<unsigned long>(getpid()), 6) + ":01 ";
            if (hasStackField) lead += " 0000000 ";
        }
        lead += string(indentation, ' ') + marker;
        string result = lead;
        for (char const c : text)
            result += c == '\n' ? '\n' + lead : string(1, c);
        result += '\n';
        ++sequence;
        if (!marker.empty() && marker[0] == '+') indentation += 2;
        // Written up to the first NUL.
        return location == 0 || location == 2 ? result.substr(0, result.find('\0')) : "";
    }

    static string normalized(string value) {
        auto const isBlank = [](char c) { return c == ' ' || (c >= '\t' && c <= '\r'); };
        while (!value.empty() && isBlank(value.front()))
            value.erase(0, 1);
        while (!value.empty() && isBlank(value.back()))
            value.pop_back();
        for (char& c : value)
            if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 32);
        return value;
    }

    void readSettings(string const& traceSwitch, string const& destination, string const& stack) {
        string const name = normalized(destination);
        isOn = normalized(traceSwitch) == "ON" || normalized(traceSwitch) == "NOPREFIX" || name.size() > 2;
        hasPrefix = normalized(traceSwitch) != "NOPREFIX";
        if (name.size() > 2)
            location = name == "STDERR" || name == "ERR"   ? 1
                       : name == "STDOUT" || name == "OUT" ? 2
                       : name == "FILE"                    ? 3
                                                           : 0;
        if (normalized(stack) == "ON" || normalized(stack) == "TRUE") hasStackField = true;
    }
};

class Run {
public:
    Run(ByteChoices& choices, Output const& output) : choices_(choices), output_(output) {
        DTrace::fCheckStack = 0;
        DTrace::ulSequence = choices.oneIn(4) ? plain_.sequence = choices.any() : 0;
        std::fill(std::begin(DTrace::uClIndent), std::end(DTrace::uClIndent), 0);
        DTrace::iClTraceLocation = 2;
        readSettings();
    }
    ~Run() {
        while (!open_.empty())
            leave();
    }

    void step() {
        switch (choices_.below(10)) {
        case 0:
            return readSettings();
        case 1:
        case 2:
        case 3:
            return enter();
        case 4:
        case 5:
            return leave();
        case 6:
            return writeFormatted();
        default:
            return write();
        }
    }

private:
    struct Open {
        std::unique_ptr<DTrace> trace;
        std::unique_ptr<string> name; // null when nothing was written
    };

    void readSettings() {
        static constexpr std::array<std::string_view, 8> switches = {"ON",  "on", " Noprefix\t", "NOPREFIX",
                                                                     "OFF", "",   "yes",         "\xE4"};
        static constexpr std::array<std::string_view, 10> destinations = {
            "", "", "stdout", "OUT ", "queue", "xx", "\vFILE", "printer", "\n", "..."};
        static constexpr std::array<std::string_view, 4> stacks = {"", "true", "ON", "1"};
        string const traceSwitch =
            choices_.oneIn(8) ? choices_.characters(10) : string(switches[choices_.below(8)]);
        string const destination(destinations[choices_.below(10)]);
        string const stack = choices_.oneIn(4) ? string(stacks[choices_.below(4)]) : "";
        setenv("KORVA TRACE", traceSwitch.c_str(), 1);
        setenv("KORVA_TRACE", "ON", 1); // which the one with a blank hides
        setenv("KORVA_TRACETO", destination.c_str(), 1);
        setenv("KORVA_CHECKSTACK", stack.c_str(), 1);
        plain_.readSettings(traceSwitch, destination, stack);
        DTraceSetup::initialize();
        compare("");
    }

    void enter() {
        auto name = std::make_unique<string>(choices_.characters(30));
        long const line =
            choices_.oneIn(3) ? static_cast<int>(choices_.any()) : static_cast<long>(choices_.below(100));
        string expected;
        if (plain_.isOn)
            expected = plain_.lines(*name + (line > 0 ? "(" + std::to_string(line) + ")" : ""), "+");
        auto trace = std::make_unique<DTrace>(name->c_str(), line);
        bool const isOn = plain_.isOn;
        open_.push_back({std::move(trace), isOn ? std::move(name) : nullptr});
        compare(expected);
    }

    void leave() {
        if (open_.empty()) return;
        Open last = std::move(open_.back());
        open_.pop_back();
        string const expected = plain_.isOn && last.name ? plain_.lines(*last.name, "-") : "";
        last.trace.reset();
        compare(expected);
    }

    void write() {
        // Long enough, now and then, for a line that does not fit a small room.
        string const text = choices_.text(choices_.oneIn(10) ? 800 : 30);
        if (choices_.oneIn(2)) {
            string const expected = plain_.isOn ? plain_.lines(text, ">") : "";
            DTrace::write(DString(text));
            compare(expected);
        } else {
            string const expected = plain_.isOn ? plain_.lines(text.c_str(), ">") : "";
            DTrace::write(text.c_str());
            compare(expected);
        }
    }

    void writeFormatted() {
        string const text = choices_.text(30);
        string const marker = choices_.oneIn(3) ? "-" : choices_.characters(4);
        string const expected = plain_.lines(text, marker);
        DTrace::writeFormattedString(DString(text), marker.c_str());
        compare(expected);
    }

    void compare(string const& expected) const {
        fuzz::same("the output", output_.take(), expected);
        fuzz::same("the sequence number", DTrace::ulSequence, plain_.sequence);
        fuzz::same("the indentation", std::size_t{DTrace::uClIndent[1]}, plain_.indentation);
    }

    ByteChoices& choices_;
    Output const& output_;
    Plain plain_;
    std::vector<Open> open_;
};

} // namespace

int LLVMFuzzerInitialize(int*, char***) { return 0; }

int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    static Output const output;
    ByteChoices choices(data, size);
    Run run(choices, output);
    while (!choices.isAtEnd())
        run.step();
    return 0;
}
