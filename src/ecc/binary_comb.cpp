// The tables over the base points of the curves over GF(2^163), made when they are first asked for.
#include "ecc/binary_field.h"

#define MORVANE_INLINE inline

namespace morvane::ecc {
namespace {
using Element = Polynomial;
}  // namespace
}  // namespace morvane::ecc

#include "ecc/binary_points.h"

namespace morvane::ecc {
namespace {

static_assert(is_zero(C2pnb163v1::Field::canonical(add(square<C2pnb163v1::Field>(polynomial_of(C2pnb163v1::kRootOfB.words)),
                                                       polynomial_of(C2pnb163v1::kB.words)))));

// All points in affine form. The inverse of the product of all z is divided by one z after the other, from the last on.
template <typename Curve, std::size_t Size>
std::array<AffineElements, Size> all_affine(const std::array<Projective, Size>& points) noexcept {
    using Field = typename Curve::Field;
    std::array<Element, Size> products{};  // of the z before each
    Element product = one();
    for (std::size_t i = 0; i < Size; ++i) {
        products[i] = product;
        product = multiply<Field>(product, points[i].z);
    }
    std::array<AffineElements, Size> result{};
    Element inverse = invert<Curve>(product);
    for (std::size_t i = Size; i-- != 0;) {
        const Element z = multiply<Field>(inverse, products[i]);
        inverse = multiply<Field>(inverse, points[i].z);
        result[i] = {multiply<Field>(points[i].x, z), multiply<Field>(points[i].y, square<Field>(z))};
    }
    return result;
}

template <typename Curve>
void make_comb(Comb<BinaryPoint>& comb) noexcept {
    using Field = typename Curve::Field;
    std::array<Projective, 2 * kCombDigits> steps{};  // 16^i G and 2 16^i G
    Projective step{polynomial_of(Curve::kBaseX.words), polynomial_of(Curve::kBaseY.words), one()};
    for (std::size_t i = 0; i < kCombDigits; ++i) {
        steps[2 * i] = step;
        steps[2 * i + 1] = twice<Curve>(step);
        step = twice<Curve>(twice<Curve>(twice<Curve>(steps[2 * i + 1])));
    }
    const auto affine_steps = all_affine<Curve>(steps);

    std::array<Projective, kCombDigits * kCombOdds> odds{};
    for (std::size_t i = 0; i < odds.size(); ++i) {
        const AffineElements& first = affine_steps[i / kCombOdds * 2];
        odds[i] = i % kCombOdds == 0 ? Projective{first.x, first.y, one()}
                                     : plus<Curve>(odds[i - 1], affine_steps[i / kCombOdds * 2 + 1]);
    }
    const auto affine_odds = all_affine<Curve>(odds);
    for (std::size_t i = 0; i < odds.size(); ++i) {
        comb[i / kCombOdds][i % kCombOdds] = {Field::canonical(affine_odds[i].x), Field::canonical(affine_odds[i].y)};
    }
}

}  // namespace

template <typename Curve>
const Comb<BinaryPoint>* binary_comb() noexcept {
    static constinit CombOnce<BinaryPoint> once;
    return once.get(make_comb<Curve>);
}

template const Comb<BinaryPoint>* binary_comb<Sect163k1>() noexcept;
template const Comb<BinaryPoint>* binary_comb<C2pnb163v1>() noexcept;

}  // namespace morvane::ecc
