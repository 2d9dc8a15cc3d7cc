// The field of p = 2^160 - 2^31 - 1 where limbs have 32 bits: elements are numbers of 192 bits. "Magnitude m" is a value
// below m (2^160 + 2^81).
#pragma once

#include "ec/modulo_p160.h"

namespace morvane::ec::p160 {

using Element = Limbs;

constexpr Element element_of(const Limbs& a) noexcept { return reduced(a); }
constexpr Limbs canonical(const Element& a) noexcept { return reduced(a); }

// A product below 2^336.
constexpr Element reduce(const Limb* product) noexcept {
    Limb once[kLimbs + 1]{};
    Element r{};
    fold<kLimbs + 1, 336>(once, product);  // below 2^208
    fold<kLimbs, 208>(r.v, once);
    return r;
}

constexpr Element multiply(const Element& a, const Element& b) noexcept {
    Limb t[2 * kLimbs]{};
    for (std::size_t i = 0; i < kLimbs; ++i) {
        Limb carry = 0;
        for (std::size_t j = 0; j < kLimbs; ++j) {
            const DoubleLimb sum = DoubleLimb{a.v[i]} * b.v[j] + t[i + j] + carry;
            t[i + j] = static_cast<Limb>(sum);
            carry = static_cast<Limb>(sum >> kLimbBits);
        }
        t[i + kLimbs] = carry;
    }
    return reduce(t);
}

constexpr Element square(const Element& a) noexcept { return multiply(a, a); }

// a - b by way of 2^Bits p, for a b of a magnitude below 2^Bits, which is added to the magnitude of a.
template <unsigned Bits>
constexpr Element subtract(const Element& a, const Element& b) noexcept {
    constexpr Element kMultiple = [] {
        Limbs r = kPrime.limbs();
        for (unsigned i = 0; i < Bits; ++i) r = ec::add(r, r);
        return r;
    }();
    return ec::subtract(ec::add(a, kMultiple), b);
}

// a / 2: half of a or of a + p, of half the magnitude and one more half.
constexpr Element half(const Element& a) noexcept {
    const Mask odd = 0U - static_cast<Mask>(a.v[0] & 1);
    const Limbs even = ec::add(a, choose(odd, kPrime.limbs(), Limbs{}));
    Element r{};
    for (std::size_t i = 0; i < kLimbs; ++i) {
        r.v[i] = even.v[i] >> 1 | (i + 1 < kLimbs ? even.v[i + 1] << (kLimbBits - 1) : 0);
    }
    return r;
}

}  // namespace morvane::ec::p160
