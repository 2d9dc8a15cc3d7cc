// Products in columns: digits of a few bits less than the multiplier takes lie one to a 64-bit lane, so that each column
// of a product is a plain sum in its lane, and nothing carries before the end. Included by one file for each set of
// instructions, which first defines
//     MORVANE_TARGET     the target attribute of every function
//     MORVANE_INLINE     the same for functions to be inlined
//     Vector, kLanes     kLanes lanes of 64 bits
//     load, store        aligned; load_any from any address
//     fill               a digit in every lane
//     add, both          sums and bits of lanes
//     product            of the lower halves of lanes
//     shift              to the right
//     up                 the lanes moved up by one, the top lane of another vector below them
//
// Rows are taken four at a time: each vector of columns is loaded once, gets four products and is stored. The digits of
// the other factor are loaded from any address, so that those that a row adds to the vector's columns are in its lanes;
// there are zeros around them.
//
// Columns that carried twice are short: below 2^Bits + 2^(64 - 2 Bits) + 1, so that kMostDigits products of them can be
// summed up.
#include "bignum/columns_digits.h"

namespace morvane::bignum {
namespace {  // NOLINT(cert-dcl59-cpp): every file that includes this makes functions of its own

static_assert(kRows % kLanes == 0);

MORVANE_INLINE void set_zero(Digit* t, std::size_t count) noexcept {
    for (std::size_t i = 0; i < count; i += kLanes) store(t + i, fill(0));
}

// t += a times the four digits at b, in `groups` vectors of columns; a is the digit that meets b[0] in the lowest lane.
MORVANE_INLINE void add_rows(Digit* t, const Digit* a, const Digit* b, std::size_t groups) noexcept {
    const Vector b0 = fill(b[0]), b1 = fill(b[1]), b2 = fill(b[2]), b3 = fill(b[3]);
    for (; groups != 0; --groups, t += kLanes, a += kLanes) {
        const Vector even = add(product(load_any(a), b0), product(load_any(a - 2), b2));
        const Vector odd = add(product(load_any(a - 1), b1), product(load_any(a - 3), b3));
        store(t, add(load(t), add(even, odd)));
    }
}

// t += a b, of a_count and b_count digits.
MORVANE_TARGET inline void add_product(Digit* t, const Digit* a, std::size_t a_count, const Digit* b,
                                       std::size_t b_count) noexcept {
    for (std::size_t i = 0; i < b_count; i += kRows) add_rows(t + i, a, b + i, (a_count + kRows) / kLanes);
}

// t += a a, of `count` digits; twice holds 2 a. The products of four digits among themselves are all taken, those with the
// digits above them once and doubled, those with the digits below them not any more.
MORVANE_TARGET inline void add_square(Digit* t, const Digit* a, const Digit* twice, std::size_t count) noexcept {
    for (std::size_t i = 0; i < count; i += kRows) {
        for (std::size_t at = 0; at < 2 * kRows; at += kLanes) {
            Vector sum = load(t + 2 * i + at);
#pragma GCC unroll 4
            for (std::size_t row = 0; row < kRows; ++row) {
                const Vector among = both(load_any(a + i + at - row), load_any(&kFromSecond[2 * kRows + at - row]));
                const Vector digits = add(among, both(among, load_any(&kFromSecond[kRows + at - row])));
                sum = add(sum, product(digits, fill(a[i + row])));
            }
            store(t + 2 * i + at, sum);
        }
        add_rows(t + 2 * i + 2 * kRows, twice + i + 2 * kRows, a + i, (count - i - kRows) / kLanes);
    }
}

// r = short digits of the same value as `count` columns t, which r may be; what goes above them is dropped.
template <unsigned Bits>
MORVANE_TARGET void carry_twice(Digit* r, const Digit* t, std::size_t count) noexcept {
    const Vector mask = fill(kDigitMask<Bits>);
    Vector below = fill(0), below_once = below;
    for (std::size_t i = 0; i < count; i += kLanes) {
        const Vector column = load(t + i);
        const Vector above = shift<Bits>(column);
        const Vector once = add(both(column, mask), up(above, below));
        const Vector above_once = shift<Bits>(once);
        store(r + i, add(both(once, mask), up(above_once, below_once)));
        below = above;
        below_once = above_once;
    }
}

}  // namespace
}  // namespace morvane::bignum
