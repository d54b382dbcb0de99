// Decimal notation of long numbers, both ways, 19 digits at a time, which is what a limb of 64 bits holds.
// Long numbers are cut in two at a power of ten again and again; the arithmetic for that is in
// decimal_limbs.h.

#include "string/decimal.h"

#include "string/byte_search.h"
#include "string/decimal_limbs.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <vector>

namespace kelcl {

namespace {

using limbs::bitsOfLimb;
using limbs::Limb;

// A chunk is 19 digits as a limb. A number of n chunks always fits n limbs, since 10^19 < 2^64.
constexpr std::size_t chunkDigits = 19;
constexpr Limb chunkBase = 10'000'000'000'000'000'000U;

/// Numbers of up to so many chunks are converted chunk by chunk, which is faster then.
constexpr std::size_t leafChunks = 24;

/// 10^19 to the powers of two. Since a power of ten is one of five times one of two, half of it is shifts:
/// each is kept as limbs with the top bit set, as a divisor must be, and a number of bits to shift them by.
class PowersOfChunkBase {
public:
    struct Power {
        std::vector<Limb> limbs;
        std::size_t shift;
    };

    /// All powers that are needed to cut a number of so many chunks in two.
    explicit PowersOfChunkBase(std::size_t chunks) {
        if (chunks <= leafChunks) return;
        powers_.push_back({{chunkBase}, 0});
        for (std::size_t reached = 1; 2 * reached < chunks; reached *= 2)
            powers_.push_back(squareOf(powers_.back()));
    }

    /// Of n chunks the lower ones are a power of two in number, as many as leave at least one.
    static std::size_t lowerChunks(std::size_t n) { return std::bit_floor(n - 1); }

    /// (10^19)^chunks, where `chunks` is a power of two.
    Power const& ofChunks(std::size_t chunks) const {
        return powers_[static_cast<std::size_t>(std::countr_zero(chunks))];
    }

private:
    static Power squareOf(Power const& root) {
        std::size_t const n = root.limbs.size();
        std::vector<Limb> square(2 * n);
        limbs::multiply(square.data(), root.limbs.data(), n, root.limbs.data(), n);
        auto const spare = static_cast<std::size_t>(std::countl_zero(square.back())); // 0 or 1
        auto const zeros = static_cast<std::size_t>(
            std::find_if(square.begin(), square.end(), [](Limb limb) { return limb != 0; }) - square.begin());
        Power result{std::vector<Limb>(2 * n), 2 * root.shift + zeros * bitsOfLimb - spare};
        limbs::shiftLeft(result.limbs.data(), 2 * n, square.data(), 2 * n, spare);
        result.limbs.erase(result.limbs.begin(), result.limbs.begin() + static_cast<std::ptrdiff_t>(zeros));
        return result;
    }

    std::vector<Power> powers_;
};

constexpr std::array<char, 200> makeDigitPairs() {
    std::array<char, 200> pairs{};
    for (std::size_t i = 0; i < 100; ++i) {
        pairs[2 * i] = static_cast<char>('0' + i / 10);
        pairs[2 * i + 1] = static_cast<char>('0' + i % 10);
    }
    return pairs;
}
constexpr std::array<char, 200> digitPairs = makeDigitPairs();

/// Writes the lowest `digits` digits of the value, an even number of them.
void writeDigits(char* out, std::uint32_t value, std::size_t digits) {
    for (std::size_t i = digits; i > 0; i -= 2) {
        std::memcpy(out + i - 2, &digitPairs[2 * (value % 100)], 2);
        value /= 100;
    }
}

/// Puts chunks, the highest first, into text, without the zeros in front of the number.
class ChunkWriter {
public:
    explicit ChunkWriter(char* out) : begin_(out), end_(out) {}

    bool hasWritten() const { return end_ != begin_; }
    std::size_t size() const { return static_cast<std::size_t>(end_ - begin_); }

    void write(Limb chunk) {
        if (hasWritten()) {
            writeAllDigits(end_, chunk);
            end_ += chunkDigits;
        } else if (chunk != 0) {
            std::array<char, chunkDigits> digits;
            writeAllDigits(digits.data(), chunk);
            char const* const first =
                std::find_if(digits.begin(), digits.end(), [](char digit) { return digit != '0'; });
            end_ = std::copy(first, static_cast<char const*>(digits.end()), end_);
        }
    }

private:
    static void writeAllDigits(char* out, Limb chunk) {
        constexpr Limb lowBase = 100'000'000;
        Limb const upper = chunk / lowBase;
        Limb const top = upper / lowBase; // 3 digits
        out[0] = static_cast<char>('0' + top / 100);
        writeDigits(out + 1, static_cast<std::uint32_t>(top % 100), 2);
        writeDigits(out + 3, static_cast<std::uint32_t>(upper % lowBase), 8);
        writeDigits(out + 11, static_cast<std::uint32_t>(chunk % lowBase), 8);
    }

    char* begin_;
    char* end_;
};

/// Writes a number of n chunks that is held in n limbs, which are used up, by repeated division by 10^19.
void writeLeaf(ChunkWriter& writer, Limb* number, std::size_t n) {
    constexpr limbs::LimbDivisor divisor(chunkBase);
    std::array<Limb, leafChunks> chunks{};
    std::size_t length = n;
    for (std::size_t i = 0; i < n; ++i) {
        while (length > 0 && number[length - 1] == 0)
            --length;
        Limb remainder = 0;
        for (std::size_t j = length; j-- > 0;) {
            if (j + 1 == length && number[j] < chunkBase) {
                remainder = number[j];
                number[j] = 0;
                continue;
            }
            auto const result = divisor.divide(remainder, number[j]);
            number[j] = result.quotient;
            remainder = result.remainder;
        }
        chunks[i] = remainder;
    }
    for (std::size_t i = n; i-- > 0;)
        writer.write(chunks[i]);
}

void writeNumber(ChunkWriter& writer, Limb* number, std::size_t n, PowersOfChunkBase const& powers) {
    if (n <= leafChunks) return writeLeaf(writer, number, n);
    std::size_t const lower = PowersOfChunkBase::lowerChunks(n);
    auto const& [divisor, shift] = powers.ofChunks(lower);
    std::size_t const whole = shift / bitsOfLimb;

    std::vector<Limb> rest(n - whole);
    limbs::shiftRight(rest.data(), rest.size(), number, n, shift);
    std::size_t const quotientSize = rest.size() - divisor.size();
    std::vector<Limb> quotient(std::max(quotientSize + 1, n - lower));
    quotient[quotientSize] =
        limbs::divide(quotient.data(), quotientSize, rest.data(), divisor.data(), divisor.size());
    writeNumber(writer, quotient.data(), n - lower, powers);

    // The remainder is what the division left, shifted back, with the bits of the number below the shift.
    Limb const keptBits = number[whole] & ((Limb{1} << shift % bitsOfLimb) - 1);
    limbs::shiftLeft(number + whole, lower - whole, rest.data(), divisor.size(), shift % bitsOfLimb);
    number[whole] |= keptBits;
    writeNumber(writer, number, lower, powers);
}

/// The value of up to 19 digits.
Limb chunkOf(std::string_view digits) {
    Limb value = 0;
    for (char const digit : digits)
        value = value * 10 + static_cast<Limb>(digit - '0');
    return value;
}

/// Turns n chunks, the lowest first, into the number in n limbs, in place.
void readNumber(Limb* chunks, std::size_t n, PowersOfChunkBase const& powers) {
    if (n <= leafChunks) {
        std::array<Limb, leafChunks> number{};
        for (std::size_t i = n; i-- > 0;)
            limbs::multiplyBy(number.data(), n - i, chunkBase, chunks[i]);
        std::copy_n(number.data(), n, chunks);
        return;
    }
    std::size_t const lower = PowersOfChunkBase::lowerChunks(n);
    auto const& [factor, shift] = powers.ofChunks(lower);
    readNumber(chunks, lower, powers);
    readNumber(chunks + lower, n - lower, powers);
    std::vector<Limb> product(n - lower + factor.size());
    limbs::multiply(product.data(), factor.data(), factor.size(), chunks + lower, n - lower);

    std::size_t const whole = shift / bitsOfLimb;
    std::vector<Limb> shifted(n - whole);
    limbs::shiftLeft(shifted.data(), shifted.size(), product.data(), product.size(), shift % bitsOfLimb);
    std::fill_n(chunks + lower, n - lower, Limb{0});
    limbs::addTo(chunks + whole, n - whole, shifted.data(), shifted.size());
}

std::string_view withoutLeading(std::string_view text, char byte) {
    return text.substr(std::min(findByteOtherThan(text, byte), text.size()));
}

/// Limbs that are zero at first, those of a short number without an allocation.
class Limbs {
public:
    explicit Limbs(std::size_t size) : size_(size), many_(size > few_.size() ? size : 0) {}

    Limb* data() { return many_.empty() ? few_.data() : many_.data(); }
    std::size_t size() const { return size_; }

private:
    std::size_t size_;
    std::array<Limb, leafChunks> few_{};
    std::vector<Limb> many_;
};

/// Sets the lowest limbs to the big-endian number.
void setToBytes(Limb* number, std::string_view bytes) {
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        Limb const byte = static_cast<unsigned char>(bytes[bytes.size() - 1 - i]);
        number[i / sizeof(Limb)] |= byte << i % sizeof(Limb) * 8;
    }
}

/// Writes the big-endian bytes of a number other than zero without leading zero bytes.
std::size_t writeBytes(char* out, Limb const* number, std::size_t n) {
    std::size_t top = n;
    while (number[top - 1] == 0)
        --top;
    std::size_t const size =
        top * sizeof(Limb) - static_cast<std::size_t>(std::countl_zero(number[top - 1])) / 8;
    for (std::size_t i = 0; i < size; ++i)
        out[size - 1 - i] = static_cast<char>(number[i / sizeof(Limb)] >> i % sizeof(Limb) * 8 & 0xFFU);
    return size;
}

} // namespace

std::size_t decimalDigitsBound(std::size_t bytes) {
    return bytes * 157828 / 65536 + 1; // the factor is just above log 256 / log 10
}

std::size_t writeDecimal(char* out, std::string_view bytes) {
    bytes = withoutLeading(bytes, '\0');
    std::size_t const chunks = bytes.size() * 8 / 63 + 1; // a chunk holds at least 63 bits
    Limbs number(chunks);
    setToBytes(number.data(), bytes);
    ChunkWriter writer(out);
    writeNumber(writer, number.data(), chunks, PowersOfChunkBase(chunks));
    if (writer.hasWritten()) return writer.size();
    *out = '0';
    return 1;
}

std::size_t bytesBound(std::size_t digits) {
    return digits * 27214 / 65536 + 1; // the factor is just above log 10 / log 256
}

std::size_t readDecimal(char* out, std::string_view digits) {
    digits = withoutLeading(digits, '0');
    if (digits.empty()) {
        *out = '\0';
        return 1;
    }
    std::size_t const chunks = (digits.size() + chunkDigits - 1) / chunkDigits;
    Limbs number(chunks);
    for (std::size_t i = 0; i < chunks; ++i) {
        std::size_t const size = std::min(digits.size(), chunkDigits);
        number.data()[i] = chunkOf(digits.substr(digits.size() - size));
        digits.remove_suffix(size);
    }
    readNumber(number.data(), chunks, PowersOfChunkBase(chunks));
    return writeBytes(out, number.data(), number.size());
}

} // namespace kelcl
