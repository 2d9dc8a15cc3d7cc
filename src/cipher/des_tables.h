// The tables of DES (FIPS 46-3), folded for the rounds.
//
// A half of the block is held rotated left by one bit. Then the six bits that go to S-boxes 2, 4, 6 and 8 are the low bits
// of its bytes, from the high byte down, and those of S-boxes 1, 3, 5 and 7 are the low bits of the bytes of the half
// rotated right by four more.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>

namespace morvane::cipher::des {

// Rows 0 to 3 of each box, sixteen columns.
inline constexpr std::uint8_t kBoxes[8][64] = {
    {14, 4, 13, 1, 2,  15, 11, 8,  3,  10, 6, 12, 5, 9,  0, 7, 0,  15, 7, 4, 14, 2, 13, 1, 10, 6,  12, 11, 9,  5, 3, 8,
     4,  1, 14, 8, 13, 6,  2,  11, 15, 12, 9, 7,  3, 10, 5, 0, 15, 12, 8, 2, 4,  9, 1,  7, 5,  11, 3,  14, 10, 0, 6, 13},
    {15, 1,  8, 14, 6,  11, 3,  4, 9, 7, 2,  13, 12, 0, 5, 10, 3,  13, 4,  7, 15, 2,  8, 14, 12, 0, 1, 10, 6, 9, 11, 5,
     0,  14, 7, 11, 10, 4,  13, 1, 5, 8, 12, 6,  9,  3, 2, 15, 13, 8,  10, 1, 3,  15, 4, 2,  11, 6, 7, 12, 0, 5, 14, 9},
    {10, 0, 9, 14, 6, 3,  15, 5, 1,  13, 12, 7,  11, 4,  2,  8, 13, 7,  0,  9, 3, 4, 6, 10, 2, 8,  5,  14, 12, 11, 15, 1,
     13, 6, 4, 9,  8, 15, 3,  0, 11, 1,  2,  12, 5,  10, 14, 7, 1,  10, 13, 0, 6, 9, 8, 7,  4, 15, 14, 3,  11, 5,  2,  12},
    {7,  13, 14, 3, 0,  6,  9, 10, 1,  2, 8, 5,  11, 12, 4, 15, 13, 8,  11, 5, 6,  15, 0,  3, 4, 7, 2, 12, 1,  10, 14, 9,
     10, 6,  9,  0, 12, 11, 7, 13, 15, 1, 3, 14, 5,  2,  8, 4,  3,  15, 0,  6, 10, 1,  13, 8, 9, 4, 5, 11, 12, 7,  2,  14},
    {2, 12, 4, 1,  7,  10, 11, 6, 8,  5, 3,  15, 13, 0, 14, 9,  14, 11, 2,  12, 4, 7,  13, 1,  5, 0,  15, 10, 3,  9, 8, 6,
     4, 2,  1, 11, 10, 13, 7,  8, 15, 9, 12, 5,  6,  3, 0,  14, 11, 8,  12, 7,  1, 14, 2,  13, 6, 15, 0,  9,  10, 4, 5, 3},
    {12, 1,  10, 15, 9, 2, 6,  8, 0, 13, 3, 4,  14, 7,  5,  11, 10, 15, 4, 2,  7, 12, 9,  5,  6,  1,  13, 14, 0, 11, 3, 8,
     9,  14, 15, 5,  2, 8, 12, 3, 7, 0,  4, 10, 1,  13, 11, 6,  4,  3,  2, 12, 9, 5,  15, 10, 11, 14, 1,  7,  6, 0,  8, 13},
    {4, 11, 2,  14, 15, 0, 8, 13, 3,  12, 9, 7, 5, 10, 6, 1, 13, 0,  11, 7, 4, 9, 1,  10, 14, 3, 5, 12, 2,  15, 8, 6,
     1, 4,  11, 13, 12, 3, 7, 14, 10, 15, 6, 8, 0, 5,  9, 2, 6,  11, 13, 8, 1, 4, 10, 7,  9,  5, 0, 15, 14, 2,  3, 12},
    {13, 2,  8, 4, 6, 15, 11, 1, 10, 9, 3,  14, 5,  0, 12, 7, 1, 15, 13, 8, 10, 3,  7, 4,  12, 5,  6, 11, 0, 14, 9, 2,
     7,  11, 4, 1, 9, 12, 14, 2, 0,  6, 10, 13, 15, 3, 5,  8, 2, 1,  14, 7, 4,  10, 8, 13, 15, 12, 9, 0,  3, 5,  6, 11}};

// The bit of the box outputs, counted from 1 at the high end, that each bit of P's result takes.
inline constexpr std::uint8_t kPermutation[32] = {16, 7, 20, 21, 29, 12, 28, 17, 1,  15, 23, 26, 5,  18, 31, 10,
                                                  2,  8, 24, 14, 32, 27, 3,  9,  19, 13, 30, 6,  22, 11, 4,  25};

// What a box adds to the other half: its four bits for `input`, through P, in the rotated form. box counts from 0.
constexpr std::uint32_t box_output(std::size_t box, std::uint32_t input) noexcept {
    const std::uint32_t row = (input >> 4 & 2) | (input & 1), column = input >> 1 & 15;
    const std::uint32_t bits = kBoxes[box][16 * row + column];
    std::uint32_t half = 0;
    for (std::size_t i = 0; i < 32; ++i) {
        const std::size_t from = kPermutation[i] - 1U;
        if (from / 4 == box && (bits >> (3 - from % 4) & 1) != 0) half |= 1U << (31 - i);
    }
    return std::rotl(half, 1);
}

// The inputs of the eight boxes in the low bits of the eight bytes: a half as the 64-bit rounds hold it.
constexpr std::uint64_t spread(std::uint32_t half) noexcept {
    return (half | std::uint64_t{std::rotr(half, 4)} << 32) & 0x3f3f3f3f3f3f3f3fU;
}

constexpr std::uint32_t gather(std::uint64_t spread_half) noexcept {
    const std::uint64_t middle = spread_half >> 1 & 0x0f0f0f0f0f0f0f0fU;  // without the bits that two boxes share
    return std::rotl(static_cast<std::uint32_t>(middle), 1) | std::rotl(static_cast<std::uint32_t>(middle >> 32), 5);
}

static_assert(gather(spread(0x12345678)) == 0x12345678 && gather(spread(0xfedcba98)) == 0xfedcba98);

// The box whose input is in byte `byte` of the spread form.
constexpr std::size_t box_of_byte(std::size_t byte) noexcept { return byte < 4 ? 7 - 2 * byte : 6 - 2 * (byte - 4); }

}  // namespace morvane::cipher::des
