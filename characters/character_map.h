// Numbers for the characters of a set, in the order in which they are first listed: a table that is made once
// and then asked for each character of a text.
#ifndef KELCL_CHARACTERS_CHARACTER_MAP_H
#define KELCL_CHARACTERS_CHARACTER_MAP_H

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

namespace kelcl {

/// Characters are either all given by their bytes or all by their values.
class CharacterMap {
public:
    /// Never 0.
    using Key = std::uint64_t;
    using Number = std::uint32_t;
    static constexpr Number none = 0xFFFFFFFF;

    static Key keyOf(wchar_t value) { return Key{static_cast<std::uint32_t>(value)} + 1; }
    /// Of a character of two to six bytes: the first two, the last two, and those between if there are any.
    static Key keyOf(char const* bytes, std::size_t length) {
        auto const two = [bytes](std::size_t at) {
            std::uint16_t pair;
            std::memcpy(&pair, bytes + at, sizeof pair);
            return Key{pair};
        };
        Key const middle = length > 4 ? two(2) : 0;
        return two(0) | two(length - 2) << 16 | middle << 32 | Key{length} << 48;
    }

    CharacterMap() = default;
    CharacterMap(CharacterMap const&) = delete;
    CharacterMap& operator=(CharacterMap const&) = delete;

    /// How many characters there are; the next new one gets this number.
    Number size() const { return size_; }

    /// Adds a character unless it is there already, and returns its number.
    Number add(Key key) {
        if (size_ == 0) room_.fill(unused);
        std::size_t slot = slotOf(key);
        if (keys_[slot] == key) return numbers_[slot];
        if (2 * std::size_t{size_} == mask_ + 1) {
            grow();
            slot = slotOf(key);
        }
        keys_[slot] = key;
        return numbers_[slot] = size_++;
    }

    /// The number of a character, or none.
    Number find(Key key) const {
        if (size_ == 0) return none;
        std::size_t const slot = slotOf(key);
        return keys_[slot] == key ? numbers_[slot] : none;
    }
    bool contains(Key key) const { return find(key) != none; }

private:
    static constexpr Key unused = 0;
    static constexpr std::size_t slotsInPlace = 64;
    static constexpr int bitsOfKey = 64;
    static constexpr int bitsInPlace = 6;

    /// The slot that has the key, or the free one where it belongs: half of the slots at least are free.
    std::size_t slotOf(Key key) const {
        constexpr Key golden = 0x9E3779B97F4A7C15U; // spreads keys that lie together
        std::size_t slot = key * golden >> shift_;
        while (keys_[slot] != key && keys_[slot] != unused)
            slot = (slot + 1) & mask_;
        return slot;
    }

    void grow();

    Number size_ = 0;
    int shift_ = bitsOfKey - bitsInPlace;
    std::size_t mask_ = slotsInPlace - 1;
    std::array<Key, slotsInPlace> room_;
    std::array<Number, slotsInPlace> numbersRoom_;
    Key* keys_ = room_.data();
    Number* numbers_ = numbersRoom_.data();
    std::vector<Key> moreRoom_;
    std::vector<Number> moreNumbersRoom_;
};

} // namespace kelcl

#endif
