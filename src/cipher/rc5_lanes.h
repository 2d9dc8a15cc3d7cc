// RC5 in vector registers. Included behind one of the lanes headers.
#pragma once

#include "cipher/lane_groups.h"
#include "cipher/rc5.h"

#include <algorithm>

namespace morvane::cipher {
namespace {  // NOLINT(cert-dcl59-cpp): every file that includes this makes functions of its own

// As many blocks as there are 32-bit lanes.
struct Pair {
    Lanes a, b;

    MORVANE_INLINE void get(const std::uint8_t* in) noexcept {
        const Lanes low = load(in), high = load(in + sizeof(Lanes));
        a = even32(low, high);
        b = odd32(low, high);
    }
    MORVANE_INLINE void put(std::uint8_t* out) const noexcept {
        store(out, zip_low32(a, b));
        store(out + sizeof(Lanes), zip_high32(a, b));
    }
};

template <Direction D>
struct Rc5Lanes {
    const std::uint32_t* keys;
    std::size_t rounds;

    MORVANE_INLINE explicit Rc5Lanes(const E_RC5_KEY_SCHEDULE& schedule) noexcept
        : keys(schedule.s), rounds(std::min<std::uint32_t>(schedule.rounds, E_RC5_MAX_ROUNDS)) {}

    template <std::size_t Pairs>
    MORVANE_INLINE void run(Pair (&pairs)[Pairs]) const noexcept {
        if constexpr (D == Direction::kEncrypt) {
            const std::uint32_t* s = keys;
            for (Pair& x : pairs) x = {add32(x.a, all32(s[0])), add32(x.b, all32(s[1]))};
            for (std::size_t left = rounds; left != 0; --left) {
                s += 2;
                for (Pair& x : pairs) x.a = add32(rotl32(bits_xor(x.a, x.b), x.b), all32(s[0]));
                for (Pair& x : pairs) x.b = add32(rotl32(bits_xor(x.b, x.a), x.a), all32(s[1]));
            }
        } else {
            const std::uint32_t* s = keys + 2 * rounds;
            for (std::size_t left = rounds; left != 0; --left, s -= 2) {
                for (Pair& x : pairs) x.b = bits_xor(rotr32(sub32(x.b, all32(s[1])), x.a), x.a);
                for (Pair& x : pairs) x.a = bits_xor(rotr32(sub32(x.a, all32(s[0])), x.b), x.b);
            }
            for (Pair& x : pairs) x = {sub32(x.a, all32(s[0])), sub32(x.b, all32(s[1]))};
        }
    }
};

template <Direction D, std::size_t Together>
MORVANE_INLINE void run_rc5(const E_RC5_KEY_SCHEDULE& schedule, const std::uint8_t* in, std::uint8_t* out,
                            std::size_t count) noexcept {
    run_groups<Pair, Together>(Rc5Lanes<D>(schedule), in, out, count * 8 / sizeof(Pair));
}

}  // namespace
}  // namespace morvane::cipher
