// The tables of translate.
#include "buffers/translation.h"

#include "buffers/buffer_block.h"
#include "buffers/buffer_factory.h"
#include "buffers/length.h"
#include "buffers/virtual_answers.h"
#include "bytes/byte_edit.h"
#include "bytes/byte_search.h"
#include "characters/stepping.h"

#include <kelcl/dnlsutil.h>

#include <cstdint>
#include <cstring>
#include <vector>

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

} // namespace

ByteTranslation::ByteTranslation(char const* from, unsigned int fromLength, char const* to,
                                 unsigned int toLength, char const& padCharacter)
    : from_(from, fromLength), replaced_(from, fromLength, Encoding::current()) {
    Characters searched(from, fromLength);
    Characters replacements(to, toLength);
    while (!searched.isUsedUp()) {
        std::string_view const character = searched.next();
        std::string_view const replacement =
            replacements.isUsedUp() ? std::string_view(&padCharacter, 1) : replacements.next();
        keepsLengths_ = keepsLengths_ && replacement.size() == character.size();
        if (character.size() > 1) {
            long_.emplace(character, replacement);
            continue;
        }
        std::string_view& single = single_[static_cast<unsigned char>(character.front())];
        if (single.empty()) single = replacement;
    }
}

std::string_view ByteTranslation::replacementOf(char const* character, unsigned int length) const {
    if (length == 1) return single_[static_cast<unsigned char>(*character)];
    auto const found = long_.find(std::string_view(character, length));
    return found == long_.end() ? std::string_view() : found->second;
}

/// Calls `visit` with the pieces of the result: what stays between two replaced characters, and each
/// replacement.
template <class Visit>
void ByteTranslation::visitPieces(DBuffer const& text, Visit visit) const {
    BufferSteps steps;
    std::string_view const bytes(text.contents(), text.length);
    std::size_t kept = 0;
    for (;;) {
        std::size_t const at = replaced_.findFirst(bytes, kept, steps);
        if (at == notFound) break;
        unsigned int const length = steps.length(bytes.data() + at);
        visit(bytes.substr(kept, at - kept));
        visit(replacementOf(bytes.data() + at, length));
        kept = at + length;
    }
    visit(bytes.substr(kept));
}

DBuffer* ByteTranslation::translateBytes(DBuffer const& text) const {
    unsigned char table[256];
    for (unsigned int byte = 0; byte < 256; ++byte) {
        char const replacement = single_[byte].empty() ? static_cast<char>(byte) : single_[byte].front();
        table[byte] = static_cast<unsigned char>(replacement);
    }
    DBuffer* const result = allocateLike(text, text.length);
    copyTranslated(result->contents(), text.contents(), text.length, table);
    return result;
}

/// For a class that a host derived: replaces the characters that its virtual search finds, each asked for
/// once, as the next answer may be another. One that is none of the table's stays.
DBuffer* ByteTranslation::translateFound(DBuffer const& text) const {
    struct Replaced {
        std::size_t begin, end;
        std::string_view by;
    };
    std::vector<Replaced> found;
    std::uint64_t total = text.length;
    BufferSteps steps;
    for (unsigned int start = 1, hit = 0;; start = hit + 1) {
        hit = positionWithin(text.indexOfAnyOf(from_.data(), static_cast<unsigned int>(from_.size()), start),
                             start, text.length);
        if (hit == 0) break;
        char const* const character = text.contents() + hit - 1;
        unsigned int const length = steps.length(character);
        std::string_view const replacement = replacementOf(character, length);
        if (replacement.empty() || (!found.empty() && hit <= found.back().end)) continue;
        found.push_back({hit - 1, hit - 1 + length, replacement});
        total += replacement.size() - length;
    }
    if (total == 0) return text.newBuffer(nullptr, 0);
    if (total >= lengthLimit) raiseLengthOverflow();
    DBuffer* const result = allocateLike(text, static_cast<unsigned int>(total));
    std::string_view const bytes(text.contents(), text.length);
    char* out = result->contents();
    std::size_t kept = 0;
    for (Replaced const& replaced : found) {
        out += bytes.copy(out, replaced.begin - kept, kept);
        out += replaced.by.copy(out, replaced.by.size());
        kept = replaced.end;
    }
    bytes.copy(out, bytes.size() - kept, kept);
    return result;
}

DBuffer* ByteTranslation::of(DBuffer const& text) const {
    if (!isOfLibraryClass(text)) return translateFound(text);
    if (text.length == 0) return text.newBuffer(nullptr, 0);
    if (keepsLengths_ && replaced_.goesByBytes()) return translateBytes(text);
    std::size_t total = keepsLengths_ ? text.length : 0;
    if (!keepsLengths_) visitPieces(text, [&total](std::string_view piece) { total += piece.size(); });
    if (total >= lengthLimit) raiseLengthOverflow();
    DBuffer* const result = allocateLike(text, static_cast<unsigned int>(total));
    char* out = result->contents();
    visitPieces(text, [&out](std::string_view piece) {
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
    for (unsigned int i = 0; i < searched.length; ++i) {
        lowBytes_.insert(static_cast<char>(searched.wide[i]));
        table_.emplace(searched.wide[i], i < replacements.length ? replacements.wide[i] : pad.wide[0]);
    }
}

} // namespace kelcl
