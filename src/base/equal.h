// Comparing secrets.
#pragma once

#include "base/known.h"

#include <cstddef>
#include <cstdint>

namespace morvane {

// Whether two byte strings are equal, in a time that tells only their length.
inline bool are_equal_secrets(const std::uint8_t* a, const std::uint8_t* b, std::size_t size) noexcept {
    std::uint32_t difference = 0;
    for (std::size_t i = 0; i < size; ++i) difference |= static_cast<std::uint32_t>(a[i] ^ b[i]);
    asm("" : "+r"(difference));  // otherwise the compiler may leave the loop early
    return known(difference == 0);
}

}  // namespace morvane
