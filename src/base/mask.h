// Choices without branches: a mask is all ones for yes, zero for no. Times do not tell the values.
#pragma once

#include <cstdint>

namespace morvane {

using Mask = std::uint32_t;

// Hides from the compiler that a mask has two values only, or it may turn the choice into a branch.
[[gnu::always_inline]] inline Mask opaque(Mask mask) noexcept {
    asm("" : "+r"(mask));
    return mask;
}

inline Mask mask_if_zero(std::uint32_t x) noexcept { return opaque(0U - ((~x & (x - 1)) >> 31)); }
inline Mask mask_if_equal(std::uint32_t a, std::uint32_t b) noexcept { return mask_if_zero(a ^ b); }

// Both below 2^31.
inline Mask mask_if_below(std::uint32_t a, std::uint32_t b) noexcept { return opaque(0U - ((a - b) >> 31)); }

inline std::uint32_t choose(Mask mask, std::uint32_t yes, std::uint32_t no) noexcept { return no ^ (mask & (yes ^ no)); }

}  // namespace morvane
