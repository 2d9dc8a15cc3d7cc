// Products and squares by the schoolbook, column by column.
#include "bignum/column_sum.h"
#include "bignum/kernel_variants.h"

#include <algorithm>

namespace morvane::bignum {

void multiply_plain(LimbInWords* r, const LimbInWords* a, std::size_t a_size, const LimbInWords* b,
                    std::size_t b_size) noexcept {
    ColumnSum sum;
    for (std::size_t column = 0; column + 1 < a_size + b_size; ++column) {
        const std::size_t first = column < b_size ? 0 : column - (b_size - 1);  // of a
        const std::size_t last = std::min(column, a_size - 1);
        sum.add_products(a + first, b + (column - first), last + 1 - first);
        r[column] = sum.take();
    }
    r[a_size + b_size - 1] = sum.take();
}

void square_plain(LimbInWords* r, const LimbInWords* a, std::size_t n) noexcept {
    // Each product of two different limbs once, and then twice.
    ColumnSum sum;
    for (std::size_t column = 0; column + 1 < 2 * n; ++column) {
        const std::size_t first = column < n ? 0 : column - (n - 1);
        ColumnSum once;
        once.add_products(a + first, a + (column - first), (column + 1) / 2 - first);
        sum.add_twice(once);
        if (column % 2 == 0) sum.add_product(a[column / 2], a[column / 2]);
        r[column] = sum.take();
    }
    r[2 * n - 1] = sum.take();
}

}  // namespace morvane::bignum
