// The steps of SHA-512 (FIPS 180-2, section 6.3), shared by the routines that differ in how they expand the message.
#pragma once

#include "hash/unroll.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace morvane::hash {

// The working variables a..h. Their roles move by one place each step instead of their values.
struct Sha512Variables {
    std::array<std::uint64_t, 8> v;
    std::uint64_t b_xor_c;

    [[gnu::always_inline]] explicit Sha512Variables(const std::array<std::uint64_t, 8>& state) noexcept
        : v(state), b_xor_c(state[1] ^ state[2]) {}

    // A step, T counted modulo 8; word is the message word plus the step's constant.
    template <std::size_t T>
    [[gnu::always_inline]] void step(std::uint64_t word) noexcept {
        const std::uint64_t a = v[(16 - T) % 8];
        const std::uint64_t b = v[(17 - T) % 8];
        std::uint64_t& d = v[(19 - T) % 8];
        const std::uint64_t e = v[(20 - T) % 8];
        const std::uint64_t f = v[(21 - T) % 8];
        const std::uint64_t g = v[(22 - T) % 8];
        std::uint64_t& h = v[(23 - T) % 8];
        h += word;
        h += ~e & g;  // the two halves of the choice have no bit in common
        h += e & f;
        h += std::rotr(e, 14) ^ std::rotr(e, 18) ^ std::rotr(e, 41);
        d += h;
        const std::uint64_t a_xor_b = a ^ b;
        h += b ^ (a_xor_b & b_xor_c);  // the majority of a, b and c
        b_xor_c = a_xor_b;             // of the next step
        h += std::rotr(a, 28) ^ std::rotr(a, 34) ^ std::rotr(a, 39);
    }
};

// The state in the caller's record: eight 64-bit words, each as two words, the low one first.
[[gnu::always_inline]] inline std::uint64_t sha512_state_word(const std::uint32_t* state, std::size_t i) noexcept {
    return std::uint64_t{state[2 * i + 1]} << 32 | state[2 * i];
}
[[gnu::always_inline]] inline void set_sha512_state_word(std::uint32_t* state, std::size_t i, std::uint64_t word) noexcept {
    state[2 * i] = static_cast<std::uint32_t>(word);
    state[2 * i + 1] = static_cast<std::uint32_t>(word >> 32);
}

}  // namespace morvane::hash
