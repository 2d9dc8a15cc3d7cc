// The sum of one column of products, in three limbs: one addition with its carries for each product, and the factors are
// only read.
#pragma once

#include "bignum/rows.h"

namespace morvane::bignum {

class ColumnSum {
public:
    void add(Limb limb) noexcept { add(limb, 0); }
    void add_product(Limb a, Limb b) noexcept {
        const DoubleLimb product = wide(a) * b;
        add(low(product), high(product));
    }
    // a[0] b[0] + a[1] b[-1] + ..., `count` products.
    void add_products(const LimbInWords* a, const LimbInWords* b, std::size_t count) noexcept {
        Limb s0 = sum0_, s1 = sum1_, s2 = sum2_;  // in registers, whatever a and b are
        for (const LimbInWords* const end = a + count; a != end; ++a, --b) {
            const DoubleLimb product = wide(*a) * *b;
            add_to(s0, s1, s2, low(product), high(product));
        }
        sum0_ = s0, sum1_ = s1, sum2_ = s2;
    }
    void add_twice(const ColumnSum& other) noexcept {
        for (int i = 0; i < 2; ++i) {
            add(other.sum0_, other.sum1_);
            sum2_ += other.sum2_;
        }
    }
    Limb lowest() const noexcept { return sum0_; }
    // The lowest limb; the others stay for the next column.
    Limb take() noexcept {
        const Limb limb = sum0_;
        sum0_ = sum1_;
        sum1_ = sum2_;
        sum2_ = 0;
        return limb;
    }

private:
    static void add_to(Limb& s0, Limb& s1, Limb& s2, Limb lower, Limb upper) noexcept {
#if defined(__x86_64__) || defined(__i386__)
        asm("add %3, %0\n\tadc %4, %1\n\tadc $0, %2" : "+r"(s0), "+r"(s1), "+r"(s2) : "g"(lower), "g"(upper) : "cc");
#else
        const DoubleLimb sum = wide(s0) + lower;
        const DoubleLimb next = wide(s1) + upper + high(sum);
        s0 = low(sum);
        s1 = low(next);
        s2 += high(next);
#endif
    }
    void add(Limb lower, Limb upper) noexcept { add_to(sum0_, sum1_, sum2_, lower, upper); }

    Limb sum0_ = 0, sum1_ = 0, sum2_ = 0;
};

}  // namespace morvane::bignum
