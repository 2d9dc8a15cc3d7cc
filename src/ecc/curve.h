// Multiples of points on the built-in curves, and arithmetic modulo their orders. On any other curve the functions with a
// result of type bool answer false, the others do nothing.
#pragma once

#include <morvane/ecc.h>

#include <cstddef>
#include <cstdint>

namespace morvane::ecc {

inline constexpr std::size_t kWords = E_EC_WORDS;
using Word = std::uint32_t;

inline constexpr std::int32_t kSect163k1 = 3;
inline constexpr std::int32_t kC2pnb163v1 = 5;
inline constexpr std::int32_t kSecp160r1 = 7;

// Whether the arithmetic of the curve is built in, and whether the library knows the identifier at all.
constexpr bool is_built_in(std::int32_t curve) noexcept {
    return curve == kSect163k1 || curve == kC2pnb163v1 || curve == kSecp160r1;
}
constexpr bool is_known(std::int32_t curve) noexcept {
    return is_built_in(curve) || curve == 11 || curve == 21 || curve == 22;
}

constexpr std::size_t coordinate_octets(std::int32_t curve) noexcept { return curve == kSecp160r1 ? 20 : 21; }

// r = k G, r = k p: k has six words; the time does not depend on it. False if the result is the point at infinity, and r is
// (0, 0). p is any point of the curve, or (0, 0).
bool multiply_base(TORVA_V1_POINT& r, std::int32_t curve, const Word* k) noexcept;
bool multiply(TORVA_V1_POINT& r, std::int32_t curve, const Word* k, const TORVA_V1_POINT& p) noexcept;

// r = u G + v p, as above; variable time, for verification.
bool multiply_two_vt(TORVA_V1_POINT& r, std::int32_t curve, const Word* u, const Word* v, const TORVA_V1_POINT& p) noexcept;

// Arithmetic modulo the order n on scalars of six words below n; the time does not depend on values. Results may be
// operands.
void order(Word* n, std::int32_t curve) noexcept;
void scalar_reduce(Word* r, std::int32_t curve, const Word* wide, std::size_t words) noexcept;  // of up to 12 words
void scalar_add(Word* r, std::int32_t curve, const Word* a, const Word* b) noexcept;
void scalar_subtract(Word* r, std::int32_t curve, const Word* a, const Word* b) noexcept;
void scalar_multiply(Word* r, std::int32_t curve, const Word* a, const Word* b) noexcept;
void scalar_invert(Word* r, std::int32_t curve, const Word* a) noexcept;  // 0 for 0

}  // namespace morvane::ecc
