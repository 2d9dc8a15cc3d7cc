// The field of p = 2^160 - 2^31 - 1. Elements are limbs of 192 bits that are not kept below p: "magnitude m" is a value
// below m (2^160 + 2^81). A product takes magnitudes up to 128, has magnitude 1, and so needs neither comparison nor carry
// at the top; sums and differences only add magnitudes up. The time does not depend on values.
#pragma once

#include "ec/words.h"

namespace morvane::ec::p160 {

using Element = Limbs;

inline constexpr Constant kPrime(0, 0xffffffff, 0xffffffff, 0xffffffff, 0xffffffff, 0x7fffffff);
inline constexpr Limb kFold = (Limb{1} << 31) + 1;  // 2^160 mod p
inline constexpr std::size_t kTopLimb = 160 / kLimbBits;
inline constexpr unsigned kTopBits = 160 % kLimbBits;

// Limb i of x / 2^160.
template <std::size_t Size>
constexpr Limb above(const Limb* x, std::size_t i) noexcept {
    const Limb low = x[kTopLimb + i];
    if constexpr (kTopBits == 0) {
        return low;
    } else {
        return low >> kTopBits | (kTopLimb + i + 1 < Size ? x[kTopLimb + i + 1] << (kLimbBits - kTopBits) : 0);
    }
}

// r = x mod 2^160 + (x / 2^160) (2^31 + 1), in Sum limbs, for an x of so many bits.
template <std::size_t Sum, std::size_t Bits>
constexpr void fold(Limb* r, const Limb* x) noexcept {
    constexpr std::size_t kSize = (Bits + kLimbBits - 1) / kLimbBits;
    constexpr std::size_t kHigh = (Bits - 160 + kLimbBits - 1) / kLimbBits;
    Limb carry = 0;
    for (std::size_t i = 0; i < Sum; ++i) {
        Limb low = i <= kTopLimb ? x[i] : 0;
        if (i == kTopLimb) low = kTopBits == 0 ? 0 : low & ((Limb{1} << kTopBits) - 1);
        DoubleLimb sum = DoubleLimb{low} + carry;
        if (i < kHigh) sum += DoubleLimb{above<kSize>(x, i)} * kFold;
        r[i] = static_cast<Limb>(sum);
        carry = static_cast<Limb>(sum >> kLimbBits);
    }
}

// A product below 2^336, that is of magnitudes whose product is below 2^16.
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

constexpr Element square_times(Element a, unsigned times) noexcept {
    while (times-- != 0) a = square(a);
    return a;
}

// a - b by way of 2^Bits p, for a b of magnitude below 2^Bits, which is added to the magnitude of a.
template <unsigned Bits>
constexpr Element subtract(const Element& a, const Element& b) noexcept {
    constexpr Element kMultiple = [] {
        Limbs r = kPrime.limbs();
        for (unsigned i = 0; i < Bits; ++i) r = ec::add(r, r);
        return r;
    }();
    return ec::subtract(ec::add(a, kMultiple), b);
}

// a 2^Bits, of so many times the magnitude.
template <unsigned Bits>
constexpr Element scale(const Element& a) noexcept {
    Element r{};
    for (std::size_t i = 0; i < kLimbs; ++i) {
        r.v[i] = a.v[i] << Bits;
        if (i != 0) r.v[i] |= a.v[i - 1] >> (kLimbBits - Bits);
    }
    return r;
}

// Below p, of any value of 192 bits.
constexpr Element canonical(const Element& a) noexcept {
    Limb once[kLimbs]{};
    Limbs r{};
    fold<kLimbs, 192>(once, a.v);  // below 2^160 + 2^64
    fold<kLimbs, 192>(r.v, once);  // below 2^160
    Limb borrow = 0;
    const Limbs less = ec::subtract(r, kPrime.limbs(), borrow);
    return choose(static_cast<Mask>(borrow) - 1, less, r);
}

inline Mask mask_if_multiple(const Element& a) noexcept { return mask_if_zero(canonical(a)); }  // of p

// a^(p - 2): 0 for 0. The exponent is 128 ones, a zero, 29 ones, a zero and a one. A name tells the ones of the power.
constexpr Element invert(const Element& a) noexcept {
    const Element two = multiply(square(a), a);
    const Element four = multiply(square_times(two, 2), two);
    const Element five = multiply(square(four), a);
    const Element eight = multiply(square_times(four, 4), four);
    const Element thirteen = multiply(square_times(eight, 5), five);
    const Element sixteen = multiply(square_times(eight, 8), eight);
    const Element twenty_nine = multiply(square_times(sixteen, 13), thirteen);
    const Element thirty_two = multiply(square_times(sixteen, 16), sixteen);
    const Element sixty_four = multiply(square_times(thirty_two, 32), thirty_two);
    const Element all = multiply(square_times(sixty_four, 64), sixty_four);
    return multiply(square_times(multiply(square_times(all, 30), twenty_nine), 2), a);
}

}  // namespace morvane::ec::p160
