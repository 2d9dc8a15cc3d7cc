// Numbers as strings of octets, most significant first.
#pragma once

#include "base/bytes.h"
#include "base/known.h"

#include <algorithm>

namespace morvane::random {

// sum += addend + carry modulo 2^(8 size).
inline void add_octets(std::uint8_t* sum, const std::uint8_t* addend, std::size_t size, std::uint32_t carry = 0) noexcept {
    while (size-- > 0) {
        carry += std::uint32_t{sum[size]} + addend[size];
        sum[size] = static_cast<std::uint8_t>(carry);
        carry >>= 8;
    }
}

// `to` = the number in `from`, its high octets being cut off or zeros put before.
inline void fit_octets(std::uint8_t* to, std::size_t to_size, const std::uint8_t* from, std::size_t from_size) noexcept {
    const std::size_t common = std::min(to_size, from_size);
    std::fill(to, to + (to_size - common), std::uint8_t{0});
    copy_bytes(to + (to_size - common), from + (from_size - common), common);
}

// Writes the number without its leading zeros. Returns how many octets it has, which becomes known.
inline std::uint32_t put_minimal(std::uint8_t* to, const std::uint8_t* from, std::size_t size) noexcept {
    const std::uint8_t* const first = std::find_if(from, from + size, [](std::uint8_t octet) { return known(octet != 0); });
    return static_cast<std::uint32_t>(std::copy(first, from + size, to) - to);
}

}  // namespace morvane::random
