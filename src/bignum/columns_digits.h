// What products in columns share whatever instructions they use; see columns.h.
#pragma once

#include "bignum/limb.h"
#include "bignum/work.h"

#include <array>

namespace morvane::bignum {

using Digit = std::uint64_t;

inline constexpr std::size_t kRows = 4;  // numbers of digits are multiples of it

template <unsigned Bits>
inline constexpr Digit kDigitMask = (Digit{1} << Bits) - 1;

// Sums of so many products stay below 2^64, with what is carried into them.
template <unsigned Bits>
inline constexpr std::size_t kMostDigits = ((std::size_t{1} << (64 - 2 * Bits)) - 1) / kRows* kRows;

constexpr std::size_t rounded_to_rows(std::size_t digits) noexcept { return (digits + kRows - 1) / kRows * kRows; }

// As many zeros are below and above the digits that rows are made from.
inline constexpr std::size_t kZerosBelow = kRows;
inline constexpr std::size_t kZerosAbove = kRows;

// Masks that tell digits from the second four on: entry kRows + i is that of digit i.
alignas(64) inline constexpr std::array<Digit, 4 * kRows> kFromSecond = [] {
    std::array<Digit, 4 * kRows> masks{};
    for (std::size_t i = 2 * kRows; i < masks.size(); ++i) masks[i] = ~Digit{0};
    return masks;
}();

}  // namespace morvane::bignum
