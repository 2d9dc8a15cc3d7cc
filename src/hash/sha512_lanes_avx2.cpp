// SHA-512 with AVX2, for 32-bit builds: the two words of a register are shifted by different numbers of bits.
#include "base/keep_order.h"

#include <immintrin.h>
#include <cstdint>

#define MORVANE_TARGET [[gnu::target("avx2")]]
#define MORVANE_INLINE [[gnu::target("avx2"), gnu::always_inline]] inline

namespace morvane::hash {
namespace {

MORVANE_INLINE __m128i reverse(__m128i words) noexcept {
    return _mm_shuffle_epi8(words, _mm_set_epi64x(0x08090a0b0c0d0e0f, 0x0001020304050607));
}

// The rotations of e and a to the right, and what is left of 64 bits.
struct Rotation {
    alignas(16) std::uint64_t right[2];
    alignas(16) std::uint64_t left[2];
};
constexpr Rotation kRotations[3] = {{{14, 28}, {50, 36}}, {{18, 34}, {46, 30}}, {{41, 39}, {23, 25}}};

MORVANE_INLINE __m128i rotated(__m128i ea, const Rotation& by) noexcept {
    const __m128i right = _mm_srlv_epi64(ea, *reinterpret_cast<const __m128i*>(by.right));
    __m128i both = _mm_xor_si128(right, _mm_sllv_epi64(ea, *reinterpret_cast<const __m128i*>(by.left)));
    keep_lanes(both);
    return both;
}

MORVANE_INLINE __m128i sums(__m128i ea) noexcept {
    const Rotation* by = kRotations;
    keep_order(by);  // or the compiler keeps some of them in registers
    __m128i sum = _mm_xor_si128(rotated(ea, by[0]), rotated(ea, by[1]));
    keep_lanes(sum);
    return _mm_xor_si128(sum, rotated(ea, by[2]));
}

MORVANE_INLINE __m128i choices(__m128i ea, __m128i fb, __m128i gc) noexcept {
    const __m128i if_neither = _mm_blend_epi32(gc, _mm_and_si128(gc, fb), 0b1100);  // g, b & c
    return _mm_xor_si128(_mm_and_si128(ea, _mm_xor_si128(fb, gc)), if_neither);
}

template <int Bits>
MORVANE_INLINE __m128i rotr(__m128i words) noexcept {
    __m128i both = _mm_xor_si128(_mm_srli_epi64(words, Bits), _mm_slli_epi64(words, 64 - Bits));
    keep_lanes(both);
    return both;
}

MORVANE_INLINE __m128i mix_back15(__m128i words) noexcept {
    return _mm_xor_si128(_mm_xor_si128(rotr<1>(words), rotr<8>(words)), _mm_srli_epi64(words, 7));
}

MORVANE_INLINE __m128i mix_back2(__m128i words) noexcept {
    return _mm_xor_si128(_mm_xor_si128(rotr<19>(words), rotr<61>(words)), _mm_srli_epi64(words, 6));
}

}  // namespace
}  // namespace morvane::hash

#include "hash/sha512_lanes.h"

namespace morvane::hash {

MORVANE_TARGET void sha512_compress_lanes_avx2(std::uint32_t* state, const std::uint8_t* blocks, std::size_t count) {
    compress_lanes(state, blocks, count);
}

}  // namespace morvane::hash
