#include "bignum/kernel_variants.h"
#include "bignum/rows.h"

namespace morvane::bignum {

void montgomery_reduce_plain(Limb* r, Limb* t, const Limb* m, std::size_t n, Limb minus_inverse) noexcept {
    Limb top = 0;  // of the sum so far, one limb above t
    for (std::size_t i = 0; i < n; ++i) {
        const Limb carry = multiply_add_row(t + i, m, n, t[i] * minus_inverse);
        const DoubleLimb sum = wide(t[i + n]) + carry + top;
        t[i + n] = low(sum);
        top = high(sum);
    }
    reduce_once(r, t + n, m, n, top);
}

}  // namespace morvane::bignum
