// The tables of translate.
#include "nls/translation.h"

#include "nls/stepping.h"
#include "string/buffer_block.h"
#include "string/length.h"

#include <kelcl/dnlsutil.h>

#include <cstring>

namespace kelcl {

namespace {

/// Takes the characters of a counted string one after the other.
class Characters {
public:
    Characters(char const* text, std::size_t n) : rest_(text, n) {}

    bool isUsedUp() const { return rest_.empty(); }
    std::string_view next() {
        std::string_view const character = rest_.substr(0, steps_.lengthWithin(rest_.data(), rest_.size()));
        rest_.remove_prefix(character.size());
        return character;
    }

private:
    std::string_view rest_;
    BufferSteps steps_;
};

/// Calls `visit` with the characters of a text.
template <class Visit>
void visitCharacters(DBuffer const& text, Visit visit) {
    BufferSteps steps;
    for (std::size_t at = 0; at < text.length;) {
        unsigned int const bytes = steps.length(text.contents() + at);
        visit(text.contents() + at, bytes);
        at += bytes;
    }
}

} // namespace

ByteTranslation::ByteTranslation(char const* from, unsigned int fromLength, char const* to,
                                 unsigned int toLength, char const& padCharacter) {
    Characters searched(from, fromLength);
    Characters replacements(to, toLength);
    while (!searched.isUsedUp()) {
        std::string_view const character = searched.next();
        std::string_view const replacement =
            replacements.isUsedUp() ? std::string_view(&padCharacter, 1) : replacements.next();
        if (character.size() > 1) {
            long_.emplace(character, replacement);
            continue;
        }
        auto const byte = static_cast<unsigned char>(character.front());
        if (!isReplaced_[byte]) single_[byte] = replacement;
        isReplaced_[byte] = true;
    }
}

std::string_view const* ByteTranslation::replacementOf(char const* character, unsigned int length) const {
    if (length == 1) {
        auto const byte = static_cast<unsigned char>(*character);
        return isReplaced_[byte] ? &single_[byte] : nullptr;
    }
    if (long_.empty()) return nullptr;
    auto const found = long_.find(std::string_view(character, length));
    return found == long_.end() ? nullptr : &found->second;
}

DBuffer* ByteTranslation::of(DBuffer const& text) const {
    std::size_t total = 0;
    visitCharacters(text, [&](char const* p, unsigned int bytes) {
        std::string_view const* const replacement = replacementOf(p, bytes);
        total += replacement != nullptr ? replacement->size() : bytes;
    });
    if (total == 0) return text.newBuffer(nullptr, 0);
    if (total >= lengthLimit) raiseLengthOverflow();
    DBuffer* const result = allocateLike(text, static_cast<unsigned int>(total));
    char* out = result->contents();
    visitCharacters(text, [&](char const* p, unsigned int bytes) {
        std::string_view const* const replacement = replacementOf(p, bytes);
        std::string_view const piece = replacement != nullptr ? *replacement : std::string_view(p, bytes);
        std::memcpy(out, piece.data(), piece.size());
        out += piece.size();
    });
    return result;
}

WideTranslation::WideTranslation(char const* from, unsigned int fromLength, char const* to,
                                 unsigned int toLength, char padCharacter) {
    DWBuffer const searched(from, fromLength);
    DWBuffer const replacements(to, toLength);
    DWBuffer const pad(&padCharacter, 1);
    for (unsigned int i = 0; i < searched.length; ++i)
        table_.emplace(searched.wide[i], i < replacements.length ? replacements.wide[i] : pad.wide[0]);
}

} // namespace kelcl
