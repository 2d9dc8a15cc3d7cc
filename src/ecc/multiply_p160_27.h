// Products in the field of p = 2^160 - 2^31 - 1, of digits of 27 bits.
#pragma once

#include "ecc/digits_p160.h"

namespace morvane::ecc::p160 {

// The eleven columns of a product, which has six terms in a column at most: below 2^64 with magnitudes whose product is up
// to 128.
constexpr Element reduce(DoubleLimb* c) noexcept {
    const auto low = [](DoubleLimb x) { return static_cast<Limb>(x) & kDigitMask; };
    // 2^162 = 2^33 + 4 = 2^6 2^27 + 2^2: the columns from there on, cut in digits.
    for (std::size_t i = 0; i < kDigits - 1; ++i) {
        const DoubleLimb digit = low(c[kDigits + i]);
        const DoubleLimb carry = c[kDigits + i] >> kDigitBits;
        c[i] += digit << 2;
        c[i + 1] += digit << 6;
        if (i + 2 < kDigits) c[kDigits + i + 1] += carry;
        if (i + 2 == kDigits) c[kDigits - 1] += carry << 2;
        if (i + 2 == kDigits) c[kDigits] = carry << 8;  // of 2^160
    }
    Element r{};
    for (std::size_t i = 0; i + 1 < kDigits; ++i) {
        r.v[i] = low(c[i]);
        c[i + 1] += c[i] >> kDigitBits;
    }
    r.v[kDigits - 1] = static_cast<Limb>(c[kDigits - 1]) & kTopDigitMask;
    // 2^160 = 2^4 2^27 + 1, times less than 2^47.
    const DoubleLimb above = (c[kDigits - 1] >> kTopDigitBits) + c[kDigits];
    const DoubleLimb above_low = low(above);
    const DoubleLimb above_high = above >> kDigitBits;
    DoubleLimb sum = r.v[0] + above_low;
    r.v[0] = low(sum);
    sum = (sum >> kDigitBits) + r.v[1] + above_high + (above_low << 4);
    r.v[1] = low(sum);
    r.v[2] += static_cast<Limb>((sum >> kDigitBits) + (above_high << 4));
    r.v[3] += r.v[2] >> kDigitBits;
    r.v[2] &= kDigitMask;
    return r;
}

constexpr Element multiply(const Element& a, const Element& b) noexcept {
    DoubleLimb c[2 * kDigits - 1]{};
    for (std::size_t i = 0; i < kDigits; ++i) {
        for (std::size_t j = 0; j < kDigits; ++j) c[i + j] += DoubleLimb{a.v[i]} * b.v[j];
    }
    return reduce(c);
}

constexpr Element square(const Element& a) noexcept {
    DoubleLimb c[2 * kDigits - 1]{};
    for (std::size_t i = 0; i < kDigits; ++i) {
        c[2 * i] += DoubleLimb{a.v[i]} * a.v[i];
        for (std::size_t j = i + 1; j < kDigits; ++j) c[i + j] += DoubleLimb{2 * a.v[i]} * a.v[j];
    }
    return reduce(c);
}

}  // namespace morvane::ecc::p160
