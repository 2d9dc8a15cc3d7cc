// RC2 in vector registers. Included by one file for each set of instructions behind its lanes header and
//     MashKeys    the subkeys as a table: made of a schedule, look_up() of a register's lanes gives k[lane & 63]
#pragma once

#include "cipher/quad_lanes.h"
#include "cipher/rc2.h"

namespace morvane::cipher {
namespace {  // NOLINT(cert-dcl59-cpp): every file that includes this makes functions of its own

template <Direction D>
struct Rc2Lanes {
    const std::uint16_t* keys;
    MashKeys mash_keys;

    MORVANE_INLINE explicit Rc2Lanes(const E_RC2_KEY_SCHEDULE& schedule) noexcept
        : keys(schedule.k), mash_keys(schedule.k) {}

    // Word I of every quad; the words before it are I + 3, I + 2 and I + 1, counted modulo 4.
    template <std::size_t I, std::size_t Quads>
    MORVANE_INLINE void mix(Quad (&quads)[Quads], std::size_t round) const noexcept {
        constexpr int kRotations[4] = {1, 2, 3, 5};
        const Lanes key = all16(keys[4 * round + I]);
        for (Quad& q : quads) {
            const Lanes choice = choose(q.x[(I + 3) % 4], q.x[(I + 2) % 4], q.x[(I + 1) % 4]);
            if constexpr (D == Direction::kEncrypt) {
                q.x[I] = rotl16<kRotations[I]>(add16(add16(q.x[I], key), choice));
            } else {
                q.x[I] = sub16(sub16(rotl16<16 - kRotations[I]>(q.x[I]), key), choice);
            }
        }
    }
    template <std::size_t I, std::size_t Quads>
    MORVANE_INLINE void mash(Quad (&quads)[Quads]) const noexcept {
        Lanes by[Quads];
        for (std::size_t i = 0; i < Quads; ++i) by[i] = quads[i].x[(I + 3) % 4];
        mash_keys.look_up(by);
        for (std::size_t i = 0; i < Quads; ++i) {
            Lanes& word = quads[i].x[I];
            word = D == Direction::kEncrypt ? add16(word, by[i]) : sub16(word, by[i]);
        }
    }

    template <std::size_t Quads>
    MORVANE_INLINE void run(Quad (&quads)[Quads]) const noexcept {
        if constexpr (D == Direction::kEncrypt) {
            for (std::size_t round = 0; round < 16; ++round) {
                mix<0>(quads, round);
                mix<1>(quads, round);
                mix<2>(quads, round);
                mix<3>(quads, round);
                if (round != 4 && round != 10) continue;
                mash<0>(quads);
                mash<1>(quads);
                mash<2>(quads);
                mash<3>(quads);
            }
        } else {
            for (std::size_t round = 16; round-- != 0;) {
                mix<3>(quads, round);
                mix<2>(quads, round);
                mix<1>(quads, round);
                mix<0>(quads, round);
                if (round != 5 && round != 11) continue;
                mash<3>(quads);
                mash<2>(quads);
                mash<1>(quads);
                mash<0>(quads);
            }
        }
    }
};

template <Direction D, std::size_t Together>
MORVANE_INLINE void run_rc2(const E_RC2_KEY_SCHEDULE& schedule, const std::uint8_t* in, std::uint8_t* out,
                            std::size_t count) noexcept {
    run_groups<Quad, Together>(Rc2Lanes<D>(schedule), in, out, count * 8 / sizeof(Quad));
}

}  // namespace
}  // namespace morvane::cipher
