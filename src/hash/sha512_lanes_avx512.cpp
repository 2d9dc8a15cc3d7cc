// SHA-512 with AVX-512, for 32-bit builds: a rotation is one instruction, and so is a function of three words.
#include <immintrin.h>

#define MORVANE_TARGET [[gnu::target("avx512f,avx512vl")]]
#define MORVANE_INLINE [[gnu::target("avx512f,avx512vl"), gnu::always_inline]] inline

namespace morvane::hash {
namespace {

MORVANE_INLINE __m128i reverse(__m128i words) noexcept {
    return _mm_shuffle_epi8(words, _mm_set_epi64x(0x08090a0b0c0d0e0f, 0x0001020304050607));
}

// The last argument of these instructions is the function's table of values.
MORVANE_INLINE __m128i xor3(__m128i a, __m128i b, __m128i c) noexcept { return _mm_ternarylogic_epi64(a, b, c, 0x96); }

template <int Low, int High>
MORVANE_INLINE __m128i rotr(__m128i words) noexcept {
    return _mm_rorv_epi64(words, _mm_set_epi64x(High, Low));
}

MORVANE_INLINE __m128i sums(__m128i ea) noexcept { return xor3(rotr<14, 28>(ea), rotr<18, 34>(ea), rotr<41, 39>(ea)); }

MORVANE_INLINE __m128i choices(__m128i ea, __m128i fb, __m128i gc) noexcept {
    constexpr __mmask8 kHigh = 2;
    const __m128i if_set = _mm_mask_or_epi64(fb, kHigh, fb, gc);     // f, b | c
    const __m128i if_clear = _mm_mask_and_epi64(gc, kHigh, fb, gc);  // g, b & c
    return _mm_ternarylogic_epi64(if_set, ea, if_clear, 0xe2);       // ea ? if_set : if_clear
}

MORVANE_INLINE __m128i mix_back15(__m128i words) noexcept {
    return xor3(_mm_ror_epi64(words, 1), _mm_ror_epi64(words, 8), _mm_srli_epi64(words, 7));
}

MORVANE_INLINE __m128i mix_back2(__m128i words) noexcept {
    return xor3(_mm_ror_epi64(words, 19), _mm_ror_epi64(words, 61), _mm_srli_epi64(words, 6));
}

}  // namespace
}  // namespace morvane::hash

#include "hash/sha512_lanes.h"

namespace morvane::hash {

MORVANE_TARGET void sha512_compress_lanes_avx512(std::uint32_t* state, const std::uint8_t* blocks, std::size_t count) {
    compress_lanes(state, blocks, count);
}

}  // namespace morvane::hash
