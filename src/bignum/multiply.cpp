// Products and squares by the schoolbook, row by row.
#include "bignum/kernel_variants.h"
#include "bignum/rows.h"

namespace morvane::bignum {

void multiply_plain(LimbInWords* r, const LimbInWords* a, std::size_t a_size, const LimbInWords* b,
                    std::size_t b_size) noexcept {
    r[a_size] = multiply_row(r, a, a_size, b[0]);
    for (std::size_t j = 1; j < b_size; ++j) r[j + a_size] = multiply_add_row(r + j, a, a_size, b[j]);
}

void square_plain(LimbInWords* r, const LimbInWords* a, std::size_t n) noexcept {
    // Each product of two different limbs once, the whole doubled, then the squares of the limbs.
    r[0] = 0;
    r[2 * n - 1] = 0;
    if (n > 1) {
        r[n] = multiply_row(r + 1, a + 1, n - 1, a[0]);
        for (std::size_t i = 1; i + 1 < n; ++i) r[n + i] = multiply_add_row(r + 2 * i + 1, a + i + 1, n - 1 - i, a[i]);
    }
    Limb doubled_out = 0;
    Limb carry = 0;
    for (std::size_t i = 0; i < n; ++i) {
        const DoubleLimb squared = wide(a[i]) * a[i];
        const DoubleLimb pair = join(r[2 * i + 1], r[2 * i]);
        const DoubleLimb doubled = pair << 1 | doubled_out;
        doubled_out = high(pair) >> (kLimbBits - 1);
        const DoubleLimb sum = doubled + squared;
        const DoubleLimb total = sum + carry;
        carry = static_cast<Limb>(sum < squared) + static_cast<Limb>(total < sum);
        r[2 * i] = low(total);
        r[2 * i + 1] = high(total);
    }
}

}  // namespace morvane::bignum
