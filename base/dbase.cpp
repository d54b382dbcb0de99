// DBase's version and message catalog, the new-handler, and the library's start-up: its three static objects.
// They stand in one unit because their order is relied on.
#include "except/environment.h"
#include "except/raise.h"
#include "except/text_copy.h"

#include <kelcl/dbase.h>
#include <kelcl/dstring.h>

#include <atomic>
#include <cctype>
#include <cstring>
#include <new>

namespace {

constexpr unsigned long newHandlerLine = 175; // hosts match on it

} // namespace

char* DBase::msgFile = nullptr;

DBase::Version DBase::version() noexcept { return {310, 1}; }

// The first look-up may come from two threads at once, each failing on its own: the first to set the name
// wins.
char const* DBase::messageFile() noexcept {
    std::atomic_ref<char*> const name(msgFile);
    if (char const* const known = name.load()) return known;
    char const* const configured = kelcl::environmentVariable("KORVA MSGFILE");
    kelcl::OwnedText copy = kelcl::copyText(configured != nullptr ? configured : "kelcl.cat");
    char* winner = nullptr;
    return name.compare_exchange_strong(winner, copy.get()) ? copy.release() : winner;
}

void DBase::setMessageFile(char const* fileName) noexcept {
    if (fileName == nullptr) return;
    kelcl::OwnedText copy = kelcl::copyText(fileName); // first: the name may be the one that is kept
    if (copy == nullptr) return;
    delete[] msgFile;
    msgFile = copy.release();
}

DMessageText DBase::messageText(unsigned long messageId, char const* t1, char const* t2, char const* t3,
                                char const* t4, char const* t5, char const* t6, char const* t7,
                                char const* t8, char const* t9) noexcept {
    return DMessageText(messageId, messageFile(), t1, t2, t3, t4, t5, t6, t7, t8, t9);
}

DKORVA_Init::DKORVA_Init() {
    DException::setTraceFunction(*this);
    std::set_new_handler(newHandler);
}

// Not inline: hosts may rely on the symbol.

void DKORVA_Init::write(char const* line) { TraceFn::write(line); }

void DKORVA_Init::newHandler() {
    constexpr unsigned long outOfMemory = 4;
    kelcl::raise(
        [] { return DOutOfMemory(DBase::messageText(outOfMemory), outOfMemory, DException::unrecoverable); },
        {"dbase", nullptr, newHandlerLine});
}

// Start-up

int DString::fgI18NState = 0;
DException::TraceFn* DExceptStaticPtr::defaultFunction = nullptr;
DException::TraceFn* DExceptStaticPtr::userFunction = nullptr;

namespace {

/// The default trace function, in the state in which the exceptions begin: nobody is registered.
class TraceFunctions {
public:
    TraceFunctions() {
        DExceptStaticPtr::defaultFunction = nullptr;
        DExceptStaticPtr::userFunction = nullptr;
    }
    DExceptTraceFn standard;
};

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
DKORVA_Init outOfMemoryHandler;
TraceFunctions traceFunctions;
I18N_Init nationalLanguageSwitch;

} // namespace

DException::TraceFn* DExceptStaticPtr::traceFunction() noexcept {
    if (DException::TraceFn* const user = std::atomic_ref(userFunction).load()) return user;
    std::atomic_ref const standard(defaultFunction); // two threads may fail at once
    if (standard.load() == nullptr) standard.store(&traceFunctions.standard);
    return standard.load();
}
