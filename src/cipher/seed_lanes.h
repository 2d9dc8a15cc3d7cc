// SEED in vector registers: each of the four words of a block in a register of its own, a block to each 32-bit lane.
// Included behind one of the lanes headers by files that first define
//     substitute   the S-box of every byte: the first box in the even bytes of a lane, the second in the odd ones
//     turn         moves the bytes of each lane down by so many, around
//     xor_and      a ^ (b & c)
//     swap_bytes   reverses the bytes of each lane
#pragma once

#include "cipher/seed.h"

namespace morvane::cipher {
namespace {  // NOLINT(cert-dcl59-cpp): every file that includes this makes functions of its own

// G: byte j of the value is made of all four substituted bytes, that which lies k further through the mask (2 * j + k) % 4
// of FC, F3, CF and 3F.
MORVANE_INLINE Lanes g(Lanes x) noexcept {
    const Lanes s = substitute(x);
    const Lanes near = xor_and(bits_and(s, all32(0xcffccffc)), turn<1>(s), all32(0x3ff33ff3));
    return xor_and(xor_and(near, turn<2>(s), all32(0xfccffccf)), turn<3>(s), all32(0xf33ff33f));
}

template <std::size_t Groups>
struct SeedLanes {
    static constexpr std::size_t kGroupBytes = 4 * sizeof(Lanes);

    Lanes left0[Groups], left1[Groups], right0[Groups], right1[Groups];

    MORVANE_INLINE void get(const std::uint8_t* in) noexcept {
        for (std::size_t i = 0; i < Groups; ++i, in += kGroupBytes) {
            Lanes rows[4];
            for (std::size_t row = 0; row < 4; ++row) rows[row] = swap_bytes(load(in + row * sizeof(Lanes)));
            const Lanes even[2] = {even32(rows[0], rows[1]), even32(rows[2], rows[3])};
            const Lanes odd[2] = {odd32(rows[0], rows[1]), odd32(rows[2], rows[3])};
            left0[i] = even32(even[0], even[1]);
            right0[i] = odd32(even[0], even[1]);
            left1[i] = even32(odd[0], odd[1]);
            right1[i] = odd32(odd[0], odd[1]);
        }
    }
    // The halves come out exchanged, as the standard has it.
    MORVANE_INLINE void put(std::uint8_t* out) const noexcept {
        for (std::size_t i = 0; i < Groups; ++i, out += kGroupBytes) {
            const Lanes even[2] = {zip_low32(right0[i], left0[i]), zip_high32(right0[i], left0[i])};
            const Lanes odd[2] = {zip_low32(right1[i], left1[i]), zip_high32(right1[i], left1[i])};
            for (std::size_t row = 0; row < 4; ++row) {
                const Lanes a = even[row / 2], b = odd[row / 2];
                store(out + row * sizeof(Lanes), swap_bytes(row % 2 == 0 ? zip_low32(a, b) : zip_high32(a, b)));
            }
        }
    }

    // (to0, to1) ^= F(half0, half1) under the round key of two words.
    MORVANE_INLINE void round(Lanes* to0, Lanes* to1, const Lanes* half0, const Lanes* half1,
                              const std::uint32_t* key) noexcept {
        Lanes c[Groups], first[Groups], second[Groups];
        for (std::size_t i = 0; i < Groups; ++i) {
            c[i] = bits_xor(half0[i], all32(key[0]));
            first[i] = bits_xor(c[i], bits_xor(half1[i], all32(key[1])));
        }
        for (std::size_t i = 0; i < Groups; ++i) first[i] = g(first[i]);
        for (std::size_t i = 0; i < Groups; ++i) second[i] = g(add32(first[i], c[i]));
        for (std::size_t i = 0; i < Groups; ++i) {
            const Lanes third = g(add32(second[i], first[i]));
            to0[i] = bits_xor(to0[i], add32(third, second[i]));
            to1[i] = bits_xor(to1[i], third);
        }
    }

    template <Direction D>
    MORVANE_INLINE void run(const std::uint32_t* keys) noexcept {
        for (std::size_t i = 0; i < 16; i += 2) {
            round(left0, left1, right0, right1, keys + 2 * (D == Direction::kEncrypt ? i : 15 - i));
            round(right0, right1, left0, left1, keys + 2 * (D == Direction::kEncrypt ? i + 1 : 14 - i));
        }
    }
};

// As many groups at once as Groups says, and half as many of what remains: the rounds are long chains, and one group alone
// leaves the processor waiting.
template <Direction D, std::size_t Groups>
MORVANE_INLINE void seed_batches(const E_SEED_KEY_SCHEDULE& schedule, const std::uint8_t* in, std::uint8_t* out,
                                 std::size_t count) noexcept {
    constexpr std::size_t kStep = Groups * SeedLanes<Groups>::kGroupBytes, kBlocks = kStep / 16;
    for (; count >= kBlocks; count -= kBlocks, in += kStep, out += kStep) {
        SeedLanes<Groups> blocks;
        blocks.get(in);
        blocks.template run<D>(schedule.round_keys);
        blocks.put(out);
    }
    if constexpr (Groups > 1) seed_batches<D, Groups / 2>(schedule, in, out, count);
}

}  // namespace
}  // namespace morvane::cipher
