// SEED (RFC 4269).
#include "cipher/seed.h"

#include "base/keep_order.h"
#include "cipher/exports.h"
#include "cipher/seed_tables.h"

namespace morvane::cipher {
namespace {

[[gnu::always_inline]] inline std::uint32_t g(std::uint32_t x, const seed::GTables& tables) noexcept {
    const auto byte = [x](unsigned i) { return static_cast<std::uint8_t>(x >> 8 * i); };
    return (tables[0][byte(0)] ^ tables[1][byte(1)]) ^ (tables[2][byte(2)] ^ tables[3][byte(3)]);
}

struct Seed {
    using Schedule = E_SEED_KEY_SCHEDULE;
    // The words of the block as the standard reads them, big-endian.
    struct State {
        std::uint32_t left0, left1, right0, right1;

        friend State operator^(const State& a, const State& b) noexcept {
            return {a.left0 ^ b.left0, a.left1 ^ b.left1, a.right0 ^ b.right0, a.right1 ^ b.right1};
        }
    };
    static constexpr std::size_t kBlockBytes = 16;
    static constexpr std::endian kOrder = std::endian::little;
    static constexpr std::size_t kLanes = 4;

    static State enter(const Block<16>& block) noexcept {
        const WordPair left = WordPair::of(block.limbs[0], std::endian::big);
        const WordPair right = WordPair::of(block.limbs[1], std::endian::big);
        return {left.first, left.second, right.first, right.second};
    }
    static Block<16> leave(const State& state) noexcept {
        return {{WordPair{state.left0, state.left1}.limb(std::endian::big),
                 WordPair{state.right0, state.right1}.limb(std::endian::big)}};
    }

    // (to0, to1) ^= F(half0, half1) under the round key of two words.
    [[gnu::always_inline]] static void round(std::uint32_t& to0, std::uint32_t& to1, std::uint32_t half0,
                                             std::uint32_t half1, const std::uint32_t* key,
                                             const seed::GTables& tables) noexcept {
        const std::uint32_t c = half0 ^ key[0];
        const std::uint32_t first = g(c ^ (half1 ^ key[1]), tables);
        const std::uint32_t second = g(first + c, tables);
        const std::uint32_t third = g(second + first, tables);
        to0 ^= third + second;
        to1 ^= third;
    }

    template <Direction D, std::size_t Lanes>
    [[gnu::always_inline]] static void run(const Schedule& schedule, std::array<State, Lanes>& states) noexcept {
        const std::uint32_t* const keys = schedule.round_keys;
        const seed::GTables& tables = at_hand(seed::kG);
        for (std::size_t i = 0; i < 16; i += 2) {
            const std::uint32_t* const first = keys + 2 * (D == Direction::kEncrypt ? i : 15 - i);
            const std::uint32_t* const second = keys + 2 * (D == Direction::kEncrypt ? i + 1 : 14 - i);
            for (State& s : states) round(s.left0, s.left1, s.right0, s.right1, first, tables);
            for (State& s : states) round(s.right0, s.right1, s.left0, s.left1, second, tables);
        }
        for (State& s : states) s = {s.right0, s.right1, s.left0, s.left1};
    }

    template <Direction D>
    static BlocksFn<Schedule>* blocks() noexcept {
        return seed_blocks.get<D>();
    }
};

// A rotation of 64 bits to the right. Of two 32-bit registers an exclusive or makes it, lest the compiler see what it is
// and take the instruction that shifts a pair, which is slow.
template <unsigned Bits>
[[gnu::always_inline]] inline std::uint64_t rotated(std::uint64_t x) noexcept {
    if constexpr (sizeof(void*) == 8) return std::rotr(x, Bits);
    const auto low = static_cast<std::uint32_t>(Bits < 32 ? x : x >> 32);
    const auto high = static_cast<std::uint32_t>(Bits < 32 ? x >> 32 : x);
    constexpr unsigned kRight = Bits % 32, kLeft = 32 - kRight;
    return std::uint64_t{high >> kRight ^ low << kLeft} << 32 | (low >> kRight ^ high << kLeft);
}

void expand_key(E_SEED_KEY_SCHEDULE& schedule, const std::uint8_t* key) noexcept {
    std::uint64_t a = load_be<std::uint64_t>(key), b = load_be<std::uint64_t>(key + 8);  // K0 K1 and K2 K3
    std::uint32_t constant = 0x9e3779b9;
    const seed::GTables& tables = at_hand(seed::kG);
#pragma GCC unroll 16
    for (std::size_t i = 0; i < 16; ++i, constant = std::rotl(constant, 1)) {
        const auto high = [](std::uint64_t x) { return static_cast<std::uint32_t>(x >> 32); };
        const auto low = [](std::uint64_t x) { return static_cast<std::uint32_t>(x); };
        schedule.round_keys[2 * i] = g(high(a) + high(b) - constant, tables);
        schedule.round_keys[2 * i + 1] = g(low(a) - low(b) + constant, tables);
        if (i % 2 == 0) {
            a = rotated<8>(a);
        } else {
            b = rotated<64 - 8>(b);
        }
    }
}

}  // namespace

constinit BlocksTable<E_SEED_KEY_SCHEDULE, 3> seed_blocks = blocks_table<Seed, SeedGfni, SeedAvx2>();

}  // namespace morvane::cipher

using morvane::cipher::Seed;

void E_SEED_KeySchedule(E_SEED_KEY_SCHEDULE* ks, const uint8_t* key) { morvane::cipher::expand_key(*ks, key); }

MORVANE_CIPHER_BLOCK(SEED, Seed)
MORVANE_CIPHER_ECB(SEED, Seed)
MORVANE_CIPHER_CBC(SEED, Seed)
MORVANE_CIPHER_NO_PAD(SEED, Seed)
MORVANE_CIPHER_FEEDBACK(SEED, Seed)
