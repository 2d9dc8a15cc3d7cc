// The steps of SHA-1 and SHA-0 (FIPS 180-1, section 7), shared by the routines that differ in how they expand the message.
#pragma once

#include "hash/unroll.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace morvane::hash {

inline constexpr std::size_t kSha1Steps = 80;

// The constant of step t.
constexpr std::uint32_t sha1_constant(std::size_t t) noexcept {
    constexpr std::array<std::uint32_t, 4> kConstants = {0x5A827999, 0x6ED9EBA1, 0x8F1BBCDC, 0xCA62C1D6};
    return kConstants[t / 20];
}

// The working variables A..E. Their roles move by one place each step instead of their values.
struct Sha1Variables {
    std::array<std::uint32_t, 5> v;

    [[gnu::always_inline]] explicit Sha1Variables(const std::uint32_t* state) noexcept
        : v{state[0], state[1], state[2], state[3], state[4]} {}

    [[gnu::always_inline]] void add_to(std::uint32_t* state) const noexcept {
        for (std::size_t i = 0; i < v.size(); ++i) state[i] += v[i];
    }

    // Step T; word is the message word plus the step's constant. Both go in first: they do not wait for the step before.
    template <std::size_t T>
    [[gnu::always_inline]] void step(std::uint32_t word) noexcept {
        const std::uint32_t a = v[(80 - T) % 5];
        std::uint32_t& b = v[(81 - T) % 5];
        const std::uint32_t c = v[(82 - T) % 5];
        const std::uint32_t d = v[(83 - T) % 5];
        std::uint32_t& e = v[(84 - T) % 5];

        e += word;
        if constexpr (T < 20) {
            e += d ^ (b & (c ^ d));
        } else if constexpr (T >= 40 && T < 60) {
            e += c & d;  // the two halves of the majority have no bit in common
            e += b & (c ^ d);
        } else {
            e += b ^ c ^ d;
        }
        e += std::rotl(a, 5);
        b = std::rotl(b, 30);
    }
};

}  // namespace morvane::hash
