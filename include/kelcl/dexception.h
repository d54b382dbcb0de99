/// @file
/// The exception model: source locations, the exception classes, and the trace functions that report an
/// exception before it is thrown. The throw helpers are in derrorinfo.h, the catalog texts in dmessagetext.h.
#ifndef KELCL_DEXCEPTION_H
#define KELCL_DEXCEPTION_H

#include <kelcl/dexport.h>

namespace kelcl {
class DExcText;

/// @cond
// A type of texts that end in a NUL, such as DString and std::string.
template <class Text>
using IfHasCString = decltype(static_cast<char const*>(static_cast<Text const*>(nullptr)->c_str()));
/// @endcond
} // namespace kelcl

/// One source position: where an exception was thrown, or where it passed.
///
/// A plain value. The two names are neither copied nor owned, so pass string literals or other texts that
/// outlive every exception that carries the location. DEXCEPTION_LOCATION() makes one of the place where it
/// stands.
///
/// @code
/// DExceptionLocation const here("reader.cpp", nullptr, 12);
/// std::cout << here.fileName() << ':' << here.lineNumber() << '\n'; // reader.cpp:12
/// std::cout << here.functionName() << '\n'; // Unknown
/// @endcode
class KELCL_EXPORT DExceptionLocation {
public:
    /// Makes no position: null names, line 0.
    constexpr DExceptionLocation() noexcept = default;

    /// Stores both pointers (either may be null) and the line number unchanged.
    constexpr DExceptionLocation(char const* fileName, char const* functionName,
                                 unsigned long lineNumber) noexcept
        : fileName_(fileName), functionName_(functionName), lineNumber_(lineNumber) {}

    /// The file name; may be null.
    constexpr char const* fileName() const noexcept { return fileName_; }

    /// The function name, or "Unknown" when it is null; never null.
    constexpr char const* functionName() const noexcept {
        return functionName_ != nullptr ? functionName_ : "Unknown";
    }

    /// The line number; 0 for no position.
    constexpr unsigned long lineNumber() const noexcept { return lineNumber_; }

private:
    char const* fileName_ = nullptr;
    char const* functionName_ = nullptr;
    unsigned long lineNumber_ = 0;
};

/// The location (file, function and line) of the place where the macro stands.
#define DEXCEPTION_LOCATION()                                                                                \
    DExceptionLocation(__FILE__, static_cast<char const*>(__func__), static_cast<unsigned long>(__LINE__))

/// Root of everything that the library throws.
///
/// An exception carries a stack of texts (newest first), up to five source locations, an error id, an
/// error-code group and a severity. It is thrown by value; catch it by reference. A handler may add texts and
/// locations before it rethrows. What the library throws has been reported once, through the trace function
/// (see TraceFn), before it is thrown; a rethrow reports nothing.
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
/// No operation of this class throws, except assertParameter(), and logExceptionData() if a trace function of
/// the host does. If out of memory, a text is left out; the
/// process's new-handler is not called while a text is being stored. An exception owns its texts; the names
/// in its locations and its group belong to others. It is for one thread at a time.
class KELCL_EXPORT DException {
public:
    /// Whether the program may go on. Every nonzero value counts as recoverable.
    enum Severity : unsigned int {
        /// The program should end; see terminate().
        unrecoverable = 0,
        /// The program may go on.
        recoverable = 1
    };

    class TraceFn;

    /// @name Error-code groups: the layer that an error comes from
    /// @{

    /// "Kel Class Library", the group of a new exception.
    static char const* const baseLibrary;
    /// "Standard C Library", for errors known by `errno`.
    static char const* const CLibrary;
    /// "Operating System".
    static char const* const operatingSystem;
    /// "Presentation System".
    static char const* const presentationSystem;
    /// "Other Error Group", that of failed assertions.
    static char const* const other;
    /// @}

    /// @name Construction
    /// @code
    /// DException const error("the disk is full", 28, DException::recoverable);
    /// DException const copy(error);
    /// std::cout << copy.text(0) << '\n';                                   // the disk is full
    /// std::cout << copy.errorId() << ' ' << copy.isRecoverable() << '\n'; // 28 1
    /// @endcode
    /// @{

    /// Makes an exception with a private copy of `text` as its only text, no location and the group
    /// baseLibrary. Null gives no text.
    explicit DException(char const* text, unsigned long errorId = 0,
                        Severity severity = unrecoverable) noexcept;

    /// The same for a DString, a `std::string` or the like, up to the first NUL in it.
    template <class Text, class = kelcl::IfHasCString<Text>>
    explicit DException(Text const& text, unsigned long errorId = 0,
                        Severity severity = unrecoverable) noexcept
        : DException(text.c_str(), errorId, severity) {}

    /// Copies everything. The texts become independent copies; the names in the locations and the group are
    /// shared.
    ///
    /// If out of memory, the copy shares the texts that could not be copied with `source`, or has no texts at
    /// all (textCount() 0) if not even its first one can be made.
    DException(DException const& source) noexcept;

    /// Gives this exception what a copy of `source` has.
    ///
    /// Assign only exceptions of one class to each other: the class itself, and with it name(), cannot
    /// change.
    DException& operator=(DException const& source) noexcept;

    /// Frees the texts.
    virtual ~DException();

    /// @}

    /// @name What a class may override
    /// @code
    /// class ParseError final : public DException {
    /// public:
    ///     using DException::DException;
    ///     char const* name() const override { return "ParseError"; }
    /// };
    /// ParseError const error("a bracket is missing");
    /// std::cout << error.name() << ": " << error.text(0) << '\n'; // ParseError: a bracket is missing
    /// @endcode
    /// @{

    /// Whether the program may go on: the severity is nonzero.
    virtual bool isRecoverable() const;

    /// Stores a copy of `location` after the ones already there, and returns `*this`.
    ///
    /// The sixth and every later one replaces the fifth, so the first four are kept for good and the fifth is
    /// always the latest.
    virtual DException& addLocation(DExceptionLocation const& location);

    /// The name of the class, "DException" here.
    virtual char const* name() const;

    /// Reports the exception through the current trace function, see TraceFn::logData(), and returns `*this`.
    ///
    /// Throws nothing of its own; what a trace function of the host throws passes through.
    virtual DException& logExceptionData();

    /// Ends the program through std::terminate().
    virtual void terminate();

    /// @}

    /// @name Texts and locations
    /// @code
    /// DException error("no such file");
    /// error.setText("the letter").appendText(" is lost");
    /// error.addLocation(DExceptionLocation("post.cpp", "open", 12));
    /// std::cout << error.textCount() << " texts\n";                   // 2 texts
    /// std::cout << error.text(0) << ": " << error.text(1) << '\n';    // the letter is lost: no such file
    /// std::cout << error.locationAtIndex(0)->functionName() << '\n'; // open
    /// @endcode
    /// @{

    /// Puts a copy of `text` in front of the texts, so that it becomes text(0): nothing is replaced.
    ///
    /// Null, or a copy that cannot be allocated, changes nothing. Returns `*this`.
    DException& setText(char const* text) noexcept;

    /// The same for a DString, a `std::string` or the like, up to the first NUL in it.
    template <class Text, class = kelcl::IfHasCString<Text>>
    DException& setText(Text const& text) noexcept {
        return setText(text.c_str());
    }

    /// Appends `text` to text(0), or does what setText() does when there is no text yet.
    ///
    /// Null, or a text that cannot be allocated, changes nothing. Returns `*this`.
    DException& appendText(char const* text) noexcept;

    /// The same for a DString, a `std::string` or the like, up to the first NUL in it.
    template <class Text, class = kelcl::IfHasCString<Text>>
    DException& appendText(Text const& text) noexcept {
        return appendText(text.c_str());
    }

    /// The text at `index`, 0 being the newest; null from textCount() on.
    ///
    /// It belongs to the exception and is valid until that text is appended to, or the
    /// exception is assigned to or destroyed.
    char const* text(unsigned long index) const noexcept KELCL_LIFETIME_BOUND;

    /// The number of texts.
    unsigned long textCount() const noexcept { return textCount_; }

    /// The location at `index`, 0 being the first one added; null from locationCount() on. It belongs to the
    /// exception.
    DExceptionLocation const* locationAtIndex(unsigned long index) const noexcept KELCL_LIFETIME_BOUND;

    /// The number of locations, 0 to 5.
    unsigned long locationCount() const noexcept { return locationCount_; }

    /// @}

    /// @name Error id, group and severity
    /// @code
    /// DException error("no such file");
    /// error.setErrorId(2).setSeverity(DException::recoverable);
    /// error.setErrorCodeGroup(DException::CLibrary);
    /// std::cout << error.errorId() << ' ' << error.isRecoverable() << '\n'; // 2 1
    /// std::cout << error.errorCodeGroup() << '\n';                          // Standard C Library
    /// @endcode
    /// @{

    /// The message number or system error number; 0 when there is none.
    unsigned long errorId() const noexcept { return errorId_; }

    /// Sets the error id, and returns `*this`.
    DException& setErrorId(unsigned long errorId) noexcept;

    /// The error-code group: the layer that the error comes from. May be null.
    char const* errorCodeGroup() const noexcept { return errorCodeGroup_; }

    /// Sets the error-code group, and returns `*this`. The text is not copied: the caller keeps it alive.
    /// Null means no group.
    DException& setErrorCodeGroup(char const* errorCodeGroup) noexcept;

    /// Sets the severity, and returns `*this`.
    DException& setSeverity(Severity severity) noexcept;

    /// @}

    /// @name For the whole process
    /// @{

    /// Reports and throws a DAssertionFailure with `text`, error id 0, unrecoverable, at `location`, in the
    /// group other.
    [[noreturn]] static void assertParameter(char const* text, DExceptionLocation location);

    /// Makes `function` the trace function until another one is set; none can be taken out again.
    ///
    /// Only its address is kept: it must live as long as exceptions may be thrown. Meant for start-up, before
    /// other threads throw.
    static void setTraceFunction(TraceFn& function) noexcept;
    /// @}

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
/// DException::setTraceFunction().
///
/// One object serves the whole process: threads may report at the same time, and lines of different reports
/// may mix.
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
    /// Makes a trace function, which does nothing until it is installed.
    TraceFn() = default;

    /// Outputs one line of a report: here to standard error, followed by a line feed.
    ///
    /// A few lines contain line feeds; the final one is not part of `line`. Null counts as empty.
    virtual void write(char const* line);

    /// Reports `exception`, and returns `*this`: its latest location, its error id, its group, and its texts
    /// from the oldest to the newest.
    ///
    /// Each line is passed to write() of the trace function that is current at that moment, which need not be
    /// this object; exceptionLogged() of this object follows. Nothing is cut, and a null name or file name is
    /// shown as "Unknown". While it runs, the process's new-handler is taken out. If there is no memory for
    /// the line buffer, the report is written straight to standard error and exceptionLogged() is not called.
    /// Throws only what write() or exceptionLogged() throws.
    virtual TraceFn& logData(DException& exception);

    /// Called once after each complete report; does nothing here.
    virtual void exceptionLogged();

protected:
    /// Not virtual: none is destroyed through a pointer to this class. It does not take the object out.
    ~TraceFn() = default;
};

// No trace function has a destructor in its virtual table, which is that of hosts compiled long ago; none is
// destroyed through a pointer to its base either.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

/// The trace function that is taken if the host installs none: it reports to standard error.
///
/// @code
/// static DExceptTraceFn standardError;
/// DException::setTraceFunction(standardError);
/// std::cout << (DExceptStaticPtr::traceFunction() == &standardError) << '\n'; // 1
/// @endcode
class KELCL_EXPORT DExceptTraceFn : public DException::TraceFn {};

/// Holds the process's trace functions. Both pointers are null after load, and neither owns.
///
/// Programs read it to find out who reports; they install with DException::setTraceFunction().
///
/// @code
/// std::cout << (DExceptStaticPtr::userFunction == nullptr) << '\n'; // 1
/// static DExceptTraceFn mine;
/// DException::setTraceFunction(mine);
/// std::cout << (DExceptStaticPtr::userFunction == &mine) << '\n'; // 1
/// @endcode
class KELCL_EXPORT DExceptStaticPtr {
public:
    /// There are no objects of this class.
    DExceptStaticPtr() = delete;

    /// The current trace function, never null: userFunction if set, else defaultFunction, which is set on
    /// first use.
    static DException::TraceFn* traceFunction() noexcept;

    /// The library's own trace function; null until first use.
    static DException::TraceFn* defaultFunction;
    /// The host's trace function; null until DException::setTraceFunction().
    static DException::TraceFn* userFunction;
};

/// Out-of-memory set-up: installs a new-handler that throws DOutOfMemory, and itself as the trace function.
///
/// The library makes one when it is loaded. Of that one only the new-handler stays: the trace functions are
/// cleared after it. One that a host makes must live as long as exceptions may be thrown: its destructor
/// undoes nothing.
///
/// @code
/// try {
///     DKORVA_Init::newHandler();
/// } catch (DOutOfMemory const& error) {
///     std::cout << error.errorId() << ' ' << error.isRecoverable() << '\n'; // 4 0
/// }
/// @endcode
class KELCL_EXPORT DKORVA_Init : public DException::TraceFn {
public:
    /// Makes this the trace function, and newHandler() the process's new-handler.
    DKORVA_Init();
    /// Undoes nothing.
    ~DKORVA_Init() = default;
    /// Not copied: the process keeps its address.
    DKORVA_Init(DKORVA_Init const&) = delete;
    /// Not assigned: there is nothing to assign.
    DKORVA_Init& operator=(DKORVA_Init const&) = delete;

    /// Writes `line` and a line feed to standard error. Null counts as empty.
    void write(char const* line) override;

    /// Reports and throws a DOutOfMemory with message 4 of the library's catalog, error id 4, unrecoverable.
    [[noreturn]] static void newHandler();
};

#pragma GCC diagnostic pop

/// Something may not be accessed.
///
/// @code
/// try {
///     throw DAccessError("the archive is locked", 0, DException::recoverable);
/// } catch (DException const& error) {
///     std::cout << error.name() << ": " << error.text(0) << '\n'; // DAccessError: the archive is locked
/// }
/// @endcode
class KELCL_EXPORT DAccessError : public DException {
public:
    /// Takes text, error id and severity as DException does.
    using DException::DException;

    /// "DAccessError".
    char const* name() const override;
};

/// Something that the code relies on does not hold; thrown by DException::assertParameter().
///
/// @code
/// try {
///     DException::assertParameter("size > 0", DEXCEPTION_LOCATION());
/// } catch (DAssertionFailure const& failure) {
///     std::cout << failure.errorCodeGroup() << '\n'; // Other Error Group
/// }
/// @endcode
class KELCL_EXPORT DAssertionFailure : public DException {
public:
    /// Takes text, error id and severity as DException does.
    using DException::DException;

    /// "DAssertionFailure".
    char const* name() const override;
};

/// A device failed.
///
/// @code
/// try {
///     errno = ENXIO;
///     DCLibErrorInfo::throwCLibError("scanner", DEXCEPTION_LOCATION(), DBaseErrorInfo::deviceError,
///                                    DException::recoverable);
/// } catch (DDeviceError const& error) {
///     std::cout << error.text(0) << '\n'; // scanner:No such device or address
/// }
/// @endcode
class KELCL_EXPORT DDeviceError : public DException {
public:
    /// Takes text, error id and severity as DException does.
    using DException::DException;

    /// "DDeviceError".
    char const* name() const override;
};

/// An argument has a value that is never valid; thrown by DExcept__assertParameter().
///
/// @code
/// try {
///     DExcept__assertParameter("percent <= 100", DEXCEPTION_LOCATION());
/// } catch (DInvalidParameter const& error) {
///     std::cout << error.errorId() << ' ' << error.isRecoverable() << '\n'; // 1 1
/// }
/// @endcode
class KELCL_EXPORT DInvalidParameter : public DException {
public:
    /// Takes text, error id and severity as DException does.
    using DException::DException;

    /// "DInvalidParameter".
    char const* name() const override;
};

/// The object cannot do what it is asked for in its present state.
///
/// Strings and buffers throw it: for a text that would be too long (id 1010), an element outside the text
/// (1011), bytes that are no character (1012) and a collation that fails (the `errno` value).
///
/// @code
/// try {
///     DString("abc").copy(2000000000);
/// } catch (DInvalidRequest const& error) {
///     std::cout << error.errorId() << ' ' << error.isRecoverable() << '\n'; // 1010 1
/// }
/// @endcode
class KELCL_EXPORT DInvalidRequest : public DException {
public:
    /// Takes text, error id and severity as DException does.
    using DException::DException;

    /// "DInvalidRequest".
    char const* name() const override;
};

/// A resource ran out; base of the three kinds below.
///
/// @code
/// try {
///     throw DOutOfSystemResource("no semaphore is left", 0, DException::recoverable);
/// } catch (DResourceExhausted const& error) {
///     std::cout << error.name() << '\n'; // DOutOfSystemResource
/// }
/// @endcode
class KELCL_EXPORT DResourceExhausted : public DException {
public:
    /// Takes text, error id and severity as DException does.
    using DException::DException;

    /// "DResourceExhausted".
    char const* name() const override;
};

/// Memory ran out; thrown by the new-handler that the library installs, see DKORVA_Init.
///
/// @code
/// try {
///     std::get_new_handler()();
/// } catch (DOutOfMemory const& error) {
///     std::cout << error.errorId() << ' ' << error.isRecoverable() << '\n'; // 4 0
/// }
/// @endcode
class KELCL_EXPORT DOutOfMemory : public DResourceExhausted {
public:
    /// Takes text, error id and severity as DResourceExhausted does.
    using DResourceExhausted::DResourceExhausted;

    /// "DOutOfMemory".
    char const* name() const override;
};

/// A resource of the operating system ran out.
///
/// @code
/// try {
///     DSystemErrorInfo::throwSystemError(24, "pipe", DEXCEPTION_LOCATION(),
///                                        DBaseErrorInfo::outOfSystemResource, DException::recoverable);
/// } catch (DOutOfSystemResource const& error) {
///     std::cout << error.errorId() << ", " << error.errorCodeGroup() << '\n'; // 24, Operating System
/// }
/// @endcode
class KELCL_EXPORT DOutOfSystemResource : public DResourceExhausted {
public:
    /// Takes text, error id and severity as DResourceExhausted does.
    using DResourceExhausted::DResourceExhausted;

    /// "DOutOfSystemResource".
    char const* name() const override;
};

/// A resource of the presentation system ran out.
///
/// @code
/// try {
///     DGUIErrorInfo::throwGUIError("canvas", DEXCEPTION_LOCATION(), DBaseErrorInfo::outOfWindowResource,
///                                  DException::recoverable);
/// } catch (DOutOfWindowResource const& error) {
///     std::cout << error.errorCodeGroup() << '\n'; // Presentation System
/// }
/// @endcode
class KELCL_EXPORT DOutOfWindowResource : public DResourceExhausted {
public:
    /// Takes text, error id and severity as DResourceExhausted does.
    using DResourceExhausted::DResourceExhausted;

    /// "DOutOfWindowResource".
    char const* name() const override;
};

#endif
