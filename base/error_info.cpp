// Error-information classes and throw helpers, over one table of what each type of error throws.
#include "except/cancellation.h"
#include "except/raise.h"
#include "except/text_copy.h"

#include <kelcl/derrorinfo.h>

#include <cerrno>
#include <cstring>
#include <iterator>

namespace {

constexpr unsigned long failedAssertion = 1;
constexpr unsigned long presentationError = 185;
constexpr unsigned long systemError = 186;

using Raise = void (*)(char const* text, unsigned long errorId, DException::Severity severity,
                       char const* errorCodeGroup, DExceptionLocation const& location);

template <class Exception>
void raise(char const* text, unsigned long errorId, DException::Severity severity, char const* errorCodeGroup,
           DExceptionLocation const& location) {
    kelcl::raise(
        [&] {
            Exception exception(text, errorId, severity);
            exception.setErrorCodeGroup(errorCodeGroup);
            return exception;
        },
        location);
}

/// What each ExceptionType throws, in the order of its values.
constexpr Raise raisers[] = {raise<DAccessError>,    raise<DDeviceError>,         raise<DInvalidParameter>,
                             raise<DInvalidRequest>, raise<DOutOfSystemResource>, raise<DOutOfWindowResource>,
                             raise<DOutOfMemory>,    raise<DResourceExhausted>};

/// Throws nothing for a type that the table does not have.
void raiseAs(DBaseErrorInfo::ExceptionType type, char const* text, unsigned long errorId,
             DException::Severity severity, char const* errorCodeGroup, DExceptionLocation const& location) {
    if (type < std::size(raisers)) raisers[type](text, errorId, severity, errorCodeGroup, location);
}

/// "prefix:text", or the text alone without a prefix; null when there is no memory.
kelcl::OwnedText prefixed(char const* prefix, char const* text) {
    if (text == nullptr) text = "";
    std::size_t const prefixLength = prefix != nullptr ? std::strlen(prefix) + 1 : 0;
    std::size_t const textSize = std::strlen(text) + 1;
    kelcl::OwnedText result = kelcl::roomForText(prefixLength + textSize);
    if (result == nullptr) return nullptr;
    if (prefix != nullptr) {
        std::memcpy(result.get(), prefix, prefixLength - 1);
        result[prefixLength - 1] = ':';
    }
    std::memcpy(result.get() + prefixLength, text, textSize);
    return result;
}

} // namespace

DBaseErrorInfo::~DBaseErrorInfo() = default;

void DBaseErrorInfo::throwError(DExceptionLocation const& location, ExceptionType type,
                                DException::Severity severity, char const* errorCodeGroup) const {
    raiseAs(type, text(), errorId(), severity, errorCodeGroup, location);
}

// errno is read before anything that could change it.
DCLibErrorInfo::DCLibErrorInfo(char const* prefix) noexcept
    : available_(0), errorNumber_(static_cast<unsigned long>(static_cast<long>(errno))) {
    kelcl::CancellationDeferral const deferral;
    // C libraries of today keep its text for each thread, or for good.
    char const* const reason = std::strerror(static_cast<int>(errorNumber_));
    available_ = reason != nullptr && *reason != '\0' ? 1 : 0;
    errorText_ = prefixed(prefix, available_ != 0 ? reason : "No Error text is available");
}

DCLibErrorInfo::~DCLibErrorInfo() = default;
DCLibErrorInfo::operator char const*() const { return errorText_.get(); }
char const* DCLibErrorInfo::text() const { return errorText_.get(); }
unsigned long DCLibErrorInfo::errorId() const { return errorNumber_; }

void DCLibErrorInfo::throwCLibError(char const* prefix, DExceptionLocation const& location,
                                    ExceptionType type, DException::Severity severity) {
    DCLibErrorInfo(prefix).throwError(location, type, severity, DException::CLibrary);
}

DSystemErrorInfo::DSystemErrorInfo(unsigned long errorNumber, char const* prefix) noexcept
    : available_(1), errorNumber_(errorNumber),
      errorText_(prefixed(prefix, DBase::messageText(systemError))) {}

DSystemErrorInfo::~DSystemErrorInfo() = default;
DSystemErrorInfo::operator char const*() const { return errorText_.get(); }
char const* DSystemErrorInfo::text() const { return errorText_.get(); }
unsigned long DSystemErrorInfo::errorId() const { return errorNumber_; }

void DSystemErrorInfo::throwSystemError(unsigned long errorNumber, char const* prefix,
                                        DExceptionLocation const& location, ExceptionType type,
                                        DException::Severity severity) {
    DSystemErrorInfo(errorNumber, prefix).throwError(location, type, severity, DException::operatingSystem);
}

DGUIErrorInfo::DGUIErrorInfo(char const* prefix) noexcept
    : errorText_(prefixed(prefix, DBase::messageText(presentationError))) {}

DGUIErrorInfo::~DGUIErrorInfo() = default;
DGUIErrorInfo::operator char const*() const { return errorText_.get(); }
char const* DGUIErrorInfo::text() const { return errorText_.get(); }
unsigned long DGUIErrorInfo::errorId() const { return 0; }

void DGUIErrorInfo::throwGUIError(char const* prefix, DExceptionLocation const& location, ExceptionType type,
                                  DException::Severity severity) {
    DGUIErrorInfo(prefix).throwError(location, type, severity, DException::presentationSystem);
}

namespace {

template <class Exception>
[[noreturn]] void raiseFailedAssertion(char const* text, DExceptionLocation const& location) {
    kelcl::raise(
        [&] {
            Exception exception(DBase::messageText(failedAssertion, text), failedAssertion,
                                DException::recoverable);
            exception.setErrorCodeGroup(DException::other);
            return exception;
        },
        location);
}

} // namespace

void DExcept__assertParameter(char const* text, DExceptionLocation const& location) {
    raiseFailedAssertion<DInvalidParameter>(text, location);
}

void DExcept__assertState(char const* text, DExceptionLocation const& location) {
    raiseFailedAssertion<DInvalidRequest>(text, location);
}

void DExcept__throwError(unsigned long errorId, DExceptionLocation const& location, char const*,
                         char const* errorCodeGroup, DBaseErrorInfo::ExceptionType type,
                         DException::Severity severity, char const* catalogFile) {
    raiseAs(type, DMessageText(errorId, catalogFile), errorId, severity, errorCodeGroup, location);
}

void DExcept__throwLibraryError(unsigned long errorId, DExceptionLocation const& location,
                                DBaseErrorInfo::ExceptionType type, DException::Severity severity,
                                char const* value) {
    raiseAs(type, DBase::messageText(errorId, value), errorId, severity, DException::baseLibrary, location);
}
