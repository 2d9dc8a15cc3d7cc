// IDEA in vector registers. Included by one file for each set of instructions behind its lanes header and
//     swap16     the two bytes of every lane exchanged
//     multiply   the product of every lane and a subkey modulo 65537, 0 standing for 65536
#pragma once

#include "cipher/idea.h"
#include "cipher/quad_lanes.h"

namespace morvane::cipher {
namespace {  // NOLINT(cert-dcl59-cpp): every file that includes this makes functions of its own

// The words of a block are big-endian.
struct IdeaQuad : Quad {
    MORVANE_INLINE void get(const std::uint8_t* in) noexcept {
        Quad::get(in);
        for (Lanes& word : x) word = swap16(word);
    }
    MORVANE_INLINE void put(std::uint8_t* out) const noexcept {
        Quad swapped = *this;
        for (Lanes& word : swapped.x) word = swap16(word);
        swapped.put(out);
    }
};

struct IdeaLanes {
    const std::uint16_t* keys;

    // The steps of several quads in turn.
    template <std::size_t Quads>
    MORVANE_INLINE static void round(IdeaQuad (&quads)[Quads], const std::uint16_t* key) noexcept {
        Lanes t[Quads], u[Quads];
        for (IdeaQuad& q : quads) q.x[0] = multiply(q.x[0], key[0]);
        for (IdeaQuad& q : quads) q.x[1] = add16(q.x[1], all16(key[1]));
        for (IdeaQuad& q : quads) q.x[2] = add16(q.x[2], all16(key[2]));
        for (IdeaQuad& q : quads) q.x[3] = multiply(q.x[3], key[3]);
        for (std::size_t i = 0; i < Quads; ++i) t[i] = multiply(bits_xor(quads[i].x[0], quads[i].x[2]), key[4]);
        for (std::size_t i = 0; i < Quads; ++i) u[i] = add16(bits_xor(quads[i].x[1], quads[i].x[3]), t[i]);
        for (std::size_t i = 0; i < Quads; ++i) u[i] = multiply(u[i], key[5]);
        for (std::size_t i = 0; i < Quads; ++i) {
            Lanes* const x = quads[i].x;
            const Lanes v = add16(t[i], u[i]), x1 = x[1];
            x[0] = bits_xor(x[0], u[i]);
            x[1] = bits_xor(x[2], u[i]);
            x[2] = bits_xor(x1, v);
            x[3] = bits_xor(x[3], v);
        }
    }

    template <std::size_t Quads>
    MORVANE_INLINE void run(IdeaQuad (&quads)[Quads]) const noexcept {
        const std::uint16_t* key = keys;
        for (std::size_t i = 0; i < 8; ++i, key += 6) round(quads, key);
        for (IdeaQuad& q : quads) {
            const Lanes x1 = q.x[1];
            q.x[0] = multiply(q.x[0], key[0]);
            q.x[1] = add16(q.x[2], all16(key[1]));
            q.x[2] = add16(x1, all16(key[2]));
            q.x[3] = multiply(q.x[3], key[3]);
        }
    }
};

template <Direction D, std::size_t Together>
MORVANE_INLINE void run_idea(const E_IDEA_KEY_SCHEDULE& schedule, const std::uint8_t* in, std::uint8_t* out,
                             std::size_t count) noexcept {
    const IdeaLanes rounds = {D == Direction::kEncrypt ? schedule.encrypt : schedule.decrypt};
    run_groups<IdeaQuad, Together>(rounds, in, out, count * 8 / sizeof(IdeaQuad));
}

}  // namespace
}  // namespace morvane::cipher
