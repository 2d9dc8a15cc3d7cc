// RC2 (RFC 2268).
#include "cipher/rc2.h"

#include "base/byte_sum.h"
#include "base/keep_order.h"
#include "base/wipe.h"
#include "cipher/exports.h"

#include <algorithm>

namespace morvane::cipher {
namespace {

// PITABLE. Its derivation from the digits of pi was never published.
constexpr std::uint8_t kSubstitution[256] = {
    0xd9, 0x78, 0xf9, 0xc4, 0x19, 0xdd, 0xb5, 0xed, 0x28, 0xe9, 0xfd, 0x79, 0x4a, 0xa0, 0xd8, 0x9d, 0xc6, 0x7e, 0x37, 0x83,
    0x2b, 0x76, 0x53, 0x8e, 0x62, 0x4c, 0x64, 0x88, 0x44, 0x8b, 0xfb, 0xa2, 0x17, 0x9a, 0x59, 0xf5, 0x87, 0xb3, 0x4f, 0x13,
    0x61, 0x45, 0x6d, 0x8d, 0x09, 0x81, 0x7d, 0x32, 0xbd, 0x8f, 0x40, 0xeb, 0x86, 0xb7, 0x7b, 0x0b, 0xf0, 0x95, 0x21, 0x22,
    0x5c, 0x6b, 0x4e, 0x82, 0x54, 0xd6, 0x65, 0x93, 0xce, 0x60, 0xb2, 0x1c, 0x73, 0x56, 0xc0, 0x14, 0xa7, 0x8c, 0xf1, 0xdc,
    0x12, 0x75, 0xca, 0x1f, 0x3b, 0xbe, 0xe4, 0xd1, 0x42, 0x3d, 0xd4, 0x30, 0xa3, 0x3c, 0xb6, 0x26, 0x6f, 0xbf, 0x0e, 0xda,
    0x46, 0x69, 0x07, 0x57, 0x27, 0xf2, 0x1d, 0x9b, 0xbc, 0x94, 0x43, 0x03, 0xf8, 0x11, 0xc7, 0xf6, 0x90, 0xef, 0x3e, 0xe7,
    0x06, 0xc3, 0xd5, 0x2f, 0xc8, 0x66, 0x1e, 0xd7, 0x08, 0xe8, 0xea, 0xde, 0x80, 0x52, 0xee, 0xf7, 0x84, 0xaa, 0x72, 0xac,
    0x35, 0x4d, 0x6a, 0x2a, 0x96, 0x1a, 0xd2, 0x71, 0x5a, 0x15, 0x49, 0x74, 0x4b, 0x9f, 0xd0, 0x5e, 0x04, 0x18, 0xa4, 0xec,
    0xc2, 0xe0, 0x41, 0x6e, 0x0f, 0x51, 0xcb, 0xcc, 0x24, 0x91, 0xaf, 0x50, 0xa1, 0xf4, 0x70, 0x39, 0x99, 0x7c, 0x3a, 0x85,
    0x23, 0xb8, 0xb4, 0x7a, 0xfc, 0x02, 0x36, 0x5b, 0x25, 0x55, 0x97, 0x31, 0x2d, 0x5d, 0xfa, 0x98, 0xe3, 0x8a, 0x92, 0xae,
    0x05, 0xdf, 0x29, 0x10, 0x67, 0x6c, 0xba, 0xc9, 0xd3, 0x00, 0xe6, 0xcf, 0xe1, 0x9e, 0xa8, 0x2c, 0x63, 0x16, 0x01, 0x3f,
    0x58, 0xe2, 0x89, 0xa9, 0x0d, 0x38, 0x34, 0x1b, 0xab, 0x33, 0xff, 0xb0, 0xbb, 0x48, 0x0c, 0x5f, 0xb9, 0xb1, 0xcd, 0x2e,
    0xc5, 0xf3, 0xdb, 0x47, 0xe5, 0xa5, 0x9c, 0x77, 0x0a, 0xa6, 0x20, 0x68, 0xfe, 0x7f, 0xc1, 0xad};

struct Rc2 {
    using Schedule = E_RC2_KEY_SCHEDULE;
    using Words = std::array<std::uint16_t, 4>;
    // The four 16-bit words of the block, little-endian.
    struct State {
        Words r;

        friend State operator^(State a, const State& b) noexcept {
            for (std::size_t i = 0; i < 4; ++i) a.r[i] = static_cast<std::uint16_t>(a.r[i] ^ b.r[i]);
            return a;
        }
    };
    static constexpr std::size_t kBlockBytes = 8;
    static constexpr std::endian kOrder = std::endian::little;
    static constexpr std::size_t kLanes = 4;

    static State enter(const Block<8>& block) noexcept {
        State state;
        for (std::size_t i = 0; i < 4; ++i) state.r[i] = static_cast<std::uint16_t>(block.limbs[0] >> 16 * i);
        return state;
    }
    static Block<8> leave(const State& state) noexcept {
        Block<8> block;
        for (std::size_t i = 0; i < 4; ++i) block.limbs[0] |= std::uint64_t{state.r[i]} << 16 * i;
        return block;
    }

    static constexpr int kRotations[4] = {1, 2, 3, 5};

    // What a step adds to word i: a choice, bit by bit, between the two words two and three before it by the word before.
    template <std::size_t I>
    [[gnu::always_inline]] static std::uint32_t choice(const Words& r) noexcept {
        const std::uint32_t by = r[(I + 3) % 4], if_set = r[(I + 2) % 4], if_clear = r[(I + 1) % 4];
        return if_clear ^ (by & (if_set ^ if_clear));
    }

    template <std::size_t I>
    [[gnu::always_inline]] static void mix(Words& r, const std::uint16_t* key) noexcept {
        r[I] = std::rotl(static_cast<std::uint16_t>(r[I] + key[I] + choice<I>(r)), kRotations[I]);
    }
    template <std::size_t I>
    [[gnu::always_inline]] static void unmix(Words& r, const std::uint16_t* key) noexcept {
        r[I] = static_cast<std::uint16_t>(std::rotr(r[I], kRotations[I]) - key[I] - choice<I>(r));
    }
    template <std::size_t I>
    [[gnu::always_inline]] static void mash(Words& r, const std::uint16_t* k) noexcept {
        r[I] = static_cast<std::uint16_t>(r[I] + k[r[(I + 3) % 4] & 63]);
    }
    template <std::size_t I>
    [[gnu::always_inline]] static void unmash(Words& r, const std::uint16_t* k) noexcept {
        r[I] = static_cast<std::uint16_t>(r[I] - k[r[(I + 3) % 4] & 63]);
    }

    template <Direction D, std::size_t Lanes>
    [[gnu::always_inline]] static void run(const Schedule& schedule, std::array<State, Lanes>& states) noexcept {
        const std::uint16_t* const k = schedule.k;
        if constexpr (D == Direction::kEncrypt) {
            for (std::size_t round = 0; round < 16; ++round) {
                for (State& s : states) mix<0>(s.r, k + 4 * round);
                for (State& s : states) mix<1>(s.r, k + 4 * round);
                for (State& s : states) mix<2>(s.r, k + 4 * round);
                for (State& s : states) mix<3>(s.r, k + 4 * round);
                if (round != 4 && round != 10) continue;
                for (State& s : states) mash<0>(s.r, k);
                for (State& s : states) mash<1>(s.r, k);
                for (State& s : states) mash<2>(s.r, k);
                for (State& s : states) mash<3>(s.r, k);
            }
        } else {
            for (std::size_t round = 16; round-- != 0;) {
                for (State& s : states) unmix<3>(s.r, k + 4 * round);
                for (State& s : states) unmix<2>(s.r, k + 4 * round);
                for (State& s : states) unmix<1>(s.r, k + 4 * round);
                for (State& s : states) unmix<0>(s.r, k + 4 * round);
                if (round != 5 && round != 11) continue;
                for (State& s : states) unmash<3>(s.r, k);
                for (State& s : states) unmash<2>(s.r, k);
                for (State& s : states) unmash<1>(s.r, k);
                for (State& s : states) unmash<0>(s.r, k);
            }
        }
    }

    template <Direction D>
    static BlocksFn<Schedule>* blocks() noexcept {
        return rc2_blocks.get<D>();
    }
};

void expand_key(E_RC2_KEY_SCHEDULE& schedule, const std::uint8_t* key, std::size_t key_len,
                std::uint32_t effective_bits) noexcept {
    SecretArray<std::uint8_t, 128> buffer;
    std::uint8_t* const l = buffer.items.data();
    std::copy_n(key, key_len, l);
    const std::uint8_t* const substitution = at_hand(kSubstitution);
    std::size_t last = l[key_len - 1];
    for (std::size_t i = key_len; i < 128; ++i) {
        add_byte(last, l[i - key_len]);
        last = substitution[last];
        l[i] = static_cast<std::uint8_t>(last);
    }
    const std::size_t effective_bytes = (effective_bits + 7) / 8;
    const std::uint32_t mask = 255U >> (8 * effective_bytes - effective_bits);
    last = substitution[l[128 - effective_bytes] & mask];
    l[128 - effective_bytes] = static_cast<std::uint8_t>(last);
    for (std::size_t i = 128 - effective_bytes; i-- != 0;) {
        last = substitution[last ^ l[i + effective_bytes]];
        l[i] = static_cast<std::uint8_t>(last);
    }
    for (std::size_t i = 0; i < 64; ++i) schedule.k[i] = static_cast<std::uint16_t>(l[2 * i] | l[2 * i + 1] << 8);
}

}  // namespace

constinit BlocksTable<E_RC2_KEY_SCHEDULE, 3> rc2_blocks = blocks_table<Rc2, Rc2Avx512, Rc2Avx2>();

}  // namespace morvane::cipher

using morvane::cipher::Rc2;

void E_RC2_KeySchedule(E_RC2_KEY_SCHEDULE* ks, const uint8_t* key, int32_t key_len, int32_t effective_bits) {
    if (key_len <= 0) {
        *ks = {};
        return;
    }
    const bool is_bits = effective_bits >= 1 && effective_bits <= E_RC2_MAX_BITS;
    morvane::cipher::expand_key(*ks, key, static_cast<std::size_t>(std::min(key_len, E_RC2_MAX_KEY_BYTES)),
                                static_cast<std::uint32_t>(is_bits ? effective_bits : E_RC2_MAX_BITS));
}

MORVANE_CIPHER_BLOCK(RC2, Rc2)
MORVANE_CIPHER_ECB(RC2, Rc2)
MORVANE_CIPHER_CBC(RC2, Rc2)
MORVANE_CIPHER_FEEDBACK(RC2, Rc2)
