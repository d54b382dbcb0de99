// The texts of an exception.
#include "except/text_chain.h"

#include "except/new_handler_suspension.h"

#include <cstring>
#include <new>

namespace kelcl {

DExcText::Characters* DExcText::Characters::copyOf(char const* first, char const* second) noexcept {
    std::size_t const firstLength = std::strlen(first);
    std::size_t const secondLength = std::strlen(second);
    kelcl::NewHandlerSuspension const suspension;
    char* const block = new (std::nothrow) char[sizeof(Characters) + firstLength + secondLength + 1];
    if (block == nullptr) return nullptr;
    auto* const characters = ::new (block) Characters{1};
    std::memcpy(characters->text(), first, firstLength);
    std::memcpy(characters->text() + firstLength, second, secondLength + 1);
    return characters;
}

void DExcText::Characters::release(Characters* characters) noexcept {
    if (--characters->owners == 0) delete[] reinterpret_cast<char*>(characters);
}

DExcText* DExcText::create(char const* text, DExcText* next) noexcept {
    Characters* const characters = Characters::copyOf(text, "");
    if (characters == nullptr) return nullptr;
    kelcl::NewHandlerSuspension const suspension;
    auto* const node = new (std::nothrow) DExcText(characters, next);
    if (node == nullptr) Characters::release(characters);
    return node;
}

DExcText* DExcText::copyOfNode(DExcText const& node, bool& isWhole) noexcept {
    kelcl::NewHandlerSuspension const suspension;
    auto* const copy = new (std::nothrow) DExcText(node.characters_, nullptr);
    if (copy == nullptr) return nullptr;
    if (Characters* const characters = Characters::copyOf(node.text(), "")) {
        copy->characters_ = characters;
        return copy;
    }
    ++node.characters_->owners;
    copy->next_ = node.next_;
    if (copy->next_ != nullptr) ++copy->next_->owners_;
    isWhole = true;
    return copy;
}

DExcText* DExcText::copyOf(DExcText const* chain) noexcept {
    if (chain == nullptr) return nullptr;
    bool isWhole = false;
    DExcText* const head = copyOfNode(*chain, isWhole);
    if (head == nullptr) return nullptr;
    DExcText* last = head;
    for (DExcText* source = chain->next_; source != nullptr && !isWhole; source = source->next_) {
        last->next_ = copyOfNode(*source, isWhole);
        if (last->next_ == nullptr) { // the rest is shared, so that no text is lost
            ++source->owners_;
            last->next_ = source;
            break;
        }
        last = last->next_;
    }
    return head;
}

void DExcText::release(DExcText* chain) noexcept {
    while (chain != nullptr && --chain->owners_ == 0) {
        DExcText* const next = chain->next_;
        delete chain;
        chain = next;
    }
}

void DExcText::appendText(char const* text) noexcept {
    Characters* const longer = Characters::copyOf(characters_->text(), text);
    if (longer == nullptr) return;
    Characters::release(characters_);
    characters_ = longer;
}

} // namespace kelcl
