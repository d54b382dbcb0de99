// The one line in which a host program says in what state it found the library, and what asks for it.
#ifndef KELCL_TESTS_BASE_START_UP_STATE_H
#define KELCL_TESTS_BASE_START_UP_STATE_H

#include <string>

/// The state of the library as this program sees it: "handler=… default=… user=… switch=…".
std::string observedState();

inline std::string describedState(bool handlerIsInstalled, void const* defaultFunction,
                                  void const* userFunction, int nationalLanguageState) {
    return std::string("handler=") + (handlerIsInstalled ? "installed" : "missing") +
           " default=" + (defaultFunction == nullptr ? "null" : "set") +
           " user=" + (userFunction == nullptr ? "null" : "set") +
           " switch=" + std::to_string(nationalLanguageState);
}

#endif
