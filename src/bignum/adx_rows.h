// Rows of limbs in the instructions MULX, ADCX and ADOX (BMI2 and ADX), for x86-64.
//
// Compilers keep one carry chain at best; these instructions have two, in the flags CF and OF, which multiplication leaves
// alone. So a row of products is added to its accumulator with the low halves on one chain and the high halves, which
// belong one limb above, on the other. Each row is a statement of its own, whose accumulator the compiler keeps in
// registers; loops within a statement count with LEA and JRCXZ, which keep the flags. No branch and no address depends on a
// limb.
#pragma once

#include "bignum/limb.h"

#include <utility>

namespace morvane::bignum::adx {

// An accumulator of N limbs, 4 or 8. Row I of a block begins at limb I, modulo N.
template <std::size_t N>
struct Block {
    static_assert(N == 4 || N == 8);
    Limb v[N];

    template <std::size_t I>
    Limb& at() noexcept {
        return v[I % N];
    }
};

// One product of a row with the multiplier in rdx.
#define MORVANE_ADX_STEP(offset, lower, upper) \
    "mulx " #offset                            \
    "(%[a]), %[low], %[high]\n\t"              \
    "adox %[low], %[" #lower                   \
    "]\n\t"                                    \
    "adcx %[high], %[" #upper "]\n\t"

// What follows the first product of a row, whose high half waits. r0 is free and becomes the limb on top.
#define MORVANE_ADX_REST_OF_4 \
    "movl $0, %k[r0]\n\t"      \
    "adcx %[high], %[r1]\n\t"  \
    MORVANE_ADX_STEP(8, r1, r2) MORVANE_ADX_STEP(16, r2, r3) MORVANE_ADX_STEP(24, r3, r0) \
    "movl $0, %k[low]\n\t"     \
    "adox %[low], %[r0]"
#define MORVANE_ADX_REST_OF_8 \
    "movl $0, %k[r0]\n\t"      \
    "adcx %[high], %[r1]\n\t"  \
    MORVANE_ADX_STEP(8, r1, r2) MORVANE_ADX_STEP(16, r2, r3) MORVANE_ADX_STEP(24, r3, r4) MORVANE_ADX_STEP(32, r4, r5) \
    MORVANE_ADX_STEP(40, r5, r6) MORVANE_ADX_STEP(48, r6, r7) MORVANE_ADX_STEP(56, r7, r0) \
    "movl $0, %k[low]\n\t"     \
    "adox %[low], %[r0]"

#define MORVANE_ADX_LIMBS_OF_4(x, i)                                                                              \
    [r0] "+&r"(x.template at<(i)>()), [r1] "+&r"(x.template at<(i) + 1>()), [r2] "+&r"(x.template at<(i) + 2>()), \
        [r3] "+&r"(x.template at<(i) + 3>())
#define MORVANE_ADX_LIMBS_OF_8(x, i)                                                                          \
    MORVANE_ADX_LIMBS_OF_4(x, i), [r4] "+&r"(x.template at<(i) + 4>()), [r5] "+&r"(x.template at<(i) + 5>()), \
        [r6] "+&r"(x.template at<(i) + 6>()), [r7] "+&r"(x.template at<(i) + 7>())

// x += a w + t for the N limbs of a; the bottom limb goes to t, the others move down, and one more comes on top.
template <std::size_t I, std::size_t N>
[[gnu::always_inline]] inline void add_row(Block<N>& x, LimbInWords& t, const LimbInWords* a, Limb w) noexcept {
    Limb low = 0, high = 0;
#define MORVANE_ADX_FIRST              \
    "xorl %k[low], %k[low]\n\t"        \
    "mulx (%[a]), %[low], %[high]\n\t" \
    "adcx %[t], %[r0]\n\t"             \
    "adox %[low], %[r0]\n\t"           \
    "movq %[r0], %[t]\n\t"
    if constexpr (N == 4) {
        asm volatile(MORVANE_ADX_FIRST MORVANE_ADX_REST_OF_4
                     : MORVANE_ADX_LIMBS_OF_4(x, I), [t] "+m"(t), [low] "=&r"(low), [high] "=&r"(high)
                     : [a] "r"(a), "d"(w)
                     : "cc", "memory");
    } else {
        asm volatile(MORVANE_ADX_FIRST MORVANE_ADX_REST_OF_8
                     : MORVANE_ADX_LIMBS_OF_8(x, I), [t] "+m"(t), [low] "=&r"(low), [high] "=&r"(high)
                     : [a] "r"(a), "d"(w)
                     : "cc", "memory");
    }
#undef MORVANE_ADX_FIRST
}

// x = (x + m w) / B, where w makes the bottom limb 0.
template <std::size_t I, std::size_t N>
[[gnu::always_inline]] inline void reduce_row(Block<N>& x, const Limb* m, Limb w) noexcept {
    Limb low = 0, high = 0;
#define MORVANE_ADX_FIRST              \
    "xorl %k[low], %k[low]\n\t"        \
    "mulx (%[a]), %[low], %[high]\n\t" \
    "adox %[low], %[r0]\n\t"
    if constexpr (N == 4) {
        asm volatile(MORVANE_ADX_FIRST MORVANE_ADX_REST_OF_4
                     : MORVANE_ADX_LIMBS_OF_4(x, I), [low] "=&r"(low), [high] "=&r"(high)
                     : [a] "r"(m), "d"(w)
                     : "cc", "memory");
    } else {
        asm volatile(MORVANE_ADX_FIRST MORVANE_ADX_REST_OF_8
                     : MORVANE_ADX_LIMBS_OF_8(x, I), [low] "=&r"(low), [high] "=&r"(high)
                     : [a] "r"(m), "d"(w)
                     : "cc", "memory");
    }
#undef MORVANE_ADX_FIRST
}

#define MORVANE_ADX_BY_LIMB_4(operation)                                                                          \
#operation " (%[b]), %[r0]\n\t" #operation " 8(%[b]), %[r1]\n\t" #operation " 16(%[b]), %[r2]\n\t" #operation \
               " 24(%[b]), %[r3]\n\t"
#define MORVANE_ADX_BY_LIMB_8(operation)                                                                             \
    MORVANE_ADX_BY_LIMB_4(operation)                                                                                 \
#operation " 32(%[b]), %[r4]\n\t" #operation " 40(%[b]), %[r5]\n\t" #operation " 48(%[b]), %[r6]\n\t" #operation \
               " 56(%[b]), %[r7]\n\t"

// x += b + carry for the N limbs of b; carry is 0 or 1, and so is what is carried on. Then the same for a difference.
template <std::size_t N>
[[gnu::always_inline]] inline void add(Block<N>& x, const LimbInWords* b, Limb& carry) noexcept {
    if constexpr (N == 4) {
        asm volatile("negq %[carry]\n\t" MORVANE_ADX_BY_LIMB_4(adcq) "sbbq %[carry], %[carry]\n\tnegq %[carry]"
                     : MORVANE_ADX_LIMBS_OF_4(x, 0), [carry] "+&r"(carry)
                     : [b] "r"(b)
                     : "cc", "memory");
    } else {
        asm volatile("negq %[carry]\n\t" MORVANE_ADX_BY_LIMB_8(adcq) "sbbq %[carry], %[carry]\n\tnegq %[carry]"
                     : MORVANE_ADX_LIMBS_OF_8(x, 0), [carry] "+&r"(carry)
                     : [b] "r"(b)
                     : "cc", "memory");
    }
}
template <std::size_t N>
[[gnu::always_inline]] inline void subtract(Block<N>& x, const LimbInWords* b, Limb& borrow) noexcept {
    if constexpr (N == 4) {
        asm volatile("negq %[borrow]\n\t" MORVANE_ADX_BY_LIMB_4(sbbq) "sbbq %[borrow], %[borrow]\n\tnegq %[borrow]"
                     : MORVANE_ADX_LIMBS_OF_4(x, 0), [borrow] "+&r"(borrow)
                     : [b] "r"(b)
                     : "cc", "memory");
    } else {
        asm volatile("negq %[borrow]\n\t" MORVANE_ADX_BY_LIMB_8(sbbq) "sbbq %[borrow], %[borrow]\n\tnegq %[borrow]"
                     : MORVANE_ADX_LIMBS_OF_8(x, 0), [borrow] "+&r"(borrow)
                     : [b] "r"(b)
                     : "cc", "memory");
    }
}

// x where `top` is not 0, otherwise the N limbs of b.
template <std::size_t N>
[[gnu::always_inline]] inline void choose(Block<N>& x, Limb top, const LimbInWords* b) noexcept {
    if constexpr (N == 4) {
        asm volatile("testq %[top], %[top]\n\t" MORVANE_ADX_BY_LIMB_4(cmovz)
                     : MORVANE_ADX_LIMBS_OF_4(x, 0)
                     : [b] "r"(b), [top] "r"(top)
                     : "cc", "memory");
    } else {
        asm volatile("testq %[top], %[top]\n\t" MORVANE_ADX_BY_LIMB_8(cmovz)
                     : MORVANE_ADX_LIMBS_OF_8(x, 0)
                     : [b] "r"(b), [top] "r"(top)
                     : "cc", "memory");
    }
}

// A row of a triangle begins with an empty limb on top and ends by storing the two limbs that are complete.
#define MORVANE_ADX_OPEN(offset, top) \
    "movq " #offset                   \
    "(%[a]), %%rdx\n\t"               \
    "movl $0, %k[" #top               \
    "]\n\t"                           \
    "xorl %k[low], %k[low]\n\t"
#define MORVANE_ADX_CLOSE(lower_at, lower, upper_at, upper, top) \
    "movl $0, %k[low]\n\t"                                       \
    "adox %[low], %[" #top                                       \
    "]\n\t"                                                      \
    "movq %[" #lower "], " #lower_at                             \
    "(%[t])\n\t"                                                 \
    "movq %[" #upper "], " #upper_at "(%[t])\n\t"
#define MORVANE_ADX_NEXT(operation, offset, lower, upper) \
    "mulx " #offset "(%[a]), %[low], %[" #upper "]\n\t" #operation " %[low], %[" #lower "]\n\t"

// 2 N limbs t = the sum of a[i] a[k] B^(i + k) for i < k.
template <std::size_t N>
[[gnu::always_inline]] inline void cross_products(LimbInWords* t, const LimbInWords* a) noexcept {
    Block<N> x{};
    Limb low = 0, high = 0;
    if constexpr (N == 4) {
        asm volatile("movq (%[a]), %%rdx\n\t"
            "mulx 8(%[a]), %[r0], %[r1]\n\t"
            MORVANE_ADX_NEXT(addq, 16, r1, r2)
            MORVANE_ADX_NEXT(adcq, 24, r2, r3)
            "adcq $0, %[r3]\n\t"
            "movq $0, (%[t])\n\t"
            "movq %[r0], 8(%[t])\n\t"
            "movq %[r1], 16(%[t])\n\t"
            MORVANE_ADX_OPEN(8, r0)
            MORVANE_ADX_STEP(16, r2, r3)
            MORVANE_ADX_STEP(24, r3, r0)
            MORVANE_ADX_CLOSE(24, r2, 32, r3, r0)
            "movq 16(%[a]), %%rdx\n\t"
            MORVANE_ADX_NEXT(addq, 24, r0, r1)
            "adcq $0, %[r1]\n\t"
            "movq %[r0], 40(%[t])\n\t"
            "movq %[r1], 48(%[t])\n\t"
            "movq $0, 56(%[t])"
            : MORVANE_ADX_LIMBS_OF_4(x, 0), [low] "=&r"(low), [high] "=&r"(high)
            : [t] "r"(t), [a] "r"(a)
            : "rdx", "cc", "memory");
    } else {
        asm volatile("movq (%[a]), %%rdx\n\t"
            "mulx 8(%[a]), %[r0], %[r1]\n\t"
            MORVANE_ADX_NEXT(addq, 16, r1, r2)
            MORVANE_ADX_NEXT(adcq, 24, r2, r3)
            MORVANE_ADX_NEXT(adcq, 32, r3, r4)
            MORVANE_ADX_NEXT(adcq, 40, r4, r5)
            MORVANE_ADX_NEXT(adcq, 48, r5, r6)
            MORVANE_ADX_NEXT(adcq, 56, r6, r7)
            "adcq $0, %[r7]\n\t"
            "movq $0, (%[t])\n\t"
            "movq %[r0], 8(%[t])\n\t"
            "movq %[r1], 16(%[t])\n\t"
            MORVANE_ADX_OPEN(8, r0)
            MORVANE_ADX_STEP(16, r2, r3)
            MORVANE_ADX_STEP(24, r3, r4)
            MORVANE_ADX_STEP(32, r4, r5)
            MORVANE_ADX_STEP(40, r5, r6)
            MORVANE_ADX_STEP(48, r6, r7)
            MORVANE_ADX_STEP(56, r7, r0)
            MORVANE_ADX_CLOSE(24, r2, 32, r3, r0)
            MORVANE_ADX_OPEN(16, r1)
            MORVANE_ADX_STEP(24, r4, r5)
            MORVANE_ADX_STEP(32, r5, r6)
            MORVANE_ADX_STEP(40, r6, r7)
            MORVANE_ADX_STEP(48, r7, r0)
            MORVANE_ADX_STEP(56, r0, r1)
            MORVANE_ADX_CLOSE(40, r4, 48, r5, r1)
            MORVANE_ADX_OPEN(24, r2)
            MORVANE_ADX_STEP(32, r6, r7)
            MORVANE_ADX_STEP(40, r7, r0)
            MORVANE_ADX_STEP(48, r0, r1)
            MORVANE_ADX_STEP(56, r1, r2)
            MORVANE_ADX_CLOSE(56, r6, 64, r7, r2)
            MORVANE_ADX_OPEN(32, r3)
            MORVANE_ADX_STEP(40, r0, r1)
            MORVANE_ADX_STEP(48, r1, r2)
            MORVANE_ADX_STEP(56, r2, r3)
            MORVANE_ADX_CLOSE(72, r0, 80, r1, r3)
            MORVANE_ADX_OPEN(40, r4)
            MORVANE_ADX_STEP(48, r2, r3)
            MORVANE_ADX_STEP(56, r3, r4)
            MORVANE_ADX_CLOSE(88, r2, 96, r3, r4)
            "movq 48(%[a]), %%rdx\n\t"
            MORVANE_ADX_NEXT(addq, 56, r4, r5)
            "adcq $0, %[r5]\n\t"
            "movq %[r4], 104(%[t])\n\t"
            "movq %[r5], 112(%[t])\n\t"
            "movq $0, 120(%[t])"
            : MORVANE_ADX_LIMBS_OF_8(x, 0), [low] "=&r"(low), [high] "=&r"(high)
            : [t] "r"(t), [a] "r"(a)
            : "rdx", "cc", "memory");
    }
}

// t = 2 t + the squares of the limbs of a, of `fours` times 4, at least once; t has twice as many.
inline void double_and_add_squares(LimbInWords* t, const LimbInWords* a, std::size_t fours) noexcept {
    Limb low = 0, high = 0, lower = 0, upper = 0;
#define MORVANE_ADX_SQUARE(offset, lower_at, upper_at) \
    "movq " #offset                                    \
    "(%[a]), %%rdx\n\t"                                \
    "mulx %%rdx, %[low], %[high]\n\t"                  \
    "movq " #lower_at                                  \
    "(%[t]), %[lower]\n\t"                             \
    "movq " #upper_at                                  \
    "(%[t]), %[upper]\n\t"                             \
    "adcx %[lower], %[lower]\n\t"                      \
    "adox %[low], %[lower]\n\t"                        \
    "adcx %[upper], %[upper]\n\t"                      \
    "adox %[high], %[upper]\n\t"                       \
    "movq %[lower], " #lower_at                        \
    "(%[t])\n\t"                                       \
    "movq %[upper], " #upper_at "(%[t])\n\t"
    asm volatile("xorl %k[low], %k[low]\n"
        "1:\n\t"
        MORVANE_ADX_SQUARE(0, 0, 8)
        MORVANE_ADX_SQUARE(8, 16, 24)
        MORVANE_ADX_SQUARE(16, 32, 40)
        MORVANE_ADX_SQUARE(24, 48, 56)
        "leaq 32(%[a]), %[a]\n\t"
        "leaq 64(%[t]), %[t]\n\t"
        "leaq -1(%%rcx), %%rcx\n\t"
        "jrcxz 2f\n\t"
        "jmp 1b\n"
        "2:"
        : [t] "+&r"(t), [a] "+&r"(a), "+&c"(fours), [low] "=&r"(low), [high] "=&r"(high), [lower] "=&r"(lower),
          [upper] "=&r"(upper)
        :
        : "rdx", "cc", "memory");
#undef MORVANE_ADX_SQUARE
}

// The rows of rows.h. With a complement on both sides, the sum is a difference.
#define MORVANE_ADX_LONG_STEP(offset, before, after, complement)      \
    "mulx " #offset "(%[a]), %[low], %[" #after                       \
    "]\n\t"                                                           \
    "movq " #offset "(%[r]), %[sum]\n\t" complement "adcx %[" #before \
    "], %[low]\n\t"                                                   \
    "adox %[low], %[sum]\n\t" complement "movq %[sum], " #offset "(%[r])\n\t"
#define MORVANE_ADX_LONG_ROW(complement) \
    asm volatile("xorl %k[high], %k[high]\n\t"                                                                                \
        "testq %%rcx, %%rcx\n\t"                                                                                \
        "jz 2f\n"                                                                                                 \
        "1:\n\t"                                                                                                     \
        MORVANE_ADX_LONG_STEP(0, high, next, complement)                                                             \
        MORVANE_ADX_LONG_STEP(8, next, high, complement)                                                             \
        MORVANE_ADX_LONG_STEP(16, high, next, complement)                                                            \
        MORVANE_ADX_LONG_STEP(24, next, high, complement)                                                            \
        "leaq 32(%[a]), %[a]\n\t"                                                                                    \
        "leaq 32(%[r]), %[r]\n\t"                                                                                    \
        "leaq -1(%%rcx), %%rcx\n\t"                                                                                  \
        "jrcxz 2f\n\t"                                                                                               \
        "jmp 1b\n"                                                                                                   \
        "2:\n\t"                                                                                                     \
        "movl $0, %k[low]\n\t"                                                                                       \
        "adcx %[low], %[high]\n\t"                                                                                   \
        "adox %[low], %[high]\n\t"                                                                                   \
        "movq %[rest], %%rcx\n"                                                                                      \
        "3:\n\t"                                                                                                     \
        "jrcxz 4f\n\t"                                                                                               \
        "xorl %k[low], %k[low]\n\t"                                                                                  \
        MORVANE_ADX_LONG_STEP(0, high, next, complement)                                                             \
        "movl $0, %k[low]\n\t"                                                                                       \
        "adcx %[low], %[next]\n\t"                                                                                   \
        "adox %[low], %[next]\n\t"                                                                                   \
        "movq %[next], %[high]\n\t"                                                                                  \
        "leaq 8(%[a]), %[a]\n\t"                                                                                     \
        "leaq 8(%[r]), %[r]\n\t"                                                                                     \
        "leaq -1(%%rcx), %%rcx\n\t"                                                                                  \
        "jmp 3b\n"                                                                                                   \
        "4:"                                                                                                         \
        : [r] "+&r"(r), [a] "+&r"(a), "+&c"(fours), [low] "=&r"(low), [high] "=&r"(high), [next] "=&r"(next),        \
          [sum] "=&r"(sum)                                                                                           \
        : "d"(w), [rest] "r"(rest)                                                                                   \
        : "cc", "memory")

inline Limb multiply_add_row(LimbInWords* r, const LimbInWords* a, std::size_t n, Limb w) noexcept {
    std::size_t fours = n / 4;
    const std::size_t rest = n % 4;
    Limb low = 0, high = 0, next = 0, sum = 0;
    MORVANE_ADX_LONG_ROW("");
    return high;
}

inline Limb multiply_subtract_row(LimbInWords* r, const LimbInWords* a, std::size_t n, Limb w) noexcept {
    std::size_t fours = n / 4;
    const std::size_t rest = n % 4;
    Limb low = 0, high = 0, next = 0, sum = 0;
    MORVANE_ADX_LONG_ROW("notq %[sum]\n\t");
    return high;
}

#undef MORVANE_ADX_LONG_ROW
#undef MORVANE_ADX_LONG_STEP
#undef MORVANE_ADX_NEXT
#undef MORVANE_ADX_CLOSE
#undef MORVANE_ADX_OPEN
#undef MORVANE_ADX_BY_LIMB_8
#undef MORVANE_ADX_BY_LIMB_4
#undef MORVANE_ADX_LIMBS_OF_8
#undef MORVANE_ADX_LIMBS_OF_4
#undef MORVANE_ADX_REST_OF_8
#undef MORVANE_ADX_REST_OF_4
#undef MORVANE_ADX_STEP

}  // namespace morvane::bignum::adx
