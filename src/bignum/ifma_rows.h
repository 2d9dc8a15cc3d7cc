// Products of residues with AVX-512 IFMA: a row for each digit of the second factor, and Montgomery's step after it.
//
// The low halves of a row's products belong to their digit, the high halves to the one above, which a row later, when
// everything has moved down by a digit, is the same lane: hence the digit and the factor of the row before. What does not
// depend on the row before is summed up apart from it, so that little waits from one row's lowest digit to the next.
#pragma once

#include "bignum/ifma_lanes.h"
#include "bignum/vector_ring.h"

namespace morvane::bignum {

using Digits = std::uint64_t;

// What is loaded is the last operand of a product throughout: there, the instruction takes it from memory by itself.

// What a modulus is to the rows: its digits as its class sets them, and its factor.
struct RowModulus {
    const Digits* above;
    const Digits* all;
    Digits factor;
};

// Lanes of any size to digits: what is above a digit goes to the next lane, once as it is, then as single carries that run
// through lanes of all ones in an addition of masks. The value has no more digits than there are lanes.
template <typename Lanes, std::size_t Vectors>
[[MORVANE_TARGET_IFMA, gnu::always_inline]] inline void store_normalised(Digits* r, typename Lanes::Vector* t) noexcept {
    const auto mask = Lanes::fill(kIfmaDigit);
    auto above = Lanes::zero();
    unsigned carry = 0;
#pragma GCC unroll 16
    for (std::size_t v = 0; v < Vectors; ++v) {
        const auto out = Lanes::shift(t[v], Lanes::kAll);
        const auto lanes = Lanes::add(Lanes::both(t[v], mask), Lanes::up(out, above));
        above = out;
        const unsigned generate = Lanes::greater(lanes, mask);
        const unsigned propagate = Lanes::equal(lanes, mask);
        const unsigned sum = (generate << 1 | carry) + propagate;
        carry = sum >> Lanes::kLanes & 1;
        const unsigned carried = (sum ^ propagate) & Lanes::kAll;
        Lanes::store(r + v * Lanes::kLanes, Lanes::both(Lanes::add(lanes, Lanes::fill(1), carried), mask));
    }
}

// Which vectors of a take part in a row: those from Low on with the row's digit, those from High on with the digit before.
// In a square, the vectors above these stand for two products each, and count twice.
struct Part {
    std::size_t low = 0;
    std::size_t high = 0;
    bool twice = false;
};

// a's share of one row in one vector, on top of `sum`.
template <typename Lanes, Part P>
[[MORVANE_TARGET_IFMA, gnu::always_inline]] inline typename Lanes::Vector add_products(
    typename Lanes::Vector sum, std::size_t v, const Digits* a, typename Lanes::Vector digit,
    typename Lanes::Vector digit_before) noexcept {
    const auto a_v = Lanes::load(a + v * Lanes::kLanes);
    if (P.twice) {
        auto both = Lanes::zero();
        if (v > P.high) both = Lanes::high(both, digit_before, a_v);
        if (v > P.low) both = Lanes::low(both, digit, a_v);
        if (v > P.high) sum = Lanes::add(sum, Lanes::add(both, both));
    }
    if (P.twice ? v == P.high : v >= P.high) sum = Lanes::high(sum, digit_before, a_v);
    if (P.twice ? v == P.low : v >= P.low) sum = Lanes::low(sum, digit, a_v);
    return sum;
}

// r = a b / 2^(52 rows) modulo a friendly modulus.
template <typename L, std::size_t Vectors>
struct FriendlyRows {
    using Modulus = FriendlyModulus<kIfmaBits>;
    using Lanes = L;
    using Vector = typename Lanes::Vector;
    static constexpr std::size_t kLanes = Lanes::kLanes;
    static constexpr std::size_t kVectors = Vectors;
    static constexpr bool kSquares = false;

    const Digits* a;
    const Digits* cofactor;
    Vector t[Vectors];
    Vector digit_before;
    Vector factor;
    Vector factor_before;

    [[MORVANE_TARGET_IFMA, gnu::always_inline]] inline void start(const Digits* a_digits, const RowModulus& m) noexcept {
        a = a_digits;
        cofactor = m.above;
        digit_before = factor = factor_before = Lanes::zero();
#pragma GCC unroll 16
        for (std::size_t v = 0; v < Vectors; ++v) t[v] = Lanes::zero();
    }

    template <Part P>
    [[MORVANE_TARGET_IFMA, gnu::always_inline]] inline void add_row(Digits next) noexcept {
        const Vector digit = Lanes::fill(next);
        const Vector carry = Lanes::shift(t[0], 1);
#pragma GCC unroll 16
        for (std::size_t v = 0; v < Vectors; ++v) {
            const Vector c = Lanes::load(cofactor + v * Lanes::kLanes);
            Vector moved = Lanes::down(t[v], v + 1 < Vectors ? t[v + 1] : Lanes::zero());
            if (v == 0) moved = Lanes::add(moved, carry);
            Vector sum = add_products<Lanes, P>(Lanes::zero(), v, a, digit, digit_before);
            sum = Lanes::high(sum, factor_before, c);
            // The sum with what has moved comes last, not the product: additions keep the next row waiting for less.
            t[v] = Lanes::add(Lanes::low(sum, factor, c), moved);
        }
        digit_before = digit;
        factor_before = factor;
        factor = Lanes::first(t[0]);
    }

    // After the last digit: what the rows before it still owe.
    template <Part P>
    [[MORVANE_TARGET_IFMA, gnu::always_inline]] inline void finish(Digits* r) noexcept {
        add_row<P>(0);
        Vector below = Lanes::zero();
#pragma GCC unroll 16
        for (std::size_t v = 0; v < Vectors; ++v) {
            const Vector halves = Lanes::high(Lanes::zero(), Lanes::load(cofactor + v * Lanes::kLanes), factor_before);
            t[v] = Lanes::add(t[v], Lanes::up(halves, below));
            below = halves;
        }
        store_normalised<Lanes, Vectors>(r, t);
    }
};

// r = a b / 2^(52 rows) modulo a modulus as it is. The lowest digit of its multiple makes t a multiple of 2^52, and what
// that carries is known before the multiple is: t / 2^52, rounded up.
template <typename L, std::size_t Vectors>
struct PlainRows {
    using Modulus = PlainModulus<kIfmaBits>;
    using Lanes = L;
    using Vector = typename Lanes::Vector;
    static constexpr std::size_t kLanes = Lanes::kLanes;
    static constexpr std::size_t kVectors = Vectors;
    static constexpr bool kSquares = true;

    // So many vectors keep the multiplier busy while a chain of sums waits: it saves additions, of which squares have many.
    static constexpr std::size_t kWide = 8;

    const Digits* a;
    const Digits* m;
    const Digits* m_above;
    Vector k;
    Vector t[Vectors];
    Vector digit_before;
    Vector factor;

    [[MORVANE_TARGET_IFMA, gnu::always_inline]] inline void start(const Digits* a_digits,
                                                                  const RowModulus& modulus) noexcept {
        a = a_digits;
        m = modulus.all;
        m_above = modulus.above;
        k = Lanes::fill(modulus.factor);
        digit_before = factor = Lanes::zero();
#pragma GCC unroll 16
        for (std::size_t v = 0; v < Vectors; ++v) t[v] = Lanes::zero();
    }

    template <Part P>
    [[MORVANE_TARGET_IFMA, gnu::always_inline]] inline void add_row(Digits next) noexcept {
        const Vector digit = Lanes::fill(next);
        const Vector carry = Lanes::shift(Lanes::add(t[0], Lanes::fill(kIfmaDigit)), 1);
#pragma GCC unroll 16
        for (std::size_t v = 0; v < Vectors; ++v) {
            Vector moved = Lanes::down(t[v], v + 1 < Vectors ? t[v + 1] : Lanes::zero());
            if (v == 0) moved = Lanes::add(moved, carry);
            const bool is_chain = P.twice && Vectors >= kWide && v > 0;
            Vector sum = add_products<Lanes, P>(is_chain ? moved : Lanes::zero(), v, a, digit, digit_before);
            sum = Lanes::low(sum, factor, Lanes::load(m_above + v * Lanes::kLanes));
            const Vector upper = Lanes::high(is_chain ? sum : moved, factor, Lanes::load(m + v * Lanes::kLanes));
            t[v] = is_chain ? upper : Lanes::add(sum, upper);
        }
        digit_before = digit;
        factor = Lanes::first(Lanes::low(Lanes::zero(), t[0], k));
    }

    template <Part P>
    [[MORVANE_TARGET_IFMA, gnu::always_inline]] inline void finish(Digits* r) noexcept {
        add_row<P>(0);
        store_normalised<Lanes, Vectors>(r, t);
    }
};

}  // namespace morvane::bignum
