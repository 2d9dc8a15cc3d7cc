// Rows of 32-bit limbs in vectors of 128 bits, two limbs at a time: carries stay in vectors, where a limb's sum has 64
// bits. Included by one file for each set of instructions, which first defines
//     MORVANE_TARGET     the target attribute of every function
//     MORVANE_INLINE     the same for functions to be inlined
//
// A row is subtracted as it is added, from the complements: r - a w is the complement of (complement of r) + a w.
#include "bignum/kernel_variants.h"
#include "bignum/rows.h"

namespace morvane::bignum {
namespace {  // NOLINT(cert-dcl59-cpp): every file that includes this makes functions of its own

using Vector = __m128i;

MORVANE_INLINE Vector load_two(const LimbInWords* from) noexcept {
    return _mm_loadl_epi64(reinterpret_cast<const Vector*>(from));
}
MORVANE_INLINE void store_two(LimbInWords* to, Vector limbs) noexcept {
    _mm_storel_epi64(reinterpret_cast<Vector*>(to), limbs);
}
MORVANE_INLINE Vector one(Limb limb) noexcept { return _mm_cvtsi32_si128(static_cast<int>(limb)); }
MORVANE_INLINE Limb lowest(Vector x) noexcept { return static_cast<Limb>(_mm_cvtsi128_si32(x)); }
MORVANE_INLINE Vector high_halves(Vector x) noexcept { return _mm_srli_epi64(x, 32); }

// The limbs `changed` + a w + carry, once more changed; the carry out.
template <Limb Change>
MORVANE_INLINE Limb add_row(LimbInWords* r, const LimbInWords* a, std::size_t n, Limb w) noexcept {
    const Vector change = _mm_set1_epi64x(Change);
    const Vector changes = _mm_set1_epi32(static_cast<int>(Change));
    const Vector zero = _mm_setzero_si128();
    const Vector factor = _mm_set1_epi64x(w);
    Vector carry = zero;
    std::size_t i = 0;
    for (; i + 2 <= n; i += 2) {
        // One by one: the row before has stored pairs that begin a limb above or below, and does not hand those on at once.
        const Vector old = _mm_xor_si128(_mm_unpacklo_epi64(one(r[i]), one(r[i + 1])), change);
        const Vector products = _mm_mul_epu32(_mm_unpacklo_epi32(load_two(a + i), zero), factor);
        const Vector sums = _mm_add_epi64(products, old);
        const Vector first = _mm_add_epi64(sums, carry);
        const Vector second = _mm_add_epi64(_mm_unpackhi_epi64(sums, sums), high_halves(first));
        carry = high_halves(second);
        store_two(r + i, _mm_xor_si128(_mm_unpacklo_epi32(first, second), changes));
    }
    if (i != n) {
        const Vector product = _mm_mul_epu32(one(a[i]), factor);
        const Vector sum = _mm_add_epi64(_mm_add_epi64(product, one(r[i] ^ Change)), carry);
        carry = high_halves(sum);
        r[i] = lowest(sum) ^ Change;
    }
    return lowest(carry);
}

MORVANE_TARGET inline Limb subtract_row(LimbInWords* r, const LimbInWords* a, std::size_t n, Limb w) noexcept {
    return add_row<~Limb{0}>(r, a, n, w);
}

MORVANE_TARGET inline void reduce_by_rows(Limb* r, Limb* t, const Limb* m, std::size_t n, Limb minus_inverse) noexcept {
    Limb top = 0;
    for (std::size_t i = 0; i < n; ++i) {
        const Limb carry = add_row<0>(t + i, m, n, t[i] * minus_inverse);
        const DoubleLimb sum = wide(t[i + n]) + carry + top;
        t[i + n] = low(sum);
        top = high(sum);
    }
    reduce_once(r, t + n, m, n, top);
}

// u is in the lower lane, v in the upper one.
struct Lanes {
    Vector own, other, ones, carries;

    // The next sums, which carry. `limbs` has the limbs of u and v in the lower halves of the lanes, `crossed` those of v
    // and u.
    MORVANE_INLINE Vector step(Vector limbs, Vector crossed) noexcept {
        const Vector products =
            _mm_add_epi64(_mm_mul_epu32(limbs, own), _mm_mul_epu32(_mm_xor_si128(crossed, ones), other));
        const Vector sums = _mm_add_epi64(products, carries);
        carries = high_halves(sums);
        return sums;
    }
};

// Limbs 0 and 1 of a vector of four in the lower halves of the lanes, or two others.
template <int Lower, int Upper>
MORVANE_INLINE Vector in_lanes(Vector x) noexcept {
    return _mm_shuffle_epi32(x, _MM_SHUFFLE(Upper, Upper, Lower, Lower));
}

MORVANE_TARGET inline lehmer::Carries apply_run(const lehmer::Run& run, Limb* u, Limb* v, std::size_t n,
                                                std::size_t dropped) noexcept {
    const Vector other = _mm_unpacklo_epi64(one(run.ug), one(run.vf));
    Lanes lanes{_mm_unpacklo_epi64(one(run.uf), one(run.vg)), other, _mm_set1_epi32(-1), other};
    const std::size_t singles = dropped + (n - dropped) % 2;
    std::size_t i = 0;
    for (; i < singles; ++i) {
        const Vector limbs = _mm_unpacklo_epi32(one(u[i]), one(v[i]));
        const Vector sums = lanes.step(in_lanes<0, 1>(limbs), in_lanes<1, 0>(limbs));
        if (i < dropped) continue;
        u[i - dropped] = lowest(sums);
        v[i - dropped] = lowest(_mm_unpackhi_epi64(sums, sums));
    }
    for (; i < n; i += 2) {
        const Vector limbs = _mm_unpacklo_epi32(load_two(u + i), load_two(v + i));
        const Vector first = lanes.step(in_lanes<0, 1>(limbs), in_lanes<1, 0>(limbs));
        const Vector second = lanes.step(in_lanes<2, 3>(limbs), in_lanes<3, 2>(limbs));
        store_two(u + i - dropped, _mm_unpacklo_epi32(first, second));
        store_two(v + i - dropped, _mm_unpackhi_epi32(first, second));
    }
    return {lowest(lanes.carries), lowest(_mm_unpackhi_epi64(lanes.carries, lanes.carries))};
}

}  // namespace
}  // namespace morvane::bignum
