// Multiples of points on the curves over GF(2^163). Included by one file for each way to multiply, after what
// binary_points.h asks for and
//     MORVANE_TARGET   the target attribute of functions that are not inlined
#include "ecc/binary_points.h"
#include "ecc/recode.h"

namespace morvane::ecc {
namespace {  // NOLINT(cert-dcl59-cpp): every file that includes this makes functions of its own

// The square root of b, which makes doubling x / z cheaper: x^4 + b z^4 is the square of x^2 + sqrt(b) z^2.
template <typename Curve>
MORVANE_INLINE Element times_root_of_b(const Element& x) noexcept {
    if constexpr (Curve::kHasOnes) {
        return x;
    } else {
        return multiply<typename Curve::Field>(x, element_of(Curve::kRootOfB));
    }
}

struct Ladder {
    Element x0, z0, x1, z1;  // x coordinates of two points whose difference is known

    MORVANE_INLINE void swap_if(Mask mask) noexcept {
        const Element x = choose(mask, x1, x0);
        const Element z = choose(mask, z1, z0);
        x1 = choose(mask, x0, x1);
        z1 = choose(mask, z0, z1);
        x0 = x;
        z0 = z;
    }

    // The first is doubled, the second becomes the sum of both, x being the x of their difference.
    template <typename Curve>
    MORVANE_INLINE void step(const Element& x) noexcept {
        using Field = typename Curve::Field;
        const Element left = multiply<Field>(x0, z1);
        const Element right = multiply<Field>(x1, z0);
        const Element xx = square<Field>(x0);
        const Element zz = square<Field>(z0);
        z1 = square<Field>(add(left, right));
        z0 = multiply<Field>(xx, zz);
        x0 = square<Field>(add(xx, times_root_of_b<Curve>(zz)));
        x1 = add(multiply<Field>(x, z1), multiply<Field>(left, right));
    }
};

// r = k p by the ladder of Lopez and Dahab, and y from the two points that it ends with. p is not the point at infinity and
// need not lie in the subgroup: k counts modulo 2 n, the order of the whole group. All ones if that is the point at
// infinity.
template <typename Curve>
MORVANE_TARGET Mask multiply_point(AffineElements& r, const Word* k, const AffineElements& p) noexcept {
    using Field = typename Curve::Field;
    constexpr std::size_t kBits = 164;
    SecretArray<Word, kWords> scalar;
    scalar_reduce(scalar.items.data(), Curve::kId, k, kWords);
    const Limbs reduced = limbs_of(scalar.items.data());
    const Mask other_parity = ~morvane::mask_if_zero((k[0] ^ scalar.items[0]) & 1);
    words_of(scalar.items.data(), choose(other_parity, add(reduced, Curve::kOrder.limbs()), reduced));

    if (is_zero<Curve>(p.x)) {  // the point of order 2
        r = p;
        return morvane::mask_if_zero(scalar.items[0] & 1);
    }
    Ladder ladder{one(), load(Polynomial{}), p.x, one()};
    Mask swapped = 0;
    for (std::size_t i = kBits; i-- != 0;) {
        const Mask bit = ~morvane::mask_if_zero(bits_at(scalar.items.data(), i, 1));
        ladder.swap_if(bit ^ swapped);
        swapped = bit;
        ladder.step<Curve>(p.x);
    }
    ladder.swap_if(swapped);

    // With X = x0 / z0 and X' = x1 / z1: y = (X + x) ((X + x) (X' + x) + x^2 + y) / x + y.
    const Element z0x = multiply<Field>(ladder.z0, p.x);
    const Element zz = multiply<Field>(ladder.z0, ladder.z1);
    const Element inverse = invert<Curve>(multiply<Field>(z0x, ladder.z1));
    const Element up0 = add(ladder.x0, z0x);
    const Element up1 = add(ladder.x1, multiply<Field>(ladder.z1, p.x));
    const Element inner = add(multiply<Field>(up0, up1), multiply<Field>(add(square<Field>(p.x), p.y), zz));
    const Element x = multiply<Field>(multiply<Field>(multiply<Field>(ladder.x0, ladder.z1), p.x), inverse);
    const Element y = add(multiply<Field>(add(x, p.x), multiply<Field>(inner, inverse)), p.y);
    const Mask is_minus_p = mask_if_zero<Curve>(ladder.z1);  // the point after it is that at infinity
    r.x = choose(is_minus_p, p.x, x);
    r.y = choose(is_minus_p, add(p.x, p.y), y);
    return mask_if_zero<Curve>(ladder.z0);
}

// The entry of a row, which is read whole.
MORVANE_INLINE AffineElements entry(const std::array<BinaryPoint, kCombOdds>& row, const OddDigit& digit) noexcept {
    std::uint64_t r[6]{};
    for (std::size_t i = 0; i < kCombOdds; ++i) {
        const Mask mask = mask_if_equal(static_cast<Word>(i), digit.index);
        const std::uint64_t all = std::uint64_t{mask} << 32 | mask;
        for (std::size_t j = 0; j < 3; ++j) {
            r[j] |= row[i].x.v[j] & all;
            r[3 + j] |= row[i].y.v[j] & all;
        }
    }
    const Element x = load(Polynomial{{r[0], r[1], r[2]}});
    const Element y = load(Polynomial{{r[3], r[4], r[5]}});
    return {x, choose(digit.negative, add(x, y), y)};
}

// r = k G. All ones if that is the point at infinity; then r is another point. The sum of the digits before number i is
// below 16^i, so no addition meets equal or opposite points, unless the last one does, where numbers modulo n come around.
template <typename Curve>
MORVANE_TARGET Mask multiply_base(Projective& r, const Word* k) noexcept {
    const Comb<BinaryPoint>* const comb = binary_comb<Curve>();
    if (comb == nullptr) {
        AffineElements product{};
        const Mask infinite = multiply_point<Curve>(product, k, {element_of(Curve::kBaseX), element_of(Curve::kBaseY)});
        r = {product.x, product.y, one()};
        return infinite;
    }
    const OddScalar scalar(Curve::kId, k);
    AffineElements addend = entry((*comb)[0], odd_digit<kCombBits>(scalar.get(), 0, kCombDigits - 1));
    Projective sum{addend.x, addend.y, one()};
    for (std::size_t i = 1; i < kCombDigits; ++i) {
        addend = entry((*comb)[i], odd_digit<kCombBits>(scalar.get(), i, kCombDigits - 1));
        sum = plus<Curve>(sum, addend);
    }
    const Mask was_equal = mask_if_zero<Curve>(sum.z);
    const Projective two = twice<Curve>({addend.x, addend.y, one()});
    r.x = choose(was_equal, two.x, sum.x);
    r.y = choose(was_equal, two.y, sum.y);
    r.z = choose(was_equal, two.z, sum.z);
    r.y = choose(scalar.negated, add(r.y, multiply<typename Curve::Field>(r.x, r.z)), r.y);
    return scalar.zero;
}

// p + q for any q in the group, in variable time; p is not the point at infinity. False if the sum is.
template <typename Curve>
MORVANE_TARGET bool add_vt(Projective& p, const AffineElements& q) noexcept {
    Element rise{};
    const Projective sum = plus<Curve>(p, q, &rise);
    if (!is_zero<Curve>(sum.z)) {
        p = sum;
        return true;
    }
    p = twice<Curve>({q.x, q.y, one()});
    return is_zero<Curve>(rise) && !is_zero<Curve>(p.z);
}

template <typename Curve>
MORVANE_TARGET bool multiply_both(TORVA_V1_POINT& r, const Word* u, const Word* v, const TORVA_V1_POINT* p) noexcept {
    AffineElements result{load(Polynomial{}), load(Polynomial{})};
    Mask infinite = 0xffffffff;
    if (v != nullptr) {
        const Polynomial x = Curve::Field::canonical(polynomial_of(p->x));
        const Polynomial y = Curve::Field::canonical(polynomial_of(p->y));
        if (!is_zero(x) || !is_zero(y)) infinite = multiply_point<Curve>(result, v, {load(x), load(y)});
    }
    if (u != nullptr) {
        Projective sum{};
        const Mask nothing = multiply_base<Curve>(sum, u);
        if (v == nullptr) {
            infinite = nothing;
            result = affine<Curve>(sum);
        } else if (nothing == 0) {
            const bool finite = infinite != 0 || add_vt<Curve>(sum, result);
            infinite = finite ? 0 : 0xffffffff;
            if (finite) result = affine<Curve>(sum);
        }
    }
    const Element nothing = load(Polynomial{});
    words_of(r.x, Curve::Field::canonical(store(choose(infinite, nothing, result.x))));
    words_of(r.y, Curve::Field::canonical(store(choose(infinite, nothing, result.y))));
    return known(infinite == 0);  // always, for a sound point and scalar
}

MORVANE_INLINE bool multiply_on(TORVA_V1_POINT& r, std::int32_t curve, const Word* u, const Word* v,
                                const TORVA_V1_POINT* p) noexcept {
    return curve == kSect163k1 ? multiply_both<Sect163k1>(r, u, v, p) : multiply_both<C2pnb163v1>(r, u, v, p);
}

}  // namespace
}  // namespace morvane::ecc
