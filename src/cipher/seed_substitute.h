// SEED's S-boxes of many bytes by shuffles. Included behind one of the lanes headers by files that first define
//     shuffle    the bytes of each 128 bits of a table that the low four bits of the others name, 0 where their top bit is
//     set row        one table in each 128 bits high       the high halves of all bytes, moved down odd_bytes  the even
//     bytes of the first and the odd bytes of the second argument
#pragma once

#include "cipher/seed_nibbles.h"

namespace morvane::cipher {
namespace {  // NOLINT(cert-dcl59-cpp): every file that includes this makes functions of its own

MORVANE_INLINE Lanes substitute(Lanes x) noexcept {
    const seed::NibbleTables& tables = seed::kNibbles;
    const Lanes low = bits_and(x, all32(0x0f0f0f0f)), high = high_nibbles(x);
    const Lanes i = bits_xor(shuffle(row(tables.i_low), low), shuffle(row(tables.i_high), high));
    const Lanes k = bits_xor(shuffle(row(tables.k_low), low), shuffle(row(tables.k_high), high));
    const Lanes j = bits_xor(i, k), inverse = row(tables.inverse), a_by_k = shuffle(row(tables.a_by), k);
    const Lanes a = bits_xor(shuffle(inverse, bits_xor(shuffle(inverse, i), a_by_k)), j);
    const Lanes b = bits_xor(shuffle(inverse, bits_xor(shuffle(inverse, j), a_by_k)), i);
    const Lanes first = bits_xor(shuffle(row(tables.box_of_a[0]), a), shuffle(row(tables.box_of_b[0]), b));
    const Lanes second = bits_xor(shuffle(row(tables.box_of_a[1]), a), shuffle(row(tables.box_of_b[1]), b));
    constexpr std::uint32_t kOfZero = (seed::kBoxes[0][0] | seed::kBoxes[1][0] << 8) * 0x10001U;
    return bits_xor(even_and_odd(first, second), all32(kOfZero));
}

}  // namespace
}  // namespace morvane::cipher
