// Lehmer's step for the binary algorithm of the greatest common divisor: a run of subtractions and shifts, found from
// two limbs of each number and applied to all limbs at once.
//
// The binary algorithm subtracts the smaller of two odd numbers from the larger and shifts the difference to the right
// until it is odd again. As in Euclid's algorithm, where Lehmer saw it, many steps together are one 2x2 matrix of small
// numbers, and few bits decide them: the lowest limb knows every shift, the highest limb tells which number is the larger.
// A run ends when it has shifted by B = 2^kLimbBits in all, so that dividing by B is dropping a limb that is 0.
//
// Measured on a Zen 4, a step costs six cycles and has no branch to mispredict; a step of Euclid's algorithm with a
// hardware division costs ten, and several times that on older processors. This outweighs that it takes 0.7 steps a bit,
// not 0.58.
#pragma once

#include "base/keep_order.h"
#include "bignum/limb.h"
#include "bignum/rows.h"

namespace morvane::bignum::lehmer {

inline constexpr Limb kTopBit = Limb{1} << (kLimbBits - 1);

// The zeros below the lowest one of a limb that is not 0.
inline unsigned trailing_zeros(Limb limb) noexcept {
    return static_cast<unsigned>(std::countr_zero(limb | kTopBit));  // spares the compiler the case of 0
}

// 1 / odd modulo B. Five bits are right at the start, and each round doubles them.
inline Limb inverse_of_odd(Limb odd) noexcept {
    Limb inverse = odd * 3 ^ 2;
    for (unsigned bits = 5; bits < kLimbBits; bits *= 2) inverse *= 2 - odd * inverse;
    return inverse;
}

// All ones where a is below b, otherwise 0. The compiler is not to see that it is one of two: it would branch, and the
// processor cannot predict which number is the larger.
inline Limb mask_if_below(Limb a, Limb b) noexcept {
    Limb mask = Limb{0} - static_cast<Limb>(a < b);
    keep_order(mask);
    return mask;
}

// u' = (uf u - ug v) / B and v' = (vg v - vf u) / B, after which u and v change places if `exchange` is 1 (otherwise 0), so
// that v is odd again. The divisions are exact; uf + ug and vf + vg are at most B.
struct Run {
    Limb uf, ug, vf, vg;
    std::size_t exchange;
};

// The highest kLimbBits bits of u and of v, counted from the top bit of the larger one and rounded down.
struct Tops {
    Limb u, v;
};

// At least one of the numbers has n limbs, not counting zeros.
inline Tops tops(const Limb* u, const Limb* v, std::size_t n) noexcept {
    const auto zeros = static_cast<unsigned>(std::countl_zero(static_cast<Limb>(u[n - 1] | v[n - 1])));
    const unsigned bits = zeros % kLimbBits;  // the same, and in the range of a shift for everyone to see
    const auto top = [=](const Limb* limbs) {
        const Limb below = n > 1 ? limbs[n - 2] : 0;
        return limbs[n - 1] << bits | below >> 1 >> (kLimbBits - 1 - bits);
    };
    return {top(u), top(v)};
}

// Finds a run for u, not 0, and v, odd, from their lowest and highest limbs. False if one of them would never be the larger
// one: then, after the exchange, u' = (u - ug v) / B and v' = v.
//
// Why it is right: a is the number that was subtracted from, b the other, s the shifts so far. Each step keeps
//     2^s a = af u - ag v,   2^s b = bg v - bf u   (both negated after an odd number of swaps),
//     af + ag <= 2^s,        bf + bg <= 2^s,
// whichever number it takes for the larger one: the coefficients of the difference are sums, and a shift by at least 1
// follows. ag and bg need not be kept: at the end the left sides are multiples of B, so that af and bf give them modulo B,
// and only a number that was never subtracted from has a coefficient of B itself.
//
// Why it ends: a wrong guess at the larger one costs progress only. A top has lost less than 1 at the start and less than 1
// more in each step, so less than kLimbBits + 1; a wrong guess leaves a difference less than twice that, in units of the
// tops, and possibly negative. Either every step takes from the product u v at least two thirds of the bits it shifts by,
// or both numbers become that small. So a run takes more than half a limb from the product, and 4 n runs suffice.
inline bool find_run(Run& run, Limb u_low, Limb v_low, Tops top) noexcept {
    const Limb ratio = u_low * inverse_of_odd(v_low);
    Limb a = u_low, a_top = top.u, af = 1;
    Limb b = v_low, b_top = top.v, bf = 0;
    if (a == 0 || a == b || b_top == 0) {
        run = {1, ratio, 0, 0, static_cast<std::size_t>(a == b && a_top < b_top)};
        return false;
    }
    Limb swaps = 0;
    unsigned shift = 0;
    const auto subtract = [&] {
        const Limb swap = mask_if_below(a_top, b_top);
        const Limb difference = a - b, top_difference = a_top - b_top, sum = af + bf;
        shift = trailing_zeros(difference);
        b += difference & swap;
        b_top += top_difference & swap;
        bf += (af - bf) & swap;
        a = (difference ^ swap) - swap;
        a_top = (top_difference ^ swap) - swap;
        af = sum;
        swaps ^= swap;
    };
    if ((a & 1) != 0) {
        subtract();
    } else {
        shift = trailing_zeros(a);
    }
    unsigned left = kLimbBits;
    while (shift < left) {
        a >>= shift;
        a_top >>= shift;
        bf <<= shift;
        left -= shift;
        subtract();
    }
    bf <<= left;
    if (bf == 0) {
        run = {1, swaps == 0 ? ratio : af, 0, 0, swaps & 1};
        return false;
    }
    const Limb other = (af ^ bf) & swaps;
    run = {af ^ other, (af ^ other) * ratio, bf ^ other, (bf ^ other) * ratio, swaps & 1};
    return true;
}

// What is left over above n limbs.
struct Carries {
    Limb u, v;
};

// Applies a run, but for the exchange, to u and v, of n limbs: with the division by B if `dropped` is 1, without it if 0.
// Writes n - dropped limbs; those above are carries.u - ug and carries.v - vf, negative if the number is.
//
// -ug v is taken as ug (B^n - 1 - v) + ug - ug B^n: so nothing is negative, and as uf + ug is at most B, a sum is at most
// B (B - 1) + B - 1, which fits in two limbs. Not inlined, because it needs all the registers.
template <std::size_t Dropped>
[[gnu::noinline]] Carries apply(const Run& run, Limb* u, Limb* v, std::size_t n) noexcept {
    const Limb uf = run.uf, ug = run.ug, vf = run.vf, vg = run.vg;
    Carries carries{ug, vf};
    for (std::size_t i = 0; i < n; ++i) {
        const Limb u_limb = u[i], v_limb = v[i];
        const DoubleLimb to_u = wide(uf) * u_limb + carries.u + wide(ug) * static_cast<Limb>(~v_limb);
        const DoubleLimb to_v = wide(vg) * v_limb + carries.v + wide(vf) * static_cast<Limb>(~u_limb);
        if (i >= Dropped) {
            u[i - Dropped] = low(to_u);
            v[i - Dropped] = low(to_v);
        }
        carries = {high(to_u), high(to_v)};
    }
    return carries;
}

inline Carries apply_plain(const Run& run, Limb* u, Limb* v, std::size_t n, std::size_t dropped) noexcept {
    return dropped != 0 ? apply<1>(run, u, v, n) : apply<0>(run, u, v, n);
}

// x = (x - q d) / B, for the q that makes it exact. Writes n - 1 limbs and returns the borrow from the one above them. d
// has d_size limbs, from 1 to n.
[[gnu::noinline]] inline Limb divide_step(Limb* x, std::size_t n, const Limb* d, std::size_t d_size, Limb q) noexcept {
    Limb carry = high(wide(q) * static_cast<Limb>(~d[0]) + x[0] + q);
    for (std::size_t i = 1; i < d_size; ++i) {
        const DoubleLimb sum = wide(q) * static_cast<Limb>(~d[i]) + x[i] + carry;
        x[i - 1] = low(sum);
        carry = high(sum);
    }
    Limb borrow = q - carry;
    for (std::size_t i = d_size; i < n; ++i) {
        const Limb limb = x[i];
        x[i - 1] = limb - borrow;
        borrow = static_cast<Limb>(limb < borrow);
    }
    return borrow;
}

}  // namespace morvane::bignum::lehmer
