// Arithmetic in GF(2^163) without special instructions. The time does not depend on values.
#pragma once

#include "ecc/binary.h"

namespace morvane::ecc {

// Elements are the polynomials themselves.
constexpr Polynomial load(const Polynomial& a) noexcept { return a; }
constexpr Polynomial store(const Polynomial& a) noexcept { return a; }

constexpr Polynomial add(const Polynomial& a, const Polynomial& b) noexcept {
    return {{a.v[0] ^ b.v[0], a.v[1] ^ b.v[1], a.v[2] ^ b.v[2]}};
}

constexpr Polynomial choose(Mask mask, const Polynomial& yes, const Polynomial& no) noexcept {
    const std::uint64_t all = std::uint64_t{mask} << 32 | mask;
    Polynomial r = no;
    for (std::size_t i = 0; i < 3; ++i) r.v[i] ^= all & (yes.v[i] ^ no.v[i]);
    return r;
}

// a b as polynomials. Integer products of every fourth or fifth bit: so few bits meet at one place, 8 or 13, that what they
// carry stays within the gaps, and is cut out.
constexpr DoubleLimb multiply_polynomials(Limb a, Limb b) noexcept {
    constexpr unsigned kStep = kLimbBits == 64 ? 5 : 4;
    Limb as[kStep]{};
    Limb bs[kStep]{};
    DoubleLimb every = 0;
    for (unsigned bit = 0; bit < 2 * kLimbBits; bit += kStep) every |= DoubleLimb{1} << bit;
    for (unsigned i = 0; i < kStep; ++i) {
        as[i] = a & static_cast<Limb>(every << i);
        bs[i] = b & static_cast<Limb>(every << i);
    }
    DoubleLimb r = 0;
    for (unsigned k = 0; k < kStep; ++k) {
        DoubleLimb sum = 0;
        for (unsigned i = 0; i < kStep; ++i) sum ^= DoubleLimb{as[i]} * bs[(k + kStep - i) % kStep];
        r |= sum & every << k;
    }
    return r;
}

// r ^= a b, in two words.
constexpr void add_product(std::uint64_t* r, std::uint64_t a, std::uint64_t b) noexcept {
    if constexpr (kLimbBits == 64) {
        const DoubleLimb product = multiply_polynomials(static_cast<Limb>(a), static_cast<Limb>(b));
        r[0] ^= static_cast<std::uint64_t>(product);
        r[1] ^= static_cast<std::uint64_t>(product >> kLimbBits);
    } else {
        const auto low = [](std::uint64_t x) { return static_cast<Limb>(x); };
        const auto high = [](std::uint64_t x) { return static_cast<Limb>(x >> 32); };
        const std::uint64_t lows = static_cast<std::uint64_t>(multiply_polynomials(low(a), low(b)));
        const std::uint64_t highs = static_cast<std::uint64_t>(multiply_polynomials(high(a), high(b)));
        const std::uint64_t middle =
            lows ^ highs ^ static_cast<std::uint64_t>(multiply_polynomials(low(a) ^ high(a), low(b) ^ high(b)));
        r[0] ^= lows ^ middle << 32;
        r[1] ^= highs ^ middle >> 32;
    }
}

// A product of six words.
template <typename Field>
constexpr Polynomial reduce(std::uint64_t* t) noexcept {
    Field::fold(t[5], t[2], t[3]);
    Field::fold(t[4], t[1], t[2]);
    Field::fold(t[3], t[0], t[1]);
    return {{t[0], t[1], t[2]}};
}

template <typename Field>
constexpr Polynomial multiply(const Polynomial& a, const Polynomial& b) noexcept {
    // Karatsuba's three terms: a product of two words for each word and for each pair of words.
    std::uint64_t squares[3][2]{};
    std::uint64_t t[6]{};
    for (std::size_t i = 0; i < 3; ++i) {
        add_product(squares[i], a.v[i], b.v[i]);
        t[2 * i] = squares[i][0];
        t[2 * i + 1] = squares[i][1];
    }
    for (std::size_t i = 0; i < 2; ++i) {
        for (std::size_t j = i + 1; j < 3; ++j) {
            std::uint64_t cross[2] = {squares[i][0] ^ squares[j][0], squares[i][1] ^ squares[j][1]};
            add_product(cross, a.v[i] ^ a.v[j], b.v[i] ^ b.v[j]);
            t[i + j] ^= cross[0];
            t[i + j + 1] ^= cross[1];
        }
    }
    return reduce<Field>(t);
}

// The bits of a word with zeros between them.
constexpr std::uint64_t spread(Word word) noexcept {
    std::uint64_t x = word;
    x = (x | x << 16) & 0x0000ffff0000ffff;
    x = (x | x << 8) & 0x00ff00ff00ff00ff;
    x = (x | x << 4) & 0x0f0f0f0f0f0f0f0f;
    x = (x | x << 2) & 0x3333333333333333;
    return (x | x << 1) & 0x5555555555555555;
}

template <typename Field>
constexpr Polynomial square(const Polynomial& a) noexcept {
    std::uint64_t t[6]{};
    for (std::size_t i = 0; i < 3; ++i) {
        t[2 * i] = spread(static_cast<Word>(a.v[i]));
        t[2 * i + 1] = spread(static_cast<Word>(a.v[i] >> 32));
    }
    return reduce<Field>(t);
}

}  // namespace morvane::ecc
