// The start-up unit: the three static objects that are made when the library is loaded. They stand in one
// source because their order is relied on.
#include "except/environment.h"
#include "except/static_order.h"
#include "except/trace_functions.h"

#include <kelcl/dbase.h>
#include <kelcl/dstring.h>

#include <cctype>
#include <cstring>

int DString::fgI18NState = 0;

namespace {

/// Reads the national-language switch: on for "ON" in any case, and nothing else.
class I18N_Init {
public:
    I18N_Init() {
        char const* const value = kelcl::environmentVariable("KORVA_I18N");
        bool const isOn =
            value != nullptr && std::strlen(value) == 2 && upper(value[0]) == 'O' && upper(value[1]) == 'N';
        DString::fgI18NState = isOn ? 1 : 0;
    }

private:
    static int upper(char c) { return std::toupper(static_cast<unsigned char>(c)); }
};

// In this order: making the trace functions undoes what the first registered, so that after start-up nobody
// is registered and the new-handler stays.
KELCL_BEFORE_HOSTS DKORVA_Init outOfMemoryHandler;
KELCL_BEFORE_HOSTS kelcl::TraceFunctions traceFunctions;
KELCL_BEFORE_HOSTS I18N_Init nationalLanguageSwitch;

} // namespace
