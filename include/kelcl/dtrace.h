/// @file
/// DTrace, entry and exit lines of a program's functions, and DTraceSetup, which reads the trace variables.
/// Exceptions are reported another way, see dexception.h.
#ifndef KELCL_DTRACE_H
#define KELCL_DTRACE_H

#include <kelcl/dbase.h>
#include <kelcl/dexport.h>
#include <kelcl/dstring.h>

#include <cstdint>
#include <string_view>

class DTraceSetup;

/// Writes a line when it is made and one when it is destroyed, indented by the depth of the calls in between.
///
/// Put one at the top of a function, as a local variable; write() adds lines of free text.
///
/// Environment variables say whether, how and where lines are written. They are read on first use, each under
/// its name with a blank or, where that one does not exist, with an underscore; blanks around a value and its
/// case do not matter.
///
/// | variable           | values |
/// |--------------------|--------|
/// | `KORVA_TRACE`      | `ON`, or `NOPREFIX` for lines without sequence number, process id and thread |
/// | `KORVA_TRACETO`    | `STDERR`, `ERR`, `STDOUT`, `OUT`, `FILE`; see below |
/// | `KORVA_TRACEFILE`  | the file of `FILE`, opened under its name in upper case and appended to |
/// | `KORVA_CHECKSTACK` | `ON` or `TRUE` for a stack field in the prefix |
///
/// A destination turns tracing on by itself. One of more than two characters that the table does not have
/// is standard output; a shorter one is ignored.
///
/// With tracing off a DTrace costs one test of `iClState` where it is made and one where it is destroyed. No
/// failure to write is reported; only the making of a line can throw, as strings do. A line for a pipe or
/// terminal that nobody reads is dropped.
///
/// A program that runs with more rights than its caller, set-user-id for instance, reads none of the
/// variables.
///
/// Threads may trace at the same time: each text is written whole, and each line has a number of its own. All
/// state belongs to the process, the indentation too, so that of several threads it shows the sum of their
/// depths. Change it, or read the variables again, while no other thread traces.
///
/// @code
/// long total(DString const& account) {
///     DTrace trace("total", __LINE__);     // 00000000 004711:01 +total(2)
///     DTrace::write("account " + account); // 00000001 004711:01   >account 12
///     return 0;
/// } // 00000002 004711:01 -total
///
/// int main() {
///     setenv("KORVA_TRACE", "ON", 1);
///     total("12");
/// }
/// @endcode
class KELCL_EXPORT DTrace : public DVBase {
public:
    /// The state, as flags: 1 alone not set up yet, 2 tracing is on, 4 entry lines show the line number, 8
    /// lines have a prefix.
    static int iClState;

    /// Where lines are written: 0 and 2 standard output, 1 standard error, 3 the file; nowhere for any other
    /// value.
    static int iClTraceLocation;

    /// The indentation in blanks, by thread number. Only entry 1 is used: there is one thread number.
    static std::uint32_t uClIndent[256];

    /// The process id as last read.
    static unsigned long ulClProcessId;

    /// 1 if the prefix has the stack field. Once set it stays set.
    static std::uint32_t fCheckStack;

    /// The number of lines written so far, those without a destination included.
    static unsigned long ulSequence;

    /// Writes the entry line "+name(line)" if tracing is on; without the number if `line` is below 1.
    ///
    /// A null `name` writes nothing. The text is not copied and must outlive the object.
    /// @throws DInvalidRequest or DOutOfMemory, as making a string can.
    DTrace(char const* name, long line) : name_(mayBeOn() ? enter(name, line) : nullptr) {}

    /// Not copied: each object has one exit line.
    DTrace(DTrace const&) = delete;
    /// Not assigned: each object has one exit line.
    DTrace& operator=(DTrace const&) = delete;

    /// Writes the exit line "-name" if the entry line was written and tracing is still on.
    ///
    /// A line that cannot be made is left out: nothing is thrown.
    ~DTrace() override {
        if (mayBeOn()) leave(name_);
    }

    /// Writes the line ">text" at the current indentation if tracing is on.
    /// @throws DInvalidRequest or DOutOfMemory, as making a string can.
    static void write(DString const& text) {
        if (mayBeOn()) writeFree(text.c_str(), text.length());
    }

    /// Writes the line ">text" at the current indentation if tracing is on. Null counts as empty.
    ///
    /// With tracing off no string is made.
    /// @throws DInvalidRequest or DOutOfMemory, as making a string can.
    static void write(char const* text) {
        if (mayBeOn()) writeFree(text);
    }

    /// Reads the process id into `ulClProcessId` and returns 1: there is one trace thread number.
    static unsigned long threadId() noexcept;

    /// Always 0: the stack is not measured.
    static unsigned long remainingStack() noexcept;

    /// Writes `text` as one line, whether tracing is on or not: prefix, indentation, `marker`, text.
    ///
    /// Each line feed in `text` begins a line with the same lead. The indentation shrinks by 2 blanks before
    /// a marker that begins with '-' and grows by 2 after one that begins with '+'. A null marker counts as
    /// empty.
    /// @throws DInvalidRequest (message 1010, recoverable) if the line would be longer than a string can be.
    static void writeFormattedString(DString const& text, char const* marker);

    /// Writes `text`, up to its NUL and as it is, to where lines are written. Null writes nothing.
    static void writeString(char const* text);

private:
    friend class DTraceSetup;

    static constexpr int notSetUp = 1;
    static constexpr int tracingOn = 2;
    static constexpr int lineNumbers = 4;
    static constexpr int prefixed = 8;

    /// The flags, with what was set up before they were.
    KELCL_LOCAL static int state() noexcept { return __atomic_load_n(&iClState, __ATOMIC_ACQUIRE); }
    KELCL_LOCAL static bool mayBeOn() noexcept { return (state() & (notSetUp | tracingOn)) != 0; }

    // What is out of line takes the name, not the object, so that the object can live in registers.
    static char const* enter(char const* name, long line);
    static void leave(char const* name) noexcept;
    static void writeFree(char const* text);
    static void writeFree(char const* text, unsigned int length);
    static bool isOn();
    static void writeLines(std::string_view text, std::string_view suffix, std::string_view marker);

    char const* name_;
};

/// Reads the trace variables of the environment, which DTrace lists.
///
/// @code
/// setenv("KORVA_TRACE", "NOPREFIX", 1);
/// DTraceSetup::initialize();
/// DTrace::write("on"); // >on
/// setenv("KORVA_TRACE", "OFF", 1);
/// DTraceSetup::initialize();
/// DTrace::write("off");
/// @endcode
class KELCL_EXPORT DTraceSetup {
public:
    /// Reads the variables again, for a program that has changed them.
    ///
    /// Where lines are written stays as it was unless a destination of more than two characters is given;
    /// indentation, sequence number and stack field stay. Call it while no other thread traces.
    static void initialize();
};

#endif
