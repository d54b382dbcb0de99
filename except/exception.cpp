// DException: texts, locations, identity. How an exception is reported is in exception_logging.
#include "except/raise.h"
#include "except/text_chain.h"

#include <algorithm>
#include <exception>

char const* const DException::baseLibrary = "Kel Class Library";
char const* const DException::CLibrary = "Standard C Library";
char const* const DException::operatingSystem = "Operating System";
char const* const DException::presentationSystem = "Presentation System";
char const* const DException::other = "Other Error Group";

DException::DException(char const* text, unsigned long errorId, Severity severity) noexcept
    : severity_(severity), errorId_(errorId) {
    setText(text);
}

DException::DException(DException const& source) noexcept
    : severity_(source.severity_), errorId_(source.errorId_), locationCount_(source.locationCount_),
      textCount_(source.textCount_), texts_(kelcl::DExcText::copyOf(source.texts_)),
      errorCodeGroup_(source.errorCodeGroup_) {
    std::copy_n(source.locations_, locationCount_, locations_);
    if (texts_ == nullptr) textCount_ = 0;
}

DException& DException::operator=(DException const& source) noexcept {
    if (this == &source) return *this;
    kelcl::DExcText* const old = texts_;
    texts_ = kelcl::DExcText::copyOf(source.texts_);
    textCount_ = texts_ != nullptr ? source.textCount_ : 0;
    kelcl::DExcText::release(old);
    severity_ = source.severity_;
    errorId_ = source.errorId_;
    locationCount_ = source.locationCount_;
    std::copy_n(source.locations_, locationCount_, locations_);
    errorCodeGroup_ = source.errorCodeGroup_;
    return *this;
}

DException::~DException() { kelcl::DExcText::release(texts_); }

bool DException::isRecoverable() const { return severity_ != unrecoverable; }

DException& DException::addLocation(DExceptionLocation const& location) {
    if (locationCount_ == maxLocations) --locationCount_; // the last slot always holds the latest one
    locations_[locationCount_++] = location;
    return *this;
}

char const* DException::name() const { return "DException"; }

DException& DException::logExceptionData() {
    DExceptStaticPtr::traceFunction()->logData(*this);
    return *this;
}

void DException::terminate() { std::terminate(); }

DException& DException::setText(char const* text) noexcept {
    if (text == nullptr) return *this;
    if (kelcl::DExcText* const newest = kelcl::DExcText::create(text, texts_)) {
        texts_ = newest;
        ++textCount_;
    }
    return *this;
}

DException& DException::appendText(char const* text) noexcept {
    if (texts_ == nullptr) return setText(text);
    if (text == nullptr) return *this;
    if (kelcl::DExcText* const longer = kelcl::DExcText::appended(texts_, text)) texts_ = longer;
    return *this;
}

char const* DException::text(unsigned long index) const noexcept {
    if (index >= textCount_) return nullptr;
    kelcl::DExcText const* node = texts_;
    for (; index > 0; --index)
        node = node->next();
    return node->text();
}

DExceptionLocation const* DException::locationAtIndex(unsigned long index) const noexcept {
    return index < locationCount_ ? &locations_[index] : nullptr;
}

DException& DException::setErrorId(unsigned long errorId) noexcept {
    errorId_ = errorId;
    return *this;
}

DException& DException::setErrorCodeGroup(char const* errorCodeGroup) noexcept {
    errorCodeGroup_ = errorCodeGroup;
    return *this;
}

DException& DException::setSeverity(Severity severity) noexcept {
    severity_ = severity;
    return *this;
}

void DException::assertParameter(char const* text, DExceptionLocation location) {
    kelcl::raise(
        [&] {
            DAssertionFailure failure(text, 0, unrecoverable);
            failure.setErrorCodeGroup(other);
            return failure;
        },
        location);
}
