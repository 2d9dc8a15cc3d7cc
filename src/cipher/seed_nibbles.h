// SEED's S-boxes by look-ups of four bits, for shuffles of sixteen bytes.
//
// Both boxes are affine in the inverse of SEED's field of 256 elements. That is a plane over its subfield of 16: x is
// i + j * w with w of norm 1, and with k = i + j and the trace a of w the norm of x is k^2 + a * i * j. The inverse of x is
// a linear function of the inverses of
//     A = j + 1 / (1 / i + a / k) = norm / (k + a * i),    B = i + 1 / (1 / j + a / k) = norm / (k + a * j),
// and so each step is a look-up of four bits or an addition. The inverse of 0 is a byte whose top bit is set: a shuffle
// gives 0 for it, which is its inverse again, and additions keep the bit.
#pragma once

#include "cipher/seed_tables.h"

namespace morvane::cipher::seed {

using Nibbles = std::array<std::uint8_t, 16>;

struct NibbleTables {
    Nibbles i_low, i_high, k_low, k_high;       // i and k from the halves of x
    Nibbles inverse, a_by;                      // 1 / y and a / y in the subfield
    std::array<Nibbles, 2> box_of_a, box_of_b;  // what 1 / A and 1 / B contribute to a box
};

constexpr std::uint8_t multiply(unsigned a, unsigned b) noexcept {
    unsigned product = 0;
    for (; b != 0; b >>= 1) {
        if ((b & 1) != 0) product ^= a;
        a = (a << 1) ^ ((a & 0x80) != 0 ? 0x163U : 0U);
    }
    return static_cast<std::uint8_t>(product);
}

constexpr std::uint8_t power(std::uint8_t a, unsigned exponent) noexcept {
    std::uint8_t result = 1;
    for (; exponent != 0; --exponent) result = multiply(result, a);
    return result;
}

constexpr std::uint8_t inverse(std::uint8_t a) noexcept { return power(a, 254); }

constexpr NibbleTables make_nibble_tables() noexcept {
    // The elements of the subfield are the 17th powers; four that are independent give each a number of four bits.
    Nibbles elements{};
    std::uint8_t numbers[256] = {};
    std::size_t count = 1;
    for (std::uint8_t base = 1; count < 16; ++base) {
        const std::uint8_t next = power(base, 17);
        if (numbers[next] != 0 || next == 0) continue;
        for (std::size_t n = 0; n < count; ++n) {
            elements[count + n] = elements[n] ^ next;
            numbers[elements[count + n]] = static_cast<std::uint8_t>(count + n);
        }
        count *= 2;
    }
    std::uint8_t w = 2;
    while (power(w, 17) != 1) ++w;
    const std::uint8_t a = w ^ power(w, 16), by_a = inverse(a);

    NibbleTables tables{};
    for (std::size_t i = 0; i < 16; ++i) {
        for (std::size_t j = 0; j < 16; ++j) {
            const std::uint8_t x = elements[i] ^ multiply(elements[j], w);
            if (x < 16) {
                tables.i_low[x] = static_cast<std::uint8_t>(i);
                tables.k_low[x] = static_cast<std::uint8_t>(i ^ j);
            }
            if (x % 16 == 0) {
                tables.i_high[x / 16] = static_cast<std::uint8_t>(i);
                tables.k_high[x / 16] = static_cast<std::uint8_t>(i ^ j);
            }
        }
    }
    tables.inverse[0] = tables.a_by[0] = 0x80;
    for (std::size_t y = 1; y < 16; ++y) {
        const std::uint8_t by_y = inverse(elements[y]);
        tables.inverse[y] = numbers[by_y];
        tables.a_by[y] = numbers[multiply(a, by_y)];
        // The inverse of x is (i + a * j + j * w) / norm. Of u = k + a * i and v = k + a * j it follows that
        // k = (u + v) / a, j = (v + k) / a, i = j + k.
        const std::uint8_t k = multiply(by_y, by_a);
        const std::uint8_t j_of_u = multiply(k, by_a), j_of_v = multiply(by_y ^ k, by_a);
        const auto conjugate = [&](std::uint8_t j) { return static_cast<std::uint8_t>(k ^ j ^ multiply(j, a ^ w)); };
        for (std::size_t box = 0; box < 2; ++box) {
            const auto linear = [&](std::uint8_t inverse_of_x) {
                return static_cast<std::uint8_t>(kBoxes[box][inverse(inverse_of_x)] ^ kBoxes[box][0]);
            };
            tables.box_of_a[box][y] = linear(conjugate(j_of_u));
            tables.box_of_b[box][y] = linear(conjugate(j_of_v));
        }
    }
    return tables;
}

alignas(16) inline constexpr NibbleTables kNibbles = make_nibble_tables();

constexpr bool nibbles_are_right() noexcept {
    const auto look_up = [](const Nibbles& table, unsigned at) { return at >= 0x80 ? 0U : table[at & 15]; };
    const NibbleTables& t = kNibbles;
    for (unsigned x = 0; x < 256; ++x) {
        const unsigned i = t.i_low[x & 15] ^ t.i_high[x >> 4], k = t.k_low[x & 15] ^ t.k_high[x >> 4], j = i ^ k;
        const unsigned a_by_k = t.a_by[k];
        const unsigned a = look_up(t.inverse, t.inverse[i] ^ a_by_k) ^ j, b = look_up(t.inverse, t.inverse[j] ^ a_by_k) ^ i;
        for (std::size_t box = 0; box < 2; ++box) {
            if ((look_up(t.box_of_a[box], a) ^ look_up(t.box_of_b[box], b) ^ kBoxes[box][0]) != kBoxes[box][x])
                return false;
        }
    }
    return true;
}

static_assert(nibbles_are_right());

}  // namespace morvane::cipher::seed
