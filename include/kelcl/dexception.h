// The exception model: locations, DException and its subclasses, and the hook that logs an exception before
// it is thrown. Throw helpers and error-information classes are in derrorinfo.h, message texts in
// dmessagetext.h.
#ifndef KELCL_DEXCEPTION_H
#define KELCL_DEXCEPTION_H

#include <kelcl/dexport.h>

class DExcText;

/// A place in a source file. The texts are not copied: callers pass string literals.
class KELCL_EXPORT DExceptionLocation {
public:
    DExceptionLocation() noexcept : DExceptionLocation(nullptr, nullptr, 0) {}
    /// Either text may be null.
    DExceptionLocation(char const* fileName, char const* functionName, unsigned long lineNumber) noexcept
        : fileName_(fileName), functionName_(functionName), lineNumber_(lineNumber) {}

    /// As given, so possibly null.
    char const* fileName() const noexcept { return fileName_; }
    /// "Unknown" where none was given.
    char const* functionName() const noexcept { return functionName_ != nullptr ? functionName_ : "Unknown"; }
    unsigned long lineNumber() const noexcept { return lineNumber_; }

private:
    char const* fileName_;
    char const* functionName_;
    unsigned long lineNumber_;
};

/// The place where the macro stands.
#define DEXCEPTION_LOCATION() (DExceptionLocation(__FILE__, __func__, static_cast<unsigned long>(__LINE__)))

/// The root of all exceptions of the library: thrown by value, logged before they are thrown.
///
/// An exception carries a stack of texts, the newest at index 0, up to five locations, an error id, a static
/// text that names the group of the error, and a severity. Nothing here throws: a text for which there is no
/// memory is left out. An exception object belongs to one thread.
///
/// @code
/// try {
///     DString("abc")[9u];
/// } catch (DException& exception) {
///     exception.addLocation(DEXCEPTION_LOCATION()).setText("while reading the header");
///     throw;
/// }
/// @endcode
class KELCL_EXPORT DException {
public:
    /// Whether the program may go on. Every nonzero value counts as recoverable.
    enum Severity : unsigned int { unrecoverable = 0, recoverable = 1 };

    class TraceFn;

    /// Error-code groups: which layer an error came from.
    static char const* const baseLibrary;        ///< "Kel Class Library"
    static char const* const CLibrary;           ///< "Standard C Library"
    static char const* const operatingSystem;    ///< "Operating System"
    static char const* const presentationSystem; ///< "Presentation System"
    static char const* const other;              ///< "Other Error Group"

    /// An exception with a copy of `text` (null: no text), no location, and the group `baseLibrary`.
    DException(char const* text, unsigned long errorId = 0, Severity severity = unrecoverable);
    /// Copies everything; texts are independent of those of `source` afterwards.
    DException(DException const& source);
    DException& operator=(DException const& source);
    virtual ~DException();

    virtual bool isRecoverable() const;
    /// Adds a location behind the others. When there are five the last one is replaced.
    virtual DException& addLocation(DExceptionLocation const& location);
    /// The class's name.
    virtual char const* name() const;
    /// Hands the exception to the current trace function, which reports it.
    virtual DException& logExceptionData();
    /// Calls std::terminate.
    virtual void terminate();

    /// Puts a copy of `text` in front of the texts there are. Null changes nothing.
    DException& setText(char const* text);
    /// Adds to the newest text, or sets the first. Null changes nothing.
    DException& appendText(char const* text);
    /// The text at `index`, 0 being the newest; null beyond the last. Owned by the exception.
    char const* text(unsigned long index = 0) const;
    unsigned long textCount() const;

    /// The location at `index`, 0 being the first added; null beyond the last.
    DExceptionLocation const* locationAtIndex(unsigned long index) const;
    unsigned long locationCount() const;

    unsigned long errorId() const;
    DException& setErrorId(unsigned long errorId);
    char const* errorCodeGroup() const;
    /// Keeps the pointer: the text must outlive the exception and its copies. May be null.
    DException& setErrorCodeGroup(char const* errorCodeGroup);
    DException& setSeverity(Severity severity);

    /// Makes `function` the process's trace function, in place of the default one. The caller keeps it alive
    /// as long as exceptions may be thrown. Meant for start-up, before other threads throw.
    static void setTraceFunction(TraceFn& function);

    /// Throws a DAssertionFailure with `text`, id 0, unrecoverable, of the group `other`.
    [[noreturn]] static void assertParameter(char const* text, DExceptionLocation location);

private:
    static constexpr unsigned long mostLocations = 5;

    Severity severity_;
    unsigned long errorId_;
    DExceptionLocation locations_[mostLocations];
    unsigned long locationCount_;
    unsigned long textCount_;
    DExcText* texts_;
    char const* errorCodeGroup_;
};

/// What is done with the report of an exception. Derive from it and install the object with
/// DException::setTraceFunction to send reports elsewhere; it needs no destructor of its own.
class KELCL_EXPORT DException::TraceFn {
public:
    /// Outputs one line, which has no newline at its end. Here: to standard error.
    virtual void write(char const* line);
    /// Formats the report of `exception` and passes its lines to `write` of the current trace function.
    virtual TraceFn& logData(DException& exception);
    /// Called when a report is complete. Does nothing here.
    virtual void exceptionLogged();

protected:
    ~TraceFn() = default;
};

/// The default trace function.
class KELCL_EXPORT DExceptTraceFn : public DException::TraceFn {};

/// Holds the process's trace functions; owns neither.
class KELCL_EXPORT DExceptStaticPtr {
public:
    /// The function set by the host, else the default one.
    static DException::TraceFn* traceFunction();

    static DException::TraceFn* defaultFunction; ///< Null until first used.
    static DException::TraceFn* userFunction;    ///< Null until DException::setTraceFunction is called.
};

/// Turns memory exhaustion into a logged DOutOfMemory. The library makes one when it is loaded, whose
/// registration as a trace function does not outlast start-up.
class KELCL_EXPORT DKORVA_Init : public DException::TraceFn {
public:
    /// Becomes the trace function and installs `newHandler`.
    DKORVA_Init();
    ~DKORVA_Init();

    /// To standard error.
    void write(char const* line) override;

    /// The new-handler.
    /// @throws DOutOfMemory always: message and id 4, unrecoverable, location "dbase" line 175.
    static void newHandler();
};

#define KELCL_EXCEPTION(className, base)                                                                     \
    class KELCL_EXPORT className : public base {                                                             \
    public:                                                                                                  \
        className(char const* text, unsigned long errorId = 0, Severity severity = unrecoverable);           \
        className(className const& source);                                                                  \
        className& operator=(className const& source);                                                       \
        ~className() override;                                                                               \
        char const* name() const override;                                                                   \
    }

KELCL_EXCEPTION(DAccessError, DException);
KELCL_EXCEPTION(DAssertionFailure, DException);
KELCL_EXCEPTION(DDeviceError, DException);
KELCL_EXCEPTION(DInvalidParameter, DException);
KELCL_EXCEPTION(DInvalidRequest, DException);
KELCL_EXCEPTION(DResourceExhausted, DException);
KELCL_EXCEPTION(DOutOfMemory, DResourceExhausted);
KELCL_EXCEPTION(DOutOfSystemResource, DResourceExhausted);
KELCL_EXCEPTION(DOutOfWindowResource, DResourceExhausted);
#undef KELCL_EXCEPTION

#endif
