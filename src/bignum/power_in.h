// Powers by way of a ring of residues: in, through the exponentiation, and out again.
#pragma once

#include "bignum/exponentiate.h"
#include "bignum/power_engines.h"

namespace morvane::bignum {

// An element of the usual size.
template <typename R>
using ElementWork = Work<typename R::Item, 2 * kElementItems<typename R::Item>>;

template <typename R>
bool power_in(const Power& power) noexcept {
    const R ring(power.modulus, power.is_modulus_secret);
    ElementWork<R> x(ring.size());
    if (!ring || !x) return false;
    ring.enter(x.get(), power.base);
    const bool done = power.has_known_exponent() ? exponentiate_vt(ring, x.get(), power.exponent[0])
                                                 : exponentiate(ring, x.get(), {power.exponent});
    return done && ring.leave(power.result, x.get());
}

template <typename R>
bool power_product_in(const Power& a, const Power& b) noexcept {
    const R ring(a.modulus, false);
    ElementWork<R> x(ring.size());
    ElementWork<R> y(ring.size());
    if (!ring || !x || !y) return false;
    ring.enter(x.get(), a.base);
    ring.enter(y.get(), b.base);
    return exponentiate_product_vt(ring, x.get(), y.get(), a.exponent, b.exponent) && ring.leave(a.result, x.get());
}

}  // namespace morvane::bignum
