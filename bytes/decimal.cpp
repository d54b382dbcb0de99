// Decimal notation of long numbers, both ways, by the same walk: chunks of the number in the one base are
// limbs in the other, and neighbours are joined, the higher one times a power, until one number is left.
// The arithmetic for that is in decimal_limbs.h.

#include "bytes/decimal.h"

#include "bytes/byte_search.h"
#include "bytes/decimal_limbs.h"
#include "bytes/digit_pairs.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cstring>
#include <iterator>
#include <limits>
#include <vector>

namespace kelcl {

namespace {

using limbs::Limb;

/// Up to so many chunks are joined by appending, which is faster then, though quadratic.
constexpr std::size_t fewChunks = 320;

/// Blocks that a longer number is made of: a power of two or three times one, as transforms have them.
constexpr std::size_t blockChunks = 64;

/// Turns n chunks into a number of n limbs, in place, by appending two at a time.
template <class Base>
void joinFew(Limb* chunks, std::size_t n) {
    std::array<Limb, fewChunks> number;
    std::fill_n(number.data(), n, 0);
    std::size_t i = n;
    if (n % 2 != 0) number[0] = chunks[--i];
    for (; i > 0; i -= 2)
        Base::append(number.data(), n - i + 2, chunks[i - 1], chunks[i - 2]);
    Base::settle(number.data(), n);
    std::copy_n(number.data(), n, chunks);
}

/// What a number is multiplied by when so many chunks, an even number, are put below it.
template <class Base>
std::vector<Limb> powerOfChunks(std::size_t chunks) {
    std::vector<Limb> power(chunks);
    power[0] = 1;
    for (std::size_t i = 0; i < chunks; i += 2)
        Base::append(power.data(), i + 2, 0, 0);
    Base::settle(power.data(), chunks);
    return power;
}

/// Turns n chunks, the lowest first, into the number in n limbs, in place: first blocks of few, then every
/// two neighbours, until one block is left.
template <class Base>
void joinChunks(Limb* chunks, std::size_t n) {
    if (n <= fewChunks) return joinFew<Base>(chunks, n);
    ExactArithmetic const exact;
    std::size_t size = n;
    while (size > blockChunks)
        size = (size + 1) / 2;
    size = size > blockChunks / 4 * 3 ? blockChunks : blockChunks / 4 * 3;
    for (std::size_t i = 0; i < n; i += size)
        joinFew<Base>(chunks + i, std::min(size, n - i));

    std::vector<Limb> power = powerOfChunks<Base>(size);
    while (size < n) {
        limbs::Multiplier<Base> multiplier(std::move(power));
        std::vector<Limb> product(2 * size);
        for (std::size_t i = 0; i + size < n; i += 2 * size) {
            std::size_t const both = std::min(2 * size, n - i);
            std::vector<Limb> high(chunks + i + size, chunks + i + both);
            high.resize(size);
            multiplier.multiply(product.data(), high.data());
            limbs::addTo<Base>(product.data(), both, chunks + i, size);
            std::copy_n(product.data(), both, chunks + i);
        }
        size *= 2;
        power = size < n ? multiplier.square() : std::vector<Limb>();
    }
}

/// Writes the lowest `digits` digits of the value, an even number of them.
void writeDigits(char* out, std::uint32_t value, std::size_t digits) {
    for (std::size_t i = digits; i > 0; i -= 2) {
        std::memcpy(out + i - 2, &digitPairs[2 * (value % 100)], 2);
        value /= 100;
    }
}

/// Puts limbs of sixteen digits, the highest first, into text, without leading zeros.
class LimbWriter {
public:
    explicit LimbWriter(char* out) : begin_(out), end_(out) {}

    bool hasWritten() const { return end_ != begin_; }
    std::size_t size() const { return static_cast<std::size_t>(end_ - begin_); }

    void write(Limb limb) {
        if (hasWritten()) {
            writeAllDigits(end_, limb);
            end_ += digitsOfLimb;
        } else if (limb != 0) {
            std::array<char, digitsOfLimb> digits;
            writeAllDigits(digits.data(), limb);
            char const* const first =
                std::find_if(digits.begin(), digits.end(), [](char digit) { return digit != '0'; });
            end_ = std::copy(first, static_cast<char const*>(digits.end()), end_);
        }
    }

private:
    static constexpr std::size_t digitsOfLimb = limbs::Decimal::digitsOfLimb;

    static void writeAllDigits(char* out, Limb limb) {
        constexpr Limb half = 100'000'000;
        writeDigits(out, static_cast<std::uint32_t>(limb / half), 8);
        writeDigits(out + 8, static_cast<std::uint32_t>(limb % half), 8);
    }

    char* begin_;
    char* end_;
};

/// The value of up to 19 digits.
Limb chunkOf(std::string_view digits) {
    Limb value = 0;
    for (char const digit : digits)
        value = value * 10 + static_cast<Limb>(digit - '0');
    return value;
}

/// The power of ten that has so many zeros, up to 19.
constexpr Limb powerOfTen(std::size_t zeros) {
    Limb power = 1;
    for (; zeros != 0; --zeros)
        power *= 10;
    return power;
}

std::string_view withoutLeading(std::string_view text, char byte) {
    return text.substr(std::min(findByteOtherThan(text, byte), text.size()));
}

/// Limbs that are zero at first, those of a short number without an allocation.
class Limbs {
public:
    explicit Limbs(std::size_t size) : size_(size), many_(size > few_.size() ? size : 0) {
        if (many_.empty()) std::fill_n(few_.data(), size, 0);
    }

    Limb* data() { return many_.empty() ? few_.data() : many_.data(); }
    std::size_t size() const { return size_; }

private:
    std::size_t size_;
    std::array<Limb, fewChunks> few_;
    std::vector<Limb> many_;
};

constexpr std::size_t bytesOfLimb = sizeof(Limb);

/// The value of up to eight big-endian bytes.
Limb limbOf(std::string_view bytes) {
    Limb value = 0;
    for (char const byte : bytes)
        value = value << 8U | static_cast<unsigned char>(byte);
    return value;
}

/// The bits of a big-endian number from bit `first` on, at least 57 of them unless there are fewer.
Limb bitsFrom(std::string_view bytes, std::size_t first) {
    std::size_t const end = bytes.size() - first / 8;
    std::size_t const size = std::min(end, bytesOfLimb);
    return limbOf(bytes.substr(end - size, size)) >> first % 8;
}

/// Writes the big-endian bytes of a number other than zero without leading zero bytes.
std::size_t writeBytes(char* out, Limb const* number, std::size_t n) {
    while (number[n - 1] == 0)
        --n;
    char* end = out;
    auto const write = [&end](Limb limb, std::size_t bytes) {
        for (std::size_t i = bytes; i-- > 0;)
            *end++ = static_cast<char>(limb >> i * 8 & 0xFFU);
    };
    write(number[n - 1], bytesOfLimb - static_cast<std::size_t>(std::countl_zero(number[n - 1])) / 8);
    while (--n > 0)
        write(number[n - 1], bytesOfLimb);
    return static_cast<std::size_t>(end - out);
}

} // namespace

std::size_t decimalDigitsBound(std::size_t bytes) {
    return bytes * 157828 / 65536 + 1; // the factor is just above log 256 / log 10
}

std::size_t writeDecimal(char* out, std::string_view bytes) {
    using Base = limbs::Decimal;
    constexpr Limb chunkMask = (Limb{1} << Base::bitsOfChunk) - 1;
    bytes = withoutLeading(bytes, '\0');
    if (bytes.size() <= bytesOfLimb)
        return static_cast<std::size_t>(
            std::to_chars(out, out + std::numeric_limits<Limb>::digits10 + 1, limbOf(bytes)).ptr - out);
    std::size_t const chunks = bytes.size() * 8 / Base::bitsOfChunk + 1;
    Limbs number(chunks);
    for (std::size_t i = 0; i < chunks; ++i)
        number.data()[i] = bitsFrom(bytes, i * Base::bitsOfChunk) & chunkMask;
    joinChunks<Base>(number.data(), chunks);
    LimbWriter writer(out);
    for (std::size_t i = chunks; i-- > 0;)
        writer.write(number.data()[i]);
    if (writer.hasWritten()) return writer.size();
    *out = '0';
    return 1;
}

std::size_t bytesBound(std::size_t digits) {
    return digits * 27214 / 65536 + 1; // the factor is just above log 10 / log 256
}

std::size_t readDecimal(char* out, std::string_view digits) {
    using Base = limbs::Binary;
    digits = withoutLeading(digits, '0');
    if (digits.empty()) {
        *out = '\0';
        return 1;
    }
    constexpr std::size_t ofOneLimb = std::numeric_limits<Limb>::digits10;
    if (digits.size() <= 2 * ofOneLimb) {
        std::size_t const high = digits.size() - std::min(digits.size(), ofOneLimb);
        limbs::WideLimb const value =
            limbs::WideLimb{chunkOf(digits.substr(0, high))} * (high == 0 ? 0 : powerOfTen(ofOneLimb)) +
            chunkOf(digits.substr(high));
        Limb const number[] = {static_cast<Limb>(value), static_cast<Limb>(value >> 64U)};
        return writeBytes(out, number, std::size(number));
    }
    std::size_t const chunks = (digits.size() + Base::digitsOfChunk - 1) / Base::digitsOfChunk;
    Limbs number(chunks);
    for (std::size_t i = 0; i < chunks; ++i) {
        std::size_t const size = std::min(digits.size(), Base::digitsOfChunk);
        number.data()[i] = chunkOf(digits.substr(digits.size() - size));
        digits.remove_suffix(size);
    }
    joinChunks<Base>(number.data(), chunks);
    return writeBytes(out, number.data(), number.size());
}

} // namespace kelcl
