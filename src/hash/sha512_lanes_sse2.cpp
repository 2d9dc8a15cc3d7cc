// SHA-512 with SSE2, for 32-bit builds.
#include <emmintrin.h>

#define MORVANE_TARGET [[gnu::target("sse2")]]
#define MORVANE_INLINE [[gnu::target("sse2"), gnu::always_inline]] inline

namespace morvane::hash {
namespace {

template <int Bits>
MORVANE_INLINE __m128i rotr(__m128i words) noexcept {
    return _mm_xor_si128(_mm_srli_epi64(words, Bits), _mm_slli_epi64(words, 64 - Bits));
}

MORVANE_INLINE __m128i xor3(__m128i a, __m128i b, __m128i c) noexcept { return _mm_xor_si128(_mm_xor_si128(a, b), c); }

MORVANE_INLINE __m128i choose(__m128i e, __m128i f, __m128i g) noexcept {
    return _mm_xor_si128(_mm_and_si128(_mm_xor_si128(f, g), e), g);
}

MORVANE_INLINE __m128i majority(__m128i a, __m128i b, __m128i c) noexcept {
    return _mm_xor_si128(_mm_and_si128(_mm_xor_si128(a, b), _mm_xor_si128(b, c)), b);
}

}  // namespace
}  // namespace morvane::hash

#include "hash/sha512_lanes.h"

namespace morvane::hash {

MORVANE_TARGET void sha512_compress_lanes_sse2(std::uint32_t* state, const std::uint8_t* blocks, std::size_t count) {
    compress_lanes(state, blocks, count);
}

}  // namespace morvane::hash
