// DBase: the version, the message catalog and the new-handler. Reports of the new-handler name this file, and
// hosts match on that.
#include "except/environment.h"
#include "except/raise.h"
#include "except/text_copy.h"

#include <kelcl/dbase.h>

#include <atomic>
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
