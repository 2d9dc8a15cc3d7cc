// SHA-512 with AVX-512 and BMI2: a rotation is one instruction, and so is an exclusive or of three.
#include <immintrin.h>

#define MORVANE_TARGET [[gnu::target("avx512f,avx512vl,avx2,bmi,bmi2")]]
#define MORVANE_INLINE [[gnu::target("avx512f,avx512vl,avx2,bmi,bmi2"), gnu::always_inline]] inline

namespace morvane::hash {
namespace {

constexpr int kXorOfThree = 0x96;

MORVANE_INLINE __m256i mix_back15(__m256i words) noexcept {
    return _mm256_ternarylogic_epi64(_mm256_ror_epi64(words, 1), _mm256_ror_epi64(words, 8), _mm256_srli_epi64(words, 7),
                                     kXorOfThree);
}

MORVANE_INLINE __m128i mix_back2(__m128i words) noexcept {
    return _mm_ternarylogic_epi64(_mm_ror_epi64(words, 19), _mm_ror_epi64(words, 61), _mm_srli_epi64(words, 6),
                                  kXorOfThree);
}

}  // namespace
}  // namespace morvane::hash

#include "hash/sha512_vector.h"

namespace morvane::hash {

MORVANE_TARGET void sha512_compress_avx512(std::uint32_t* state, const std::uint8_t* blocks, std::size_t count) {
    compress_blocks(state, blocks, count);
}

}  // namespace morvane::hash
