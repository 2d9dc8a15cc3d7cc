// Scalars as odd digits between -2^W and 2^W. No digit is 0, so that each takes the same addition of a point.
#pragma once

#include "base/wipe.h"
#include "ecc/words.h"

namespace morvane::ecc {

// k modulo the order n of a built-in curve, made odd by its sign: k or n - k. Of k = 0 it is n.
struct OddScalar {
    SecretArray<Word, kWords> words;
    Mask negated;
    Mask zero;

    OddScalar(std::int32_t curve, const Word* k) noexcept {
        SecretArray<Word, kWords> reduced;
        Word n[kWords];
        order(n, curve);
        scalar_reduce(reduced.items.data(), curve, k, kWords);
        const Limbs scalar = limbs_of(reduced.items.data());
        zero = mask_if_zero(scalar);
        negated = morvane::mask_if_zero(reduced.items[0] & 1);
        words_of(words.items.data(), choose(negated, subtract(limbs_of(n), scalar), scalar));
    }

    const Word* get() const noexcept { return words.items.data(); }
};

// A digit is 2 index + 1, and below zero where the mask says.
struct OddDigit {
    Word index;
    Mask negative;
};

// An odd scalar k is the sum of digits d_i 2^(W i) for i from 0 to `last`; k is below 2^(W (last + 1)).
// Where k' is what is left of k after i digits, d_i = k' mod 2^(W + 1) - 2^W, so (k' - d_i) / 2^W is odd again: it is
// k >> W (i + 1) with the lowest bit set.
template <unsigned W>
OddDigit odd_digit(const Word* k, std::size_t i, std::size_t last) noexcept {
    if (i == last) return {bits_at(k, W * i, W) >> 1, 0};
    const Word half = bits_at(k, W * i + 1, W);  // (d + 2^W) / 2, rounded down: below 2^(W - 1) for a negative d
    const Mask negative = mask_if_below(half, Word{1} << (W - 1));
    constexpr Word kMask = (Word{1} << (W - 1)) - 1;
    return {(half ^ negative) & kMask, negative};
}

}  // namespace morvane::ecc
