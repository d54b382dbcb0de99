// The translation of bytes by a table of 256 entries: by plain look-up, or in blocks with
// look-ups in the rows of 16 entries. The other edits are in byte_edit.cpp.

#include "bytes/byte_edit.h"

#include "bytes/byte_scan.h"

#include <array>

namespace kelcl {

namespace {

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
    static constexpr auto unchanged = [] {
        std::array<unsigned char, 256> bytes{};
        for (unsigned int byte = 0; byte < bytes.size(); ++byte)
            bytes[byte] = static_cast<unsigned char>(byte);
        return bytes;
    }();

    Half differences_[16];
    unsigned char firstBytes_[16];
    std::size_t count_ = 0;
};

#endif

// Below this size making the rows costs more than it saves.
constexpr std::size_t vectorSize = 128;

} // namespace

void copyTranslated(char* out, char const* in, std::size_t n, unsigned char const (&table)[256]) {
    std::size_t const done =
        n < vectorSize ? 0 : KELCL_DISPATCH(ChangedRows(table).translateBlocks(out, in, n), 0);
    translateEach(out + done, in + done, n - done, table);
}

} // namespace kelcl
