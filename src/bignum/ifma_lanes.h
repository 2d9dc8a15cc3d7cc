// Vectors of 52-bit digits for AVX-512 IFMA, in the two widths that are worth using: 512 bits, and 256 where a number has
// few digits.
#pragma once

#include <immintrin.h>
#include <cstddef>
#include <cstdint>

#define MORVANE_TARGET_IFMA    gnu::target("avx512f,avx512bw,avx512dq,avx512vl,avx512ifma")
#define MORVANE_LANE_OPERATION [[MORVANE_TARGET_IFMA, gnu::always_inline]] static inline

namespace morvane::bignum {

inline constexpr unsigned kIfmaBits = 52;
inline constexpr std::uint64_t kIfmaDigit = (std::uint64_t{1} << kIfmaBits) - 1;

// shift: what is above a digit, in the lanes of a mask. down, up: the lanes of two neighbouring vectors moved by one, where
// the first argument is the one that is kept. first: the lowest lane in all lanes. low, high: sum + that half of a b.
// add_both: the bits of sum, and those that a and b have both. ones_if_equal: in each lane, all bits or none.
struct Zmm {
    using Vector = __m512i;
    static constexpr std::size_t kLanes = 8;
    static constexpr unsigned kAll = 0xff;

    MORVANE_LANE_OPERATION Vector zero() noexcept { return _mm512_setzero_si512(); }
    MORVANE_LANE_OPERATION Vector fill(std::uint64_t x) noexcept { return _mm512_set1_epi64(static_cast<long long>(x)); }
    MORVANE_LANE_OPERATION Vector load(const std::uint64_t* from) noexcept { return _mm512_load_si512(from); }
    MORVANE_LANE_OPERATION void store(std::uint64_t* to, Vector x) noexcept { _mm512_store_si512(to, x); }
    MORVANE_LANE_OPERATION Vector low(Vector sum, Vector a, Vector b) noexcept { return _mm512_madd52lo_epu64(sum, a, b); }
    MORVANE_LANE_OPERATION Vector high(Vector sum, Vector a, Vector b) noexcept { return _mm512_madd52hi_epu64(sum, a, b); }
    MORVANE_LANE_OPERATION Vector add(Vector a, Vector b) noexcept { return _mm512_add_epi64(a, b); }
    MORVANE_LANE_OPERATION Vector add(Vector a, Vector b, unsigned lanes) noexcept {
        return _mm512_mask_add_epi64(a, static_cast<__mmask8>(lanes), a, b);
    }
    MORVANE_LANE_OPERATION Vector both(Vector a, Vector b) noexcept { return _mm512_and_si512(a, b); }
    MORVANE_LANE_OPERATION Vector add_both(Vector sum, Vector a, Vector b) noexcept {
        return _mm512_ternarylogic_epi64(sum, a, b, 0xf8);
    }
    MORVANE_LANE_OPERATION Vector ones_if_equal(Vector a, Vector b) noexcept {
        return _mm512_movm_epi64(_mm512_cmpeq_epi64_mask(a, b));
    }
    MORVANE_LANE_OPERATION Vector shift(Vector x, unsigned lanes) noexcept {
        return _mm512_maskz_srli_epi64(static_cast<__mmask8>(lanes), x, kIfmaBits);
    }
    MORVANE_LANE_OPERATION Vector down(Vector x, Vector above) noexcept {
        return _mm512_maskz_alignr_epi64(kAll, above, x, 1);
    }
    MORVANE_LANE_OPERATION Vector up(Vector x, Vector below) noexcept {
        return _mm512_maskz_alignr_epi64(kAll, x, below, 7);
    }
    MORVANE_LANE_OPERATION Vector first(Vector x) noexcept { return __builtin_shufflevector(x, x, 0, 0, 0, 0, 0, 0, 0, 0); }
    MORVANE_LANE_OPERATION unsigned greater(Vector a, Vector b) noexcept { return _mm512_cmpgt_epu64_mask(a, b); }
    MORVANE_LANE_OPERATION unsigned equal(Vector a, Vector b) noexcept { return _mm512_cmpeq_epu64_mask(a, b); }
};

struct Ymm {
    using Vector = __m256i;
    static constexpr std::size_t kLanes = 4;
    static constexpr unsigned kAll = 0xf;

    MORVANE_LANE_OPERATION Vector zero() noexcept { return _mm256_setzero_si256(); }
    MORVANE_LANE_OPERATION Vector fill(std::uint64_t x) noexcept { return _mm256_set1_epi64x(static_cast<long long>(x)); }
    MORVANE_LANE_OPERATION Vector load(const std::uint64_t* from) noexcept {
        return _mm256_load_si256(reinterpret_cast<const Vector*>(from));
    }
    MORVANE_LANE_OPERATION void store(std::uint64_t* to, Vector x) noexcept {
        _mm256_store_si256(reinterpret_cast<Vector*>(to), x);
    }
    MORVANE_LANE_OPERATION Vector low(Vector sum, Vector a, Vector b) noexcept { return _mm256_madd52lo_epu64(sum, a, b); }
    MORVANE_LANE_OPERATION Vector high(Vector sum, Vector a, Vector b) noexcept { return _mm256_madd52hi_epu64(sum, a, b); }
    MORVANE_LANE_OPERATION Vector add(Vector a, Vector b) noexcept { return _mm256_add_epi64(a, b); }
    MORVANE_LANE_OPERATION Vector add(Vector a, Vector b, unsigned lanes) noexcept {
        return _mm256_mask_add_epi64(a, static_cast<__mmask8>(lanes), a, b);
    }
    MORVANE_LANE_OPERATION Vector both(Vector a, Vector b) noexcept { return _mm256_and_si256(a, b); }
    MORVANE_LANE_OPERATION Vector add_both(Vector sum, Vector a, Vector b) noexcept {
        return _mm256_ternarylogic_epi64(sum, a, b, 0xf8);
    }
    MORVANE_LANE_OPERATION Vector ones_if_equal(Vector a, Vector b) noexcept { return _mm256_cmpeq_epi64(a, b); }
    MORVANE_LANE_OPERATION Vector shift(Vector x, unsigned lanes) noexcept {
        return _mm256_maskz_srli_epi64(static_cast<__mmask8>(lanes), x, kIfmaBits);
    }
    MORVANE_LANE_OPERATION Vector down(Vector x, Vector above) noexcept {
        return _mm256_maskz_alignr_epi64(kAll, above, x, 1);
    }
    MORVANE_LANE_OPERATION Vector up(Vector x, Vector below) noexcept {
        return _mm256_maskz_alignr_epi64(kAll, x, below, 3);
    }
    MORVANE_LANE_OPERATION Vector first(Vector x) noexcept { return _mm256_broadcastq_epi64(_mm256_castsi256_si128(x)); }
    MORVANE_LANE_OPERATION unsigned greater(Vector a, Vector b) noexcept { return _mm256_cmpgt_epu64_mask(a, b); }
    MORVANE_LANE_OPERATION unsigned equal(Vector a, Vector b) noexcept { return _mm256_cmpeq_epu64_mask(a, b); }
};

}  // namespace morvane::bignum
