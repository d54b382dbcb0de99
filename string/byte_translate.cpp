// The translation of bytes by a table of 256 entries: by plain look-up, or 32 bytes at a time with vector
// look-ups in the rows of 16 entries. The other edits are in byte_edit.cpp.

#include "string/byte_edit.h"

#include "string/byte_scan.h"

namespace kelcl {

namespace {

void translateEach(char* out, char const* in, std::size_t n, unsigned char const (&table)[256]) {
    for (std::size_t i = 0; i < n; ++i)
        out[i] = static_cast<char>(table[static_cast<unsigned char>(in[i])]);
}

#if KELCL_AVX2_KERNELS

/// The rows of 16 entries in which a table changes anything, often only a few. Each entry is held as the
/// difference to the byte that it replaces, so that the rows that a byte is not in leave it alone.
class ChangedRows {
public:
    KELCL_AVX2 explicit ChangedRows(unsigned char const (&table)[256]) {
        __m128i identity = _mm_set_epi64x(0x0F0E0D0C0B0A0908, 0x0706050403020100);
        for (int row = 0; row < 16; ++row) {
            __m128i const entries = _mm_loadu_si128(reinterpret_cast<__m128i const*>(table) + row);
            __m128i const differences = _mm_xor_si128(entries, identity);
            _mm_store_si128(&differences_[count_], differences);
            firstBytes_[count_] = static_cast<char>(16 * row);
            if (_mm_testz_si128(differences, differences) == 0) ++count_;
            identity = _mm_add_epi8(identity, _mm_set1_epi8(16));
        }
    }

    /// Translates 32 bytes at a time; returns how many.
    KELCL_AVX2 std::size_t translateBlocks(char* out, char const* in, std::size_t n) const {
        std::size_t i = 0;
        for (; n - i >= 64; i += 64) {
            __m256i const first = avx2::loadBlock(in + i);
            __m256i const second = avx2::loadBlock(in + i + 32);
            __m256i firstResult = first;
            __m256i secondResult = second;
            for (std::size_t row = 0; row < count_; ++row) {
                __m256i const differences = _mm256_broadcastsi128_si256(differences_[row]);
                __m256i const firstByte = _mm256_set1_epi8(firstBytes_[row]);
                firstResult = _mm256_xor_si256(firstResult, differenceOf(first, firstByte, differences));
                secondResult = _mm256_xor_si256(secondResult, differenceOf(second, firstByte, differences));
            }
            _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + i), firstResult);
            _mm256_storeu_si256(reinterpret_cast<__m256i*>(out + i + 32), secondResult);
        }
        return i;
    }

private:
    /// A byte's index in the row is its distance from the first one, if that is less than 16. Adding 0x70
    /// with saturation keeps the low four bits of such an index and sets the top bit of all others, which
    /// gives 0.
    static KELCL_AVX2_INLINE __m256i differenceOf(__m256i bytes, __m256i firstByte, __m256i differences) {
        __m256i const distance = _mm256_sub_epi8(bytes, firstByte);
        return _mm256_shuffle_epi8(differences, _mm256_adds_epu8(distance, _mm256_set1_epi8(0x70)));
    }

    __m128i differences_[17];
    char firstBytes_[17];
    std::size_t count_ = 0;
};

// Below this size making the rows costs more than it saves.
constexpr std::size_t vectorSize = 128;

#endif

} // namespace

void copyTranslated(char* out, char const* in, std::size_t n, unsigned char const (&table)[256]) {
    std::size_t done = 0;
#if KELCL_AVX2_KERNELS
    if (n >= vectorSize && processorHasAvx2()) done = ChangedRows(table).translateBlocks(out, in, n);
#endif
    translateEach(out + done, in + done, n - done, table);
}

} // namespace kelcl
