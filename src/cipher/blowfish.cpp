// Blowfish (B. Schneier, Description of a New Variable-Length Key, 64-Bit Block Cipher, 1993).
#include "cipher/blowfish_pi.h"
#include "cipher/exports.h"

namespace morvane::cipher {
namespace {

struct Blowfish {
    using Schedule = E_BF_KEY_SCHEDULE;
    struct State {
        std::uint32_t left, right;

        friend State operator^(const State& a, const State& b) noexcept { return {a.left ^ b.left, a.right ^ b.right}; }
    };
    static constexpr std::size_t kBlockBytes = 8;
    static constexpr std::endian kOrder = std::endian::big;
    static constexpr std::size_t kLanes = 8;

    static State enter(const Block<8>& block) noexcept {
        const auto [left, right] = WordPair::of(block.limbs[0], std::endian::big);
        return {left, right};
    }
    static Block<8> leave(const State& state) noexcept {
        return {{WordPair{state.left, state.right}.limb(std::endian::big)}};
    }

    // to ^ subkey ^ F(half)
    [[gnu::always_inline]] static std::uint32_t add_round(const Schedule& schedule, std::uint32_t to, std::uint32_t half,
                                                          std::uint32_t subkey) noexcept {
        const auto byte = [half](unsigned i) { return static_cast<std::uint8_t>(half >> 8 * i); };
        const std::uint32_t f =
            ((schedule.s[0][byte(3)] + schedule.s[1][byte(2)]) ^ schedule.s[2][byte(1)]) + schedule.s[3][byte(0)];
        return to ^ subkey ^ f;
    }

    template <Direction D, std::size_t Lanes>
    [[gnu::always_inline]] static void run(const Schedule& schedule, std::array<State, Lanes>& states) noexcept {
        const auto p = [&](std::size_t i) { return schedule.p[D == Direction::kEncrypt ? i : 17 - i]; };
        for (State& s : states) s.left ^= p(0);
        for (std::size_t i = 1; i < 17; i += 2) {
            for (State& s : states) s.right = add_round(schedule, s.right, s.left, p(i));
            for (State& s : states) s.left = add_round(schedule, s.left, s.right, p(i + 1));
        }
        for (State& s : states) s = {s.right ^ p(17), s.left};
    }

    template <Direction D>
    static BlocksFn<Schedule>* blocks() noexcept {
        return run_blocks<Blowfish, D>;
    }
};

// The key is repeated to fill the subkeys, then everything is replaced by a chain of encryptions of zero.
void expand_key(E_BF_KEY_SCHEDULE& schedule, const std::uint8_t* key, std::size_t key_len) noexcept {
    schedule = blowfish::kPi;
    std::size_t at = 0;
    for (std::uint32_t& subkey : schedule.p) {
        std::uint32_t word = 0;
        for (int i = 0; i < 4; ++i) {
            word = word << 8 | key[at];
            if (++at == key_len) at = 0;
        }
        subkey ^= word;
    }
    States<Blowfish> state{};
    const auto replace = [&](std::uint32_t* words, std::size_t count) {
        for (std::size_t i = 0; i < count; i += 2) {
            Blowfish::run<Direction::kEncrypt>(schedule, state);
            words[i] = state[0].left;
            words[i + 1] = state[0].right;
        }
    };
    replace(schedule.p, 18);
    for (auto& box : schedule.s) replace(box, 256);
}

}  // namespace
}  // namespace morvane::cipher

using morvane::cipher::Blowfish;

void E_BF_KeySchedule(E_BF_KEY_SCHEDULE* ks, const uint8_t* key, int32_t key_len) {
    if (key_len <= 0) {
        *ks = {};
        return;
    }
    morvane::cipher::expand_key(*ks, key,
                                key_len < E_BF_MAX_KEY_BYTES ? static_cast<std::size_t>(key_len) : E_BF_MAX_KEY_BYTES);
}

MORVANE_CIPHER_BLOCK(BF, Blowfish)
MORVANE_CIPHER_ECB(BF, Blowfish)
MORVANE_CIPHER_CBC(BF, Blowfish)
MORVANE_CIPHER_FEEDBACK(BF, Blowfish)
