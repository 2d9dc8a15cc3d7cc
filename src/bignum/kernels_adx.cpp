// Products, squares and reductions in blocks of eight limbs, on the routines of rows_adx.S.
#include "bignum/kernel_variants.h"
#include "bignum/rows.h"

#include <algorithm>

extern "C" {

using morvane::bignum::Limb;
using morvane::bignum::LimbInWords;

// t += a b + carry for `blocks` blocks of a, at least one, and the one block b. t has as many blocks as a; the block that
// belongs above them is left in carry.
void morvane_adx_multiply_add_blocks(LimbInWords* t, Limb* carry, const LimbInWords* a, std::size_t blocks,
                                     const LimbInWords* b) noexcept;

// t += f m with the one block of factors f that makes the lowest block 0. t has as many blocks as m; the block that belongs
// above them is left in the lowest.
void morvane_adx_reduce_blocks(Limb* t, const Limb* m, std::size_t blocks, Limb minus_inverse, Limb* factors) noexcept;

// Two blocks t = the sum of a[i] a[k] B^(i + k) for i < k, in one block a.
void morvane_adx_cross_products(LimbInWords* t, const LimbInWords* a) noexcept;

// t = 2 t + the squares of the limbs of a, of `blocks` blocks; t has twice as many.
void morvane_adx_double_and_add_squares(LimbInWords* t, const LimbInWords* a, std::size_t blocks) noexcept;

// The rows of rows.h, and sums and differences of whole blocks.
Limb morvane_adx_multiply_add_row(LimbInWords* r, const LimbInWords* a, std::size_t n, Limb w) noexcept;
Limb morvane_adx_multiply_subtract_row(LimbInWords* r, const LimbInWords* a, std::size_t n, Limb w) noexcept;
Limb morvane_adx_add_blocks(LimbInWords* r, const LimbInWords* a, const LimbInWords* b, std::size_t blocks,
                            Limb carry) noexcept;
Limb morvane_adx_subtract_blocks(LimbInWords* r, const LimbInWords* a, const LimbInWords* b, std::size_t blocks,
                                 Limb borrow) noexcept;
}

namespace morvane::bignum {
namespace {

constexpr std::size_t kBlock = 8;

}  // namespace

void multiply_adx(LimbInWords* r, const LimbInWords* a, std::size_t a_size, const LimbInWords* b,
                  std::size_t b_size) noexcept {
    const std::size_t a_blocks = a_size / kBlock;
    for (std::size_t i = 0; i < a_size + b_size; ++i) r[i] = 0;  // std::fill_n would take limbs in words for plain limbs
    std::size_t j = 0;
    if (a_blocks != 0) {
        for (; j + kBlock <= b_size; j += kBlock) {
            Limb carry[kBlock] = {};
            morvane_adx_multiply_add_blocks(r + j, carry, a, a_blocks, b + j);
            for (std::size_t k = 0; k < kBlock; ++k) r[j + a_blocks * kBlock + k] = carry[k];
        }
    }
    // What is left of a by the blocks of b, then what is left of b by all of a.
    const std::size_t whole = j;
    for (std::size_t i = whole == 0 ? a_size : a_blocks * kBlock; i < a_size; ++i) {
        r[i + whole] = morvane_adx_multiply_add_row(r + i, b, whole, a[i]);
    }
    for (; j < b_size; ++j) r[j + a_size] = morvane_adx_multiply_add_row(r + j, a, a_size, b[j]);
}

void square_adx(LimbInWords* r, const LimbInWords* a, std::size_t n) noexcept {
    const std::size_t blocks = n / kBlock;
    if (n % kBlock != 0) return multiply_adx(r, a, n, a, n);
    for (std::size_t i = 0; i < blocks; ++i) morvane_adx_cross_products(r + 2 * kBlock * i, a + kBlock * i);
    Limb carry_on = 0;
    for (std::size_t i = 0; i + 1 < blocks; ++i) {
        Limb carry[kBlock] = {};
        LimbInWords* const row = r + kBlock * (2 * i + 1);
        morvane_adx_multiply_add_blocks(row, carry, a + kBlock * (i + 1), blocks - 1 - i, a + kBlock * i);
        LimbInWords* const above = r + kBlock * (blocks + i);
        carry_on = morvane_adx_add_blocks(above, above, carry, 1, carry_on);
    }
    for (std::size_t i = 2 * n - kBlock; i < 2 * n; ++i) {
        r[i] += carry_on;
        carry_on = static_cast<Limb>(r[i] < carry_on);
    }
    morvane_adx_double_and_add_squares(r, a, blocks);
}

void montgomery_reduce_adx(Limb* r, Limb* t, const Limb* m, std::size_t n, Limb minus_inverse) noexcept {
    const std::size_t blocks = n / kBlock;
    if (n % kBlock != 0) return montgomery_reduce_plain(r, t, m, n, minus_inverse);
    Limb top = 0;
    for (std::size_t i = 0; i < n; i += kBlock) {
        Limb factors[kBlock];
        morvane_adx_reduce_blocks(t + i, m, blocks, minus_inverse, factors);
        top = morvane_adx_add_blocks(t + i + n, t + i + n, t + i, 1, top);
    }
    const Limb borrow = morvane_adx_subtract_blocks(r, t + n, m, blocks, 0);
    const Limb keep_sum = Limb{0} - (borrow & ~top & 1);
    for (std::size_t i = 0; i < n; ++i) r[i] ^= (r[i] ^ t[i + n]) & keep_sum;
}

Limb multiply_subtract_row_adx(LimbInWords* r, const LimbInWords* a, std::size_t n, Limb w) noexcept {
    return morvane_adx_multiply_subtract_row(r, a, n, w);
}

}  // namespace morvane::bignum
