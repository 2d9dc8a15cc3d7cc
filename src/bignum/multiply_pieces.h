// Products of operands that are longer than a routine takes at once.
#pragma once

#include "bignum/kernel_variants.h"
#include "bignum/rows.h"
#include "bignum/work.h"

#include <algorithm>

namespace morvane::bignum {

// r = a b from the products of pieces of up to `Most` limbs, which `multiply_block` makes.
template <std::size_t Most>
void multiply_pieces(MultiplyFn* multiply_block, LimbInWords* r, const LimbInWords* a, std::size_t a_size,
                     const LimbInWords* b, std::size_t b_size) noexcept {
    LimbInWords* const end = r + a_size + b_size;
    for (LimbInWords* at = r; at != end; ++at) *at = 0;
    Work<Limb, 2 * Most> piece(2 * Most);
    for (std::size_t i = 0; i < a_size; i += Most) {
        const std::size_t a_part = std::min(Most, a_size - i);
        for (std::size_t j = 0; j < b_size; j += Most) {
            const std::size_t b_part = std::min(Most, b_size - j);
            multiply_block(piece.get(), a + i, a_part, b + j, b_part);
            LimbInWords* at = r + i + j;
            Limb carry = add(at, at, piece.get(), a_part + b_part);
            for (at += a_part + b_part; at != end; ++at) {
                *at += carry;
                carry = static_cast<Limb>(*at < carry);
            }
        }
    }
}

}  // namespace morvane::bignum
