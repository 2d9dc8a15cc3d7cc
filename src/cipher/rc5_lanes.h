// RC5 in vector registers. Included behind one of the lanes headers.
#pragma once

#include "cipher/rc5.h"

#include <algorithm>

namespace morvane::cipher {
namespace {  // NOLINT(cert-dcl59-cpp): every file that includes this makes functions of its own

inline constexpr std::size_t kGroupBytes = 2 * sizeof(Lanes);

// Blocks in groups of as many as there are 32-bit lanes: the rounds of several are interleaved, each waiting for its own
// rotations only.
template <std::size_t Groups>
struct Rc5Lanes {
    Lanes a[Groups], b[Groups];

    MORVANE_INLINE void get(const std::uint8_t* in) noexcept {
        for (std::size_t i = 0; i < Groups; ++i, in += kGroupBytes) {
            const Lanes low = load(in), high = load(in + sizeof(Lanes));
            a[i] = even32(low, high);
            b[i] = odd32(low, high);
        }
    }
    MORVANE_INLINE void put(std::uint8_t* out) const noexcept {
        for (std::size_t i = 0; i < Groups; ++i, out += kGroupBytes) {
            store(out, zip_low32(a[i], b[i]));
            store(out + sizeof(Lanes), zip_high32(a[i], b[i]));
        }
    }

    MORVANE_INLINE void encrypt(const std::uint32_t* s, std::size_t rounds) noexcept {
        for (Lanes& word : a) word = add32(word, all32(s[0]));
        for (Lanes& word : b) word = add32(word, all32(s[1]));
        for (; rounds != 0; --rounds) {
            s += 2;
            for (std::size_t i = 0; i < Groups; ++i) a[i] = add32(rotl32(bits_xor(a[i], b[i]), b[i]), all32(s[0]));
            for (std::size_t i = 0; i < Groups; ++i) b[i] = add32(rotl32(bits_xor(b[i], a[i]), a[i]), all32(s[1]));
        }
    }
    MORVANE_INLINE void decrypt(const std::uint32_t* s, std::size_t rounds) noexcept {
        s += 2 * rounds;
        for (; rounds != 0; --rounds, s -= 2) {
            for (std::size_t i = 0; i < Groups; ++i) b[i] = bits_xor(rotr32(sub32(b[i], all32(s[1])), a[i]), a[i]);
            for (std::size_t i = 0; i < Groups; ++i) a[i] = bits_xor(rotr32(sub32(a[i], all32(s[0])), b[i]), b[i]);
        }
        for (Lanes& word : a) word = sub32(word, all32(s[0]));
        for (Lanes& word : b) word = sub32(word, all32(s[1]));
    }
};

template <Direction D, std::size_t Groups>
MORVANE_INLINE void rc5_groups(const E_RC5_KEY_SCHEDULE& schedule, const std::uint8_t*& in, std::uint8_t*& out,
                               std::size_t& groups) noexcept {
    const std::size_t rounds = std::min<std::uint32_t>(schedule.rounds, E_RC5_MAX_ROUNDS);
    for (; groups >= Groups; groups -= Groups, in += Groups * kGroupBytes, out += Groups * kGroupBytes) {
        Rc5Lanes<Groups> blocks;
        blocks.get(in);
        if constexpr (D == Direction::kEncrypt) {
            blocks.encrypt(schedule.s, rounds);
        } else {
            blocks.decrypt(schedule.s, rounds);
        }
        blocks.put(out);
    }
}

// As many groups at once as there are registers for.
template <Direction D, std::size_t Groups>
MORVANE_INLINE void rc5_batches(const E_RC5_KEY_SCHEDULE& schedule, const std::uint8_t* in, std::uint8_t* out,
                                std::size_t count) noexcept {
    std::size_t groups = count * 8 / kGroupBytes;
    rc5_groups<D, Groups>(schedule, in, out, groups);
    rc5_groups<D, 1>(schedule, in, out, groups);
}

}  // namespace
}  // namespace morvane::cipher
