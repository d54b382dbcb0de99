// The translation of bytes by a table of 256 entries: by plain look-up, or in blocks with
// look-ups in the rows of 16 entries. The other edits are in byte_edit.cpp.

#include "bytes/byte_edit.h"

#include "bytes/block_edit.h"
#include "bytes/byte_scan.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace kelcl {

namespace {

constexpr auto unchanged = [] {
    std::array<unsigned char, 256> bytes{};
    for (unsigned int byte = 0; byte < bytes.size(); ++byte)
        bytes[byte] = static_cast<unsigned char>(byte);
    return bytes;
}();

void translateEach(char* out, char const* in, std::size_t n, unsigned char const (&table)[256]) {
    for (std::size_t i = 0; i < n; ++i)
        out[i] = static_cast<char>(table[static_cast<unsigned char>(in[i])]);
}

#if KELCL_HAS_BLOCKS

/// The rows of 16 entries in which a table changes anything, often only a few. Each entry is held as the
/// difference to the byte that it replaces, so that the rows that a byte is not in leave it alone.
class ChangedRows {
public:
    KELCL_BLOCKS explicit ChangedRows(unsigned char const (&table)[256]) {
        std::size_t count = 0;
        for (std::size_t row = 0; row < 16; ++row) {
            differences_[count] = Half::load(&table[16 * row]) ^ Half::load(&unchanged[16 * row]);
            firstBytes_[count] = unchanged[16 * row];
            if (!differences_[count].isZero()) count_ = ++count;
        }
    }

    /// Translates 64 bytes at a time; returns how many.
    KELCL_BLOCKS std::size_t translateBlocks(char* out, char const* in, std::size_t n) const {
        std::size_t i = 0;
        for (; n - i >= 64; i += 64) {
            Block const first = Block::load(in + i);
            Block const second = Block::load(in + i + 32);
            Block firstResult = first;
            Block secondResult = second;
            for (std::size_t row = 0; row < count_; ++row) {
                // A byte's index in the row is its distance from the first one, if that is less than 16.
                Block const firstByte = Block::of(firstBytes_[row]);
                Block const differences = Block::twice(&differences_[row]);
                firstResult = firstResult ^ lookUpOrZero(differences, first - firstByte);
                secondResult = secondResult ^ lookUpOrZero(differences, second - firstByte);
            }
            firstResult.store(out + i);
            secondResult.store(out + i + 32);
        }
        return i;
    }

private:
    Half differences_[16];
    unsigned char firstBytes_[16];
    std::size_t count_ = 0;
};

#endif

// Below this size making the rows costs more than it saves.
constexpr std::size_t vectorSize = 128;

/// Replaces a few bytes, each of which is compared.
struct ReplaceFew {
    FewReplacements const& few;

    char operator()(char byte) const {
        for (std::size_t i = 0; i < few.count; ++i)
            if (few.from[i] == byte) return few.to[i];
        return byte;
    }
#if KELCL_HAS_BLOCKS
    KELCL_BLOCKS_INLINE Block operator()(Block block) const {
        Block result = block;
        for (std::size_t i = few.count; i-- > 0;) // backwards, so that a byte's first place counts
            result = chosen(equal(block, Block::of(few.from[i])), Block::of(few.to[i]), result);
        return result;
    }
#endif
};

void replaceEach(char* out, char const* in, std::size_t n, ReplaceFew replace) {
    std::transform(in, in + n, out, replace);
}

/// Whether comparing so many with each byte of so long a text is faster than to make a table.
bool areFew(std::size_t replaced, std::size_t n) {
    std::size_t const longestText = KELCL_DISPATCH(512, 0); // one by one they would not be
    return replaced <= FewReplacements::most && n <= longestText;
}

} // namespace

void copyTranslated(char* out, char const* in, std::size_t n, unsigned char const (&table)[256]) {
    std::size_t const done =
        n < vectorSize ? 0 : KELCL_DISPATCH(ChangedRows(table).translateBlocks(out, in, n), 0);
    translateEach(out + done, in + done, n - done, table);
}

Replacements::Replacements(std::string_view from, std::string_view to, char pad, std::size_t n)
    : hasTable_(!areFew(from.size(), n)) {
    if (!hasTable_) {
        for (few_.count = 0; few_.count < from.size(); ++few_.count) {
            few_.from[few_.count] = from[few_.count];
            few_.to[few_.count] = few_.count < to.size() ? to[few_.count] : pad;
        }
        return;
    }
    std::memcpy(table_, unchanged.data(), sizeof table_);
    // Backwards, so that a byte's first place counts.
    std::size_t const pairs = std::min(from.size(), to.size());
    for (std::size_t i = from.size(); i-- > pairs;)
        table_[static_cast<unsigned char>(from[i])] = static_cast<unsigned char>(pad);
    for (std::size_t i = pairs; i-- > 0;)
        table_[static_cast<unsigned char>(from[i])] = static_cast<unsigned char>(to[i]);
}

char Replacements::of(char byte) const {
    return hasTable_ ? static_cast<char>(table_[static_cast<unsigned char>(byte)]) : ReplaceFew{few_}(byte);
}

std::size_t Replacements::findFirst(std::string_view text, std::string_view from) const {
    if (from.empty()) return notFound;
    if (hasTable_ && text.size() < vectorSize) // is gone through faster than a set is made
        for (std::size_t i = 0; i < text.size(); ++i)
            if (of(text[i]) != text[i]) return i;
    return findFirstIn(text, from); // also one that is replaced by itself
}

void Replacements::copy(char* out, char const* in, std::size_t n) const {
    if (hasTable_) return copyTranslated(out, in, n, table_);
    ReplaceFew const replace{few_};
    KELCL_DISPATCH(blocks::write(out, n, blocks::Mapped<ReplaceFew>{in, replace}),
                   replaceEach(out, in, n, replace));
}

} // namespace kelcl
