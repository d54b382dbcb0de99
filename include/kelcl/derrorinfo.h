/// @file
/// Error information captured where an error happened, and the helpers that turn an error into a logged and
/// thrown exception. The exceptions themselves are in dexception.h.
#ifndef KELCL_DERRORINFO_H
#define KELCL_DERRORINFO_H

#include <kelcl/dbase.h>
#include <kelcl/detail/owned_text.h>
#include <kelcl/dexception.h>
#include <kelcl/dexport.h>

/// What is known about an error: a text and a number.
///
/// Capture it where the error happened, with one of the three classes below, and throw it where it suits. To
/// do both at once, each of them has a static function. Hosts may derive classes of their own.
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
    /// Selects the class of the exception that is thrown.
    ///
    /// Values from 8 on select none: callers rely on it that nothing is thrown then.
    enum ExceptionType : unsigned int {
        /// Throws a DAccessError.
        accessError = 0,
        /// Throws a DDeviceError.
        deviceError = 1,
        /// Throws a DInvalidParameter.
        invalidParameter = 2,
        /// Throws a DInvalidRequest.
        invalidRequest = 3,
        /// Throws a DOutOfSystemResource.
        outOfSystemResource = 4,
        /// Throws a DOutOfWindowResource.
        outOfWindowResource = 5,
        /// Throws a DOutOfMemory.
        outOfMemory = 6,
        /// Throws a DResourceExhausted.
        resourceExhausted = 7
    };

    /// Not copied: an object owns its text.
    DBaseErrorInfo(DBaseErrorInfo const&) = delete;
    /// Not assigned: an object owns its text.
    DBaseErrorInfo& operator=(DBaseErrorInfo const&) = delete;
    /// Does nothing of its own; derived classes free their texts.
    ~DBaseErrorInfo() override;

    /// The same as text().
    virtual operator char const*() const = 0;

    /// The text of the error, owned by this object; null if there was no memory for it.
    ///
    /// Write this to a stream: `<<` of the object itself writes what asString() says, "DVBase object".
    virtual char const* text() const = 0;

    /// The number of the error, which becomes the error id of the exception.
    virtual unsigned long errorId() const = 0;

    /// Reports and throws an exception of the class that `type` selects, with text(), errorId(), `severity`,
    /// `location` and `errorCodeGroup`. Returns if `type` is 8 or more.
    ///
    /// The group is not copied and must outlive the exception; null means none.
    void throwError(DExceptionLocation const& location, ExceptionType type, DException::Severity severity,
                    char const* errorCodeGroup) const;

protected:
    /// For derived classes.
    DBaseErrorInfo() = default;
};

/// An error of the C library, taken from `errno` at construction.
///
/// @code
/// errno = EACCES;
/// DCLibErrorInfo const error("letter.txt");
/// std::cout << error.text() << '\n'; // letter.txt:Permission denied
/// std::cout << (error.errorId() == EACCES) << '\n'; // 1
/// @endcode
class KELCL_EXPORT DCLibErrorInfo : public DBaseErrorInfo {
public:
    /// Takes `errno` and its text; the text of the object is `prefix`, ":" and that text, or that text alone
    /// if `prefix` is null.
    ///
    /// "No Error text is available" stands in for a text that the C library does not have. `prefix` is
    /// copied.
    explicit DCLibErrorInfo(char const* prefix) noexcept;
    /// Frees the text.
    ~DCLibErrorInfo() override;

    /// The same as text().
    operator char const*() const override;

    /// The text, owned by this object; null if there was no memory for it.
    char const* text() const override;

    /// The value of `errno` at construction.
    unsigned long errorId() const override;

    /// Whether the C library had a text for the error.
    bool isAvailable() const noexcept { return available_ != 0; }

    /// Captures `errno` and throws at once, in the group DException::CLibrary; see throwError(). Returns if
    /// `type` is 8 or more.
    static void throwCLibError(char const* prefix, DExceptionLocation const& location, ExceptionType type,
                               DException::Severity severity);

private:
    unsigned int available_;
    unsigned long errorNumber_;
    kelcl::OwnedText errorText_;
};

/// An error of the operating system, known by its number.
///
/// @code
/// DSystemErrorInfo const error(24, nullptr);
/// std::cout << error.errorId() << ' ' << error.isAvailable() << '\n'; // 24 1
/// @endcode
class KELCL_EXPORT DSystemErrorInfo : public DBaseErrorInfo {
public:
    /// Makes the text of `prefix`, ":" and message 186 of the library's catalog, or of that message alone if
    /// `prefix` is null.
    ///
    /// The number does not enter the text. `prefix` is copied.
    DSystemErrorInfo(unsigned long errorNumber, char const* prefix) noexcept;
    /// Frees the text.
    ~DSystemErrorInfo() override;

    /// The same as text().
    operator char const*() const override;

    /// The text, owned by this object; null if there was no memory for it.
    char const* text() const override;

    /// The number given at construction.
    unsigned long errorId() const override;

    /// Always true: the text does not depend on the number.
    bool isAvailable() const noexcept { return available_ != 0; }

    /// Captures and throws at once, in the group DException::operatingSystem; see throwError(). Returns if
    /// `type` is 8 or more.
    static void throwSystemError(unsigned long errorNumber, char const* prefix,
                                 DExceptionLocation const& location, ExceptionType type,
                                 DException::Severity severity);

private:
    unsigned int available_;
    unsigned long errorNumber_;
    kelcl::OwnedText errorText_;
};

/// An error of the presentation system, which has no number.
///
/// @code
/// try {
///     DGUIErrorInfo::throwGUIError("window", DEXCEPTION_LOCATION(), DBaseErrorInfo::accessError,
///                                  DException::recoverable);
/// } catch (DAccessError const& error) {
///     std::cout << error.errorId() << ' ' << error.errorCodeGroup() << '\n'; // 0 Presentation System
/// }
/// @endcode
class KELCL_EXPORT DGUIErrorInfo : public DBaseErrorInfo {
public:
    /// Makes the text of `prefix`, ":" and message 185 of the library's catalog, or of that message alone if
    /// `prefix` is null.
    ///
    /// `prefix` is copied.
    explicit DGUIErrorInfo(char const* prefix) noexcept;
    /// Frees the text.
    ~DGUIErrorInfo() override;

    /// The same as text().
    operator char const*() const override;

    /// The text, owned by this object; null if there was no memory for it.
    char const* text() const override;

    /// Always 0: there is no number.
    unsigned long errorId() const override;

    /// Always true: there is a text.
    bool isAvailable() const noexcept { return true; }

    /// Captures and throws at once, in the group DException::presentationSystem; see throwError(). Returns if
    /// `type` is 8 or more.
    static void throwGUIError(char const* prefix, DExceptionLocation const& location, ExceptionType type,
                              DException::Severity severity);

private:
    kelcl::OwnedText errorText_;
};

/// Reports and throws a DInvalidParameter with message 1 of the library's catalog, `text` in place of its
/// `%1`.
///
/// Error id 1, recoverable, group DException::other.
///
/// @code
/// try {
///     DExcept__assertParameter("port >= 1", DEXCEPTION_LOCATION());
/// } catch (DInvalidParameter const& error) {
///     std::cout << error.text(0) << '\n'; // The condition does not hold: port >= 1
/// }
/// @endcode
[[noreturn]] KELCL_EXPORT void DExcept__assertParameter(char const* text, DExceptionLocation const& location);

/// Reports and throws a DInvalidRequest with message 1 of the library's catalog, `text` in place of its `%1`.
///
/// Error id 1, recoverable, group DException::other.
[[noreturn]] KELCL_EXPORT void DExcept__assertState(char const* text, DExceptionLocation const& location);

/// Reports and throws an exception of the class that `type` selects, with message `errorId` of `catalogFile`,
/// in which no marker is replaced. Returns if `type` is 8 or more.
///
/// `reserved` is not read. `errorCodeGroup` is not copied; null means none.
KELCL_EXPORT void DExcept__throwError(unsigned long errorId, DExceptionLocation const& location,
                                      char const* reserved, char const* errorCodeGroup,
                                      DBaseErrorInfo::ExceptionType type, DException::Severity severity,
                                      char const* catalogFile);

/// Reports and throws an exception of the class that `type` selects, with message `errorId` of the library's
/// catalog, `value` in place of its `%1`. Returns if `type` is 8 or more.
///
/// The group is DException::baseLibrary. With a null `value` the marker stays.
///
/// @code
/// try {
///     DExcept__throwLibraryError(4, DEXCEPTION_LOCATION(), DBaseErrorInfo::accessError);
/// } catch (DAccessError const& error) {
///     std::cout << error.text(0) << '\n'; // There is not enough memory for the operation.
/// }
/// @endcode
KELCL_EXPORT void DExcept__throwLibraryError(unsigned long errorId, DExceptionLocation const& location,
                                             DBaseErrorInfo::ExceptionType type,
                                             DException::Severity severity = DException::recoverable,
                                             char const* value = nullptr);

#endif
