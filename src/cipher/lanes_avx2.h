// 256-bit registers as the ciphers' wide routines see them; lanes_avx512.h says what the functions do.
#pragma once

#include "base/bytes.h"

#include <immintrin.h>

#define MORVANE_TARGET [[gnu::target("avx2")]]
#define MORVANE_INLINE [[gnu::target("avx2"), gnu::always_inline]] inline

namespace morvane::cipher {
namespace {  // NOLINT(cert-dcl59-cpp): every file that includes this makes functions of its own

using Lanes = __m256i;

MORVANE_INLINE Lanes load(const std::uint8_t* bytes) noexcept {
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(bytes));
}
MORVANE_INLINE void store(std::uint8_t* bytes, Lanes a) noexcept {
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(bytes), a);
}
MORVANE_INLINE Lanes bits_xor(Lanes a, Lanes b) noexcept { return _mm256_xor_si256(a, b); }
MORVANE_INLINE Lanes bits_and(Lanes a, Lanes b) noexcept { return _mm256_and_si256(a, b); }
MORVANE_INLINE Lanes bits_or(Lanes a, Lanes b) noexcept { return _mm256_or_si256(a, b); }
MORVANE_INLINE Lanes bits_and_not(Lanes a, Lanes b) noexcept { return _mm256_andnot_si256(b, a); }

MORVANE_INLINE Lanes all64(std::uint64_t word) noexcept { return _mm256_set1_epi64x(static_cast<long long>(word)); }
template <int Bits>
MORVANE_INLINE Lanes left64(Lanes a) noexcept {
    return _mm256_slli_epi64(a, Bits);
}
template <int Bits>
MORVANE_INLINE Lanes right64(Lanes a) noexcept {
    return _mm256_srli_epi64(a, Bits);
}

MORVANE_INLINE Lanes all32(std::uint32_t word) noexcept { return _mm256_set1_epi32(static_cast<int>(word)); }
MORVANE_INLINE Lanes add32(Lanes a, Lanes b) noexcept { return _mm256_add_epi32(a, b); }
MORVANE_INLINE Lanes sub32(Lanes a, Lanes b) noexcept { return _mm256_sub_epi32(a, b); }
// A shift by 32 gives 0, so that a rotation by 0 needs no care.
MORVANE_INLINE Lanes rotl32(Lanes a, Lanes by) noexcept {
    by = _mm256_and_si256(by, all32(31));
    return _mm256_or_si256(_mm256_sllv_epi32(a, by), _mm256_srlv_epi32(a, sub32(all32(32), by)));
}
MORVANE_INLINE Lanes rotr32(Lanes a, Lanes by) noexcept {
    by = _mm256_and_si256(by, all32(31));
    return _mm256_or_si256(_mm256_srlv_epi32(a, by), _mm256_sllv_epi32(a, sub32(all32(32), by)));
}
MORVANE_INLINE Lanes even32(Lanes a, Lanes b) noexcept {
    return _mm256_castps_si256(_mm256_shuffle_ps(_mm256_castsi256_ps(a), _mm256_castsi256_ps(b), 0x88));
}
MORVANE_INLINE Lanes odd32(Lanes a, Lanes b) noexcept {
    return _mm256_castps_si256(_mm256_shuffle_ps(_mm256_castsi256_ps(a), _mm256_castsi256_ps(b), 0xdd));
}
MORVANE_INLINE Lanes zip_low32(Lanes a, Lanes b) noexcept { return _mm256_unpacklo_epi32(a, b); }
MORVANE_INLINE Lanes zip_high32(Lanes a, Lanes b) noexcept { return _mm256_unpackhi_epi32(a, b); }

MORVANE_INLINE Lanes all16(std::uint32_t word) noexcept { return _mm256_set1_epi16(static_cast<short>(word)); }
MORVANE_INLINE Lanes add16(Lanes a, Lanes b) noexcept { return _mm256_add_epi16(a, b); }
MORVANE_INLINE Lanes sub16(Lanes a, Lanes b) noexcept { return _mm256_sub_epi16(a, b); }
template <int Bits>
MORVANE_INLINE Lanes rotl16(Lanes a) noexcept {
    return _mm256_or_si256(_mm256_slli_epi16(a, Bits), _mm256_srli_epi16(a, 16 - Bits));
}
MORVANE_INLINE Lanes choose(Lanes by, Lanes if_set, Lanes if_clear) noexcept {
    return _mm256_xor_si256(if_clear, _mm256_and_si256(by, _mm256_xor_si256(if_set, if_clear)));
}
MORVANE_INLINE Lanes zip_low16(Lanes a, Lanes b) noexcept { return _mm256_unpacklo_epi16(a, b); }
MORVANE_INLINE Lanes zip_high16(Lanes a, Lanes b) noexcept { return _mm256_unpackhi_epi16(a, b); }
MORVANE_INLINE Lanes zip_low64(Lanes a, Lanes b) noexcept { return _mm256_unpacklo_epi64(a, b); }
MORVANE_INLINE Lanes zip_high64(Lanes a, Lanes b) noexcept { return _mm256_unpackhi_epi64(a, b); }
MORVANE_INLINE Lanes repeated16(const void* bytes) noexcept {
    return _mm256_broadcastsi128_si256(_mm_loadu_si128(static_cast<const __m128i*>(bytes)));
}
template <int Lane>
MORVANE_INLINE Lanes spread32(Lanes a) noexcept {
    return _mm256_shuffle_epi32(a, Lane * 0x55);
}

}  // namespace
}  // namespace morvane::cipher
