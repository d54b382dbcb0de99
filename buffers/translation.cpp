// The tables of translate, each asked once for each character.
#include "buffers/translation.h"

#include "buffers/buffer_block.h"
#include "buffers/host_classes.h"
#include "buffers/length.h"
#include "buffers/mapping.h"
#include "buffers/virtual_answers.h"
#include "bytes/byte_copy.h"
#include "bytes/byte_edit.h"
#include "bytes/byte_search.h"
#include "bytes/byte_set.h"
#include "characters/character_map.h"
#include "characters/character_set.h"
#include "characters/character_text.h"
#include "characters/locale_encoding.h"
#include "characters/value_replacement.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <memory>
#include <memory_resource>
#include <string_view>
#include <utility>
#include <vector>

namespace kelcl {

namespace {

/// A list that needs no allocation while it is short.
template <class Item>
class ShortList {
public:
    ShortList() { items_.reserve(commonSize); }
    void add(Item const& item) { items_.push_back(item); }
    Item const& operator[](std::size_t i) const { return items_[i]; }

private:
    static constexpr std::size_t commonSize = 32;
    alignas(Item) std::array<std::byte, commonSize * sizeof(Item)> room_;
    std::pmr::monotonic_buffer_resource memory_{room_.data(), sizeof room_};
    std::pmr::vector<Item> items_{&memory_};
};

/// What each byte becomes.
class ByteTable {
public:
    ByteTable() {
        for (unsigned int byte = 0; byte < std::size(table_); ++byte)
            table_[byte] = static_cast<unsigned char>(byte);
    }
    void set(char byte, char replacement) {
        table_[static_cast<unsigned char>(byte)] = static_cast<unsigned char>(replacement);
    }
    DBuffer* of(DBuffer const& buffer) const {
        return written(buffer, {buffer.length, true}, [&](char* out) {
            copyTranslated(out, buffer.contents(), buffer.length, table_);
            return std::size_t{buffer.length};
        });
    }

private:
    unsigned char table_[256];
};

/// The bytes of a character that is put in place of another one.
struct Replacement {
    explicit Replacement(std::string_view character) : length(static_cast<unsigned char>(character.size())) {
        std::memcpy(bytes, character.data(), character.size());
    }

    char bytes[7] = {}; ///< Copied all at once.
    unsigned char length;
    static_assert(sizeof bytes >= BufferSteps::longestCharacter);
};

/// Writes a text of a length that is not known beforehand, or of exactly a known one.
class Output {
public:
    /// Into a text of exactly the length that will be written.
    Output(char* text, std::size_t length) : out_(text), end_(text + length) {}
    /// Into memory of its own.
    explicit Output(std::size_t expected)
        : own_(new char[expected]), out_(own_.get()), end_(own_.get() + expected) {}

    /// What was written there.
    std::string_view text() const { return {own_.get(), static_cast<std::size_t>(out_ - own_.get())}; }

    /// From where the piece begins `readable` bytes may be read.
    void add(std::string_view piece, std::size_t readable) {
        constexpr std::size_t atOnce = 16;
        if (room() < piece.size()) grow(piece.size());
        // Most pieces are short: what is copied too much, the next ones overwrite.
        if (piece.size() <= atOnce && readable >= atOnce && room() >= atOnce)
            std::memcpy(out_, piece.data(), atOnce);
        else
            copyBytes(out_, piece.data(), piece.size());
        out_ += piece.size();
    }
    void add(Replacement const& replacement) {
        if (room() < sizeof replacement.bytes)
            return add({replacement.bytes, replacement.length}, sizeof replacement.bytes);
        std::memcpy(out_, replacement.bytes, sizeof replacement.bytes);
        out_ += replacement.length;
    }

private:
    std::size_t room() const { return static_cast<std::size_t>(end_ - out_); }

    void grow(std::size_t needed) {
        std::size_t const used = text().size();
        if (used + needed >= lengthLimit) raiseLengthOverflow();
        std::size_t const larger = 2 * (used + needed);
        std::unique_ptr<char[]> more(new char[larger]);
        std::memcpy(more.get(), own_.get(), used);
        own_ = std::move(more);
        out_ = own_.get() + used;
        end_ = own_.get() + larger;
    }

    std::unique_ptr<char[]> own_;
    char* out_;
    char* end_;
};

/// Replaces multi-byte characters. The arguments must stay as long as the table.
class ByteTranslation {
public:
    ByteTranslation(std::string_view from, std::string_view to, char padCharacter);

    /// The text with its characters replaced.
    DBuffer* of(DBuffer const& buffer) const;
    /// The same for a class that a host derived: with the characters that its virtual search finds.
    DBuffer* ofFound(DBuffer const& buffer) const;

private:
    void write(Output& out, std::string_view text) const;

    /// What stands in place of a character; null if it is not replaced.
    Replacement const* replacementOf(char const* character, std::size_t length) const {
        if (length == 1) {
            if (!replaced_.singleBytes().contains(*character)) return nullptr;
            return &single_[singleNumbers_[static_cast<unsigned char>(*character)]];
        }
        CharacterMap::Number const number = replaced_.numberOf(character, length);
        return number == CharacterMap::none ? nullptr : &long_[number];
    }

    std::string_view from_;
    CharacterSet replaced_;
    bool keepsLengths_ = true; ///< Whether each replacement is as long as what it replaces.
    std::array<unsigned char, 256> singleNumbers_;
    ShortList<Replacement> single_;
    ShortList<Replacement> long_;
    ByteTable bytes_; ///< The same where all are single bytes.
};

ByteTranslation::ByteTranslation(std::string_view from, std::string_view to, char padCharacter)
    : from_(from), replaced_(Encoding::current()) {
    Encoding const& encoding = replaced_.encoding();
    ListedCharacters searched(from, encoding);
    ListedCharacters replacements(to, encoding);
    unsigned char singles = 0;
    while (!searched.isUsedUp()) {
        std::string_view const character = searched.next();
        std::string_view const replacement =
            replacements.isUsedUp() ? std::string_view(&padCharacter, 1) : replacements.next();
        if (!replaced_.add(character)) continue;
        keepsLengths_ = keepsLengths_ && replacement.size() == character.size();
        if (character.size() > 1) {
            long_.add(Replacement(replacement));
        } else {
            singleNumbers_[static_cast<unsigned char>(character.front())] = singles++;
            single_.add(Replacement(replacement));
            bytes_.set(character.front(), replacement.front());
        }
    }
}

/// Writes the pieces of the result: what stays between two replaced characters, and each replacement.
void ByteTranslation::write(Output& out, std::string_view text) const {
    constexpr int charactersInTurn = CharacterSet::charactersInTurn;
    BufferSteps steps(replaced_.encoding());
    std::size_t kept = 0;
    for (std::size_t at = replaced_.findFirst(text, 0, steps); at != notFound;
         at = replaced_.findFirst(text, at, steps)) {
        for (int left = charactersInTurn; left > 0 && at < text.size(); --left) {
            std::size_t const length = steps.length(text.data() + at);
            if (Replacement const* const replacement = replacementOf(text.data() + at, length)) {
                out.add(text.substr(kept, at - kept), text.size() - kept);
                out.add(*replacement);
                kept = at + length;
                left = charactersInTurn;
            }
            at += length;
        }
    }
    out.add(text.substr(kept), text.size() - kept);
}

DBuffer* ByteTranslation::of(DBuffer const& buffer) const {
    std::string_view const text = bytesOf(buffer);
    if (keepsLengths_ && replaced_.isByteSearchable()) return bytes_.of(buffer);
    if (keepsLengths_)
        return written(buffer, {text.size(), true}, [&](char* result) {
            Output out(result, text.size());
            write(out, text);
            return text.size();
        });
    Output out(text.size() + text.size() / 2);
    write(out, text);
    return newBufferOf(buffer, out.text());
}

/// Each character that is found is asked for once, as the next answer may be another. One that is none of the
/// table's stays.
DBuffer* ByteTranslation::ofFound(DBuffer const& buffer) const {
    struct Replaced {
        std::size_t begin, end;
        Replacement const* by;
    };
    std::vector<Replaced> found;
    std::uint64_t total = buffer.length;
    BufferSteps steps;
    for (unsigned int start = 1, hit = 0;; start = hit + 1) {
        hit =
            positionWithin(buffer.indexOfAnyOf(from_.data(), static_cast<unsigned int>(from_.size()), start),
                           start, buffer.length);
        if (hit == 0) break;
        char const* const character = buffer.contents() + hit - 1;
        unsigned int const length = steps.length(character);
        Replacement const* const replacement = replacementOf(character, length);
        if (replacement == nullptr || (!found.empty() && hit <= found.back().end)) continue;
        found.push_back({hit - 1, hit - 1 + length, replacement});
        total += replacement->length - length;
    }
    if (total == 0) return buffer.newBuffer(nullptr, 0);
    if (total >= lengthLimit) raiseLengthOverflow();
    DBuffer* const result = allocateLike(buffer, static_cast<unsigned int>(total));
    std::string_view const text = bytesOf(buffer);
    Output out(result->contents(), total);
    std::size_t kept = 0;
    for (Replaced const& replaced : found) {
        out.add(text.substr(kept, replaced.begin - kept), text.size() - kept);
        out.add(*replaced.by);
        kept = replaced.end;
    }
    out.add(text.substr(kept), text.size() - kept);
    return result;
}

bool isAscii(wchar_t value) { return static_cast<std::uint32_t>(value) < 0x80; }

/// Replaces wide characters.
class WideTranslation {
public:
    /// The arguments are converted texts, the pad character being one.
    WideTranslation(CharacterText& from, CharacterText& to, CharacterText const& pad) {
        for (std::size_t value = 0; value < ascii_.size(); ++value)
            ascii_[value] = static_cast<wchar_t>(value);
        CharacterText::Place place = 0;
        wchar_t const padding = pad.take(place);
        CharacterText::Place next = 0;
        for (place = 0; place < from.end();) {
            wchar_t const value = from.take(place);
            add(value, next < to.end() ? to.take(next) : padding);
        }
    }

    wchar_t of(wchar_t value) const {
        if (isAscii(value)) return ascii_[static_cast<std::size_t>(value)];
        if (!lowBytes_.contains(static_cast<char>(value))) return value;
        CharacterMap::Number const number = numbers_.find(CharacterMap::keyOf(value));
        return number == CharacterMap::none ? value : replacements_[number];
    }

    /// Whether ASCII characters become ASCII characters and no others are replaced, so that the table of
    /// bytes does in text that is plain UTF-8.
    bool isAsciiOnly() const { return isAsciiOnly_; }
    ByteTable bytes() const {
        ByteTable table;
        for (std::size_t value = 0; value < ascii_.size(); ++value)
            table.set(static_cast<char>(value), static_cast<char>(ascii_[value]));
        return table;
    }

private:
    void add(wchar_t value, wchar_t replacement) {
        CharacterMap::Number const number = numbers_.size();
        if (numbers_.add(CharacterMap::keyOf(value)) != number) return;
        replacements_.add(replacement);
        isAsciiOnly_ = isAsciiOnly_ && isAscii(value) && isAscii(replacement);
        if (isAscii(value))
            ascii_[static_cast<std::size_t>(value)] = replacement;
        else
            lowBytes_.insert(static_cast<char>(value));
    }

    CharacterMap numbers_;
    ShortList<wchar_t> replacements_;
    std::array<wchar_t, 0x80> ascii_; ///< What ASCII characters become.
    ByteSet lowBytes_; ///< Of the other characters that are replaced: most are told apart by theirs.
    bool isAsciiOnly_ = true;
};

/// Both ways in the same: for plain UTF-8, where few characters are replaced and some of them, or of those in
/// their place, are not ASCII. Null for anything else.
DBuffer* translateFew(DBuffer const& buffer, std::string_view from, std::string_view to, char padCharacter) {
    if (buffer.length == 0 || (kelcl::isAscii(from) && kelcl::isAscii(to)) || !isUtf8Locale()) return nullptr;
    ValueReplacement few;
    if (!few.take(from, to, padCharacter)) return nullptr;
    return mappedPlain(buffer,
                       [&few](wchar_t* values, std::size_t count) { return few.replace(values, count); });
}

} // namespace

DBuffer* translateBytes(DBuffer const& buffer, std::string_view from, std::string_view to,
                        char padCharacter) {
    // In a longer text the byte kernels pass over what stays, which may be most of it.
    constexpr unsigned int shortText = 2048;
    if (buffer.length <= shortText && isLibraryClass(buffer))
        if (DBuffer* const result = translateFew(buffer, from, to, padCharacter)) return result;
    ByteTranslation const table(from, to, padCharacter);
    return isLibraryClass(buffer) ? table.of(buffer) : table.ofFound(buffer);
}

DBuffer* translateWide(DBuffer const& buffer, std::string_view from, std::string_view to, char padCharacter) {
    if (DBuffer* const result = translateFew(buffer, from, to, padCharacter)) return result;
    bool const isUtf8 = isUtf8Locale();
    CharacterText searched(from, isUtf8);
    CharacterText replacements(to, isUtf8);
    CharacterText pad({&padCharacter, 1}, isUtf8);
    if (!searched.isPlain() || !replacements.isPlain() || !pad.isPlain()) {
        // Of all that does not convert the text is reported first.
        CharacterText text(bytesOf(buffer));
        for (CharacterText* const each : {&text, &searched, &replacements, &pad})
            each->convert();
    }
    WideTranslation const table(searched, replacements, pad);
    if (table.isAsciiOnly() && CharacterText(bytesOf(buffer)).isPlain()) return table.bytes().of(buffer);
    return mapped(buffer, [&table](wchar_t value) { return table.of(value); });
}

} // namespace kelcl
