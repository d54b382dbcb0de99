// The names of the exception classes.
#include <kelcl/dexception.h>

char const* DAccessError::name() const { return "DAccessError"; }
char const* DAssertionFailure::name() const { return "DAssertionFailure"; }
char const* DDeviceError::name() const { return "DDeviceError"; }
char const* DInvalidParameter::name() const { return "DInvalidParameter"; }
char const* DInvalidRequest::name() const { return "DInvalidRequest"; }
char const* DResourceExhausted::name() const { return "DResourceExhausted"; }
char const* DOutOfMemory::name() const { return "DOutOfMemory"; }
char const* DOutOfSystemResource::name() const { return "DOutOfSystemResource"; }
char const* DOutOfWindowResource::name() const { return "DOutOfWindowResource"; }
