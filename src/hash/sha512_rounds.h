// The steps of SHA-512 (FIPS 180-2, section 6.3), shared by the routines that differ in how they expand the message.
#pragma once

#include "base/keep_order.h"
#include "hash/unroll.h"

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace morvane::hash {

inline constexpr bool kWordFitsRegister = sizeof(void*) == 8;

// What a 64-bit word is turned by, to the right: a rotation, or a shift. Halves of 32 bits are first exchanged, then
// shifted by kBits, and in a rotation what leaves one half comes into the other.
template <int Bits>
struct Rotation {
    static constexpr int kBits = Bits % 32;
    static constexpr bool kExchanged = Bits >= 32, kAround = true;
    static std::uint64_t of(std::uint64_t x) noexcept { return std::rotr(x, Bits); }
};
template <int Bits>
struct Shift {
    static constexpr int kBits = Bits;
    static constexpr bool kExchanged = false, kAround = false;
    static std::uint64_t of(std::uint64_t x) noexcept { return x >> Bits; }
};

// The exclusive or of three of them, by ascending kBits. In 32-bit registers each half is shifted on and on in both
// directions and added where it belongs, so that four registers hold everything.
template <typename First, typename Second, typename Third>
[[gnu::always_inline]] inline std::uint64_t xor_of(std::uint64_t x) noexcept {
    static_assert(First::kBits < Second::kBits && Second::kBits < Third::kBits && Third::kBits < 32);
    if constexpr (kWordFitsRegister) return First::of(x) ^ Second::of(x) ^ Third::of(x);
    std::array<std::uint32_t, 2> sum{};  // the low half first
    const auto half = [&]<bool High>() __attribute__((always_inline)) {
        const auto put = [&](bool high, std::uint32_t shifted) __attribute__((always_inline)) {
            sum[high ? 1 : 0] ^= shifted;
            keep_order(sum[high ? 1 : 0]);
        };
        const auto word = static_cast<std::uint32_t>(High ? x >> 32 : x);
        std::uint32_t right = word >> First::kBits;
        keep_order(right);
        put(High != First::kExchanged, right);
        right >>= Second::kBits - First::kBits;
        keep_order(right);
        put(High != Second::kExchanged, right);
        put(High != Third::kExchanged, right >> (Third::kBits - Second::kBits));
        std::uint32_t left = word << (32 - Third::kBits);
        keep_order(left);
        if constexpr (High || Third::kAround) put(High == Third::kExchanged, left);
        left <<= Third::kBits - Second::kBits;
        keep_order(left);
        if constexpr (High || Second::kAround) put(High == Second::kExchanged, left);
        if constexpr (High || First::kAround) put(High == First::kExchanged, left << (Second::kBits - First::kBits));
    };
    half.template operator()<false>();
    half.template operator()<true>();
    return std::uint64_t{sum[1]} << 32 | sum[0];
}

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
        if constexpr (kWordFitsRegister) {
            h += ~e & g;  // the two halves of the choice have no bit in common
            h += e & f;
        } else {
            h += ((f ^ g) & e) ^ g;
        }
        h += xor_of<Rotation<41>, Rotation<14>, Rotation<18>>(e);
        d += h;
        const std::uint64_t a_xor_b = a ^ b;
        h += b ^ (a_xor_b & b_xor_c);  // the majority of a, b and c
        b_xor_c = a_xor_b;             // of the next step
        h += xor_of<Rotation<34>, Rotation<39>, Rotation<28>>(a);
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
