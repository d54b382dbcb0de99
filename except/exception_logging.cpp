// The report of an exception. The holder of the functions that write it is set up in base/start_up.cpp.
#include "except/cancellation.h"
#include "except/new_handler_suspension.h"
#include "except/text_chain.h"
#include "except/text_copy.h"

#include <kelcl/dexception.h>

#include <algorithm>
#include <atomic>
#include <charconv>
#include <cstdio>
#include <initializer_list>
#include <string_view>

namespace {

/// A number in decimal digits.
class Digits {
public:
    template <class Number>
    explicit Digits(Number number) : end_(std::to_chars(digits_, digits_ + sizeof digits_, number).ptr) {}
    operator std::string_view() const { return {digits_, static_cast<std::size_t>(end_ - digits_)}; }

private:
    char digits_[24];
    char* end_;
};

/// What there is to report. It owns its share of the texts, so that whatever a trace function does with the
/// exception in the meantime, the report stays whole.
struct Report {
    Report(DException const& exception, kelcl::DExcText* chain)
        : name(orUnknown(exception.name())), errorId(exception.errorId()), group(exception.errorCodeGroup()),
          textCount(exception.textCount()), texts(kelcl::DExcText::share(chain)) {
        DExceptionLocation const* const latest = exception.locationAtIndex(exception.locationCount() - 1);
        if (latest == nullptr) return;
        hasLocation = true;
        function = latest->functionName();
        file = orUnknown(latest->fileName());
        line = latest->lineNumber();
    }

    static char const* orUnknown(char const* text) { return text != nullptr ? text : "Unknown"; }

    char const* name;
    bool hasLocation = false;
    char const* function = nullptr;
    char const* file = nullptr;
    unsigned long line = 0;
    unsigned long errorId;
    char const* group;
    unsigned long textCount;
    kelcl::DExcText::Owner texts;
};

using Pieces = std::initializer_list<std::string_view>;

/// Passes each line of the report to `visit` as the pieces it consists of.
template <class Visit>
void visitLines(Report const& report, Visit const& visit) {
    if (report.hasLocation)
        visit({report.name, " exception thrown.\n   function: ", report.function, "\n   file: ", report.file,
               "\n   line: ", Digits(static_cast<int>(report.line))});
    else
        visit({"\n", report.name, " exception thrown.\n   Location information is unavailable."});

    if (report.errorId != 0)
        visit({"   Error Id is ", Digits(report.errorId)});
    else
        visit({"   Error Id is unavailable."});

    if (report.group != nullptr)
        visit({"   Error Code group is ", report.group});
    else
        visit({"    Error Code group is unavailable."}); // four blanks: hosts compare the text

    if (report.textCount == 0)
        visit({"   Exception text is unavailable."});
    else
        visit({"   Exception text is:"});
    kelcl::visitOldestFirst(report.texts.get(), report.textCount, [&](char const* text) {
        visit({"      ", text});
    });
}

/// The length of the longest line, but enough for an ordinary report in any case.
std::size_t longestLine(Report const& report) {
    std::size_t longest = 200;
    visitLines(report, [&](Pieces pieces) {
        std::size_t length = 0;
        for (std::string_view const piece : pieces)
            length += piece.size();
        longest = std::max(longest, length);
    });
    return longest;
}

/// Passes each line to the trace function that is the current one at that moment.
void writeLines(Report const& report, char* line) {
    visitLines(report, [&](Pieces pieces) {
        char* end = line;
        for (std::string_view const piece : pieces)
            end = std::copy(piece.begin(), piece.end(), end);
        *end = '\0';
        DExceptStaticPtr::traceFunction()->write(line);
    });
}

/// The report when there is no memory for a line. It differs from the other one in places: hosts compare
/// both.
void writeWithoutMemory(Report const& report) {
    if (report.hasLocation)
        std::fprintf(stderr, "%s exception thrown.\n   function: %s\n   file: %s\n   line: %lu.\n",
                     report.name, report.function, report.file, report.line);
    else
        std::fprintf(stderr, "\n%s exception thrown.\n   Location information is unavailable.\n",
                     report.name);

    if (report.errorId != 0)
        std::fprintf(stderr, "   Error ID is %lu\n", report.errorId);
    else
        std::fputs("   Error ID is unavailable.\n", stderr);

    if (report.group != nullptr)
        std::fprintf(stderr, " Error Code group is %s\n", report.group);
    else
        std::fputs("   Error Code group is unavailable.\n", stderr);

    std::fputs(report.textCount == 0 ? "   Exception text is unavailable.\n" : "   Exception text is:\n",
               stderr);
    kelcl::visitOldestFirst(report.texts.get(), report.textCount,
                            [](char const* text) { std::fprintf(stderr, "      %s\n", text); });
}

} // namespace

void DException::TraceFn::write(char const* line) {
    std::fprintf(stderr, "%s\n", line != nullptr ? line : "");
}

void DException::TraceFn::exceptionLogged() {}

DException::TraceFn& DException::TraceFn::logData(DException& exception) {
    kelcl::CancellationDeferral const deferral;
    kelcl::NewHandlerSuspension const suspension;
    Report const report(exception, exception.texts_);
    kelcl::OwnedText line = kelcl::roomForText(longestLine(report) + 1);
    if (line == nullptr) {
        writeWithoutMemory(report);
        return *this;
    }
    writeLines(report, line.get());
    line = nullptr;
    exceptionLogged();
    return *this;
}
