// How the texts of an exception are stored, copied and freed.
#include "except/text_chain.h"

#include "except/new_handler_suspension.h"

#include <cstring>
#include <new>

namespace kelcl {

namespace {

/// Gives up one of those that a count stands for; returns whether it was the last one. A last one is alone
/// with what is counted, and need not change the count.
bool giveUp(std::atomic<std::size_t>& count) noexcept {
    return count.load(std::memory_order_acquire) == 1 || count.fetch_sub(1, std::memory_order_acq_rel) == 1;
}

void* roomForNode(std::size_t characters) noexcept {
    NewHandlerSuspension const suspension;
    return ::operator new[](sizeof(DExcText) + characters, std::nothrow);
}

} // namespace

DExcText* DExcText::create(char const* first, char const* second, DExcText* next) noexcept {
    std::size_t const firstLength = std::strlen(first);
    std::size_t const secondLength = std::strlen(second);
    void* const room = roomForNode(firstLength + secondLength + 1);
    if (room == nullptr) return nullptr;
    auto* const node = ::new (room) DExcText(static_cast<DExcText*>(room), next);
    auto* const characters = static_cast<char*>(room) + sizeof(DExcText);
    std::memcpy(characters, first, firstLength);
    std::memcpy(characters + firstLength, second, secondLength);
    characters[firstLength + secondLength] = '\0';
    return node;
}

DExcText* DExcText::borrowing(DExcText* source) noexcept {
    void* const room = roomForNode(0);
    if (room == nullptr) return nullptr;
    source->characters_->holders_.fetch_add(1, std::memory_order_relaxed);
    return ::new (room) DExcText(source->characters_, share(source->next_));
}

DExcText* DExcText::copyOf(DExcText* chain) noexcept {
    if (chain == nullptr) return nullptr;
    DExcText* const head = create(chain->text(), nullptr);
    if (head == nullptr) return borrowing(chain);
    DExcText* last = head;
    for (DExcText* source = chain->next_; source != nullptr; source = source->next_) {
        last->next_ = create(source->text(), nullptr);
        if (last->next_ == nullptr) { // the rest is shared, so that no text is lost
            last->next_ = share(source);
            break;
        }
        last = last->next_;
    }
    return head;
}

DExcText* DExcText::appended(DExcText* chain, char const* text) noexcept {
    DExcText* const longer = create(chain->text(), text, chain->next_);
    if (longer == nullptr) return nullptr;
    share(longer->next_);
    release(chain); // only now: `text` may point into it
    return longer;
}

DExcText* DExcText::share(DExcText* chain) noexcept {
    if (chain != nullptr) chain->owners_.fetch_add(1, std::memory_order_relaxed);
    return chain;
}

void DExcText::release(DExcText* chain) noexcept {
    while (chain != nullptr && giveUp(chain->owners_)) {
        DExcText* const next = chain->next_;
        if (chain->characters_ != chain) releaseCharacters(chain->characters_);
        releaseCharacters(chain);
        chain = next;
    }
}

void DExcText::releaseCharacters(DExcText* block) noexcept {
    if (giveUp(block->holders_)) ::operator delete[](block);
}

} // namespace kelcl
