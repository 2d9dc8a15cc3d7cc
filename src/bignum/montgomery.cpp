// Montgomery's reduction, column by column: the lower limbs of t give way to the factors that clear them.
#include "bignum/column_sum.h"
#include "bignum/kernel_variants.h"

namespace morvane::bignum {

void montgomery_reduce_plain(Limb* r, Limb* t, const Limb* m, std::size_t n, Limb minus_inverse) noexcept {
    ColumnSum sum;
    for (std::size_t column = 0; column < n; ++column) {
        sum.add(t[column]);
        sum.add_products(t, m + column, column);
        t[column] = sum.lowest() * minus_inverse;
        sum.add_product(t[column], m[0]);
        sum.take();
    }
    for (std::size_t column = n; column < 2 * n; ++column) {
        sum.add(t[column]);
        sum.add_products(t + (column - n + 1), m + n - 1, 2 * n - 1 - column);
        t[column] = sum.take();
    }
    reduce_once(r, t + n, m, n, sum.take());
}

}  // namespace morvane::bignum
