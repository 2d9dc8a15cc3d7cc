// The shape of the tables over base points: entry (i, j) is (2 j + 1) 16^i G, so that a scalar of odd digits is a sum of
// one entry per digit, without a doubling.
#pragma once

#include <array>
#include <cstddef>

namespace morvane::ec {

inline constexpr unsigned kCombBits = 4;
inline constexpr std::size_t kCombDigits = 41;  // 164 bits
inline constexpr std::size_t kCombOdds = 8;

template <typename Point>
using Comb = std::array<std::array<Point, kCombOdds>, kCombDigits>;

}  // namespace morvane::ec
