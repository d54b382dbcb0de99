// The hash of a text's bytes. Included by dstring.h; not for hosts.
//
// Sixteen bytes at a time are multiplied, eight by eight, and the halves of the product folded into one word:
// each bit of it depends on all bits of both factors. Before that both factors are mixed with constants, or
// with what came before, so that bytes which are zero do not make the product zero.
#ifndef KELCL_DETAIL_HASH_H
#define KELCL_DETAIL_HASH_H

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace kelcl {

/// The exclusive or of the halves of the product of 128 bits.
inline std::uint64_t foldedProduct(std::uint64_t left, std::uint64_t right) noexcept {
    __extension__ using Wide = unsigned __int128;
    Wide const product = static_cast<Wide>(left) * right;
    return static_cast<std::uint64_t>(product) ^ static_cast<std::uint64_t>(product >> 64);
}

template <class Word>
std::uint64_t wordAt(char const* bytes) noexcept {
    Word word;
    std::memcpy(&word, bytes, sizeof word);
    return word;
}

/// A hash of the bytes, the same for equal bytes within a program. The library's versions may differ in it.
inline std::size_t hashOf(char const* bytes, std::size_t length) noexcept {
    // The fractions of square roots of small primes: bits without a pattern.
    constexpr std::uint64_t root3 = 0xBB67AE8584CAA73B, root5 = 0x3C6EF372FE94F82B,
                            root7 = 0xA54FF53A5F1D36F1, root11 = 0x510E527FADE682D1,
                            root13 = 0x9B05688C2B3E6C1F;
    using Word = std::uint64_t;
    using HalfWord = std::uint32_t;
    std::uint64_t hash = root3, front = 0, back = 0;
    if (length > 2 * sizeof(Word)) {
        std::size_t left = length;
        if (left > 8 * sizeof(Word)) { // four at once, none of which waits for another
            std::uint64_t second = root3, third = root3, fourth = root3;
            for (; left > 8 * sizeof(Word); bytes += 8 * sizeof(Word), left -= 8 * sizeof(Word)) {
                hash = foldedProduct(wordAt<Word>(bytes) ^ root5, wordAt<Word>(bytes + 8) ^ hash);
                second = foldedProduct(wordAt<Word>(bytes + 16) ^ root7, wordAt<Word>(bytes + 24) ^ second);
                third = foldedProduct(wordAt<Word>(bytes + 32) ^ root11, wordAt<Word>(bytes + 40) ^ third);
                fourth = foldedProduct(wordAt<Word>(bytes + 48) ^ root13, wordAt<Word>(bytes + 56) ^ fourth);
            }
            hash ^= second ^ third ^ fourth;
        }
        for (; left > 2 * sizeof(Word); bytes += 2 * sizeof(Word), left -= 2 * sizeof(Word))
            hash = foldedProduct(wordAt<Word>(bytes) ^ root5, wordAt<Word>(bytes + 8) ^ hash);
        front =
            wordAt<Word>(bytes + left - 16); // may be bytes that were taken already: there are enough before
        back = wordAt<Word>(bytes + left - 8);
    } else if (length >= sizeof(Word)) {
        front = wordAt<Word>(bytes);
        back = wordAt<Word>(bytes + length - sizeof(Word));
    } else if (length >= sizeof(HalfWord)) {
        front = wordAt<HalfWord>(bytes);
        back = wordAt<HalfWord>(bytes + length - sizeof(HalfWord));
    } else if (length > 0) { // the first, the middle and the last of up to three
        auto const at = [bytes](std::size_t index) { return wordAt<unsigned char>(bytes + index); };
        front = at(0) << 16 | at(length / 2) << 8 | at(length - 1);
    }
    return foldedProduct(root5 ^ length, foldedProduct(front ^ root5, back ^ hash));
}

} // namespace kelcl

#endif
