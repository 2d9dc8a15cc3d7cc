// SHA-512 with AVX-512, for 32-bit builds: a rotation is one instruction, and so is a function of three words.
#include <immintrin.h>

#define MORVANE_TARGET [[gnu::target("avx512f,avx512vl")]]
#define MORVANE_INLINE [[gnu::target("avx512f,avx512vl"), gnu::always_inline]] inline

namespace morvane::hash {
namespace {

template <int Bits>
MORVANE_INLINE __m128i rotr(__m128i words) noexcept {
    return _mm_ror_epi64(words, Bits);
}

// The third argument of the instruction is the function's table of values.
MORVANE_INLINE __m128i xor3(__m128i a, __m128i b, __m128i c) noexcept { return _mm_ternarylogic_epi64(a, b, c, 0x96); }
MORVANE_INLINE __m128i choose(__m128i e, __m128i f, __m128i g) noexcept { return _mm_ternarylogic_epi64(e, f, g, 0xca); }
MORVANE_INLINE __m128i majority(__m128i a, __m128i b, __m128i c) noexcept { return _mm_ternarylogic_epi64(a, b, c, 0xe8); }

}  // namespace
}  // namespace morvane::hash

#include "hash/sha512_lanes.h"

namespace morvane::hash {

MORVANE_TARGET void sha512_compress_lanes_avx512(std::uint32_t* state, const std::uint8_t* blocks, std::size_t count) {
    compress_lanes(state, blocks, count);
}

}  // namespace morvane::hash
