// RC5 with 32-bit words and up to 16 rounds (RFC 2040).
#include "cipher/rc5.h"

#include "base/wipe.h"
#include "cipher/exports.h"

#include <algorithm>
#include <cstdlib>

namespace morvane::cipher {
namespace {

struct Rc5 {
    using Schedule = E_RC5_KEY_SCHEDULE;
    struct State {
        std::uint32_t a, b;

        friend State operator^(const State& x, const State& y) noexcept { return {x.a ^ y.a, x.b ^ y.b}; }
    };
    static constexpr std::size_t kBlockBytes = 8;
    static constexpr std::endian kOrder = std::endian::little;
    static constexpr std::size_t kLanes = 4;

    static State enter(const Block<8>& block) noexcept {
        const auto [a, b] = WordPair::of(block.limbs[0], std::endian::little);
        return {a, b};
    }
    static Block<8> leave(const State& state) noexcept { return {{WordPair{state.a, state.b}.limb(std::endian::little)}}; }

    // A rotation by the low five bits of `by`.
    [[gnu::always_inline]] static std::uint32_t rotl(std::uint32_t word, std::uint32_t by) noexcept {
        return std::rotl(word, static_cast<int>(by & 31));
    }
    [[gnu::always_inline]] static std::uint32_t rotr(std::uint32_t word, std::uint32_t by) noexcept {
        return std::rotr(word, static_cast<int>(by & 31));
    }

    template <Direction D, std::size_t Lanes>
    [[gnu::always_inline]] static void run(const Schedule& schedule, std::array<State, Lanes>& states) noexcept {
        const std::size_t rounds = std::min<std::uint32_t>(schedule.rounds, E_RC5_MAX_ROUNDS);
        const std::uint32_t* const s = schedule.s;
        if constexpr (D == Direction::kEncrypt) {
            for (State& x : states) x = {x.a + s[0], x.b + s[1]};
            for (std::size_t i = 1; i <= rounds; ++i) {
                for (State& x : states) x.a = rotl(x.a ^ x.b, x.b) + s[2 * i];
                for (State& x : states) x.b = rotl(x.b ^ x.a, x.a) + s[2 * i + 1];
            }
        } else {
            for (std::size_t i = rounds; i != 0; --i) {
                for (State& x : states) x.b = rotr(x.b - s[2 * i + 1], x.a) ^ x.a;
                for (State& x : states) x.a = rotr(x.a - s[2 * i], x.b) ^ x.b;
            }
            for (State& x : states) x = {x.a - s[0], x.b - s[1]};
        }
    }

    template <Direction D>
    static BlocksFn<Schedule>* blocks() noexcept {
        return rc5_blocks.get<D>();
    }
};

// Mixes the key, as words, into the table. The words are used up.
void mix(E_RC5_KEY_SCHEDULE& schedule, std::uint32_t* words, std::size_t count) noexcept {
    const std::size_t used = 2 * schedule.rounds + 2;
    schedule.s[0] = 0xb7e15163;
    for (std::size_t i = 1; i < used; ++i) schedule.s[i] = schedule.s[i - 1] + 0x9e3779b9;
    std::uint32_t a = 0, b = 0;
    std::size_t i = 0, j = 0;
    for (std::size_t steps = 3 * std::max(count, used); steps != 0; --steps) {
        a = schedule.s[i] = std::rotl(schedule.s[i] + a + b, 3);
        b = words[j] = Rc5::rotl(words[j] + a + b, a + b);
        if (++i == used) i = 0;
        if (++j == count) j = 0;
    }
}

void load_words(std::uint32_t* words, const std::uint8_t* key, std::size_t key_len) noexcept {
    for (std::size_t i = 0; i < key_len; ++i) words[i / 4] |= std::uint32_t{key[i]} << (i % 4 * 8);
}

// Longer keys are no use; they are here because programs may have them.
constexpr std::size_t kLongestUsualKey = 256;

void expand_key(E_RC5_KEY_SCHEDULE& schedule, const std::uint8_t* key, std::size_t key_len) noexcept {
    const std::size_t count = (key_len + 3) / 4;
    if (key_len <= kLongestUsualKey) {
        SecretArray<std::uint32_t, kLongestUsualKey / 4> words;
        load_words(words.items.data(), key, key_len);
        mix(schedule, words.items.data(), count);
        return;
    }
    auto* const words = static_cast<std::uint32_t*>(std::calloc(count, sizeof(std::uint32_t)));
    if (words == nullptr) {
        schedule = {};
        return;
    }
    load_words(words, key, key_len);
    mix(schedule, words, count);
    wipe(words, count * sizeof(std::uint32_t));
    std::free(words);
}

}  // namespace

constinit BlocksTable<E_RC5_KEY_SCHEDULE, 3> rc5_blocks = blocks_table<Rc5, Rc5Avx512, Rc5Avx2>();

}  // namespace morvane::cipher

using morvane::cipher::Rc5;

void E_RC5_KeySchedule(E_RC5_KEY_SCHEDULE* ks, const uint8_t* key, int32_t key_len, int32_t rounds) {
    *ks = {};
    if (key_len <= 0) return;
    ks->rounds = rounds >= 0 && rounds <= E_RC5_MAX_ROUNDS ? static_cast<std::uint32_t>(rounds) : E_RC5_MAX_ROUNDS;
    morvane::cipher::expand_key(*ks, key, static_cast<std::size_t>(key_len));
}

MORVANE_CIPHER_BLOCK(RC5, Rc5)
MORVANE_CIPHER_ECB(RC5, Rc5)
MORVANE_CIPHER_CBC(RC5, Rc5)
MORVANE_CIPHER_FEEDBACK(RC5, Rc5)
