// 512-bit registers as the ciphers' wide routines see them. One such header is included by each file of a wide routine; the
// names are the same in all, so that the routine itself is written once.
#pragma once

#include "base/bytes.h"

#include <immintrin.h>

#define MORVANE_TARGET [[gnu::target("avx512f,avx512bw,avx512dq,avx512vl")]]
#define MORVANE_INLINE [[gnu::target("avx512f,avx512bw,avx512dq,avx512vl"), gnu::always_inline]] inline

namespace morvane::cipher {
namespace {  // NOLINT(cert-dcl59-cpp): every file that includes this makes functions of its own

using Lanes = __m512i;

MORVANE_INLINE Lanes load(const std::uint8_t* bytes) noexcept { return _mm512_loadu_si512(bytes); }
MORVANE_INLINE void store(std::uint8_t* bytes, Lanes a) noexcept { _mm512_storeu_si512(bytes, a); }
MORVANE_INLINE Lanes bits_xor(Lanes a, Lanes b) noexcept { return _mm512_xor_si512(a, b); }
MORVANE_INLINE Lanes bits_and(Lanes a, Lanes b) noexcept { return _mm512_and_si512(a, b); }

MORVANE_INLINE Lanes all64(std::uint64_t word) noexcept { return _mm512_set1_epi64(static_cast<long long>(word)); }

MORVANE_INLINE Lanes all32(std::uint32_t word) noexcept { return _mm512_set1_epi32(static_cast<int>(word)); }
MORVANE_INLINE Lanes add32(Lanes a, Lanes b) noexcept { return _mm512_add_epi32(a, b); }
MORVANE_INLINE Lanes sub32(Lanes a, Lanes b) noexcept { return _mm512_sub_epi32(a, b); }
// Rotations by the low five bits of each lane of `by`.
MORVANE_INLINE Lanes rotl32(Lanes a, Lanes by) noexcept { return _mm512_rolv_epi32(a, by); }
MORVANE_INLINE Lanes rotr32(Lanes a, Lanes by) noexcept { return _mm512_rorv_epi32(a, by); }
// In each 128 bits: the even, or the odd, lanes of a and then those of b. zip_low32 and zip_high32 undo it.
MORVANE_INLINE Lanes even32(Lanes a, Lanes b) noexcept {
    return _mm512_castps_si512(_mm512_shuffle_ps(_mm512_castsi512_ps(a), _mm512_castsi512_ps(b), 0x88));
}
MORVANE_INLINE Lanes odd32(Lanes a, Lanes b) noexcept {
    return _mm512_castps_si512(_mm512_shuffle_ps(_mm512_castsi512_ps(a), _mm512_castsi512_ps(b), 0xdd));
}
MORVANE_INLINE Lanes zip_low32(Lanes a, Lanes b) noexcept { return _mm512_unpacklo_epi32(a, b); }
MORVANE_INLINE Lanes zip_high32(Lanes a, Lanes b) noexcept { return _mm512_unpackhi_epi32(a, b); }

MORVANE_INLINE Lanes all16(std::uint32_t word) noexcept { return _mm512_set1_epi16(static_cast<short>(word)); }
MORVANE_INLINE Lanes add16(Lanes a, Lanes b) noexcept { return _mm512_add_epi16(a, b); }
MORVANE_INLINE Lanes sub16(Lanes a, Lanes b) noexcept { return _mm512_sub_epi16(a, b); }
template <unsigned Bits>
MORVANE_INLINE Lanes rotl16(Lanes a) noexcept {
    return _mm512_or_si512(_mm512_slli_epi16(a, Bits), _mm512_srli_epi16(a, 16 - Bits));
}
// Bit by bit: if_set where `by` is 1, otherwise if_clear.
MORVANE_INLINE Lanes choose(Lanes by, Lanes if_set, Lanes if_clear) noexcept {
    return _mm512_ternarylogic_epi64(by, if_set, if_clear, 0xca);
}
// In each 128 bits: the lower, or the upper, halves of a and b, their lanes in turn.
MORVANE_INLINE Lanes zip_low16(Lanes a, Lanes b) noexcept { return _mm512_unpacklo_epi16(a, b); }
MORVANE_INLINE Lanes zip_high16(Lanes a, Lanes b) noexcept { return _mm512_unpackhi_epi16(a, b); }
MORVANE_INLINE Lanes zip_low64(Lanes a, Lanes b) noexcept { return _mm512_unpacklo_epi64(a, b); }
MORVANE_INLINE Lanes zip_high64(Lanes a, Lanes b) noexcept { return _mm512_unpackhi_epi64(a, b); }
// Sixteen bytes in each 128 bits, and one of their four 32-bit words in all lanes.
MORVANE_INLINE Lanes repeated16(const void* bytes) noexcept {
    return _mm512_broadcast_i32x4(_mm_loadu_si128(static_cast<const __m128i*>(bytes)));
}
template <int Lane>
MORVANE_INLINE Lanes spread32(Lanes a) noexcept {
    return _mm512_shuffle_epi32(a, static_cast<_MM_PERM_ENUM>(Lane * 0x55));
}

}  // namespace
}  // namespace morvane::cipher
