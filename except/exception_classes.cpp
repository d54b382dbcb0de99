// The subclasses of DException. They differ in their names.
#include <kelcl/dexception.h>

#define KELCL_EXCEPTION(className, base)                                                                     \
    className::className(char const* text, unsigned long errorId, Severity severity)                         \
        : base(text, errorId, severity) {}                                                                   \
    className::className(className const& source) = default;                                                 \
    className& className::operator=(className const& source) = default;                                      \
    className::~className() = default;                                                                       \
    char const* className::name() const { return #className; }

KELCL_EXCEPTION(DAccessError, DException)
KELCL_EXCEPTION(DAssertionFailure, DException)
KELCL_EXCEPTION(DDeviceError, DException)
KELCL_EXCEPTION(DInvalidParameter, DException)
KELCL_EXCEPTION(DInvalidRequest, DException)
KELCL_EXCEPTION(DResourceExhausted, DException)
KELCL_EXCEPTION(DOutOfMemory, DResourceExhausted)
KELCL_EXCEPTION(DOutOfSystemResource, DResourceExhausted)
KELCL_EXCEPTION(DOutOfWindowResource, DResourceExhausted)
