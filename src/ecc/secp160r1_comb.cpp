// The table over the base point of secp160r1, made when it is first asked for.
#include "ecc/secp160r1.h"

namespace morvane::ecc::p160 {
namespace {

void make_comb(Comb<Affine>& comb) noexcept {
    Comb<Jacobian> points{};
    Jacobian step = jacobian(base());
    for (auto& row : points) {
        row[0] = step;
        const Jacobian two = twice(step);
        for (std::size_t j = 1; j < kCombOdds; ++j) row[j] = plus(row[j - 1], two);
        step = twice(twice(twice(two)));
    }

    // One inversion for all: the inverse of the product of all z is divided by one z after the other, from the last on.
    std::array<Element, kCombDigits * kCombOdds> products{};  // of the z before each
    Element product = kOne;
    for (std::size_t i = 0; i < products.size(); ++i) {
        products[i] = product;
        product = multiply(product, points[i / kCombOdds][i % kCombOdds].z);
    }
    Element inverse = invert(product);
    for (std::size_t i = products.size(); i-- != 0;) {
        const Jacobian& point = points[i / kCombOdds][i % kCombOdds];
        const Element z = multiply(inverse, products[i]);
        inverse = multiply(inverse, point.z);
        const Element zz = square(z);
        comb[i / kCombOdds][i % kCombOdds] = {element_of(canonical(multiply(point.x, zz))),
                                              element_of(canonical(multiply(multiply(point.y, zz), z)))};
    }
}

}  // namespace

const Comb<Affine>* base_comb() noexcept {
    static constinit CombOnce<Affine> once;
    return once.get(make_comb);
}

}  // namespace morvane::ecc::p160
