// The exception model: source locations, the exception classes, and the trace functions that report an
// exception before it is thrown. The throw helpers are in derrorinfo.h, the catalog texts in dmessagetext.h.
#ifndef KELCL_DEXCEPTION_H
#define KELCL_DEXCEPTION_H

#include <kelcl/dexport.h>

namespace kelcl {
class DExcText;
}

/// One source position. A plain value: the two names are neither copied nor owned, so pass string literals or
/// other texts that outlive every exception that carries the location.
class KELCL_EXPORT DExceptionLocation {
public:
    /// No position: null names, line 0.
    constexpr DExceptionLocation() noexcept = default;

    /// Stores both pointers (either may be null) and the line number unchanged.
    constexpr DExceptionLocation(char const* fileName, char const* functionName,
                                 unsigned long lineNumber) noexcept
        : fileName_(fileName), functionName_(functionName), lineNumber_(lineNumber) {}

    /// The file name as given; may be null.
    constexpr char const* fileName() const noexcept { return fileName_; }

    /// The function name as given, or "Unknown" when it is null; never null.
    constexpr char const* functionName() const noexcept {
        return functionName_ != nullptr ? functionName_ : "Unknown";
    }

    /// The line number as given.
    constexpr unsigned long lineNumber() const noexcept { return lineNumber_; }

private:
    char const* fileName_ = nullptr;
    char const* functionName_ = nullptr;
    unsigned long lineNumber_ = 0;
};

/// The location (file, function and line) of the place where the macro stands.
#define DEXCEPTION_LOCATION()                                                                                \
    DExceptionLocation(__FILE__, static_cast<char const*>(__func__), static_cast<unsigned long>(__LINE__))

/// Root of everything that the library throws. An exception carries a stack of texts (newest first), up to
/// five source locations, an error id, an error-code group and a severity. It is thrown by value; catch it by
/// reference:
///
/// @code
/// try {
///     throw DAccessError("no such file", 2, DException::recoverable);
/// } catch (DException& exception) {
///     exception.setText("the letter is lost").addLocation(DEXCEPTION_LOCATION());
///     if (!exception.isRecoverable()) exception.terminate();
///     std::cout << exception.name() << ' ' << exception.errorId() << '\n'; // DAccessError 2
///     std::cout << exception.text(0) << '\n'; // the letter is lost
///     std::cout << exception.text(1) << '\n'; // no such file
/// }
/// @endcode
///
/// No operation of this class throws (assertParameter() apart). A text that cannot be stored for want of
/// memory is left out, and the process's new-handler is not called while a text is being stored.
///
/// An exception object is for one thread at a time.
class KELCL_EXPORT DException {
public:
    /// Whether the program may go on. Every nonzero value counts as recoverable.
    enum Severity : unsigned int { unrecoverable = 0, recoverable = 1 };

    class TraceFn;

    /// Error-code groups: the layer that an error comes from.
    ///@{
    static char const* const baseLibrary;        ///< "Kel Class Library", the group of a new exception
    static char const* const CLibrary;           ///< "Standard C Library"
    static char const* const operatingSystem;    ///< "Operating System"
    static char const* const presentationSystem; ///< "Presentation System"
    static char const* const other;              ///< "Other Error Group"
    ///@}

    /// An exception with a private copy of \p text as its only text (null: no text), no location and the
    /// group #baseLibrary.
    explicit DException(char const* text, unsigned long errorId = 0,
                        Severity severity = unrecoverable) noexcept;

    /// Copies everything. The texts become independent copies; the names in the locations and the group are
    /// shared, never copied. When memory runs out, the copy shares the texts that could not be copied with \p
    /// source, or has no texts at all (textCount() 0) when not even its first one can be made.
    DException(DException const& source) noexcept;

    /// Gives this exception what a copy of \p source has. Assign only exceptions of one class to each other:
    /// the class itself, and with it name(), cannot change.
    DException& operator=(DException const& source) noexcept;

    virtual ~DException();

    /// True when the severity is nonzero.
    virtual bool isRecoverable() const;

    /// Stores a copy of \p location behind the ones already there. The sixth and every later one replaces the
    /// fifth, so the first four are kept for good and the fifth is always the latest.
    virtual DException& addLocation(DExceptionLocation const& location);

    /// The name of the class, "DException" here.
    virtual char const* name() const;

    /// Reports the exception through the current trace function (see TraceFn::logData). Throws nothing by
    /// itself; what a trace function of the host throws passes through.
    virtual DException& logExceptionData();

    /// Ends the program through std::terminate().
    virtual void terminate();

    /// Puts a copy of \p text in front of the texts, so that it becomes text(0). Null, or a copy that cannot
    /// be allocated, changes nothing.
    DException& setText(char const* text) noexcept;

    /// Appends \p text to text(0), or does what setText() does when there is no text yet. Null, or a text
    /// that cannot be allocated, changes nothing.
    DException& appendText(char const* text) noexcept;

    /// The text at \p index, 0 being the newest; null when \p index >= textCount(). It belongs to the
    /// exception and is valid until that text is appended to or the exception goes.
    char const* text(unsigned long index) const noexcept;

    /// The number of texts.
    unsigned long textCount() const noexcept { return textCount_; }

    /// The location at \p index, 0 being the first one added; null when \p index >= locationCount(). It
    /// belongs to the exception.
    DExceptionLocation const* locationAtIndex(unsigned long index) const noexcept;

    /// The number of locations, 0 to 5.
    unsigned long locationCount() const noexcept { return locationCount_; }

    /// The message number or system error number; 0 when there is none.
    unsigned long errorId() const noexcept { return errorId_; }

    /// Sets the error id.
    DException& setErrorId(unsigned long errorId) noexcept;

    /// The error-code group; may be null.
    char const* errorCodeGroup() const noexcept { return errorCodeGroup_; }

    /// Stores the pointer, null included. The caller keeps the text alive.
    DException& setErrorCodeGroup(char const* errorCodeGroup) noexcept;

    /// Sets the severity.
    DException& setSeverity(Severity severity) noexcept;

    /// Logs and throws a DAssertionFailure with \p text, error id 0, unrecoverable, at \p location, in the
    /// group #other.
    [[noreturn]] static void assertParameter(char const* text, DExceptionLocation location);

    /// Makes \p function the trace function for the rest of the process, or until another one is set. Only
    /// its address is kept: it must live as long as exceptions may be thrown. Meant for start-up, before
    /// other threads throw.
    static void setTraceFunction(TraceFn& function) noexcept;

private:
    static constexpr unsigned long maxLocations = 5;

    Severity severity_;
    unsigned long errorId_;
    DExceptionLocation locations_[maxLocations];
    unsigned long locationCount_ = 0;
    unsigned long textCount_ = 0;
    kelcl::DExcText* texts_ = nullptr;
    char const* errorCodeGroup_ = baseLibrary;
};

/// What reports exceptions. Derive from it, override what should differ, and install the object with
/// DException::setTraceFunction():
///
/// @code
/// class Counter final : public DException::TraceFn {
/// public:
///     void write(char const*) override { ++lines; }
///     void exceptionLogged() override { ++reports; }
///
///     int lines = 0;
///     int reports = 0;
/// };
/// static Counter counter;
/// DException::setTraceFunction(counter);
/// DException("an example").logExceptionData();
/// std::cout << counter.reports << " report in " << counter.lines << " calls\n"; // 1 report in 5 calls
/// @endcode
class KELCL_EXPORT DException::TraceFn {
public:
    TraceFn() = default;

    /// Outputs one line of a report (a few contain line feeds), given without its final line feed: here to
    /// standard error, followed by a line feed. Null counts as empty.
    virtual void write(char const* line);

    /// Reports \p exception: its latest location, its error id, its group, and its texts from the oldest to
    /// the newest.
    ///
    /// Each line goes to write() of the trace function that is current at that moment, which need not be this
    /// object; exceptionLogged() of this object follows. Nothing is cut, and a null name or file name is
    /// shown as "Unknown". While it runs, the process's new-handler is taken out. When there is no memory for
    /// the line buffer, the report goes straight to standard error and exceptionLogged() is not called.
    /// Throws only what write() or exceptionLogged() throws.
    virtual TraceFn& logData(DException& exception);

    /// Called once after each complete report; does nothing here.
    virtual void exceptionLogged();

protected:
    ~TraceFn() = default;
};

// No trace function has a destructor in its virtual table, which is that of hosts compiled long ago; none is
// destroyed through a pointer to its base either.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

/// The trace function that is taken when the host installed none: reports to standard error.
class KELCL_EXPORT DExceptTraceFn : public DException::TraceFn {};

/// Holds the process's trace functions. Both pointers are null after load; neither owns.
class KELCL_EXPORT DExceptStaticPtr {
public:
    DExceptStaticPtr() = delete;

    /// The current trace function, never null: #userFunction when set, else #defaultFunction, which is set on
    /// first use.
    static DException::TraceFn* traceFunction() noexcept;

    static DException::TraceFn* defaultFunction; ///< null until first use
    static DException::TraceFn* userFunction;    ///< null until DException::setTraceFunction()
};

/// Out-of-memory set-up: an object of this class registers itself as the trace function (reports to standard
/// error) and installs newHandler() as the process's new-handler. The library makes one when it is loaded, of
/// which the new-handler stays. One that a host makes must live as long as exceptions may be thrown: its
/// destructor undoes nothing.
class KELCL_EXPORT DKORVA_Init : public DException::TraceFn {
public:
    DKORVA_Init();
    ~DKORVA_Init() = default;
    DKORVA_Init(DKORVA_Init const&) = delete;
    DKORVA_Init& operator=(DKORVA_Init const&) = delete;

    void write(char const* line) override;

    /// Logs and throws a DOutOfMemory with message 4 of the library's catalog, error id 4, unrecoverable.
    [[noreturn]] static void newHandler();
};

#pragma GCC diagnostic pop

/// Something may not be accessed.
class KELCL_EXPORT DAccessError : public DException {
public:
    using DException::DException;
    char const* name() const override; ///< "DAccessError"
};

/// Something that the code relies on does not hold.
class KELCL_EXPORT DAssertionFailure : public DException {
public:
    using DException::DException;
    char const* name() const override; ///< "DAssertionFailure"
};

/// A device failed.
class KELCL_EXPORT DDeviceError : public DException {
public:
    using DException::DException;
    char const* name() const override; ///< "DDeviceError"
};

/// An argument has a value that is never valid.
class KELCL_EXPORT DInvalidParameter : public DException {
public:
    using DException::DException;
    char const* name() const override; ///< "DInvalidParameter"
};

/// The object cannot do what it is asked for in its present state.
class KELCL_EXPORT DInvalidRequest : public DException {
public:
    using DException::DException;
    char const* name() const override; ///< "DInvalidRequest"
};

/// A resource ran out; base of the three kinds below.
class KELCL_EXPORT DResourceExhausted : public DException {
public:
    using DException::DException;
    char const* name() const override; ///< "DResourceExhausted"
};

/// Memory ran out.
class KELCL_EXPORT DOutOfMemory : public DResourceExhausted {
public:
    using DResourceExhausted::DResourceExhausted;
    char const* name() const override; ///< "DOutOfMemory"
};

/// A resource of the operating system ran out.
class KELCL_EXPORT DOutOfSystemResource : public DResourceExhausted {
public:
    using DResourceExhausted::DResourceExhausted;
    char const* name() const override; ///< "DOutOfSystemResource"
};

/// A resource of the presentation system ran out.
class KELCL_EXPORT DOutOfWindowResource : public DResourceExhausted {
public:
    using DResourceExhausted::DResourceExhausted;
    char const* name() const override; ///< "DOutOfWindowResource"
};

#endif
