// One row of schoolbook arithmetic at a time, in plain C++. Every function takes n limbs, 0 included, and returns what goes
// on to the limb above. Results may be operands.
#pragma once

#include "bignum/limb.h"

namespace morvane::bignum {

constexpr Limb high(DoubleLimb value) noexcept { return static_cast<Limb>(value >> kLimbBits); }
constexpr Limb low(DoubleLimb value) noexcept { return static_cast<Limb>(value); }
constexpr DoubleLimb wide(Limb limb) noexcept { return limb; }
constexpr DoubleLimb join(Limb upper, Limb lower) noexcept { return wide(upper) << kLimbBits | lower; }

// r = a + b + carry; the carry out.
inline Limb add(LimbInWords* r, const LimbInWords* a, const LimbInWords* b, std::size_t n, Limb carry = 0) noexcept {
    for (std::size_t i = 0; i < n; ++i) {
        const DoubleLimb sum = wide(a[i]) + b[i] + carry;
        r[i] = low(sum);
        carry = high(sum);
    }
    return carry;
}

// r = a - b - borrow; the borrow out.
inline Limb subtract(LimbInWords* r, const LimbInWords* a, const LimbInWords* b, std::size_t n, Limb borrow = 0) noexcept {
    for (std::size_t i = 0; i < n; ++i) {
        const DoubleLimb difference = wide(a[i]) - b[i] - borrow;
        r[i] = low(difference);
        borrow = high(difference) & 1;
    }
    return borrow;
}

// t = t + 1, in a time that does not depend on how far it carries.
inline void add_one(Limb* t, std::size_t n) noexcept {
    Limb carry = 1;
    for (std::size_t i = 0; i < n; ++i) {
        const DoubleLimb sum = wide(t[i]) + carry;
        t[i] = low(sum);
        carry = high(sum);
    }
}

// r = a w; the carry out.
inline Limb multiply_row(LimbInWords* r, const LimbInWords* a, std::size_t n, Limb w) noexcept {
    Limb carry = 0;
    for (std::size_t i = 0; i < n; ++i) {
        const DoubleLimb product = wide(a[i]) * w + carry;
        r[i] = low(product);
        carry = high(product);
    }
    return carry;
}

// r += a w; the carry out.
inline Limb multiply_add_row(LimbInWords* r, const LimbInWords* a, std::size_t n, Limb w) noexcept {
    Limb carry = 0;
    for (std::size_t i = 0; i < n; ++i) {
        const DoubleLimb sum = wide(a[i]) * w + r[i] + carry;
        r[i] = low(sum);
        carry = high(sum);
    }
    return carry;
}

// r -= a w; the borrow out, up to a whole limb.
inline Limb multiply_subtract_row(LimbInWords* r, const LimbInWords* a, std::size_t n, Limb w) noexcept {
    Limb borrow = 0;
    for (std::size_t i = 0; i < n; ++i) {
        const DoubleLimb product = wide(a[i]) * w + borrow;
        borrow = high(product) + static_cast<Limb>(r[i] < low(product));
        r[i] -= low(product);
    }
    return borrow;
}

// r = a modulo m, for a below 2 m with another limb `top` above. The difference is kept where it did not borrow, or where
// there was the limb on top; the time does not depend on that.
inline void reduce_once(Limb* r, const Limb* a, const Limb* m, std::size_t n, Limb top) noexcept {
    const Limb borrow = subtract(r, a, m, n);
    const Limb keep = Limb{0} - (borrow & ~top & 1);
    for (std::size_t i = 0; i < n; ++i) r[i] ^= (r[i] ^ a[i]) & keep;
}

// r = a shifted left by `bits`, fewer than a limb has; the bits that leave at the top.
inline Limb shift_left(LimbInWords* r, const LimbInWords* a, std::size_t n, unsigned bits) noexcept {
    if (n == 0) return 0;
    if (bits == 0) {
        std::memmove(r, a, n * sizeof(Limb));
        return 0;
    }
    const Limb out = a[n - 1] >> (kLimbBits - bits);
    for (std::size_t i = n - 1; i > 0; --i) r[i] = a[i] << bits | a[i - 1] >> (kLimbBits - bits);
    r[0] = a[0] << bits;
    return out;
}

// r = a shifted right by `bits`, fewer than a limb has.
inline void shift_right(LimbInWords* r, const LimbInWords* a, std::size_t n, unsigned bits) noexcept {
    if (n == 0) return;
    if (bits == 0) {
        std::memmove(r, a, n * sizeof(Limb));
        return;
    }
    for (std::size_t i = 0; i + 1 < n; ++i) r[i] = a[i] >> bits | a[i + 1] << (kLimbBits - bits);
    r[n - 1] = a[n - 1] >> bits;
}

// The order of magnitudes: below 0, 0 or above 0.
inline int compare(const LimbInWords* a, const LimbInWords* b, std::size_t n) noexcept {
    for (std::size_t i = n; i-- > 0;) {
        if (a[i] != b[i]) return a[i] < b[i] ? -1 : 1;
    }
    return 0;
}

}  // namespace morvane::bignum
