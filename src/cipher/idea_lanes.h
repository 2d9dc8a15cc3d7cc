// IDEA in vector registers. Included by one file for each set of instructions behind its lanes header and
//     swap16     the two bytes of every lane exchanged
//     multiply   the product of every lane and a subkey modulo 65537, 0 standing for 65536; 1 - key is wanted beside the
//     key
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

// Eight subkeys, each to be had in all lanes.
struct IdeaKeys {
    Lanes twice[2], negated_twice[2];  // each 16 bits two times; negated is 1 - key

    MORVANE_INLINE explicit IdeaKeys(const std::uint16_t* keys) noexcept {
        const Lanes eight = repeated16(keys), negated = sub16(all16(1), eight);
        twice[0] = zip_low16(eight, eight);
        twice[1] = zip_high16(eight, eight);
        negated_twice[0] = zip_low16(negated, negated);
        negated_twice[1] = zip_high16(negated, negated);
    }
    template <std::size_t I>
    MORVANE_INLINE Lanes key() const noexcept {
        return spread32<I % 4>(twice[I / 4]);
    }
    template <std::size_t I>
    MORVANE_INLINE Lanes times(Lanes a) const noexcept {
        return multiply(a, key<I>(), spread32<I % 4>(negated_twice[I / 4]));
    }
};

struct IdeaLanes {
    const std::uint16_t* keys;

    // The steps of several quads in turn. The keys are the first six.
    template <std::size_t Quads>
    MORVANE_INLINE static void round(IdeaQuad (&quads)[Quads], const IdeaKeys& k) noexcept {
        Lanes t[Quads], u[Quads];
        for (IdeaQuad& q : quads) q.x[0] = k.times<0>(q.x[0]);
        for (IdeaQuad& q : quads) q.x[1] = add16(q.x[1], k.key<1>());
        for (IdeaQuad& q : quads) q.x[2] = add16(q.x[2], k.key<2>());
        for (IdeaQuad& q : quads) q.x[3] = k.times<3>(q.x[3]);
        for (std::size_t i = 0; i < Quads; ++i) t[i] = k.times<4>(bits_xor(quads[i].x[0], quads[i].x[2]));
        for (std::size_t i = 0; i < Quads; ++i) u[i] = add16(bits_xor(quads[i].x[1], quads[i].x[3]), t[i]);
        for (std::size_t i = 0; i < Quads; ++i) u[i] = k.times<5>(u[i]);
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
        for (std::size_t i = 0; i < 8; ++i) round(quads, IdeaKeys(keys + 6 * i));
        const IdeaKeys k(keys + 44);  // the last eight, of which four are left
        for (IdeaQuad& q : quads) {
            const Lanes x1 = q.x[1];
            q.x[0] = k.times<4>(q.x[0]);
            q.x[1] = add16(q.x[2], k.key<5>());
            q.x[2] = add16(x1, k.key<6>());
            q.x[3] = k.times<7>(q.x[3]);
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
