// Error information captured where an error happened, and the helpers that turn an error into a logged and
// thrown exception. The exceptions themselves are in dexception.h.
#ifndef KELCL_DERRORINFO_H
#define KELCL_DERRORINFO_H

#include <kelcl/dbase.h>
#include <kelcl/dexception.h>
#include <kelcl/dexport.h>

#include <memory>

/// What is known about an error: a text and a number. Capture it where the error happened, throw it where it
/// suits:
///
/// @code
/// errno = ENOENT;
/// DCLibErrorInfo const info("open");
/// errno = 0;
/// try {
///     info.throwError(DEXCEPTION_LOCATION(), DBaseErrorInfo::accessError, DException::recoverable,
///                     DException::CLibrary);
/// } catch (DAccessError const& error) {
///     std::cout << error.errorId() << ' ' << error.text(0) << '\n'; // 2 open:No such file or directory
/// }
/// @endcode
class KELCL_EXPORT DBaseErrorInfo : public DVBase {
public:
    /// Selects the class of the exception that is thrown. Values from 8 on select none: nothing is thrown.
    enum ExceptionType : unsigned int {
        accessError = 0,         ///< DAccessError
        deviceError = 1,         ///< DDeviceError
        invalidParameter = 2,    ///< DInvalidParameter
        invalidRequest = 3,      ///< DInvalidRequest
        outOfSystemResource = 4, ///< DOutOfSystemResource
        outOfWindowResource = 5, ///< DOutOfWindowResource
        outOfMemory = 6,         ///< DOutOfMemory
        resourceExhausted = 7    ///< DResourceExhausted
    };

    DBaseErrorInfo(DBaseErrorInfo const&) = delete;
    DBaseErrorInfo& operator=(DBaseErrorInfo const&) = delete;
    ~DBaseErrorInfo() override;

    /// The same as text().
    virtual operator char const*() const = 0;

    /// The text of the error, owned by this object; null when there was no memory for it.
    virtual char const* text() const = 0;

    /// The number of the error.
    virtual unsigned long errorId() const = 0;

    /// Logs and throws an exception of the class that \p type selects, with text(), errorId(), \p severity,
    /// \p location and \p errorCodeGroup (not copied). Returns without a throw when \p type is 8 or more.
    void throwError(DExceptionLocation const& location, ExceptionType type, DException::Severity severity,
                    char const* errorCodeGroup) const;

protected:
    DBaseErrorInfo() = default;
};

/// An error of the C library, taken from `errno` at construction.
class KELCL_EXPORT DCLibErrorInfo : public DBaseErrorInfo {
public:
    /// Takes `errno` and its text. The text of the object is \p prefix, ":" and that text, or that text alone
    /// when \p prefix is null; "No Error text is available" stands in for a text that the C library does not
    /// have.
    explicit DCLibErrorInfo(char const* prefix) noexcept;
    ~DCLibErrorInfo() override;

    operator char const*() const override;
    char const* text() const override;

    /// The value of `errno` at construction.
    unsigned long errorId() const override;

    /// True when the C library had a text for the error.
    bool isAvailable() const noexcept { return available_ != 0; }

    /// Captures and throws at once, in the group DException::CLibrary; see throwError().
    static void throwCLibError(char const* prefix, DExceptionLocation const& location, ExceptionType type,
                               DException::Severity severity);

private:
    unsigned int available_;
    unsigned long errorNumber_;
    std::unique_ptr<char[]> errorText_;
};

/// An error of the operating system, known by its number.
class KELCL_EXPORT DSystemErrorInfo : public DBaseErrorInfo {
public:
    /// The text of the object is \p prefix, ":" and message 186 of the library's catalog, or that message
    /// alone when \p prefix is null.
    DSystemErrorInfo(unsigned long errorNumber, char const* prefix) noexcept;
    ~DSystemErrorInfo() override;

    operator char const*() const override;
    char const* text() const override;

    /// The number given.
    unsigned long errorId() const override;

    /// Always true.
    bool isAvailable() const noexcept { return available_ != 0; }

    /// Captures and throws at once, in the group DException::operatingSystem; see throwError().
    static void throwSystemError(unsigned long errorNumber, char const* prefix,
                                 DExceptionLocation const& location, ExceptionType type,
                                 DException::Severity severity);

private:
    unsigned int available_;
    unsigned long errorNumber_;
    std::unique_ptr<char[]> errorText_;
};

/// An error of the presentation system.
class KELCL_EXPORT DGUIErrorInfo : public DBaseErrorInfo {
public:
    /// The text of the object is \p prefix, ":" and message 185 of the library's catalog, or that message
    /// alone when \p prefix is null.
    explicit DGUIErrorInfo(char const* prefix) noexcept;
    ~DGUIErrorInfo() override;

    operator char const*() const override;
    char const* text() const override;

    /// Always 0.
    unsigned long errorId() const override;

    /// Always true.
    bool isAvailable() const noexcept { return true; }

    /// Captures and throws at once, in the group DException::presentationSystem; see throwError().
    static void throwGUIError(char const* prefix, DExceptionLocation const& location, ExceptionType type,
                              DException::Severity severity);

private:
    std::unique_ptr<char[]> errorText_;
};

/// Logs and throws a DInvalidParameter with message 1 of the library's catalog, \p text in place of its `%1`;
/// error id 1, recoverable, group DException::other.
[[noreturn]] KELCL_EXPORT void DExcept__assertParameter(char const* text, DExceptionLocation const& location);

/// Logs and throws a DInvalidRequest with message 1 of the library's catalog, \p text in place of its `%1`;
/// error id 1, recoverable, group DException::other.
[[noreturn]] KELCL_EXPORT void DExcept__assertState(char const* text, DExceptionLocation const& location);

/// Logs and throws an exception with message \p errorId of \p catalogFile, in which no marker is replaced. \p
/// reserved is not read. \p errorCodeGroup is not copied. Returns without a throw when \p type is 8 or more.
KELCL_EXPORT void DExcept__throwError(unsigned long errorId, DExceptionLocation const& location,
                                      char const* reserved, char const* errorCodeGroup,
                                      DBaseErrorInfo::ExceptionType type, DException::Severity severity,
                                      char const* catalogFile);

/// Logs and throws an exception with message \p errorId of the library's catalog, \p value (may be null) in
/// place of its
/// `%1`; group DException::baseLibrary. Returns without a throw when \p type is 8 or more.
KELCL_EXPORT void DExcept__throwLibraryError(unsigned long errorId, DExceptionLocation const& location,
                                             DBaseErrorInfo::ExceptionType type,
                                             DException::Severity severity = DException::recoverable,
                                             char const* value = nullptr);

#endif
