// The tables of translate: which character becomes which, for bytes and for wide characters. Of a character
// that is listed twice the first place counts.
#ifndef KELCL_BUFFERS_TRANSLATION_H
#define KELCL_BUFFERS_TRANSLATION_H

#include "bytes/byte_set.h"
#include "characters/character_set.h"

#include <kelcl/dbuffer.h>

#include <cstddef>
#include <cwchar>
#include <string_view>
#include <unordered_map>

namespace kelcl {

/// Replaces multi-byte characters. The replacements are part of the arguments, which must outlive the table.
class ByteTranslation {
public:
    ByteTranslation(char const* from, unsigned int fromLength, char const* to, unsigned int toLength,
                    char const& padCharacter);

    /// The text with its characters replaced, always in a new buffer.
    DBuffer* of(DBuffer const& text) const;

private:
    template <class Visit>
    void visitPieces(DBuffer const& text, Visit visit) const;
    DBuffer* translateBytes(DBuffer const& text) const;
    DBuffer* translateFound(DBuffer const& text) const;

    /// What stands in place of a character that is replaced; empty for one that is not.
    std::string_view replacementOf(char const* character, unsigned int length) const;

    std::string_view from_;
    CharacterSet replaced_;
    bool keepsLengths_ = true; ///< Whether each replacement is as long as what it replaces.
    std::string_view single_[256];
    std::unordered_map<std::string_view, std::string_view> long_;
};

class WideTranslation {
public:
    /// @throws DInvalidRequest at arguments that do not convert.
    WideTranslation(char const* from, unsigned int fromLength, char const* to, unsigned int toLength,
                    char padCharacter);

    wchar_t of(wchar_t character) const {
        if (!lowBytes_.contains(static_cast<char>(character))) return character;
        auto const found = table_.find(character);
        return found == table_.end() ? character : found->second;
    }

private:
    ByteSet lowBytes_; ///< Of the characters that are replaced: most others are told apart by theirs.
    std::unordered_map<wchar_t, wchar_t> table_;
};

} // namespace kelcl

#endif
