// SHA-512 with SSE2, for 32-bit builds.
#include "base/keep_order.h"

#include <emmintrin.h>

#define MORVANE_TARGET [[gnu::target("sse2")]]
#define MORVANE_INLINE [[gnu::target("sse2"), gnu::always_inline]] inline

namespace morvane::hash {
namespace {

MORVANE_INLINE __m128i reverse(__m128i words) noexcept {
    const __m128i pairs = _mm_or_si128(_mm_srli_epi16(words, 8), _mm_slli_epi16(words, 8));
    return _mm_shufflehi_epi16(_mm_shufflelo_epi16(pairs, 0b00'01'10'11), 0b00'01'10'11);
}

// The exclusive or of shifts to the right and to the left, each by more bits than the one before it of the same direction:
// two registers are shifted on and on, which takes fewer copies than shifting `words` each time. Without L3 there are five
// shifts.
template <int R1, int R2, int R3, int L1, int L2, int L3 = 0>
MORVANE_INLINE __m128i xor_of_shifts(__m128i words) noexcept {
    __m128i right = _mm_srli_epi64(words, R1), left = _mm_slli_epi64(words, L1);
    __m128i sum = _mm_xor_si128(right, left);
    keep_lanes(sum);
    right = _mm_srli_epi64(right, R2 - R1);
    left = _mm_slli_epi64(left, L2 - L1);
    sum = _mm_xor_si128(sum, right);
    keep_lanes(sum);
    sum = _mm_xor_si128(sum, left);
    keep_lanes(sum);
    sum = _mm_xor_si128(sum, _mm_srli_epi64(right, R3 - R2));
    if constexpr (L3 != 0) {
        keep_lanes(sum);
        sum = _mm_xor_si128(sum, _mm_slli_epi64(left, L3 - L2));
    }
    keep_lanes(sum);
    return sum;
}

MORVANE_INLINE __m128i sums(__m128i ea) noexcept {
    const __m128i low = xor_of_shifts<14, 18, 41, 64 - 41, 64 - 18, 64 - 14>(ea);
    const __m128i high = xor_of_shifts<28, 34, 39, 64 - 39, 64 - 34, 64 - 28>(ea);
    return _mm_castpd_si128(_mm_move_sd(_mm_castsi128_pd(high), _mm_castsi128_pd(low)));
}

MORVANE_INLINE __m128i choices(__m128i ea, __m128i fb, __m128i gc) noexcept {
    const __m128i if_neither = _mm_and_si128(gc, _mm_or_si128(fb, _mm_set_epi32(0, 0, -1, -1)));  // g, b & c
    return _mm_xor_si128(_mm_and_si128(ea, _mm_xor_si128(fb, gc)), if_neither);
}

MORVANE_INLINE __m128i mix_back15(__m128i words) noexcept { return xor_of_shifts<1, 7, 8, 64 - 8, 64 - 1>(words); }
MORVANE_INLINE __m128i mix_back2(__m128i words) noexcept { return xor_of_shifts<6, 19, 61, 64 - 61, 64 - 19>(words); }

}  // namespace
}  // namespace morvane::hash

#include "hash/sha512_lanes.h"

namespace morvane::hash {

MORVANE_TARGET void sha512_compress_lanes_sse2(std::uint32_t* state, const std::uint8_t* blocks, std::size_t count) {
    compress_lanes(state, blocks, count);
}

}  // namespace morvane::hash
