// Error information: objects that capture an error of the library, the C library, the system or the
// presentation system and throw the exception of a chosen class for it, and functions that do so in one call.
#ifndef KELCL_DERRORINFO_H
#define KELCL_DERRORINFO_H

#include <kelcl/dbase.h>
#include <kelcl/dexception.h>
#include <kelcl/dexport.h>

/// An error that was captured where it happened.
///
/// @code
/// std::FILE* const file = std::fopen(name, "r");
/// if (file == nullptr)
///     DCLibErrorInfo::throwCLibError(name, DEXCEPTION_LOCATION(), DBaseErrorInfo::accessError,
///     DException::recoverable);
/// @endcode
class KELCL_EXPORT DBaseErrorInfo : public DVBase {
public:
    /// Which class of exception is thrown. A value of 8 or more throws nothing.
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

    ~DBaseErrorInfo() override;
    DString asString() const override;
    DString asDebugInfo() const override;
    /// The same as `text()`.
    virtual operator char const*() const = 0;
    /// The text of the error, owned by this object. Null only when there was no memory for it.
    virtual char const* text() const = 0;
    virtual unsigned long errorId() const = 0;

    /// Throws the exception that `type` selects, with this object's text and id, logged first.
    void throwError(DExceptionLocation const& location, ExceptionType type, DException::Severity severity,
                    char const* errorCodeGroup) const;
};

/// The error that `errno` tells when the object is made.
class KELCL_EXPORT DCLibErrorInfo : public DBaseErrorInfo {
public:
    /// The text is "prefix:" and the C library's text, without "prefix:" for a null `prefix`.
    explicit DCLibErrorInfo(char const* prefix = nullptr);
    DCLibErrorInfo(DCLibErrorInfo const&) = delete;
    DCLibErrorInfo& operator=(DCLibErrorInfo const&) = delete;
    ~DCLibErrorInfo() override;

    /// Whether the C library has a text for the error.
    bool isAvailable() const;
    operator char const*() const override;
    char const* text() const override;
    unsigned long errorId() const override; ///< The value of `errno`.

    /// Captures `errno` and throws, with the group DException::CLibrary.
    static void throwCLibError(char const* prefix, DExceptionLocation const& location, ExceptionType type,
                               DException::Severity severity);

private:
    unsigned int available_;
    unsigned long errorNumber_;
    char* errorText_;
};

/// An error of the operating system.
class KELCL_EXPORT DSystemErrorInfo : public DBaseErrorInfo {
public:
    /// The text is "prefix:" and message 186, without "prefix:" for a null `prefix`.
    explicit DSystemErrorInfo(unsigned long errorNumber, char const* prefix = nullptr);
    DSystemErrorInfo(DSystemErrorInfo const&) = delete;
    DSystemErrorInfo& operator=(DSystemErrorInfo const&) = delete;
    ~DSystemErrorInfo() override;

    bool isAvailable() const; ///< Always true.
    operator char const*() const override;
    char const* text() const override;
    unsigned long errorId() const override; ///< The number given.

    /// Throws, with the group DException::operatingSystem.
    static void throwSystemError(unsigned long errorNumber, char const* prefix,
                                 DExceptionLocation const& location, ExceptionType type,
                                 DException::Severity severity);

private:
    unsigned int available_;
    unsigned long errorNumber_;
    char* errorText_;
};

/// An error of the presentation system.
class KELCL_EXPORT DGUIErrorInfo : public DBaseErrorInfo {
public:
    /// The text is "prefix:" and message 185, without "prefix:" for a null `prefix`.
    explicit DGUIErrorInfo(char const* prefix = nullptr);
    DGUIErrorInfo(DGUIErrorInfo const&) = delete;
    DGUIErrorInfo& operator=(DGUIErrorInfo const&) = delete;
    ~DGUIErrorInfo() override;

    bool isAvailable() const; ///< Always true.
    operator char const*() const override;
    char const* text() const override;
    unsigned long errorId() const override; ///< Always 0.

    /// Throws, with the group DException::presentationSystem.
    static void throwGUIError(char const* prefix, DExceptionLocation const& location, ExceptionType type,
                              DException::Severity severity);

private:
    char* errorText_;
};

/// @name Throw helpers
/// Each logs the exception and throws a copy. A text that is not in the catalog is "Unable to load text from
/// message file.".
/// @{

/// Throws DInvalidParameter with message 1 about `text`: id 1, recoverable, group DException::other.
[[noreturn]] KELCL_EXPORT void DExcept__assertParameter(char const* text, DExceptionLocation const& location);
/// Throws DInvalidRequest with message 1 about `text`: id 1, recoverable, group DException::other.
[[noreturn]] KELCL_EXPORT void DExcept__assertState(char const* text, DExceptionLocation const& location);
/// Throws the exception that `type` selects with message `errorId` of the given catalog. `reserved` is not
/// read. A type of 8 or more throws nothing.
KELCL_EXPORT void DExcept__throwError(unsigned long errorId, DExceptionLocation const& location,
                                      char const* reserved, char const* errorCodeGroup,
                                      DBaseErrorInfo::ExceptionType type, DException::Severity severity,
                                      char const* catalogFile);
/// Throws the exception that `type` selects with message `errorId` of the library's catalog, `value` in place
/// of %1. A type of 8 or more throws nothing.
KELCL_EXPORT void DExcept__throwLibraryError(unsigned long errorId, DExceptionLocation const& location,
                                             DBaseErrorInfo::ExceptionType type,
                                             DException::Severity severity = DException::recoverable,
                                             char const* value = nullptr);
/// @}

#endif
