// Products and squares of limbs of 32 bits in columns of digits of 28: seven limbs are eight digits. Included after
// columns.h.
#include "base/wipe.h"
#include "bignum/multiply_pieces.h"

#include <algorithm>

namespace morvane::bignum {
namespace {  // NOLINT(cert-dcl59-cpp): every file that includes this makes functions of its own

inline constexpr unsigned kBits = 28;
inline constexpr std::size_t kFewLimbs = 12;     // plain rows are quicker with less
inline constexpr std::size_t kBlockLimbs = 128;  // longer operands are taken in pieces

constexpr std::size_t digits_for(std::size_t limbs) noexcept { return rounded_to_rows((32 * limbs + kBits - 1) / kBits); }
constexpr std::size_t digits_spread(std::size_t limbs) noexcept { return (limbs + 6) / 7 * 8; }
static_assert(digits_for(kBlockLimbs) <= kMostDigits<kBits>);

// Two factors and their product.
using BlockWork = Work<Digit, 4 * digits_spread(kBlockLimbs) + 2 * (kZerosBelow + kZerosAbove + kRows)>;

MORVANE_INLINE void spread_seven(Digit* digits, const LimbInWords* limbs) noexcept {
    digits[0] = limbs[0] & kDigitMask<kBits>;
#pragma GCC unroll 6
    for (unsigned i = 1; i < 7; ++i) {
        digits[i] = (limbs[i - 1] >> (32 - 4 * i) | limbs[i] << 4 * i) & kDigitMask<kBits>;
    }
    digits[7] = limbs[6] >> 4;
}

// All the digits of `count` limbs, and zeros up to a multiple of eight.
MORVANE_TARGET inline void spread(Digit* digits, const LimbInWords* limbs, std::size_t count) noexcept {
    for (; count >= 7; count -= 7, digits += 8, limbs += 7) spread_seven(digits, limbs);
    if (count == 0) return;
    SecretArray<Limb, 7> last;
    for (std::size_t i = 0; i < count; ++i) last.items[i] = limbs[i];
    spread_seven(digits, last.items.data());
}

// The lowest `count` limbs of a value in short digits.
MORVANE_TARGET inline void gather(LimbInWords* limbs, std::size_t count, const Digit* digits) noexcept {
    SecretArray<Limb, 7> last;
    Limb carry = 0;
    while (count != 0) {
        LimbInWords* const seven = count < 7 ? last.items.data() : limbs;
        Limb before = 0;
#pragma GCC unroll 8
        for (unsigned i = 0; i < 8; ++i) {
            const Limb sum = static_cast<Limb>(digits[i]) + carry;
            const Limb digit = sum & kDigitMask<kBits>;
            carry = sum >> kBits;
            if (i > 0) seven[i - 1] = before >> (4 * i - 4) | digit << (32 - 4 * i);
            before = digit;
        }
        if (count < 7) {
            for (std::size_t i = 0; i < count; ++i) limbs[i] = last.items[i];
            return;
        }
        count -= 7;
        limbs += 7;
        digits += 8;
    }
}

MORVANE_TARGET inline void multiply_block(LimbInWords* r, const LimbInWords* a, std::size_t a_size, const LimbInWords* b,
                                          std::size_t b_size) noexcept {
    const std::size_t a_count = digits_for(a_size), b_count = digits_for(b_size), t_count = a_count + b_count + kRows;
    BlockWork work(kZerosBelow + digits_spread(a_size) + kZerosAbove + digits_spread(b_size) + t_count);
    Digit* const x = work.get() + kZerosBelow;
    Digit* const y = x + digits_spread(a_size) + kZerosAbove;
    Digit* const t = y + digits_spread(b_size);
    set_zero(work.get(), kZerosBelow);
    spread(x, a, a_size);
    set_zero(x + digits_spread(a_size), kZerosAbove);
    spread(y, b, b_size);
    set_zero(t, t_count);
    add_product(t, x, a_count, y, b_count);
    carry_twice<kBits>(t, t, t_count);
    gather(r, a_size + b_size, t);
}

MORVANE_TARGET inline void square_block(LimbInWords* r, const LimbInWords* a, std::size_t n) noexcept {
    const std::size_t spread_count = digits_spread(n), count = digits_for(n), t_count = 2 * count + kRows;
    BlockWork work(kZerosBelow + 2 * (spread_count + kZerosAbove) + t_count);
    Digit* const x = work.get() + kZerosBelow;
    Digit* const twice = x + spread_count + kZerosAbove;
    Digit* const t = twice + spread_count + kZerosAbove;
    set_zero(work.get(), kZerosBelow);
    spread(x, a, n);
    set_zero(x + spread_count, kZerosAbove);
    for (std::size_t i = 0; i < spread_count + kZerosAbove; i += kLanes) store(twice + i, add(load(x + i), load(x + i)));
    set_zero(t, t_count);
    add_square(t, x, twice, count);
    carry_twice<kBits>(t, t, t_count);
    gather(r, 2 * n, t);
}

MORVANE_TARGET inline void multiply_columns(LimbInWords* r, const LimbInWords* a, std::size_t a_size, const LimbInWords* b,
                                            std::size_t b_size) noexcept {
    if (std::min(a_size, b_size) < kFewLimbs) return multiply_plain(r, a, a_size, b, b_size);
    if (std::max(a_size, b_size) <= kBlockLimbs) return multiply_block(r, a, a_size, b, b_size);
    multiply_pieces<kBlockLimbs>(multiply_block, r, a, a_size, b, b_size);
}

MORVANE_TARGET inline void square_columns(LimbInWords* r, const LimbInWords* a, std::size_t n) noexcept {
    if (n < kFewLimbs) return square_plain(r, a, n);
    if (n <= kBlockLimbs) return square_block(r, a, n);
    multiply_pieces<kBlockLimbs>(multiply_block, r, a, n, a, n);
}

}  // namespace
}  // namespace morvane::bignum
