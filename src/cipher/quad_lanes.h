// Blocks of four 16-bit words in vector registers, one register for each word. Included behind one of the lanes headers.
#pragma once

#include "cipher/lane_groups.h"

namespace morvane::cipher {
namespace {  // NOLINT(cert-dcl59-cpp): every file that includes this makes functions of its own

// As many blocks as there are 16-bit lanes. Which lane a block comes to is of no consequence: the way back undoes it.
struct Quad {
    Lanes x[4];

    MORVANE_INLINE void get(const std::uint8_t* in) noexcept {
        Lanes low[2], high[2];
        for (std::size_t i = 0; i < 2; ++i, in += 2 * sizeof(Lanes)) {
            const Lanes a = load(in), b = load(in + sizeof(Lanes));
            const Lanes even = zip_low16(a, b), odd = zip_high16(a, b);
            low[i] = zip_low16(even, odd);
            high[i] = zip_high16(even, odd);
        }
        x[0] = zip_low64(low[0], low[1]);
        x[1] = zip_high64(low[0], low[1]);
        x[2] = zip_low64(high[0], high[1]);
        x[3] = zip_high64(high[0], high[1]);
    }

    MORVANE_INLINE void put(std::uint8_t* out) const noexcept {
        const Lanes low[2] = {zip_low64(x[0], x[1]), zip_high64(x[0], x[1])};
        const Lanes high[2] = {zip_low64(x[2], x[3]), zip_high64(x[2], x[3])};
        for (std::size_t i = 0; i < 2; ++i, out += 2 * sizeof(Lanes)) {
            const Lanes even = zip_low16(low[i], high[i]), odd = zip_high16(low[i], high[i]);
            store(out, zip_low16(even, odd));
            store(out + sizeof(Lanes), zip_high16(even, odd));
        }
    }
};

}  // namespace
}  // namespace morvane::cipher
