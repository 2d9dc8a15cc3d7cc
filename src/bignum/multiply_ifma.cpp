// Products with AVX-512 IFMA: digits of 52 bits, columns of them in lanes, four rows at a time.
//
// The low half of a digit's product belongs to its column, the high half to the next one, so that a column is below
// 2^(52 + 1) times the number of rows before it carries.
#include "bignum/ifma_lanes.h"
#include "bignum/multiply_pieces.h"
#include "bignum/work.h"

#include <algorithm>

namespace morvane::bignum {
namespace {

using Digits = std::uint64_t;
using Vector = Ymm::Vector;

constexpr std::size_t kRows = 4;
constexpr std::size_t kDigitsAtOnce = 8;  // are 13 words
constexpr std::size_t kWordsAtOnce = 13;
constexpr std::size_t kMostWords = 208;  // longer operands are taken in pieces
constexpr std::size_t kMostLimbs = kMostWords / kWordsPerLimb;

// What has fewer limbs is quicker in rows of limbs; squares, whose products are all made twice here, for longer.
#if defined(__x86_64__)
constexpr std::size_t kFewToMultiply = 12;
constexpr std::size_t kFewToSquare = 32;
constexpr MultiplyFn* multiply_short = multiply_adx;
constexpr SquareFn* square_short = square_adx;
#else
constexpr std::size_t kFewToMultiply = 8;
constexpr std::size_t kFewToSquare = 8;
constexpr MultiplyFn* multiply_short = multiply_plain;
constexpr SquareFn* square_short = square_plain;
#endif

constexpr std::size_t blocks_for(std::size_t words) noexcept { return (words + kWordsAtOnce - 1) / kWordsAtOnce; }
constexpr std::size_t spread_digits(std::size_t words) noexcept { return blocks_for(words) * kDigitsAtOnce; }
constexpr std::size_t digits_for(std::size_t words) noexcept {
    return ((32 * words + kIfmaBits - 1) / kIfmaBits + kRows - 1) / kRows * kRows;
}

[[MORVANE_TARGET_IFMA, gnu::always_inline]] inline __mmask16 first_words(std::size_t count) noexcept {
    return static_cast<__mmask16>((1U << std::min(count, kWordsAtOnce)) - 1);
}

// The forms without a mask have an operand that compilers call uninitialised.
[[MORVANE_TARGET_IFMA, gnu::always_inline]] inline __m512i lanes_at(__m512i indices, __m512i x) noexcept {
    return _mm512_maskz_permutexvar_epi64(Zmm::kAll, indices, x);
}
[[MORVANE_TARGET_IFMA, gnu::always_inline]] inline __m512i shift_down(__m512i x, __m512i bits) noexcept {
    return _mm512_maskz_srlv_epi64(Zmm::kAll, x, bits);
}
[[MORVANE_TARGET_IFMA, gnu::always_inline]] inline __m512i shift_up(__m512i x, __m512i bits) noexcept {
    return _mm512_maskz_sllv_epi64(Zmm::kAll, x, bits);
}

// All the digits of `count` words, and zeros up to a multiple of eight.
[[MORVANE_TARGET_IFMA]] inline void spread(Digits* digits, const LimbInWords* limbs, std::size_t count) noexcept {
    // Digit i begins 52 i bits up: so many whole pieces of 16 bits, of which it takes up to four, and 4 (i mod 4) bits.
    const __m512i pieces = _mm512_set_epi16(25, 24, 23, 22, 22, 21, 20, 19, 19, 18, 17, 16, 16, 15, 14, 13,  //
                                            12, 11, 10, 9, 9, 8, 7, 6, 6, 5, 4, 3, 3, 2, 1, 0);
    const __m512i shifts = _mm512_set_epi64(12, 8, 4, 0, 12, 8, 4, 0);
    const __m512i mask = Zmm::fill(kIfmaDigit);
    const auto* words = reinterpret_cast<const char*>(limbs);
    while (true) {
        const __m512i thirteen = _mm512_maskz_loadu_epi32(first_words(count), words);
        Zmm::store(digits, Zmm::both(shift_down(_mm512_permutexvar_epi16(pieces, thirteen), shifts), mask));
        if (count <= kWordsAtOnce) return;
        count -= kWordsAtOnce;
        words += kWordsAtOnce * sizeof(Word);
        digits += kDigitsAtOnce;
    }
}

// The lowest `count` words of a value in columns, which carry.
[[MORVANE_TARGET_IFMA]] inline void gather(LimbInWords* limbs, std::size_t count, const Digits* columns) noexcept {
    // Two words begin 64 i bits up: in one of the digits, and may take what is missing from one or two above it.
    const __m512i from = _mm512_set_epi64(7, 7, 6, 4, 3, 2, 1, 0), down = _mm512_set_epi64(63, 20, 8, 48, 36, 24, 12, 0);
    const __m512i next = _mm512_set_epi64(7, 7, 7, 5, 4, 3, 2, 1), up = _mm512_set_epi64(64, 64, 44, 4, 16, 28, 40, 52);
    const __m512i last = Zmm::fill(6), last_up = Zmm::fill(56);
    const __m512i mask = Zmm::fill(kIfmaDigit);
    auto* words = reinterpret_cast<char*>(limbs);
    __m512i below = Zmm::zero();
    unsigned carry = 0;
    while (true) {
        const __m512i column = Zmm::load(columns);
        const __m512i above = Zmm::shift(column, Zmm::kAll);
        const __m512i lanes = Zmm::add(Zmm::both(column, mask), Zmm::up(above, below));
        below = above;
        const unsigned generate = Zmm::greater(lanes, mask), propagate = Zmm::equal(lanes, mask);
        const unsigned sum = (generate << 1 | carry) + propagate;
        carry = sum >> Zmm::kLanes & 1;
        const __m512i digits = Zmm::both(Zmm::add(lanes, Zmm::fill(1), (sum ^ propagate) & Zmm::kAll), mask);
        const __m512i two = _mm512_or_si512(shift_down(lanes_at(from, digits), down), shift_up(lanes_at(next, digits), up));
        const __m512i pairs = _mm512_mask_or_epi64(two, 1 << 4, two, shift_up(lanes_at(last, digits), last_up));
        _mm512_mask_storeu_epi32(words, first_words(count), pairs);
        if (count <= kWordsAtOnce) return;
        count -= kWordsAtOnce;
        words += kWordsAtOnce * sizeof(Word);
        columns += kDigitsAtOnce;
    }
}

[[MORVANE_TARGET_IFMA, gnu::always_inline]] inline Vector load_any(const Digits* from) noexcept {
    return _mm256_loadu_si256(reinterpret_cast<const Vector*>(from));
}

// t += a times the four digits at b, in `groups` vectors of columns; a is the digit whose product with b[0] has its low
// half in the lowest lane.
[[MORVANE_TARGET_IFMA, gnu::always_inline]] inline void add_rows(Digits* t, const Digits* a, const Digits* b,
                                                                 std::size_t groups) noexcept {
    const Vector b0 = Ymm::fill(b[0]), b1 = Ymm::fill(b[1]), b2 = Ymm::fill(b[2]), b3 = Ymm::fill(b[3]);
    for (; groups != 0; --groups, t += Ymm::kLanes, a += Ymm::kLanes) {
        const Vector a1 = load_any(a - 1), a2 = load_any(a - 2), a3 = load_any(a - 3);
        Vector low = Ymm::low(Ymm::load(t), b0, load_any(a));
        Vector high = Ymm::high(Ymm::zero(), a1, b0);
        low = Ymm::low(low, a1, b1);
        high = Ymm::high(high, a2, b1);
        low = Ymm::low(low, a2, b2);
        high = Ymm::high(high, a3, b2);
        low = Ymm::low(low, a3, b3);
        high = Ymm::high(high, b3, load_any(a - 4));
        Ymm::store(t, Ymm::add(low, high));
    }
}

[[MORVANE_TARGET_IFMA]] inline void set_zero(Digits* t, std::size_t count) noexcept {
    for (std::size_t i = 0; i < count; i += Ymm::kLanes) Ymm::store(t + i, Ymm::zero());
}

[[MORVANE_TARGET_IFMA]] void multiply_block(LimbInWords* r, const LimbInWords* a, std::size_t a_size, const LimbInWords* b,
                                            std::size_t b_size) noexcept {
    const std::size_t a_words = a_size * kWordsPerLimb, b_words = b_size * kWordsPerLimb;
    const std::size_t a_spread = spread_digits(a_words), b_spread = spread_digits(b_words);
    const std::size_t a_count = digits_for(a_words), b_count = digits_for(b_words);
    const std::size_t t_count = spread_digits(a_words + b_words) + kDigitsAtOnce;
    // The zeros above the lowest eight digits, the factors, four zeros above one of them, the columns.
    Work<Digits, 4 * spread_digits(kMostWords) + 4 * kDigitsAtOnce> work(2 * kDigitsAtOnce + a_spread + b_spread + t_count);
    Digits* const x = work.get() + kDigitsAtOnce;
    Digits* const y = x + a_spread + kDigitsAtOnce;
    Digits* const t = y + b_spread;
    set_zero(work.get(), kDigitsAtOnce);
    spread(x, a, a_words);
    set_zero(x + a_spread, kDigitsAtOnce);
    spread(y, b, b_words);
    set_zero(t, t_count);
    for (std::size_t i = 0; i < b_count; i += kRows) add_rows(t + i, x, y + i, (a_count + kRows) / Ymm::kLanes);
    gather(r, a_words + b_words, t);
}

}  // namespace

void multiply_ifma(LimbInWords* r, const LimbInWords* a, std::size_t a_size, const LimbInWords* b,
                   std::size_t b_size) noexcept {
    if (std::min(a_size, b_size) < kFewToMultiply) return multiply_short(r, a, a_size, b, b_size);
    if (std::max(a_size, b_size) <= kMostLimbs) return multiply_block(r, a, a_size, b, b_size);
    multiply_pieces<kMostLimbs>(multiply_block, r, a, a_size, b, b_size);
}

void square_ifma(LimbInWords* r, const LimbInWords* a, std::size_t n) noexcept {
    if (n < kFewToSquare) return square_short(r, a, n);
    multiply_ifma(r, a, n, a, n);
}

}  // namespace morvane::bignum
