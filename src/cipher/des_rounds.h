// The rounds of DES on several blocks at once, and the conversions around them.
#pragma once

#include "base/keep_order.h"
#include "cipher/cipher.h"
#include "cipher/des_tables.h"

#include <morvane/cipher.h>

#include <type_traits>

namespace morvane::cipher::des {

// Where registers have 64 bits, a half is held as the eight box inputs, one in each byte, and the tables give such halves:
// a round needs neither masks nor rotations, and the way from one half to the next is as short as it can be. Where they
// have 32, a half is held as such; its bytes hold two bits more than a box takes, and tables that have every entry four
// times save masking them.
inline constexpr bool kIsSpread = sizeof(void*) == 8;
using Half = std::conditional_t<kIsSpread, std::uint64_t, std::uint32_t>;

constexpr Half to_half(std::uint32_t bits) noexcept { return static_cast<Half>(kIsSpread ? spread(bits) : bits); }
constexpr std::uint32_t from_half(Half half) noexcept {
    return kIsSpread ? gather(half) : static_cast<std::uint32_t>(half);
}

using BoxTables = std::array<std::array<Half, kIsSpread ? 64 : 256>, 8>;

// One table for each byte of the spread form.
constexpr BoxTables make_box_tables() noexcept {
    BoxTables tables{};
    for (std::size_t byte = 0; byte < 8; ++byte) {
        for (std::uint32_t input = 0; input < tables[0].size(); ++input) {
            tables[byte][input] = to_half(box_output(box_of_byte(byte), input & 63));
        }
    }
    return tables;
}

alignas(64) inline constexpr BoxTables kTables = make_box_tables();

struct State {
    Half left;
    Half right;

    friend State operator^(const State& a, const State& b) noexcept { return {a.left ^ b.left, a.right ^ b.right}; }
};

// to ^ f(half), f being the cipher function of the standard, under the round key of two words. The look-ups are taken as
// they arrive.
[[gnu::always_inline]] inline Half add_round(Half to, Half half, const std::uint32_t* key,
                                             const BoxTables& tables) noexcept {
    std::uint32_t even = 0, odd = 0;
    if constexpr (kIsSpread) {
        const std::uint64_t x = half ^ (key[0] | std::uint64_t{key[1]} << 32);
        even = static_cast<std::uint32_t>(x);
        odd = static_cast<std::uint32_t>(x >> 32);
    } else {
        even = half ^ key[0];
        odd = std::rotr(half, 4) ^ key[1];
        keep_order(even);
        keep_order(odd);
    }
    const auto low_byte = [](std::uint32_t x) { return static_cast<std::uint8_t>(x); };
    const auto next_byte = [](std::uint32_t x) { return static_cast<std::uint8_t>(x >> 8); };
    to ^= tables[0][low_byte(even)];
    keep_order(to);
    Half also = tables[1][next_byte(even)];
    to ^= tables[4][low_byte(odd)];
    keep_order(to);
    also ^= tables[5][next_byte(odd)];
    keep_order(also);
    even >>= 16;
    odd >>= 16;
    keep_order(even);
    keep_order(odd);
    to ^= tables[2][low_byte(even)];
    keep_order(to);
    also ^= tables[3][even >> 8];
    keep_order(also);
    to ^= tables[6][low_byte(odd)];
    keep_order(to);
    also ^= tables[7][odd >> 8];
    return to ^ also;
}

// The same for a single block, where nothing fills the time that a round waits for the one before: `keyed` is the half with
// its round key added, and what comes out has the key of its own round added, which changed it before the look-ups are
// there. These are added as a tree, those first that arrive first.
[[gnu::always_inline]] inline std::uint64_t add_keyed_round(std::uint64_t to, std::uint64_t keyed) noexcept {
    const auto look_up = [](std::size_t byte, std::uint64_t x) -> std::uint64_t {
        return kTables[byte][static_cast<std::uint8_t>(x)];
    };
    const std::uint64_t high = keyed >> 32;
    std::uint64_t a = to ^ look_up(0, keyed), b = look_up(1, keyed >> 8), c = look_up(2, keyed >> 16), d = look_up(4, high);
    keep_order(a);
    b ^= look_up(3, static_cast<std::uint32_t>(keyed) >> 24);
    keep_order(b);
    c ^= look_up(7, keyed >> 56);
    keep_order(c);
    d ^= look_up(5, high >> 8);
    keep_order(d);
    a ^= b;
    keep_order(a);
    d ^= look_up(6, keyed >> 48);
    keep_order(d);
    a ^= c;
    keep_order(a);
    return a ^ d;
}

// For the spread form of a state only.
template <Direction D, typename SpreadState>
[[gnu::always_inline]] inline void sixteen_rounds_of_one(const E_DES_KEY_SCHEDULE& schedule, SpreadState& state) noexcept {
    const auto key = [&](std::size_t round) {
        const std::uint32_t* const words = schedule.round_keys + 2 * (D == Direction::kEncrypt ? round : 15 - round);
        return words[0] | std::uint64_t{words[1]} << 32;
    };
    std::uint64_t even = state.right ^ key(0), odd = state.left ^ key(1);
    for (std::size_t round = 0; round < 14; round += 2) {
        odd = add_keyed_round(odd, even);
        even ^= key(round) ^ key(round + 2);
        even = add_keyed_round(even, odd);
        odd ^= key(round + 1) ^ key(round + 3);
    }
    odd = add_keyed_round(odd, even);
    even = add_keyed_round(even ^ key(14), odd);
    state = {even, odd ^ key(15)};
}

// The sixteen rounds, without the permutations before and after them. The halves come out exchanged, as the standard has
// it: what follows is the final permutation or the next sixteen rounds.
template <Direction D, std::size_t Lanes>
[[gnu::always_inline]] inline void sixteen_rounds(const E_DES_KEY_SCHEDULE& schedule,
                                                  std::array<State, Lanes>& states) noexcept {
    if constexpr (Lanes == 1 && kIsSpread) {
        sixteen_rounds_of_one<D>(schedule, states[0]);
        return;
    }
    const std::uint32_t* const keys = schedule.round_keys;
    const BoxTables& tables = at_hand(kTables);
    for (std::size_t round = 0; round < 16; round += 2) {
        const std::size_t first = 2 * (D == Direction::kEncrypt ? round : 15 - round);
        const std::size_t second = 2 * (D == Direction::kEncrypt ? round + 1 : 14 - round);
        for (State& state : states) state.left = add_round(state.left, state.right, keys + first, tables);
        for (State& state : states) state.right = add_round(state.right, state.left, keys + second, tables);
    }
    for (State& state : states) state = {state.right, state.left};
}

// Exchanges the bits of `high` at kMask with those of `low` at kMask << kShift.
template <unsigned kShift, std::uint32_t kMask>
[[gnu::always_inline]] inline void exchange(std::uint32_t& low, std::uint32_t& high) noexcept {
    const std::uint32_t differing = ((low >> kShift) ^ high) & kMask;
    high ^= differing;
    low ^= differing << kShift;
}

// IP. Its left half takes the even bits of the bytes, its right half the odd ones; each byte of a half is one of these
// columns, the bytes of the block in the order of its bits. That is a permutation of the six bits of a bit's index.
[[gnu::always_inline]] inline State enter(const Block<8>& block) noexcept {
    auto [low, high] = WordPair::of(block.limbs[0], std::endian::little);
    exchange<4, 0x0f0f0f0f>(low, high);
    exchange<16, 0x0000ffff>(low, high);
    exchange<2, 0x33333333>(low, high);
    exchange<8, 0x00ff00ff>(low, high);
    exchange<1, 0x55555555>(low, high);
    return {to_half(std::rotl(low, 1)), to_half(std::rotl(high, 1))};
}

// IP's inverse.
[[gnu::always_inline]] inline Block<8> leave(const State& state) noexcept {
    std::uint32_t low = std::rotr(from_half(state.left), 1), high = std::rotr(from_half(state.right), 1);
    exchange<1, 0x55555555>(low, high);
    exchange<8, 0x00ff00ff>(low, high);
    exchange<2, 0x33333333>(low, high);
    exchange<16, 0x0000ffff>(low, high);
    exchange<4, 0x0f0f0f0f>(low, high);
    return {{WordPair{low, high}.limb(std::endian::little)}};
}

}  // namespace morvane::cipher::des
