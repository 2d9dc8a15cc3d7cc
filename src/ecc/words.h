// Numbers of six words as limbs.
#pragma once

#include "base/mask.h"
#include "bignum/limb.h"
#include "ecc/curve.h"

namespace morvane::ecc {

using bignum::DoubleLimb;
using bignum::kLimbBits;
using bignum::Limb;

inline constexpr std::size_t kLimbs = 192 / kLimbBits;

struct Limbs {
    Limb v[kLimbs];
};

constexpr Limbs limbs_of(const Word* words) noexcept {
    Limbs r{};
    for (std::size_t i = 0; i < kWords; ++i) r.v[32 * i / kLimbBits] |= Limb{words[i]} << 32 * i % kLimbBits;
    return r;
}

constexpr void words_of(Word* words, const Limbs& a) noexcept {
    for (std::size_t i = 0; i < kWords; ++i) words[i] = static_cast<Word>(a.v[32 * i / kLimbBits] >> 32 * i % kLimbBits);
}

// Six words, written most significant first as people do.
struct Constant {
    Word words[kWords];

    constexpr Constant(Word w5, Word w4, Word w3, Word w2, Word w1, Word w0) noexcept : words{w0, w1, w2, w3, w4, w5} {}
    constexpr Limbs limbs() const noexcept { return limbs_of(words); }
};

// All ones or zero, for limbs.
constexpr Limb wide(Mask mask) noexcept { return Limb{mask} << (kLimbBits - 32) | mask; }

constexpr Limbs choose(Mask mask, const Limbs& yes, const Limbs& no) noexcept {
    Limbs r{};
    for (std::size_t i = 0; i < kLimbs; ++i) r.v[i] = no.v[i] ^ (wide(mask) & (yes.v[i] ^ no.v[i]));
    return r;
}

inline Mask mask_if_zero(const Limbs& a) noexcept {
    Word any = 0;
    for (const Limb limb : a.v) any |= static_cast<Word>(limb) | static_cast<Word>(limb >> (kLimbBits - 32));
    return morvane::mask_if_zero(any);
}

// The sum, its carry dropped, and the difference with its borrow (0 or 1).
constexpr Limbs add(const Limbs& a, const Limbs& b) noexcept {
    Limbs r{};
    Limb carry = 0;
    for (std::size_t i = 0; i < kLimbs; ++i) {
        const DoubleLimb sum = DoubleLimb{a.v[i]} + b.v[i] + carry;
        r.v[i] = static_cast<Limb>(sum);
        carry = static_cast<Limb>(sum >> kLimbBits);
    }
    return r;
}

constexpr Limbs subtract(const Limbs& a, const Limbs& b, Limb& borrow) noexcept {
    Limbs r{};
    borrow = 0;
    for (std::size_t i = 0; i < kLimbs; ++i) {
        const DoubleLimb difference = DoubleLimb{a.v[i]} - b.v[i] - borrow;
        r.v[i] = static_cast<Limb>(difference);
        borrow = static_cast<Limb>(difference >> kLimbBits) & 1;
    }
    return r;
}

constexpr Limbs subtract(const Limbs& a, const Limbs& b) noexcept {
    Limb borrow = 0;
    return subtract(a, b, borrow);
}

// `count` bits, at most 32, from bit `at` on, which is public; zeros beyond the end.
constexpr Word bits_at(const Word* words, std::size_t at, std::size_t count) noexcept {
    const std::size_t word = at / 32;
    const std::uint64_t pair = (word < kWords ? words[word] : 0) | std::uint64_t{word + 1 < kWords ? words[word + 1] : 0}
                                                                       << 32;
    return static_cast<Word>(pair >> at % 32 & ((std::uint64_t{1} << count) - 1));
}

}  // namespace morvane::ecc
