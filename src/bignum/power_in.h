// Powers by way of a ring of residues: in, through the exponentiation, and out again.
#pragma once

#include "bignum/exponentiate.h"
#include "bignum/lasting_base.h"
#include "bignum/power_engines.h"

namespace morvane::bignum {

// An element of the usual size.
template <typename R>
using ElementWork = Work<typename R::Item, 2 * kElementItems<typename R::Item>>;

// x = x^exponent for the power's base in x.
template <typename R>
bool exponentiate_alone(const R& ring, typename R::Item* x, const Power& power) noexcept {
    if (power.has_known_exponent()) return exponentiate_vt(ring, x, power.exponent[0]);
    return (power.is_base_lasting && exponentiate_lasting(ring, x, power)) || exponentiate(ring, x, {power.exponent});
}

// x = x^e y^f for the bases of two powers in x and y.
template <typename R>
bool exponentiate_both_vt(const R& ring, typename R::Item* x, const typename R::Item* y, const Power& a,
                          const Power& b) noexcept {
    return (a.is_base_lasting && b.is_base_lasting && exponentiate_product_lasting_vt(ring, x, y, a, b)) ||
           exponentiate_product_vt(ring, x, y, a.exponent, b.exponent);
}

template <typename R>
bool power_in(const Power& power) noexcept {
    const R ring(power.modulus, power.is_modulus_secret);
    ElementWork<R> x(ring.size());
    if (!ring || !x) return false;
    ring.enter(x.get(), power.base);
    return exponentiate_alone(ring, x.get(), power) && ring.leave(power.result, x.get());
}

template <typename R>
bool power_product_in(const Power& a, const Power& b) noexcept {
    const R ring(a.modulus, false);
    ElementWork<R> x(ring.size());
    ElementWork<R> y(ring.size());
    if (!ring || !x || !y) return false;
    ring.enter(x.get(), a.base);
    ring.enter(y.get(), b.base);
    return exponentiate_both_vt(ring, x.get(), y.get(), a, b) && ring.leave(a.result, x.get());
}

}  // namespace morvane::bignum
