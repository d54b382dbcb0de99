// The report of an exception, and the holder of the functions that write it.
#include "except/new_handler_suspension.h"
#include "except/text_chain.h"

#include <kelcl/dexception.h>

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>

namespace {

char const* orUnknown(char const* text) { return text != nullptr ? text : "Unknown"; }

DExceptionLocation const* latestLocation(DException const& exception) {
    return exception.locationAtIndex(exception.locationCount() - 1);
}

/// Visits the texts from the oldest, which stands last in the chain, to the newest, in blocks so that a chain
/// of any length needs neither memory nor recursion.
template <class Visit>
void visitOldestFirst(kelcl::DExcText const* newest, unsigned long count, Visit visit) {
    constexpr unsigned long blockSize = 512;
    char const* block[blockSize];
    for (unsigned long end = count; end > 0;) {
        unsigned long const begin = end > blockSize ? end - blockSize : 0;
        kelcl::DExcText const* node = newest;
        for (unsigned long i = 0; i < begin; ++i)
            node = node->next();
        for (unsigned long i = begin; i < end; ++i, node = node->next())
            block[i - begin] = node->text();
        for (unsigned long i = end - begin; i > 0; --i)
            visit(block[i - 1]);
        end = begin;
    }
}

/// Room for every line of the report: the fixed parts of the longest format and a number fit 128 bytes.
std::size_t lineSize(DException const& exception, kelcl::DExcText const* newest) {
    constexpr std::size_t fixedParts = 128;
    constexpr std::size_t least = 200;
    std::size_t longest = std::strlen(exception.name());
    if (DExceptionLocation const* const location = latestLocation(exception))
        longest += std::strlen(location->functionName()) + std::strlen(orUnknown(location->fileName()));
    if (exception.errorCodeGroup() != nullptr)
        longest = std::max(longest, std::strlen(exception.errorCodeGroup()));
    for (kelcl::DExcText const* node = newest; node != nullptr; node = node->next())
        longest = std::max(longest, std::strlen(node->text()));
    return std::max(longest + fixedParts, least) + 1;
}

/// Formats lines and passes them to the trace function that is current at each.
class ReportLines {
public:
    ReportLines(char* line, std::size_t size) : line_(line), size_(size) {}

    [[gnu::format(printf, 2, 3)]] void write(char const* format, ...) {
        std::va_list arguments;
        va_start(arguments, format);
        std::vsnprintf(line_, size_, format, arguments);
        va_end(arguments);
        DExceptStaticPtr::traceFunction()->write(line_);
    }

private:
    char* line_;
    std::size_t size_;
};

void report(DException const& exception, kelcl::DExcText const* newest, ReportLines lines) {
    if (DExceptionLocation const* const location = latestLocation(exception))
        lines.write("%s exception thrown.\n   function: %s\n   file: %s\n   line: %d", exception.name(),
                    location->functionName(), orUnknown(location->fileName()),
                    static_cast<int>(location->lineNumber()));
    else
        lines.write("\n%s exception thrown.\n   Location information is unavailable.", exception.name());

    if (exception.errorId() != 0)
        lines.write("   Error Id is %lu", exception.errorId());
    else
        lines.write("   Error Id is unavailable.");

    if (exception.errorCodeGroup() != nullptr)
        lines.write("   Error Code group is %s", exception.errorCodeGroup());
    else
        lines.write("    Error Code group is unavailable."); // four blanks: hosts compare the text

    lines.write("%s", newest == nullptr ? "   Exception text is unavailable." : "   Exception text is:");
    visitOldestFirst(newest, exception.textCount(), [&](char const* text) { lines.write("      %s", text); });
}

/// The report when there is no memory for a line. Its texts differ from those of the other in places: hosts
/// compare both.
void reportWithoutMemory(DException const& exception, kelcl::DExcText const* newest) {
    if (DExceptionLocation const* const location = latestLocation(exception))
        std::fprintf(stderr, "%s exception thrown.\n   function: %s\n   file: %s\n   line: %lu.\n",
                     exception.name(), location->functionName(), orUnknown(location->fileName()),
                     location->lineNumber());
    else
        std::fprintf(stderr, "\n%s exception thrown.\n   Location information is unavailable.\n",
                     exception.name());

    if (exception.errorId() != 0)
        std::fprintf(stderr, "   Error ID is %lu\n", exception.errorId());
    else
        std::fprintf(stderr, "   Error ID is unavailable.\n");

    if (exception.errorCodeGroup() != nullptr)
        std::fprintf(stderr, " Error Code group is %s\n", exception.errorCodeGroup());
    else
        std::fprintf(stderr, "   Error Code group is unavailable.\n");

    std::fputs(newest == nullptr ? "   Exception text is unavailable.\n" : "   Exception text is:\n", stderr);
    visitOldestFirst(newest, exception.textCount(),
                     [](char const* text) { std::fprintf(stderr, "      %s\n", text); });
}

} // namespace

void DException::TraceFn::write(char const* line) { std::fprintf(stderr, "%s\n", line); }

void DException::TraceFn::exceptionLogged() {}

DException::TraceFn& DException::TraceFn::logData(DException& exception) {
    kelcl::NewHandlerSuspension const suspension;
    std::size_t const size = lineSize(exception, exception.texts_);
    std::unique_ptr<char[]> line(new (std::nothrow) char[size]);
    if (line == nullptr) {
        reportWithoutMemory(exception, exception.texts_);
        return *this;
    }
    report(exception, exception.texts_, ReportLines(line.get(), size));
    line.reset();
    exceptionLogged();
    return *this;
}

void DException::setTraceFunction(TraceFn& function) noexcept {
    DExceptStaticPtr::traceFunction(); // fills in the default one
    DExceptStaticPtr::userFunction = &function;
}
