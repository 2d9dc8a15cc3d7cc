// Products in the field of p = 2^160 - 2^31 - 1, of digits of 54 bits.
#pragma once

#include "ecc/digits_p160.h"

namespace morvane::ecc::p160 {

// The five columns of a product. With magnitudes whose product is up to 128 they are below 2^115, 2^116, 2^116, 2^114 and
// 2^111.
constexpr Element reduce(DoubleLimb c0, DoubleLimb c1, DoubleLimb c2, DoubleLimb c3, DoubleLimb c4) noexcept {
    // 2^162 = 2^33 + 4: the columns from there on, which are cut in digits so that they can be multiplied.
    constexpr Limb kAboveDigits = kFold << 2;
    const auto low = [](DoubleLimb x) { return static_cast<Limb>(x) & kDigitMask; };
    const auto high = [](DoubleLimb x) { return static_cast<Limb>(x >> kDigitBits); };
    c0 += DoubleLimb{low(c3)} * kAboveDigits;
    c1 += DoubleLimb{high(c3) + low(c4)} * kAboveDigits + high(c0);
    c2 += DoubleLimb{high(c4)} * kAboveDigits + high(c1);
    const Limb above = static_cast<Limb>(c2 >> kTopDigitBits);  // of 2^160, below 2^64
    c0 = low(c0) + DoubleLimb{above} * kFold;
    return {{low(c0), low(c1) + high(c0), static_cast<Limb>(c2) & kTopDigitMask}};
}

constexpr Element multiply(const Element& a, const Element& b) noexcept {
    const auto product = [&](std::size_t i, std::size_t j) { return DoubleLimb{a.v[i]} * b.v[j]; };
    return reduce(product(0, 0), product(0, 1) + product(1, 0), product(0, 2) + product(1, 1) + product(2, 0),
                  product(1, 2) + product(2, 1), product(2, 2));
}

constexpr Element square(const Element& a) noexcept {
    const Limb twice0 = 2 * a.v[0];
    const Limb twice1 = 2 * a.v[1];
    return reduce(DoubleLimb{a.v[0]} * a.v[0], DoubleLimb{twice0} * a.v[1],
                  DoubleLimb{twice0} * a.v[2] + DoubleLimb{a.v[1]} * a.v[1], DoubleLimb{twice1} * a.v[2],
                  DoubleLimb{a.v[2]} * a.v[2]);
}

}  // namespace morvane::ecc::p160
