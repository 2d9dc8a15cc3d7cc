// IDEA (X. Lai, On the Design and Security of Block Ciphers, 1992).
#include "cipher/idea.h"

#include "base/keep_order.h"
#include "base/wipe.h"
#include "cipher/exports.h"

namespace morvane::cipher {
namespace {

// A number of which only the low 16 bits count. As a factor, 0 stands for 65536.
using Number = std::uint32_t;

// The product modulo 65537. With high and low the halves of the integer product, it is low - high, and 65537 more if that
// is negative. The integer product is 0 when a factor is 65536, which is -1; then the result is 1 - a - b. There is no
// branch, so that the time tells nothing, and only few operations are in a row.
[[gnu::always_inline]] inline Number multiply(Number a, Number b) noexcept {
    a &= 0xffff;
    b &= 0xffff;
    const std::uint32_t product = a * b;
    const std::uint32_t low = product & 0xffff, high = product >> 16;
    std::uint32_t correction = 1 - a - b;
    keep_order(correction);
    correction = product != 0 ? 0 : correction;
    keep_order(correction);
    return low - high + correction + (low < high ? 1 : 0);
}

struct Idea {
    using Schedule = E_IDEA_KEY_SCHEDULE;
    // The four 16-bit numbers of the block, big-endian.
    struct State {
        std::uint32_t x1, x2, x3, x4;

        friend State operator^(const State& a, const State& b) noexcept {
            return {a.x1 ^ b.x1, a.x2 ^ b.x2, a.x3 ^ b.x3, a.x4 ^ b.x4};
        }
    };
    static constexpr std::size_t kBlockBytes = 8;
    static constexpr std::endian kOrder = std::endian::big;
    static constexpr std::size_t kLanes = 3;

    static State enter(const Block<8>& block) noexcept {
        const auto [first, second] = WordPair::of(block.limbs[0], std::endian::big);
        return {first >> 16, first, second >> 16, second};
    }
    static Block<8> leave(const State& s) noexcept {
        return {{WordPair{s.x1 << 16 | (s.x2 & 0xffff), s.x3 << 16 | (s.x4 & 0xffff)}.limb(std::endian::big)}};
    }

    [[gnu::always_inline]] static void round(State& s, const std::uint16_t* key) noexcept {
        s.x1 = multiply(s.x1, key[0]);
        s.x2 = s.x2 + key[1];
        s.x3 = s.x3 + key[2];
        s.x4 = multiply(s.x4, key[3]);
        const std::uint32_t t = multiply(s.x1 ^ s.x3, key[4]);
        const std::uint32_t u = multiply((s.x2 ^ s.x4) + t, key[5]);
        const std::uint32_t v = t + u;
        const std::uint32_t x2 = s.x2;
        s.x1 ^= u;
        s.x2 = s.x3 ^ u;
        s.x3 = x2 ^ v;
        s.x4 ^= v;
    }

    template <Direction D, std::size_t Lanes>
    [[gnu::always_inline]] static void run(const Schedule& schedule, std::array<State, Lanes>& states) noexcept {
        const std::uint16_t* key = D == Direction::kEncrypt ? schedule.encrypt : schedule.decrypt;
        for (std::size_t i = 0; i < 8; ++i, key += 6) {
            for (State& s : states) round(s, key);
        }
        for (State& s : states) {
            s = {multiply(s.x1, key[0]), s.x3 + key[1], s.x2 + key[2], multiply(s.x4, key[3])};
        }
    }

    template <Direction D>
    static BlocksFn<Schedule>* blocks() noexcept {
        return idea_blocks.get<D>();
    }
};

// x^65535, which is the inverse, as 65537 is prime. The exponents of ones are doubled in length.
Number inverse(Number x) noexcept {
    for (int length = 1; length < 16; length *= 2) {
        Number shifted = x;
        for (int i = 0; i < length; ++i) shifted = multiply(shifted, shifted);
        x = multiply(x, shifted);
    }
    return x;
}

// Each 128 bits of the subkeys are the key, rotated left by 25 bits once more.
void expand_key(std::uint16_t* subkeys, const std::uint8_t* key) noexcept {
    std::uint64_t high = load_be<std::uint64_t>(key), low = load_be<std::uint64_t>(key + 8);
    for (std::size_t i = 0; i < 52; ++i) {
        subkeys[i] = static_cast<std::uint16_t>((i % 8 < 4 ? high : low) >> (48 - i % 4 * 16));
        if (i % 8 == 7) {
            const std::uint64_t old_high = high;
            high = high << 25 | low >> 39;
            low = low << 25 | old_high >> 39;
        }
    }
}

// The subkeys of the multiplications.
constexpr std::size_t kFactors = 18;
constexpr std::size_t factor_at(std::size_t i) noexcept { return 6 * (i / 2) + 3 * (i % 2); }

// The inverses of the subkeys from the last round to the first. Within, the two addition keys of a round change places,
// except in the first and the last; those of the inner structure are their own inverses.
void invert_key(std::uint16_t* decrypt, const std::uint16_t* encrypt) noexcept {
    // One inverse serves all factors: that of their product, multiplied by all of them but one.
    SecretArray<Number, kFactors> products;
    products.items[0] = encrypt[factor_at(0)];
    for (std::size_t i = 1; i < kFactors; ++i) products.items[i] = multiply(products.items[i - 1], encrypt[factor_at(i)]);
    Number rest = inverse(products.items[kFactors - 1]);
    for (std::size_t i = kFactors; i-- != 0;) {
        const Number inverted = i == 0 ? rest : multiply(rest, products.items[i - 1]);
        rest = multiply(rest, encrypt[factor_at(i)]);
        decrypt[6 * (8 - i / 2) + 3 * (i % 2)] = static_cast<std::uint16_t>(inverted);
    }
    for (std::size_t i = 0; i <= 8; ++i) {
        const std::uint16_t* const from = encrypt + 6 * (8 - i);
        std::uint16_t* const to = decrypt + 6 * i;
        const bool crossed = i != 0 && i != 8;
        to[1] = static_cast<std::uint16_t>(0 - from[crossed ? 2 : 1]);
        to[2] = static_cast<std::uint16_t>(0 - from[crossed ? 1 : 2]);
        if (i == 8) return;
        to[4] = from[-2];
        to[5] = from[-1];
    }
}

}  // namespace

constinit BlocksTable<E_IDEA_KEY_SCHEDULE, 4> idea_blocks = blocks_table<Idea, IdeaAvx512, IdeaAvx2, IdeaSse2>();

}  // namespace morvane::cipher

using morvane::cipher::Idea;

void E_IDEA_KeySchedule(E_IDEA_KEY_SCHEDULE* ks, const uint8_t* key) {
    morvane::cipher::expand_key(ks->encrypt, key);
    morvane::cipher::invert_key(ks->decrypt, ks->encrypt);
}

MORVANE_CIPHER_BLOCK(IDEA, Idea)
MORVANE_CIPHER_ECB(IDEA, Idea)
MORVANE_CIPHER_CBC(IDEA, Idea)
MORVANE_CIPHER_FEEDBACK(IDEA, Idea)
