// Greatest common divisors and inverses, by runs of steps of the binary algorithm (see lehmer_step.h).
#include "bignum/kernel_variants.h"
#include "bignum/kernels.h"
#include "bignum/lehmer_step.h"
#include "bignum/work.h"

#include <algorithm>
#include <utility>

namespace morvane::bignum {
namespace {

using lehmer::Run;

// All ones for a negative number in two's complement with this limb at the top, otherwise 0: the limb above.
Limb sign_of(Limb top) noexcept { return Limb{0} - (top >> (kLimbBits - 1)); }

void negate(Limb* x, std::size_t n) noexcept {
    Limb carry = 1;
    for (std::size_t i = 0; i < n; ++i) {
        x[i] = ~x[i] + carry;
        carry &= static_cast<Limb>(x[i] == 0);
    }
}

// By address, not by a branch: it happens every other time, at random.
void exchange_if(std::size_t condition, Limb*& x, Limb*& y) noexcept {
    Limb* const both[2] = {x, y};
    x = both[condition];
    y = both[1 - condition];
}

// u, and v, which is odd. The top limb of one of them is not 0, or there is only one limb.
struct Pair {
    Limb* u;
    Limb* v;
    std::size_t n;

    void trim() noexcept {
        while (n > 1 && (u[n - 1] | v[n - 1]) == 0) --n;
    }
};

// For the greatest common divisor alone.
struct NoCofactors {
    void follow(const Run& /*run*/) noexcept {}
    void follow(Limb /*q*/) noexcept {}
    void exchange(std::size_t /*condition*/) noexcept {}
    void negate_u() noexcept {}
    void negate_v() noexcept {}
};

// x and y go with u and v: x a = B^scale u and y a = B^scale v modulo m, where a is what u was at first. A run takes them
// along but does not divide them by B; that counts in `scale`.
//
// They are in two's complement, of `size` limbs. A run makes them at most B times as large. With right guesses they have
// opposite signs and |x| v + |y| u = m, so that they stay within m. After wrong ones they may not; as soon as they need
// more than n + 1 limbs, they are divided by B modulo m.
struct Cofactors {
    Limb* x;  // n + 2 limbs, like y
    Limb* y;
    const Limb* m;
    std::size_t n;
    Limb m_inverse;
    std::size_t scale = 0;
    std::size_t size = 1;

    void follow(const Run& run) noexcept {
        widen();
        apply_variants.get()(run, x, y, size, 0);
        narrow();
    }
    // x' = x - q y and y' = B y.
    void follow(Limb q) noexcept {
        widen();
        multiply_subtract_row(x, y, size, q);
        for (std::size_t i = size; i-- > 1;) y[i] = y[i - 1];
        y[0] = 0;
        narrow();
    }
    void exchange(std::size_t condition) noexcept { exchange_if(condition, x, y); }
    void negate_u() noexcept { negate(x, size); }
    void negate_v() noexcept { negate(y, size); }

    // z / B modulo m, in as many limbs, at least n + 1; between z / B - m and z / B.
    void divide(Limb* z, std::size_t limbs) const noexcept {
        const Limb above = sign_of(z[limbs - 1]);
        z[limbs - 1] = above - lehmer::divide_step(z, limbs, m, n, z[0] * m_inverse);
    }

private:
    void widen() noexcept {
        x[size] = sign_of(x[size - 1]);
        y[size] = sign_of(y[size - 1]);
        ++size;
        ++scale;
    }
    void trim() noexcept {
        while (size > 1 && x[size - 1] == sign_of(x[size - 2]) && y[size - 1] == sign_of(y[size - 2])) --size;
    }
    void narrow() noexcept {
        for (trim(); size > n + 1; trim()) {
            divide(x, size);
            divide(y, size);
            --scale;
        }
    }
};

// Keeps the greatest common divisor, until u is 0 and v is the divisor, or both have at most `until` limbs.
template <typename Followers>
void reduce(Pair& pair, Followers& followers, std::size_t until) noexcept {
    ApplyFn* const apply = apply_variants.get();
    while (true) {
        pair.trim();
        const std::size_t n = pair.n;
        if (n <= until) return;
        const lehmer::Tops top = lehmer::tops(pair.u, pair.v, n);
        if (top.u == 0 && significant(pair.u, n) == 0) return;
        Run run;
        if (lehmer::find_run(run, pair.u[0], pair.v[0], top)) {
            const lehmer::Carries carries = apply(run, pair.u, pair.v, n, 1);
            pair.u[n - 1] = carries.u - run.ug;
            pair.v[n - 1] = carries.v - run.vf;
            followers.follow(run);
            if (carries.u < run.ug) {
                negate(pair.u, n);
                followers.negate_u();
            }
            if (carries.v < run.vf) {
                negate(pair.v, n);
                followers.negate_v();
            }
            exchange_if(run.exchange, pair.u, pair.v);
            followers.exchange(run.exchange);
        } else {
            exchange_if(run.exchange, pair.u, pair.v);
            followers.exchange(run.exchange);
            const Limb borrow = lehmer::divide_step(pair.u, n, pair.v, significant(pair.v, n), run.ug);
            pair.u[n - 1] = Limb{0} - borrow;
            followers.follow(run.ug);
            if (borrow != 0) {
                negate(pair.u, n);
                followers.negate_u();
            }
        }
    }
}

Limb gcd_of_limbs(Limb u, Limb odd) noexcept {
    if (u == 0) return odd;
    u >>= lehmer::trailing_zeros(u);
    while (u != odd) {
        const Limb swap = lehmer::mask_if_below(u, odd);
        const Limb difference = u - odd;
        odd += difference & swap;
        u = ((difference ^ swap) - swap) >> lehmer::trailing_zeros(difference);
    }
    return odd;
}

// As invert_vt, for an odd m; a may be above m.
Inversion invert_modulo_odd(Limb* x, const Limb* a, const Limb* m, std::size_t size) noexcept {
    const std::size_t n = significant(m, size);
    WorkNumbers<4> work(2 * size + 2 * (n + 2));
    if (!work) return Inversion::kNoMemory;
    Pair pair{work.get(), work.get() + size, size};
    std::memcpy(pair.u, a, size * sizeof(Limb));
    std::memcpy(pair.v, m, size * sizeof(Limb));
    Cofactors cofactors{pair.v + size, pair.v + size + n + 2, m, n, lehmer::inverse_of_odd(m[0])};
    cofactors.x[0] = 1;
    cofactors.y[0] = 0;
    reduce(pair, cofactors, 0);
    if (pair.n != 1 || pair.v[0] != 1) return Inversion::kNone;

    // y a = B^scale. |y| is hardly above B^scale, so that the divisions leave it between -m and 0 or just outside.
    Limb* const y = cofactors.y;
    const Limb above = sign_of(y[cofactors.size - 1]);
    for (std::size_t i = cofactors.size; i <= n; ++i) y[i] = above;
    const bool whole = n > 1 && cofactors.scale > 1;
    for (; cofactors.scale > (whole ? n : 0); --cofactors.scale) cofactors.divide(y, n + 1);
    std::memset(x, 0, size * sizeof(Limb));
    if (whole) {
        // The last n at once, where |y| is below m B^scale, which is added if y is below 0. Fewer than n are as many of a
        // multiple of y.
        Limb* const t = work.get();
        const std::size_t shift = n - cofactors.scale;
        const std::size_t taken = std::min(n + 1, 2 * n - shift);
        const Limb sign = sign_of(y[n]);
        std::memset(t, 0, shift * sizeof(Limb));
        std::memcpy(t + shift, y, taken * sizeof(Limb));
        for (std::size_t i = shift + taken; i < 2 * n; ++i) t[i] = sign;
        if (sign != 0) add(t + n, t + n, m, n);
        montgomery_reduce(x, t, m, n, Limb{0} - cofactors.m_inverse);
        return Inversion::kDone;
    }
    while (sign_of(y[n]) != 0) y[n] += add(y, y, m, n);
    while (y[n] != 0 || compare(y, m, n) >= 0) y[n] -= subtract(y, y, m, n);
    std::memcpy(x, y, n * sizeof(Limb));
    return Inversion::kDone;
}

// As invert_vt, for an even m and an odd a. With y = 1/m modulo a, a divides 1 - y m, and the quotient is 1/a modulo m.
Inversion invert_odd(Limb* x, const Limb* a, const Limb* m, std::size_t size) noexcept {
    WorkNumbers<2> work(2 * size);
    if (!work) return Inversion::kNoMemory;
    Limb* const y = work.get();
    Limb* const t = y + size;
    const Inversion inversion = invert_modulo_odd(y, m, a, size);
    if (inversion != Inversion::kDone) return inversion;
    const std::size_t y_size = significant(y, size);
    std::memset(t, 0, size * sizeof(Limb));
    t[0] = 1;
    for (std::size_t i = 0; i < y_size; ++i) multiply_subtract_row(t + i, m, size - i, y[i]);
    // The quotient is above -m, so that the lowest limbs are enough: each division drops a known limb.
    const std::size_t a_size = significant(a, size);
    const Limb a_inverse = lehmer::inverse_of_odd(a[0]);
    for (std::size_t i = 0; i < size; ++i) {
        const std::size_t left = size - i;
        y[i] = t[0] * a_inverse;
        lehmer::divide_step(t, left, a, a_size < left ? a_size : left, y[i]);
    }
    if (y_size != 0) add(y, y, m, size);
    std::memcpy(x, y, size * sizeof(Limb));
    return Inversion::kDone;
}

}  // namespace

void gcd_vt(Limb* u, Limb* v, std::size_t size) noexcept {
    Pair pair{u, v, size};
    pair.trim();
    std::size_t zeros = 0;
    while ((pair.u[0] | pair.v[0]) == 0) {
        pair = {pair.u + 1, pair.v + 1, pair.n - 1};
        ++zeros;
    }
    const unsigned bits = lehmer::trailing_zeros(pair.u[0] | pair.v[0]);
    shift_right(pair.u, pair.u, pair.n, bits);
    shift_right(pair.v, pair.v, pair.n, bits);
    if ((pair.v[0] & 1) == 0) std::swap(pair.u, pair.v);

    NoCofactors none;
    reduce(pair, none, 1);
    if (pair.n == 1) pair.v[0] = gcd_of_limbs(pair.u[0], pair.v[0]);

    std::memmove(u + zeros, pair.v, pair.n * sizeof(Limb));
    std::memset(u, 0, zeros * sizeof(Limb));
    std::memset(u + zeros + pair.n, 0, (size - zeros - pair.n) * sizeof(Limb));
    shift_left(u + zeros, u + zeros, size - zeros, bits);
}

Inversion invert_vt(Limb* x, const Limb* a, const Limb* m, std::size_t size) noexcept {
    if ((m[0] & 1) != 0) return invert_modulo_odd(x, a, m, size);
    return (a[0] & 1) != 0 ? invert_odd(x, a, m, size) : Inversion::kNone;
}

}  // namespace morvane::bignum
