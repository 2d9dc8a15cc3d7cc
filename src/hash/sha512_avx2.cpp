// SHA-512 with AVX2 and BMI2.
#include <immintrin.h>

#define MORVANE_TARGET [[gnu::target("avx2,bmi,bmi2")]]
#define MORVANE_INLINE [[gnu::target("avx2,bmi,bmi2"), gnu::always_inline]] inline

namespace morvane::hash {
namespace {

MORVANE_INLINE __m256i mix_back15(__m256i words) noexcept {
    const __m256i by1 = _mm256_xor_si256(_mm256_srli_epi64(words, 1), _mm256_slli_epi64(words, 63));
    const __m256i by8 = _mm256_shuffle_epi8(
        words, _mm256_setr_epi64x(0x0007060504030201, 0x080f0e0d0c0b0a09, 0x0007060504030201, 0x080f0e0d0c0b0a09));
    return _mm256_xor_si256(_mm256_xor_si256(by1, by8), _mm256_srli_epi64(words, 7));
}

MORVANE_INLINE __m128i mix_back2(__m128i words) noexcept {
    const __m128i by19 = _mm_xor_si128(_mm_srli_epi64(words, 19), _mm_slli_epi64(words, 45));
    const __m128i by61 = _mm_xor_si128(_mm_srli_epi64(words, 61), _mm_slli_epi64(words, 3));
    return _mm_xor_si128(_mm_xor_si128(by19, by61), _mm_srli_epi64(words, 6));
}

}  // namespace
}  // namespace morvane::hash

#include "hash/sha512_vector.h"

namespace morvane::hash {

MORVANE_TARGET void sha512_compress_avx2(std::uint32_t* state, const std::uint8_t* blocks, std::size_t count) {
    compress_blocks(state, blocks, count);
}

}  // namespace morvane::hash
