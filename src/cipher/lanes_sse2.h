// 128-bit registers as the ciphers' wide routines see them; lanes_avx512.h says what the functions do.
#pragma once

#include "base/bytes.h"

#include <emmintrin.h>

#define MORVANE_TARGET [[gnu::target("sse2")]]
#define MORVANE_INLINE [[gnu::target("sse2"), gnu::always_inline]] inline

namespace morvane::cipher {
namespace {  // NOLINT(cert-dcl59-cpp): every file that includes this makes functions of its own

using Lanes = __m128i;

MORVANE_INLINE Lanes load(const std::uint8_t* bytes) noexcept {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(bytes));
}
MORVANE_INLINE void store(std::uint8_t* bytes, Lanes a) noexcept { _mm_storeu_si128(reinterpret_cast<__m128i*>(bytes), a); }
MORVANE_INLINE Lanes bits_xor(Lanes a, Lanes b) noexcept { return _mm_xor_si128(a, b); }
MORVANE_INLINE Lanes bits_and(Lanes a, Lanes b) noexcept { return _mm_and_si128(a, b); }
MORVANE_INLINE Lanes bits_or(Lanes a, Lanes b) noexcept { return _mm_or_si128(a, b); }
MORVANE_INLINE Lanes bits_and_not(Lanes a, Lanes b) noexcept { return _mm_andnot_si128(b, a); }

MORVANE_INLINE Lanes all64(std::uint64_t word) noexcept { return _mm_set1_epi64x(static_cast<long long>(word)); }
template <int Bits>
MORVANE_INLINE Lanes left64(Lanes a) noexcept {
    return _mm_slli_epi64(a, Bits);
}
template <int Bits>
MORVANE_INLINE Lanes right64(Lanes a) noexcept {
    return _mm_srli_epi64(a, Bits);
}

MORVANE_INLINE Lanes all32(std::uint32_t word) noexcept { return _mm_set1_epi32(static_cast<int>(word)); }

MORVANE_INLINE Lanes all16(std::uint32_t word) noexcept { return _mm_set1_epi16(static_cast<short>(word)); }
MORVANE_INLINE Lanes add16(Lanes a, Lanes b) noexcept { return _mm_add_epi16(a, b); }
MORVANE_INLINE Lanes sub16(Lanes a, Lanes b) noexcept { return _mm_sub_epi16(a, b); }
template <int Bits>
MORVANE_INLINE Lanes rotl16(Lanes a) noexcept {
    return _mm_or_si128(_mm_slli_epi16(a, Bits), _mm_srli_epi16(a, 16 - Bits));
}
MORVANE_INLINE Lanes zip_low16(Lanes a, Lanes b) noexcept { return _mm_unpacklo_epi16(a, b); }
MORVANE_INLINE Lanes zip_high16(Lanes a, Lanes b) noexcept { return _mm_unpackhi_epi16(a, b); }
MORVANE_INLINE Lanes zip_low64(Lanes a, Lanes b) noexcept { return _mm_unpacklo_epi64(a, b); }
MORVANE_INLINE Lanes zip_high64(Lanes a, Lanes b) noexcept { return _mm_unpackhi_epi64(a, b); }
MORVANE_INLINE Lanes repeated16(const void* bytes) noexcept { return _mm_loadu_si128(static_cast<const __m128i*>(bytes)); }
template <int Lane>
MORVANE_INLINE Lanes spread32(Lanes a) noexcept {
    return _mm_shuffle_epi32(a, Lane * 0x55);
}

}  // namespace
}  // namespace morvane::cipher
