// Long division by limbs: Knuth, The Art of Computer Programming, volume 2, 4.3.1, algorithm D, with the quotient digits
// from a reciprocal: Moller and Granlund, Improved division by invariant integers, algorithms 4 and 5 (3 limbs by 2).
#include "bignum/kernel_variants.h"
#include "bignum/kernels.h"
#include "bignum/rows.h"
#include "bignum/work.h"

#include <algorithm>

namespace morvane::bignum {
namespace {

// (high, low) / d; high is below d.
Limb divide_pair(Limb upper, Limb lower, Limb d) noexcept {
#if defined(__x86_64__) || defined(__i386__)
    Limb quotient = lower;
    asm("div %2" : "+a"(quotient), "+d"(upper) : "r"(d) : "cc");
    return quotient;
#else
    return low(join(upper, lower) / d);
#endif
}

// A divisor of two limbs, the top bit set, and its reciprocal (B^3 - 1) / (d1 B + d0) - B, where B is one more than the
// greatest limb.
struct Divisor {
    Limb d1, d0, reciprocal;

    Divisor(Limb upper, Limb lower) noexcept : d1(upper), d0(lower), reciprocal(divide_pair(~upper, ~Limb{0}, upper)) {
        Limb p = d1 * reciprocal + d0;
        if (p < d0) {
            --reciprocal;
            if (p >= d1) {
                --reciprocal;
                p -= d1;
            }
            p -= d1;
        }
        const DoubleLimb t = wide(reciprocal) * d0;
        p += high(t);
        if (p < high(t)) {
            --reciprocal;
            if (join(p, low(t)) >= join(d1, d0)) --reciprocal;
        }
    }

    // (u2, u1, u0) / (d1, d0); (u2, u1) is below the divisor.
    Limb quotient(Limb u2, Limb u1, Limb u0) const noexcept {
        const DoubleLimb estimate = wide(reciprocal) * u2 + join(u2, u1);
        Limb q = high(estimate);
        DoubleLimb rest = join(u1 - q * d1, u0) - wide(d0) * q - join(d1, d0);
        ++q;
        if (high(rest) >= low(estimate)) {
            --q;
            rest += join(d1, d0);
        }
        return rest >= join(d1, d0) ? q + 1 : q;
    }
};

// The quotients of more limbs are made in halves, by products: it is then the product's routine that counts.
#if defined(__x86_64__)
constexpr std::size_t kManyLimbs = 96;
#else
constexpr std::size_t kManyLimbs = 16;
#endif

// As divide() in kernels.h, digit by digit.
void divide_by_rows(Limb* q, Limb* u, std::size_t u_size, const Limb* d, std::size_t d_size) noexcept {
    // A divisor of one limb divides like one with a limb 0 below.
    const auto third = [d_size](const Limb* top) { return d_size > 1 ? top[-2] : 0; };
    const Divisor divisor(d[d_size - 1], third(d + d_size));
    RowFn* const subtract_row = multiply_subtract_variants.get();
    for (std::size_t j = u_size - d_size; j-- > 0;) {
        Limb* const top = u + j + d_size;
        const bool overflows = top[0] == divisor.d1 && d_size > 1 && top[-1] == divisor.d0;
        Limb digit = overflows ? ~Limb{0} : divisor.quotient(top[0], top[-1], third(top));
        const Limb borrow = subtract_row(u + j, d, d_size, digit);
        if (top[0] < borrow) {  // the limbs below made the estimate one too large
            --digit;
            add(u + j, u + j, d, d_size);
        }
        top[0] = 0;
        if (q != nullptr) q[j] = digit;
    }
}

// The same for q of up to d_size limbs, with d_size limbs of space: C. Burnikel and J. Ziegler, Fast recursive division,
// 1998. The upper half of q first, then the lower one; a half from as many limbs of d, and then what the limbs below these
// take from the remainder.
void divide_by_halves(Limb* q, Limb* u, std::size_t q_size, const Limb* d, std::size_t d_size, Limb* space) noexcept {
    if (q_size < kManyLimbs) return divide_by_rows(q, u, d_size + q_size, d, d_size);
    if (q_size > d_size / 2) {
        const std::size_t lower = q_size / 2;
        divide_by_halves(q + lower, u + lower, q_size - lower, d, d_size, space);
        return divide_by_halves(q, u, lower, d, d_size, space);
    }
    const std::size_t below = d_size - q_size;
    if (compare(u + d_size, d + below, q_size) == 0) return divide_by_rows(q, u, d_size + q_size, d, d_size);
    divide_by_halves(q, u + below, q_size, d + below, q_size, space);
    multiply(space, d, below, q, q_size);
    for (Limb borrow = subtract(u, u, space, d_size); borrow != 0;) {  // the limbs below made the estimate too large
        for (std::size_t i = 0; q[i]-- == 0;) ++i;
        borrow -= add(u, u, d, d_size);
    }
}

}  // namespace

void divide(Limb* q, Limb* u, std::size_t u_size, const Limb* d, std::size_t d_size) noexcept {
    const std::size_t q_size = u_size - d_size;
    const bool by_halves = std::min(q_size, d_size) >= kManyLimbs;
    WorkLimbs space(by_halves ? d_size : 0);
    WorkLimbs unwanted(by_halves && q == nullptr ? q_size : 0);
    if (!by_halves || !space || !unwanted) return divide_by_rows(q, u, u_size, d, d_size);  // which takes no space
    if (q == nullptr) q = unwanted.get();
    for (std::size_t left = q_size; left != 0;) {
        const std::size_t part = std::min(left, d_size);
        left -= part;
        divide_by_halves(q + left, u + left, part, d, d_size, space.get());
    }
}

}  // namespace morvane::bignum
