// The curves over GF(2^163) with the processor's products of polynomials.
#include "ecc/binary.h"

#include <emmintrin.h>
#include <wmmintrin.h>

#define MORVANE_TARGET [[gnu::target("pclmul,sse2")]]
#define MORVANE_INLINE [[gnu::target("pclmul,sse2"), gnu::always_inline]] inline

namespace morvane::ecc {
namespace {

struct Element {
    __m128i low;
    __m128i high;  // its upper half is 0
};

MORVANE_INLINE Element load(const Polynomial& a) noexcept {
    return {_mm_loadu_si128(reinterpret_cast<const __m128i*>(a.v)),
            _mm_loadl_epi64(reinterpret_cast<const __m128i*>(a.v + 2))};
}

MORVANE_INLINE Polynomial store(const Element& a) noexcept {
    Polynomial r;
    _mm_storeu_si128(reinterpret_cast<__m128i*>(r.v), a.low);
    _mm_storel_epi64(reinterpret_cast<__m128i*>(r.v + 2), a.high);
    return r;
}

MORVANE_INLINE __m128i sum(__m128i a, __m128i b) noexcept { return _mm_xor_si128(a, b); }

MORVANE_INLINE Element add(const Element& a, const Element& b) noexcept { return {sum(a.low, b.low), sum(a.high, b.high)}; }

MORVANE_INLINE Element choose(Mask mask, const Element& yes, const Element& no) noexcept {
    const __m128i all = _mm_set1_epi32(static_cast<int>(mask));
    return {sum(no.low, _mm_and_si128(all, sum(yes.low, no.low))),
            sum(no.high, _mm_and_si128(all, sum(yes.high, no.high)))};
}

// The product of one half of a and one half of b, by the digits of Halves: 0x10 is low of a and high of b.
template <int Halves>
MORVANE_INLINE __m128i product(__m128i a, __m128i b) noexcept {
    return _mm_clmulepi64_si128(a, b, Halves);
}

// Reduces what has six words, two in each argument. The sixth word reaches into the fourth and so goes first.
template <typename Field>
MORVANE_INLINE Element reduce(__m128i low, __m128i middle, __m128i high) noexcept {
    const __m128i fold = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(&Field::kFold));
    middle = sum(middle, product<0x01>(high, fold));
    const __m128i fifth = product<0x00>(high, fold);
    low = sum(low, sum(product<0x01>(middle, fold), _mm_slli_si128(fifth, 8)));
    middle = sum(middle, _mm_srli_si128(fifth, 8));
    return {low, _mm_move_epi64(middle)};
}

template <typename Field>
MORVANE_INLINE Element multiply(const Element& a, const Element& b) noexcept {
    const __m128i second = sum(product<0x10>(a.low, b.low), product<0x01>(a.low, b.low));
    const __m128i fourth = sum(product<0x01>(a.low, b.high), product<0x10>(a.high, b.low));
    __m128i middle = sum(product<0x11>(a.low, b.low), sum(product<0x00>(a.low, b.high), product<0x00>(a.high, b.low)));
    middle = sum(middle, _mm_unpacklo_epi64(_mm_srli_si128(second, 8), fourth));
    const __m128i low = sum(product<0x00>(a.low, b.low), _mm_slli_si128(second, 8));
    const __m128i high = sum(product<0x00>(a.high, b.high), _mm_srli_si128(fourth, 8));
    return reduce<Field>(low, middle, high);
}

template <typename Field>
MORVANE_INLINE Element square(const Element& a) noexcept {
    return reduce<Field>(product<0x00>(a.low, a.low), product<0x11>(a.low, a.low), product<0x00>(a.high, a.high));
}

}  // namespace
}  // namespace morvane::ecc

#include "ecc/binary_multiples.h"

namespace morvane::ecc {

MORVANE_TARGET bool binary_multiply_clmul(TORVA_V1_POINT& r, std::int32_t curve, const Word* u, const Word* v,
                                          const TORVA_V1_POINT* p) {
    return multiply_on(r, curve, u, v, p);
}

}  // namespace morvane::ecc
